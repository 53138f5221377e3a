#include "foundation/host/VSpecialFolders.h"
#include "tests/host/TestFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <unistd.h>

namespace {

using namespace VFoundation;
using Folders = VSpecialFolders;

TEST(VSpecialFolders, FollowsTheStandards) {
    host_test::TestFolder const folder;
    for (char const* const name : {"TMPDIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME",
                                   "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        ::unsetenv(name);
    }
    ::setenv("HOME", "relative", 1);
    EXPECT_EQ(Folders::Path(Folders::kHome), ::getpwuid(::getuid())->pw_dir);
    std::string const home = folder.Path("home");
    ::setenv("HOME", (home + "//").c_str(), 1);
    EXPECT_EQ(Folders::Path(Folders::kHome), home);
    EXPECT_EQ(Folders::Path(Folders::kTemporary), "/tmp");
    EXPECT_EQ(Folders::Path(Folders::kData), home + "/.local/share");
    EXPECT_EQ(Folders::Path(Folders::kCache), home + "/.cache");
    EXPECT_EQ(Folders::Path(Folders::kState), home + "/.local/state");
    EXPECT_EQ(Folders::Path(Folders::kRuntime), "");
    EXPECT_EQ(Folders::Path(Folders::kPictures), "");
    ::setenv("XDG_DATA_HOME", "/data/", 1);
    ::setenv("XDG_CACHE_HOME", "relative", 1);
    EXPECT_EQ(Folders::Path(Folders::kData), "/data");
    EXPECT_EQ(Folders::Path(Folders::kCache), home + "/.cache");
    std::filesystem::create_directories(home + "/.config");
    folder.Write("home/.config/user-dirs.dirs", "#XDG_PICTURES_DIR=\"/no\"\nXDG_PICTURES_DIR=\"/old\"\n"
                                                " XDG_PICTURES_DIR=\"$HOME/My \\\"Pictures\\\"/\"\n"
                                                "XDG_MUSIC_DIR=\"relative\"\nXDG_VIDEOS_DIR=/bare\n"
                                                "XDG_DOCUMENTS_DIR=\"/open");
    EXPECT_EQ(Folders::Path(Folders::kPictures), home + "/My \"Pictures\"");
    EXPECT_EQ(Folders::Path(Folders::kMusic), "");
    EXPECT_EQ(Folders::Path(Folders::kVideos), "");
    EXPECT_EQ(Folders::Path(Folders::kDocuments), "/open");
    EXPECT_EQ(Folders::Path(static_cast<Folders::Folder>(99)), "");
    ::setenv("HOME", "/root", 1);
}

} // namespace
