#include "foundation/host/VTemporaryFile.h"
#include "foundation/host/VTemporaryFolder.h"
#include "foundation/strings/VString.h"
#include "tests/host/TestFolder.h"
#include "tests/support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <string>

namespace {

using namespace VFoundation;
using host_test::TestFolder;
namespace fs = std::filesystem;

TEST(VTemporaryFile, GoesUnlessItIsKept) {
    TestFolder const folder;
    std::string path;
    {
        VTemporaryFile const file(folder.Path("").c_str());
        VTemporaryFile const second(folder.Path("").c_str());
        path = file.Path();
        EXPECT_NE(path, second.Path());
        ASSERT_NE(file.Stream(), nullptr);
        EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
        EXPECT_TRUE(::fcntl(::fileno(file.Stream()), F_GETFD) & FD_CLOEXEC);
    }
    EXPECT_FALSE(fs::exists(path));
    VTemporaryFile kept(folder.Path("").c_str());
    std::fputs("draft", kept.Stream());
    EXPECT_TRUE(kept.Keep(folder.Path("final")));
    EXPECT_EQ(testing_support::BytesOf(folder.Path("final")), "draft");
    EXPECT_FALSE(kept.Keep(folder.Path("again")));
    VTemporaryFile refused(folder.Path("").c_str());
    EXPECT_FALSE(refused.Keep(folder.Path("final")));
    VTemporaryFile unwritten(folder.Path("").c_str());
    EXPECT_EQ(std::fgetc(unwritten.Stream()), EOF);
    std::freopen("/dev/full", "w", unwritten.Stream());
    std::fputs("lost", unwritten.Stream());
    EXPECT_FALSE(unwritten.Keep(folder.Path("unwritten")));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path("")), {}), 1);
    testing_support::FailEachAllocation(
        [&folder] { EXPECT_FALSE(VTemporaryFile(folder.Path("").c_str()).Keep(folder.Path("final"))); });
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path("")), {}), 1);
    VTemporaryFile const nowhere("/no/folder");
    EXPECT_EQ(nowhere.Stream(), nullptr);
    EXPECT_STREQ(nowhere.Made().ErrorDescription().CString(),
                 "cannot make a file in /no/folder: No such file or directory");
}

TEST(VTemporaryFolder, GoesWithAllThatIsInIt) {
    std::string path;
    {
        VTemporaryFolder const folder;
        path = folder.Path();
        ASSERT_TRUE(folder.Made());
        EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
        fs::create_directories(path + "/a/b");
    }
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(VTemporaryFolder("/no/folder").Made());
}

} // namespace
