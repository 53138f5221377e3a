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
#include <unistd.h>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ScratchFile;

/// A folder of its own for every test.
class Files : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "vfoundation-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        m_folder = name;
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::string Path(char const* name) const { return (m_folder / name).string(); }
    std::string Write(char const* name, std::string const& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }

    std::filesystem::path m_folder;
};

TEST_F(Files, AreReadFromWhereTheySeek) {
    VFile file;
    char buffer[16] = {};
    ASSERT_TRUE(file.OpenForReading(Write("a", "0123456789").c_str()));
    EXPECT_EQ(file.ReadBytes(buffer, 3), 3U);
    EXPECT_EQ(file.GetLength(), 10);
    EXPECT_EQ(file.GetPosition(), 3) << "asking for the length moves nothing";
    EXPECT_EQ(file.GetLengthRemaining(), 7);
    EXPECT_TRUE(file.FileSeek(2, VFile::kFromCurrent));
    EXPECT_EQ(file.GetPosition(), 5);
    EXPECT_TRUE(file.FileSeek(-1, VFile::kFromEnd));
    EXPECT_EQ(file.GetPosition(), 9);
    EXPECT_TRUE(file.FileSeek(4, VFile::kFromStart));
    EXPECT_TRUE(file.FileSeek(1, 7));
    EXPECT_TRUE(file.FileSeek(1, -1));
    EXPECT_TRUE(file.FileSeek(-100, VFile::kFromStart)) << "true whatever happens";
    EXPECT_EQ(file.GetPosition(), 4);
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
    EXPECT_TRUE(file.IsEndOfFile());
    EXPECT_TRUE(file.FileSeek(10, VFile::kFromStart));
    EXPECT_EQ(VFile::New(), nullptr);
    EXPECT_EQ(VFile::TheClass()->NewInstance(), nullptr);
}

TEST_F(Files, OnlyRegularOnesOpenForReading) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    Write("plain", "x");
    std::filesystem::create_symlink("plain", Path("link"));
    std::filesystem::create_symlink("pipe", Path("pipelink"));
    for (std::string const& refused : {Path("pipe"), Path("pipelink"), m_folder.string(), Path("missing"),
                                       std::string("/dev/null"), std::string()}) {
        VFile file;
        EXPECT_FALSE(file.OpenForReading(refused.c_str())) << refused;
        EXPECT_FALSE(VFileManager::DefaultManager()->ContentsAtPath(refused.c_str())) << refused;
    }
    EXPECT_FALSE(VFileManager::DefaultManager()->ContentsAtPath(nullptr));
    VFile file;
    EXPECT_TRUE(file.OpenForReading(Path("link").c_str()));
}

TEST_F(Files, OpenByModeAreClosedOnExec) {
    std::FILE* const stream = VFileManager::vfc_fopen(VString(Path("new").c_str()), "w+b");
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(::fcntl(::fileno(stream), F_GETFD) & FD_CLOEXEC);
    EXPECT_EQ(std::fputs("text", stream), 1);
    std::fclose(stream);
    EXPECT_EQ(std::filesystem::file_size(Path("new")), 4U);
    EXPECT_EQ(VFile::vfc_fopen(Path("missing").c_str(), "r"), nullptr);
    EXPECT_EQ(VFile::vfc_fopen(nullptr, "r"), nullptr);
}

TEST_F(Files, AreReadWhole) {
    VFileManager const& manager = *VFileManager::DefaultManager();
    std::string bytes(100'000, '\0');
    bytes.back() = 'z';
    VObjectRef<VData> const contents = manager.ContentsAtPath(Write("big", bytes).c_str());
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->RetainCount(), 1);
    ASSERT_EQ(contents->Length(), bytes.size());
    EXPECT_EQ(std::memcmp(contents->Bytes(), bytes.data(), bytes.size()), 0);
    EXPECT_EQ(manager.ContentsAtPath(Write("empty", "").c_str())->Length(), 0U);

    std::filesystem::resize_file(Write("huge", ""), 5ULL << 30); // a hole
    long const existing = VData::TheClass()->Existing();
    EXPECT_THROW((void)manager.ContentsAtPath(Path("huge").c_str()), VException);
    EXPECT_EQ(VData::TheClass()->Existing(), existing);
}

