#include "foundation/host/VFileManager.h"
#include "foundation/core/VException.h"
#include "foundation/strings/VString.h"
#include "tests/host/TestFolder.h"
#include "tests/support/FailingReads.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <tuple>

namespace {

using namespace VFoundation;
using host_test::TestFolder;

TEST(VFileManager, ReadsWholeFiles) {
    TestFolder const folder;
    VFileManager const& manager = *VFileManager::DefaultManager();
    for (std::string const& bytes : {std::string(100'000, '\0') + 'z', std::string()}) {
        VObjectRef<VData> const contents = manager.ContentsAtPath(folder.Write("file", bytes).c_str());
        ASSERT_TRUE(contents);
        EXPECT_TRUE(std::string(contents->Bytes(), contents->Bytes() + contents->Length()) == bytes);
    }
    for (char const* const path : {static_cast<char const*>(nullptr), "", "/dev/null"}) {
        EXPECT_FALSE(manager.ContentsAtPath(path));
    }
    long const existing = VData::TheClass()->Existing();
    std::filesystem::resize_file(folder.Path("file"), 5ULL << 30); // a hole
    EXPECT_THROW((void)manager.ContentsAtPath(folder.Path("file").c_str()), VException);
    EXPECT_EQ(VData::TheClass()->Existing(), existing);

    // A failed read is told from a file that gets shorter.
    std::string const path = folder.Write("ten", "0123456789");
    {
        testing_support::FailingReads const shrinking(4, 0);
        VObjectRef<VData> const contents = manager.ContentsAtPath(path.c_str());
        ASSERT_TRUE(contents);
        EXPECT_EQ(std::string(contents->Bytes(), contents->Bytes() + contents->Length()),
                  "0123" + std::string(6, '\0'));
    }
    testing_support::FailingReads const failing(4);
    EXPECT_FALSE(manager.ContentsAtPath(path.c_str()));
}

TEST(VFileManager, TellsWhatExists) {
    TestFolder const folder;
    VFileManager const& manager = *VFileManager::DefaultManager();
    std::string const socket = folder.Path("s");
    ASSERT_EQ(::mknod(socket.c_str(), S_IFSOCK | 0600, 0), 0);
    for (auto const& [path, exists, seemsDirectory] : {std::tuple{folder.Write("plain", ""), true, false},
                                                       {folder.Path(""), true, true},
                                                       {folder.Path("missing"), false, false},
                                                       {socket, true, true}}) { // a socket has the bit
        bool isDirectory = !seemsDirectory;
        EXPECT_EQ(manager.FileExistsAtPath(path.c_str(), &isDirectory), exists) << path;
        EXPECT_EQ(isDirectory, seemsDirectory) << path;
    }
    EXPECT_FALSE(manager.FileExistsAtPath("", nullptr));
}

TEST(VFileManager, IsOneUntilItIsDeleted) {
    EXPECT_EQ(VFileManager::DefaultManager(), VFileManager::DefaultManager());
    long const existing = VFileManager::TheClass()->Existing();
    VFileManager::DeleteDefaultManager();
    VFileManager::UninitializeClass();
    EXPECT_EQ(VFileManager::TheClass()->Existing(), existing - 1);
    char path[] = "a\\b\\c/d";
    VFileManager::MakePathUseHostSeparator(path);
    EXPECT_STREQ(path, "a/b/c/d");
}

} // namespace
