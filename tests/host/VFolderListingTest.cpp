#include "foundation/host/VFolderListing.h"
#include "foundation/strings/VString.h"
#include "tests/host/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using namespace VFoundation;
using host_test::TestFolder;

/// The paths below the folder, with the first letter of their kinds.
std::string TextOf(VFolderListing const& listing, std::string const& folder) {
    std::string text;
    for (auto const& entry : listing.Entries()) {
        text += entry.path.substr(folder.size()) + ' ' + "FDLO"[static_cast<int>(entry.kind)] + '\n';
    }
    return text;
}

TEST(VFolderListing, ListsFoldersInOrder) {
    TestFolder const folder;
    std::string const root = folder.Path("root");
    std::filesystem::create_directories(root + "/b/c");
    folder.Write("root/b.PNG", "12345");
    folder.Write("root/b/c/.hidden.png", "");
    folder.Write("root/a.txt", "");
    std::filesystem::create_symlink("..", root + "/b/circle");
    std::string const flat = "/a.txt F\n/b D\n/b.PNG F\n";
    EXPECT_EQ(TextOf(VFolderListing(root), root), flat);
    VFolderListing::Options options;
    options.isRecursive = true;
    VFolderListing const all(root, options);
    EXPECT_EQ(TextOf(all, root), flat + "/b/c D\n/b/c/.hidden.png F\n/b/circle L\n");
    EXPECT_EQ(all.Entries()[2].size, 5U);
    EXPECT_NEAR(static_cast<double>(all.Entries()[2].modified), static_cast<double>(::time(nullptr)), 3600);
    EXPECT_TRUE(all.Failures().empty());
    options.filter = [](VFolderListing::Entry const& entry) { return entry.HasExtension("png"); };
    EXPECT_EQ(TextOf(VFolderListing(root, options), root), "/b.PNG F\n/b/c/.hidden.png F\n");
}

TEST(VFolderListing, TellsWhatIsMissing) {
    TestFolder const folder;
    for (int i = 0; i < 10; ++i) {
        folder.Write(std::to_string(i).c_str(), "");
    }
    VFolderListing::Options options;
    options.mostEntries = 9;
    VFolderListing const cut(folder.Path(""), options);
    EXPECT_EQ(cut.Entries().size(), 9U);
    ASSERT_EQ(cut.Failures().size(), 1U);
    EXPECT_TRUE(cut.Failures()[0].ErrorDescription().View().starts_with("cannot list " + folder.Path("") +
                                                                        " beyond 9 entries: "));
    long listed = 0;
    for (auto const& entry : VFolderListing(folder.Path(""), options).Entries()) {
        listed += entry.path.empty() ? 0 : 1; // the entries outlive their listing
    }
    EXPECT_EQ(listed, 9);
    options.mostEntries = 10;
    EXPECT_TRUE(VFolderListing(folder.Path(""), options).Failures().empty());

    // A folder that the user may not read, or for root one that is too deep to be named.
    std::string deep = folder.Path("deep");
    std::filesystem::current_path(folder.Path(""));
    for (int i = 0; i < 20; ++i) {
        std::string const name(250, 'd');
        std::filesystem::create_directory(name);
        std::filesystem::current_path(name);
    }
    std::filesystem::current_path("/");
    options.mostEntries = 1000;
    options.isRecursive = true;
    VFolderListing const partial(folder.Path(""), options);
    EXPECT_GT(partial.Entries().size(), 20U);
    ASSERT_EQ(partial.Failures().size(), 1U);
    EXPECT_NE(std::string(partial.Failures()[0].ErrorDescription().CString()).find("name too long"),
              std::string::npos);
    VFolderListing const none(folder.Path("no"));
    ASSERT_EQ(none.Failures().size(), 1U);
    EXPECT_EQ("cannot list " + folder.Path("no") + ": No such file or directory",
              std::string(none.Failures()[0].ErrorDescription().CString()));
}

} // namespace
