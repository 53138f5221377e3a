#include "foundation/host/VFile.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/host/VFileManager.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <tuple>
#include <unistd.h>

namespace {

using namespace VFoundation;
using testing_support::ScratchFile;

/// A folder of its own for every test.
class Files : public testing::Test {
  protected:
    std::string Path(char const* name) const { return (m_scratch.Folder() / name).string(); }
    std::string Write(char const* name, std::string const& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }
    ScratchFile const m_scratch;
    VFileManager const& manager = *VFileManager::DefaultManager();
};

TEST_F(Files, AreReadFromWhereTheySeek) {
    VFile file;
    char buffer[16] = {};
    ASSERT_TRUE(file.OpenForReading(Write("a", "0123456789").c_str()));
    EXPECT_EQ(file.ReadBytes(buffer, 3), 3U);
    EXPECT_EQ(file.GetLengthRemaining(), 7) << "asking for the length moves nothing";
    for (auto const& [offset, origin, position] : {std::tuple{2L, int{VFile::kFromCurrent}, 5L},
                                                   {-1L, VFile::kFromEnd, 9L},
                                                   {4L, VFile::kFromStart, 4L},
                                                   {1L, 7, 4L},
                                                   {1L, -1, 4L},
                                                   {-100L, VFile::kFromStart, 4L}}) {
        EXPECT_TRUE(file.FileSeek(offset, origin)) << "true whatever happens";
        EXPECT_EQ(file.GetPosition(), position);
    }
    EXPECT_FALSE(file.IsEndOfFile());
    EXPECT_EQ(file.ReadBytes(buffer, sizeof buffer), 6U);
    EXPECT_STREQ(buffer, "456789");
    EXPECT_TRUE(file.IsEndOfFile());
    file.FileSeek(12, VFile::kFromStart);
    EXPECT_EQ(file.GetLengthRemaining(), -2);
    EXPECT_FALSE(file.OpenForReading(Write("b", "other").c_str()));
    EXPECT_EQ(file.GetLength(), 10) << "the first file stays open";
}

TEST_F(Files, ThatAreNotOpenGiveNothing) {
    VFile file;
    char byte = 0;
    EXPECT_EQ(file.ReadBytes(&byte, 1), 0U);
    EXPECT_EQ(file.GetLength() + file.GetPosition() + file.GetLengthRemaining(), 0);
    EXPECT_TRUE(file.IsEndOfFile() && file.FileSeek(10, VFile::kFromStart));
    EXPECT_EQ(VFile::New(), nullptr);
    EXPECT_EQ(VFile::TheClass()->NewInstance(), nullptr);
}

TEST_F(Files, OnlyRegularOnesOpenForReading) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("pipe", Path("pipelink"));
    for (auto const& refused :
         {Path("pipe"), Path("pipelink"), Path(""), Path("no"), std::string("/dev/null")}) {
        EXPECT_FALSE(VFile().OpenForReading(refused.c_str())) << refused;
        EXPECT_FALSE(manager.ContentsAtPath(refused.c_str())) << refused;
    }
    EXPECT_FALSE(manager.ContentsAtPath(nullptr) || manager.ContentsAtPath(""));
    std::filesystem::create_symlink(Write("plain", "x"), Path("link"));
    EXPECT_TRUE(VFile().OpenForReading(Path("link").c_str()));
}

TEST_F(Files, OpenByModeAreClosedOnExec) {
    std::FILE* const stream = VFileManager::vfc_fopen(VString(Path("new").c_str()), "w+b");
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(::fcntl(::fileno(stream), F_GETFD) & FD_CLOEXEC);
    EXPECT_EQ(std::fputs("text", stream), 1);
    std::fclose(stream);
    EXPECT_EQ(VFile::vfc_fopen(Path("missing").c_str(), "r"), nullptr);
    EXPECT_EQ(VFile::vfc_fopen(nullptr, "r"), nullptr);
}

TEST_F(Files, AreReadWhole) {
    std::string const bytes = std::string(100'000, '\0') + 'z';
    VObjectRef<VData> const contents = manager.ContentsAtPath(Write("big", bytes).c_str());
    ASSERT_TRUE(contents && contents->Length() == bytes.size());
    EXPECT_EQ(std::memcmp(contents->Bytes(), bytes.data(), bytes.size()), 0);
    EXPECT_EQ(manager.ContentsAtPath(Write("empty", "").c_str())->Length(), 0U);
    long const existing = VData::TheClass()->Existing();
    std::filesystem::resize_file(Path("empty"), 5ULL << 30); // a hole
    EXPECT_THROW((void)manager.ContentsAtPath(Path("empty").c_str()), VException);
    EXPECT_EQ(VData::TheClass()->Existing(), existing);
}

TEST_F(Files, ExistOrNot) {
    int const listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(Path("s").size(), sizeof address.sun_path);
    std::strcpy(address.sun_path, Path("s").c_str());
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(listener);
    for (auto const& [path, exists, seemsDirectory] : {std::tuple{Write("plain", ""), true, false},
                                                       {Path(""), true, true},
                                                       {Path("missing"), false, false},
                                                       {Path("s"), true, true}}) { // a socket has the bit
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

TEST(VFileInfo, TravelsThroughAFileAndCutsLongPaths) {
    ScratchFile const scratch;
    VAIFile file;
    auto const info = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
    info->SetPath("a/b");
    info->SetFlag(true);
    ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kWrite));
    EXPECT_TRUE(info->Serialize(file));
    file << std::string(1000, 'p').c_str() << false;
    ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kRead));
    auto const read = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
    EXPECT_TRUE(read->Serialize(file) && read->Flag());
    EXPECT_STREQ(read->Path(), "a/b");
    EXPECT_TRUE(read->Serialize(file) && !read->Flag());
    EXPECT_EQ(std::strlen(read->Path()), 259U);
}

TEST(VFileInfo, ComesBackFromThePoolAsItWas) {
    VFileInfo::TheClass();
    VFileInfo::ReleaseAllRecycledFileInfos();
    VFileInfo::InitializeClass();
    long const existing = VFileInfo::TheClass()->Existing();
    VFileInfo* const info = VFileInfo::NewFileInfo();
    info->SetPath("kept");
    info->Release();
    VFileInfo* const again = VFileInfo::New();
    EXPECT_EQ(again, info);
    EXPECT_STREQ(again->Path(), "kept");
    again->Release();
    VFileInfo::UninitializeClass();
    VFileInfo::UninitializeClass();
    VFileInfo::New()->Release();
    EXPECT_EQ(VFileInfo::TheClass()->Existing(), existing);
}

} // namespace
