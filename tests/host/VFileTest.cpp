#include "foundation/host/VFile.h"
#include "foundation/host/VFileManager.h"
#include "foundation/strings/VString.h"
#include "tests/host/TestFolder.h"
#include "tests/support/FailingReads.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <tuple>

namespace {

using namespace VFoundation;
using host_test::TestFolder;

TEST(VFile, ReadsFromWhereItSeeks) {
    TestFolder const folder;
    VFile file;
    char buffer[16] = {};
    ASSERT_TRUE(file.OpenForReading(folder.Write("a", "0123456789").c_str()));
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
    EXPECT_EQ(file.ReadError(), 0);
    EXPECT_TRUE(file.ErrorDescription().IsEmpty());
    EXPECT_STREQ(buffer, "456789");
    EXPECT_TRUE(file.IsEndOfFile());
    file.FileSeek(12, VFile::kFromStart);
    EXPECT_EQ(file.GetLengthRemaining(), -2);
    EXPECT_FALSE(file.OpenForReading(folder.Write("b", "other").c_str()));
    EXPECT_EQ(file.GetLength(), 10) << "the first file stays open";
}

TEST(VFile, GivesNothingUnlessOpen) {
    VFile file;
    char byte = 0;
    EXPECT_EQ(file.ReadBytes(&byte, 1), 0U);
    EXPECT_EQ(file.GetLength() + file.GetPosition() + file.GetLengthRemaining(), 0);
    EXPECT_TRUE(file.IsEndOfFile());
    EXPECT_TRUE(file.FileSeek(10, VFile::kFromStart));
    EXPECT_EQ(VFile::New(), nullptr);
    EXPECT_EQ(VFile::TheClass()->NewInstance(), nullptr);
}

TEST(VFile, OpensOnlyRegularFiles) {
    TestFolder const folder;
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("pipe", folder.Path("pipelink"));
    auto const openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    auto const open = openDescriptors();
    for (auto const& refused : {folder.Path("pipe"), folder.Path("pipelink"), folder.Path(""),
                                folder.Path("no"), std::string("/dev/null")}) {
        VFile file;
        EXPECT_FALSE(file.OpenForReading(refused.c_str())) << refused;
        bool const isPipe = refused.find("pipe") != refused.npos || refused == "/dev/null";
        std::string const reason = refused.back() == '/' ? "Is a directory"
                                   : isPipe              ? "not a regular file"
                                                         : "No such file or directory";
        EXPECT_EQ("cannot open " + refused + ": " + reason, std::string(file.ErrorDescription().CString()));
    }
    EXPECT_EQ(openDescriptors(), open);
    std::filesystem::create_symlink(folder.Write("plain", "x"), folder.Path("link"));
    EXPECT_TRUE(VFile().OpenForReading(folder.Path("link").c_str()));
}

TEST(VFile, OpensClosedOnExec) {
    TestFolder const folder;
    VString const path(folder.Path("new").c_str());
    std::string const modes[] = {"w+b", "w+b             ", "w+b" + std::string(100, ' '), "w+b,none", ""};
    for (std::string const& mode : modes) {
        std::FILE* const stream = mode.empty() ? VFile::OpenRegularFile(path.CString())
                                               : VFileManager::vfc_fopen(path, mode.c_str());
        ASSERT_NE(stream, nullptr) << mode;
        EXPECT_TRUE(::fcntl(::fileno(stream), F_GETFD) & FD_CLOEXEC) << mode;
        EXPECT_EQ(std::fclose(stream), 0);
    }
    EXPECT_EQ(VFile::vfc_fopen(folder.Path("missing").c_str(), "r"), nullptr);
    EXPECT_EQ(VFile::vfc_fopen(path, ""), nullptr);
    EXPECT_EQ(VFile::vfc_fopen(nullptr, "r"), nullptr);
}

TEST(VFile, TellsAFailedReadFromTheEnd) {
    TestFolder const folder;
    VString const path(folder.Write("ten", "0123456789").c_str());
    char buffer[20];
    testing_support::FailingReads const failing(4);
    VFile broken;
    ASSERT_TRUE(broken.OpenForReading(path));
    EXPECT_EQ(broken.ReadBytes(buffer, sizeof buffer), 4U);
    EXPECT_EQ(broken.ReadError(), EIO);
    EXPECT_FALSE(broken.IsEndOfFile());
    EXPECT_EQ("cannot read " + folder.Path("ten") + " at offset 4: Input/output error",
              std::string(broken.ErrorDescription().CString()));
}

} // namespace
