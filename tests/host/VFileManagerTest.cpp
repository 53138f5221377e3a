#include "foundation/host/VFileManager.h"
#include "foundation/core/VException.h"
#include "foundation/strings/VString.h"
#include "tests/host/TestFolder.h"
#include "tests/support/FailingReads.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <tuple>
#include <unistd.h>

namespace {

using namespace VFoundation;
using host_test::TestFolder;

TEST(VFileManager, ReadsWholeFiles) {
    TestFolder const folder;
    VFileManager const& manager = *VFileManager::DefaultManager();
    std::string const bytes = std::string(100'000, '\0') + 'z';
    VObjectRef<VData> const contents = manager.ContentsAtPath(folder.Write("big", bytes).c_str());
    ASSERT_TRUE(contents);
    ASSERT_EQ(contents->Length(), bytes.size());
    EXPECT_EQ(std::memcmp(contents->Bytes(), bytes.data(), bytes.size()), 0);
    EXPECT_FALSE(manager.ContentsAtPath(nullptr));
    EXPECT_FALSE(manager.ContentsAtPath(""));
    EXPECT_FALSE(manager.ContentsAtPath("/dev/null"));
    EXPECT_EQ(manager.ContentsAtPath(folder.Write("empty", "").c_str())->Length(), 0U);
    long const existing = VData::TheClass()->Existing();
    std::filesystem::resize_file(folder.Path("empty"), 5ULL << 30); // a hole
    EXPECT_THROW((void)manager.ContentsAtPath(folder.Path("empty").c_str()), VException);
    EXPECT_EQ(VData::TheClass()->Existing(), existing);
}

TEST(VFileManager, TellsAFailedReadFromAShorterFile) {
    TestFolder const folder;
    std::string const path = folder.Write("ten", "0123456789");
    {
        testing_support::FailingReads const shrinking(4, 0);
        VObjectRef<VData> const contents = VFileManager::DefaultManager()->ContentsAtPath(path.c_str());
        ASSERT_TRUE(contents);
        EXPECT_EQ(std::string(contents->Bytes(), contents->Bytes() + contents->Length()),
                  "0123" + std::string(6, '\0'));
    }
    testing_support::FailingReads const failing(4);
    EXPECT_FALSE(VFileManager::DefaultManager()->ContentsAtPath(path.c_str()));
}

TEST(VFileManager, TellsWhatExists) {
    TestFolder const folder;
    VFileManager const& manager = *VFileManager::DefaultManager();
    int const listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(folder.Path("s").size(), sizeof address.sun_path);
    std::strcpy(address.sun_path, folder.Path("s").c_str());
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(listener);
    for (auto const& [path, exists, seemsDirectory] :
         {std::tuple{folder.Write("plain", ""), true, false},
          {folder.Path(""), true, true},
          {folder.Path("missing"), false, false},
          {folder.Path("s"), true, true}}) { // a socket has the bit
        bool isDirectory = !seemsDirectory;
        EXPECT_EQ(manager.FileExistsAtPath(path.c_str(), &isDirectory), exists) << path;
        EXPECT_EQ(isDirectory, seemsDirectory) << path;
    }
    EXPECT_FALSE(manager.FileExistsAtPath("", nullptr));
}

TEST(VFileManager, IsOneUntilItIsDeleted) {
    VFileManager* const manager = VFileManager::DefaultManager();
    EXPECT_EQ(VFileManager::DefaultManager(), manager);
    long const existing = VFileManager::TheClass()->Existing();
    VFileManager::DeleteDefaultManager();
    VFileManager::UninitializeClass();
    EXPECT_EQ(VFileManager::TheClass()->Existing(), existing - 1);
}

TEST(VFileManager, MakesSeparatorsTheHosts) {
    char path[] = "a\\b\\c/d";
    VFileManager::MakePathUseHostSeparator(path);
    EXPECT_STREQ(path, "a/b/c/d");
}

} // namespace