TEST_F(Files, ExistOrNot) {
    VFileManager const& manager = *VFileManager::DefaultManager();
    bool isDirectory = true;
    EXPECT_TRUE(manager.FileExistsAtPath(Write("plain", "").c_str(), &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_TRUE(manager.FileExistsAtPath(m_folder.c_str(), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(manager.FileExistsAtPath(Path("missing").c_str(), &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_FALSE(manager.FileExistsAtPath("", nullptr));

    // A socket has the bit that is tested.
    int const listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(Path("s").size(), sizeof address.sun_path);
    std::strcpy(address.sun_path, Path("s").c_str());
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_TRUE(manager.FileExistsAtPath(Path("s").c_str(), &isDirectory));
    EXPECT_TRUE(isDirectory);
    ::close(listener);
}

TEST(VFileManager, IsOneUntilItIsDeleted) {
    VFileManager* const manager = VFileManager::DefaultManager();
    EXPECT_EQ(VFileManager::DefaultManager(), manager);
    long const existing = VFileManager::TheClass()->Existing();
    VFileManager::DeleteDefaultManager();
    VFileManager::UninitializeClass();
    EXPECT_EQ(VFileManager::TheClass()->Existing(), existing - 1);
    EXPECT_NE(VFileManager::DefaultManager(), nullptr);
}

TEST(VFileManager, MakesSeparatorsTheHosts) {
    char path[] = "a\\b\\c/d";
    VFileManager::MakePathUseHostSeparator(path);
    EXPECT_STREQ(path, "a/b/c/d");
    VFileManager::MakePathUseHostSeparator(nullptr);
}

TEST(VFileInfo, TravelsThroughAFileAndCutsLongPaths) {
    ScratchFile const scratch;
    VAIFile file;
    ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kWrite));
    auto const info = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
    EXPECT_STREQ(info->Path(), "");
    EXPECT_FALSE(info->Flag());
    info->SetPath("a/b");
    info->SetFlag(true);
    EXPECT_TRUE(info->Serialize(file));
    file << std::string(1000, 'p').c_str() << false;
    ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kRead));
    auto const read = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
    EXPECT_TRUE(read->Serialize(file));
    EXPECT_STREQ(read->Path(), "a/b");
    EXPECT_TRUE(read->Flag());
    EXPECT_TRUE(read->Serialize(file));
    EXPECT_EQ(std::strlen(read->Path()), 259U);
    EXPECT_FALSE(read->Flag());
}

TEST(VFileInfo, ComesBackFromThePoolAsItWas) {
    VFileInfo::TheClass();
    VFileInfo::ReleaseAllRecycledFileInfos();
    VFileInfo::InitializeClass();
    VFileInfo* const info = VFileInfo::NewFileInfo();
    info->SetPath("kept");
    info->Release();
    VFileInfo* const again = VFileInfo::New();
    EXPECT_EQ(again, info);
    EXPECT_STREQ(again->Path(), "kept");
    again->Release();

    std::vector<VFileInfo*> infos;
    for (unsigned long i = 0; i < VFileInfo::kPoolCapacity + 1; ++i) {
        infos.push_back(VFileInfo::NewFileInfo());
    }
    long const existing = VFileInfo::TheClass()->Existing();
    for (VFileInfo* const each : infos) {
        each->Release();
    }
    EXPECT_EQ(VFileInfo::TheClass()->Existing(), existing - 1) << "the pool is full";
    VFileInfo::UninitializeClass();
    VFileInfo::UninitializeClass();
    EXPECT_EQ(VFileInfo::TheClass()->Existing(), existing - static_cast<long>(infos.size()));
    VFileInfo::New()->Release();
}

} // namespace
