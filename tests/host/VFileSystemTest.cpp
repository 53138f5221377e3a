#include "foundation/host/VFileSystem.h"
#include "foundation/strings/VString.h"
#include "tests/host/TestFolder.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/Fork.h"
#include "tests/support/FullDisk.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace VFoundation;
using host_test::TestFolder;
using testing_support::BytesOf;
using Existing = VFileSystem::Existing;
namespace fs = std::filesystem;

std::errc ErrorOf(VFileSystem::Result const& result) {
    return static_cast<std::errc>(result.Error().default_error_condition().value());
}

long CountIn(std::string const& folder) {
    return std::distance(fs::directory_iterator(folder), {});
}

TEST(VFileSystem, MakesFolders) {
    TestFolder const folder;
    EXPECT_TRUE(VFileSystem::MakeFolder(folder.Path("a/b/c")));
    EXPECT_TRUE(VFileSystem::MakeFolder(folder.Path("a/b")));
    std::string const file = folder.Write("file", "x");
    auto const refused = VFileSystem::MakeFolder(file + "/below");
    EXPECT_FALSE(refused);
    EXPECT_EQ("cannot make folder " + file + "/below: Not a directory",
              std::string(refused.ErrorDescription().CString()));
    EXPECT_FALSE(VFileSystem::MakeFolder(file));
}

TEST(VFileSystem, CopiesAllOrNothing) {
    TestFolder const folder;
    std::string const file = folder.Write("file", "text");
    std::string const copy = folder.Path("copy");
    ASSERT_TRUE(VFileSystem::Copy(file, copy));
    EXPECT_EQ(BytesOf(copy), "text");
    folder.Write("file", "changed");
    EXPECT_EQ(ErrorOf(VFileSystem::Copy(file, copy)), std::errc::file_exists);
    EXPECT_EQ(BytesOf(copy), "text");
    EXPECT_TRUE(VFileSystem::Copy(file, copy, Existing::kReplace));
    EXPECT_EQ(BytesOf(copy), "changed");
    folder.Write("file", std::string(100'000, 'x'));
    {
        testing_support::FullDisk const full(50'000);
        EXPECT_FALSE(VFileSystem::Copy(file, copy, Existing::kReplace));
    }
    EXPECT_EQ(BytesOf(copy), "changed");
    EXPECT_EQ(CountIn(folder.Path("")), 2) << "no temporary file is left";
    EXPECT_EQ(ErrorOf(VFileSystem::Copy(folder.Path("no"), folder.Path("b"))),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(ErrorOf(VFileSystem::Copy(file, folder.Path("no/b"))), std::errc::no_such_file_or_directory);
    testing_support::FailEachAllocation([&] { // what throws leaves no temporary file either
        if (VFileSystem::Copy(file, copy, Existing::kReplace)) {
            EXPECT_EQ(BytesOf(copy).size(), 100'000U);
        }
    });
    EXPECT_EQ(CountIn(folder.Path("")), 2);
}

TEST(VFileSystem, CopiesFolders) {
    TestFolder const folder;
    fs::create_directories(folder.Path("a/b"));
    folder.Write("a/b/file", "text");
    fs::create_symlink("nowhere", folder.Path("a/link"));
    ASSERT_TRUE(VFileSystem::Copy(folder.Path("a"), folder.Path("copy")));
    EXPECT_EQ(BytesOf(folder.Path("copy/b/file")), "text");
    EXPECT_EQ(fs::read_symlink(folder.Path("copy/link")), "nowhere");
    for (char const* const inside : {"a/b/copy", "a/copy", "a/no/../b/copy"}) {
        EXPECT_EQ(ErrorOf(VFileSystem::Copy(folder.Path("a"), folder.Path(inside))),
                  std::errc::invalid_argument)
            << inside;
    }
    EXPECT_FALSE(VFileSystem::Copy(folder.Path("a"), folder.Path("copy"), Existing::kReplace));
    ASSERT_EQ(::mkfifo(folder.Path("a/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(VFileSystem::Copy(folder.Path("a"), folder.Path("second")));
    EXPECT_EQ(ErrorOf(VFileSystem::Copy(folder.Path("a/pipe"), folder.Path("third"))),
              std::errc::not_supported);
    std::string const file = folder.Path("copy/b/file");
    for (auto const operation : {&VFileSystem::Copy, &VFileSystem::Move}) {
        auto const refused = operation(file, folder.Path("a/pipe"), Existing::kReplace);
        EXPECT_EQ(refused.ErrorDescription(),
                  "cannot replace " + folder.Path("a/pipe") + ": Operation not supported");
        EXPECT_TRUE(fs::is_fifo(folder.Path("a/pipe")));
    }
    EXPECT_EQ(CountIn(folder.Path("")), 2);
}

TEST(VFileSystem, MovesAndRemoves) {
    TestFolder const folder;
    std::string const file = folder.Write("file", "text");
    std::string const other = folder.Write("other", "kept");
    EXPECT_EQ(ErrorOf(VFileSystem::Move(file, other)), std::errc::file_exists);
    EXPECT_EQ(BytesOf(other), "kept");
    EXPECT_TRUE(VFileSystem::Move(file, other, Existing::kReplace));
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(BytesOf(other), "text");
    EXPECT_TRUE(VFileSystem::Move(other, file));
    if (fs::space("/dev/shm").capacity > 0) { // another file system
        std::string const far = "/dev/shm/" + fs::path(folder.Path("x")).parent_path().filename().string();
        EXPECT_TRUE(VFileSystem::Move(file, far));
        EXPECT_FALSE(fs::exists(file));
        EXPECT_EQ(BytesOf(far), "text");
        EXPECT_TRUE(VFileSystem::Move(far, file));
    }
    fs::create_directories(folder.Path("a/b"));
    fs::create_symlink(file, folder.Path("a/link"));
    EXPECT_EQ(ErrorOf(VFileSystem::Remove(folder.Path("a"))), std::errc::directory_not_empty);
    for (char const* const end : {"a/.", "a/b/..", "a/b/../"}) {
        EXPECT_EQ(ErrorOf(VFileSystem::RemoveAll(folder.Path(end))), std::errc::invalid_argument) << end;
        EXPECT_TRUE(fs::exists(folder.Path("a/b")));
    }
    fs::create_symlink("a", folder.Path("toA"));
    EXPECT_TRUE(VFileSystem::RemoveAll(folder.Path("toA/")));
    EXPECT_FALSE(fs::is_symlink(folder.Path("toA")));
    EXPECT_TRUE(fs::exists(folder.Path("a/b"))) << "of the link's folder nothing is removed";
    EXPECT_TRUE(VFileSystem::RemoveAll(folder.Path("a")));
    EXPECT_FALSE(fs::exists(folder.Path("a")));
    EXPECT_TRUE(fs::exists(file)) << "a link is not followed";
    EXPECT_TRUE(VFileSystem::Remove(file));
    EXPECT_TRUE(VFileSystem::Remove(file));
}

TEST(VFileSystem, NeverRemovesTheRoot) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a process another root, and a failure would empty this one";
    }
    TestFolder const folder;
    folder.Write("file", "text");
    testing_support::InChild([&folder] {
        ASSERT_EQ(::chroot(folder.Path("").c_str()), 0);
        ASSERT_EQ(::chdir("/"), 0);
        for (char const* const refused : {"", "/", "//", "/.", "/.."}) {
            EXPECT_EQ(ErrorOf(VFileSystem::RemoveAll(refused)), std::errc::invalid_argument) << refused;
        }
    });
    EXPECT_TRUE(fs::exists(folder.Path("file")));
}

} // namespace
