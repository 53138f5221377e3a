#include "tests/persistence/XMLTestSupport.h"

#include <chrono>
#include <csignal>
#include <functional>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace testing_support;

constexpr int kNobody = 65534;

bool Save(std::string const& path, int items, char fill) {
    VXMLFile file;
    file.OpenFileForWrite(path.c_str(), "R");
    std::string const text(100, fill);
    for (int i = 0; i < items; ++i) {
        file.WriteObject(nullptr, VString(text.c_str()));
    }
    return file.CloseFile();
}

unsigned ModeOf(std::string const& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

/// Whether `work` succeeds in a process of an ordinary user.
bool SucceedsAsNobody(std::function<bool()> const& work) {
    ::pid_t const child = ::fork();
    if (child == 0) {
        bool const isOrdinary = ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
        ::_exit(isOrdinary ? (work() ? 0 : 1) : 2);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1);
    return status == 0;
}

long FilesIn(std::filesystem::path const& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

TEST_F(XML, SavingKeepsWhatTheFileIs) {
    ::mode_t const mask = ::umask(027);
    EXPECT_TRUE(Save(Path("new"), 1, 'a'));
    ::umask(mask);
    EXPECT_EQ(ModeOf(Path("new")), 0640U) << "a new file as any program would make it";
    ASSERT_EQ(::chmod(Path("new").c_str(), 04751), 0);
    std::filesystem::create_symlink("new", Path("link"));
    std::filesystem::create_symlink("link", Path("link2"));
    EXPECT_TRUE(Save(Path("link2"), 1, 'b'));
    EXPECT_TRUE(std::filesystem::is_symlink(Path("link2")) && std::filesystem::is_symlink(Path("link")));
    EXPECT_NE(Contents(Path("new")).find("bbb"), std::string::npos);
    EXPECT_EQ(ModeOf(Path("new")), 04751U);
    std::filesystem::create_symlink("made", Path("dangling"));
    EXPECT_TRUE(Save(Path("dangling"), 1, 'c'));
    EXPECT_TRUE(std::filesystem::is_regular_file(Path("made")) &&
                std::filesystem::is_symlink(Path("dangling")));
    EXPECT_EQ(FilesIn(m_folder), 5) << "no temporary file stays";
}

TEST_F(XML, SavingFailsWhereItCannotWrite) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(Save(Path("pipe"), 1, 'a')) << "nobody reads";
    EXPECT_FALSE(Save(Path("."), 1, 'a') || Save(Path("no/such/folder"), 1, 'a') || Save("", 1, 'a'));
    EXPECT_FALSE(Save("/dev/full", 1, 'a') || Save("/dev/full", 10000, 'a'));
    EXPECT_EQ(FilesIn(m_folder), 1);

    // Files that may not grow beyond 64 KiB: the document before survives.
    ASSERT_TRUE(Save(Path("small"), 3, 'a'));
    std::string const before = Contents(Path("small"));
    EXPECT_FALSE(SucceedsAsNobody([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        ::rlimit const limit{1 << 16, 1 << 16};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return Save(Path("small"), 10000, 'b');
    }));
    EXPECT_EQ(Contents(Path("small")), before);
}

TEST_F(XML, SavingRespectsPermissions) {
    ASSERT_TRUE(Save(Path("readOnly"), 1, 'a') && Save(Path("writable"), 1, 'a'));
    std::string const before = Contents(Path("readOnly"));
    ASSERT_EQ(::chmod(Path("readOnly").c_str(), 0444), 0);
    ASSERT_EQ(::chmod(Path("writable").c_str(), 0666), 0);
    ASSERT_EQ(::chmod(m_folder.c_str(), 0777), 0);
    EXPECT_FALSE(SucceedsAsNobody([&] { return Save(Path("readOnly"), 1, 'b'); }));
    EXPECT_EQ(Contents(Path("readOnly")), before) << "though the folder would let it be replaced";
    ASSERT_EQ(::chmod(m_folder.c_str(), 0555), 0);
    EXPECT_TRUE(SucceedsAsNobody([&] { return Save(Path("writable"), 1, 'b'); })) << "in place";
    EXPECT_NE(Contents(Path("writable")).find("bbb"), std::string::npos);
    EXPECT_FALSE(SucceedsAsNobody([&] { return Save(Path("another"), 1, 'b'); }));
    ASSERT_EQ(::chmod(Path("writable").c_str(), 0), 0);
    ASSERT_EQ(::chmod(m_folder.c_str(), 0755), 0);
    EXPECT_FALSE(SucceedsAsNobody([&] { return VXMLFile().OpenFileForRead(Path("writable").c_str(), "R"); }));
}

TEST_F(XML, AKilledSaveLeavesAWholeDocument) {
    constexpr auto kDuration = std::chrono::milliseconds(1500);
    std::string const path = Path("document");
    ASSERT_TRUE(Save(path, 2000, 'a'));
    std::string const a = Contents(path);
    ASSERT_TRUE(Save(path, 2000, 'b'));
    std::string const b = Contents(path);
    std::mt19937 random(std::random_device{}());
    int kills = 0;
    auto const end = std::chrono::steady_clock::now() + kDuration;
    while (std::chrono::steady_clock::now() < end) {
        ::pid_t const child = ::fork();
        if (child == 0) {
            for (bool isA = true;; isA = !isA) {
                Save(path, 2000, isA ? 'a' : 'b');
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 40000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        std::string const now = Contents(path);
        ASSERT_TRUE(now == a || now == b) << now.size() << " bytes after " << kills << " kills";
        ++kills;
    }
    EXPECT_GT(kills, 5);
}

TEST_F(XML, AnAbandonedDocumentIsSavedUnlessCleared) {
    {
        VXMLFile file;
        file.OpenFileForWrite(Path("abandoned").c_str(), "R");
        VXMLFile cleared;
        cleared.OpenFileForWrite(Path("cleared").c_str(), "R");
        cleared.Clear();
        VString text("before");
        cleared.WriteFileToString(text, "R");
        cleared.Clear();
        cleared.OpenFileForWrite(Path("cleared2").c_str(), "R");
        EXPECT_TRUE(cleared.CloseFile());
        EXPECT_TRUE(text == "before") << "clearing forgets the string";
        EXPECT_FALSE(file.OpenFileForWrite(Path("wrong").c_str(), "not a name"));
    }
    EXPECT_FALSE(std::filesystem::exists(Path("abandoned"))) << "dropped by opening another";
    EXPECT_FALSE(std::filesystem::exists(Path("cleared")) || std::filesystem::exists(Path("wrong")));
    EXPECT_TRUE(std::filesystem::exists(Path("cleared2")));
    { VXMLFile().OpenFileForWrite(Path("ended").c_str(), "R"); }
    EXPECT_EQ(Contents(Path("ended")), "<R />\n");
}

} // namespace
