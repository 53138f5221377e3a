#include "foundation/persistence/IXMLFileIO.h"
#include "tests/persistence/XMLTestSupport.h"
#include "tests/support/FailingAllocator.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace testing_support;

using FileReplacer = XMLBackEndTest;

bool s_diskFails = false;
bool s_pretendsLength = false;

} // namespace

/// Stands in for the system's call in this program.
extern "C" int fsync(int descriptor) {
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), FD_CLOEXEC)
        << "a program that is started meanwhile does not get it";
    errno = EIO;
    return s_diskFails ? -1 : static_cast<int>(::syscall(SYS_fsync, descriptor));
}

/// The same; while told to, of a document that is too long.
extern "C" long ftell(std::FILE* stream) {
    return s_pretendsLength ? static_cast<long>(IXMLFileIO::kMaxTextSize) + 1 : ::ftello(stream);
}

namespace {

bool Save(std::string const& path, int items, char fill) {
    VXMLFile file;
    file.OpenFileForWrite(path.c_str(), "R");
    for (int i = 0; i < items; ++i) {
        file.WriteObject(nullptr, VString(std::string(100, fill).c_str()));
    }
    return file.CloseFile();
}

unsigned ModeOf(std::string const& path) {
    return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

/// Whether `work` succeeds in a process of an ordinary user.
bool SucceedsAsNobody(std::function<bool()> const& work) {
    constexpr int kNobody = 65534;
    ::pid_t const child = ::fork();
    if (child == 0) {
        bool const isOrdinary = ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
        ::_exit(isOrdinary ? (work() ? 0 : 1) : 2);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_LE(WEXITSTATUS(status), 1);
    return status == 0;
}

ON_EACH_BACK_END(FileReplacer);

TEST_P(FileReplacer, SavingKeepsWhatTheFileIs) {
    ::mode_t const mask = ::umask(027);
    EXPECT_TRUE(Save(Path("file"), 1, 'a'));
    ::umask(mask);
    EXPECT_EQ(ModeOf(Path("file")), 0640U) << "a new file as any program would make it";
    ASSERT_EQ(::chmod(Path("file").c_str(), 04751), 0);
    std::filesystem::create_symlink("file", Path("link"));
    std::filesystem::create_symlink("made", Path("dangling"));
    EXPECT_TRUE(Save(Path("link"), 1, 'b'));
    EXPECT_TRUE(Save(Path("dangling"), 1, 'c'));
    EXPECT_TRUE(std::filesystem::is_symlink(Path("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(Path("dangling")));
    EXPECT_NE(BytesOf(Path("file")).find("bbb"), std::string::npos);
    EXPECT_NE(BytesOf(Path("made")).find("ccc"), std::string::npos);
    EXPECT_EQ(ModeOf(Path("file")), 04751U);
    EXPECT_EQ(Entries(), 4) << "no temporary file stays";
}

TEST_P(FileReplacer, AFailedSaveLeavesTheOldDocumentAndNothingElse) {
    std::filesystem::create_symlink("file", Path("link"));
    std::filesystem::create_symlink("never", Path("dangling"));
    std::string const longest(255, 'n');
    for (char const* const name : {"file", "link", longest.c_str()}) {
        ASSERT_TRUE(Save(Path(name), 1, 'a')) << name;
        std::string const before = BytesOf(Path(name));
        s_diskFails = true;
        EXPECT_FALSE(Save(Path(name), 1, 'b')) << name;
        EXPECT_FALSE(Save(Path("dangling"), 1, 'b'));
        s_diskFails = false;
        EXPECT_EQ(BytesOf(Path(name)), before) << name;
    }
    EXPECT_TRUE(Save(Path(longest.c_str()), 1, 'c'));
    EXPECT_NE(BytesOf(Path(longest.c_str())).find("ccc"), std::string::npos);
    EXPECT_FALSE(Save(Path((longest + "n").c_str()), 1, 'a'));
    EXPECT_EQ(Entries(), 4) << "no temporary file stays";
}

TEST_P(FileReplacer, SavingFailsWhereItCannotWrite) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    for (char const* const name : {"pipe", ".", "no/such/folder", "/dev/full"}) { // the pipe has no reader
        EXPECT_FALSE(Save((m_folder / name).string(), 1, 'a')) << name;
    }
    EXPECT_FALSE(Save("", 1, 'a'));
    EXPECT_FALSE(Save("/dev/full", 10000, 'a'));
    ASSERT_TRUE(Save(Path("small"), 3, 'a'));
    std::string const before = BytesOf(Path("small"));
    auto const saveTooMuch = [&] { // files may not grow beyond 64 KiB
        std::signal(SIGXFSZ, SIG_IGN);
        ::rlimit const limit{1 << 16, 1 << 16};
        return ::setrlimit(RLIMIT_FSIZE, &limit) != 0 || Save(Path("small"), 10000, 'b');
    };
    EXPECT_FALSE(SucceedsAsNobody(saveTooMuch));
    s_pretendsLength = true;
    EXPECT_FALSE(Save(Path("small"), 1, 'b')) << "it could not be read again";
    s_pretendsLength = false;
    EXPECT_EQ(BytesOf(Path("small")), before);
    EXPECT_EQ(::chmod(Path("small").c_str(), 0666), 0);
    EXPECT_EQ(::chmod(m_folder.c_str(), 0555), 0);
    EXPECT_FALSE(SucceedsAsNobody(saveTooMuch)) << "nor in place";
    EXPECT_EQ(BytesOf(Path("small")), before);
    EXPECT_TRUE(SucceedsAsNobody([&] { return Save(Path("small"), 1, 'b'); }));
    EXPECT_TRUE(BytesOf(Path("small")).ends_with("b</VString>\n</R>\n")) << "what was longer is cut";
}

TEST_P(FileReplacer, SavingRespectsPermissions) {
    ASSERT_TRUE(Save(Path("readOnly"), 1, 'a'));
    ASSERT_TRUE(Save(Path("writable"), 1, 'a'));
    std::string const before = BytesOf(Path("readOnly"));
    EXPECT_EQ(::chmod(Path("readOnly").c_str(), 0444) | ::chmod(Path("writable").c_str(), 0222), 0);
    EXPECT_EQ(::chmod(m_folder.c_str(), 0777), 0);
    EXPECT_FALSE(SucceedsAsNobody([&] { return Save(Path("readOnly"), 1, 'b'); }));
    EXPECT_EQ(BytesOf(Path("readOnly")), before) << "though the folder would let it be replaced";
    EXPECT_FALSE(SucceedsAsNobody([&] { return VXMLFile().OpenFileForRead(Path("writable").c_str(), "R"); }));
    EXPECT_EQ(::chmod(m_folder.c_str(), 0555), 0);
    EXPECT_TRUE(SucceedsAsNobody([&] { return Save(Path("writable"), 1, 'b'); })) << "in place";
    EXPECT_NE(BytesOf(Path("writable")).find("bbb"), std::string::npos);
    EXPECT_FALSE(SucceedsAsNobody([&] { return Save(Path("another"), 1, 'b'); }));
}

TEST_P(FileReplacer, AKilledSaveLeavesAWholeDocument) {
    constexpr int kItems = 2000;
    std::string const path = Path("link");
    std::filesystem::create_symlink("document", path);
    ASSERT_TRUE(Save(path, kItems, 'a'));
    std::string const a = BytesOf(path);
    ASSERT_TRUE(Save(path, kItems, 'b'));
    std::string const b = BytesOf(path);
    unsigned const seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int kills = 0; kills < 40; ++kills) {
        ::pid_t const child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (bool isA = true;; isA = !isA) {
                Save(path, kItems, isA ? 'a' : 'b');
            }
        }
        ::usleep(static_cast<::useconds_t>(random() % 40000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        std::string const now = BytesOf(path);
        ASSERT_TRUE(now == a || now == b) << now.size() << " bytes after " << kills << " kills";
    }
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    for (auto const& entry : std::filesystem::directory_iterator(m_folder)) {
        std::string const name = entry.path().filename().string();
        EXPECT_TRUE(name == "document" || name == "link" || name.starts_with(".vfoundation-")) << name;
    }
}

TEST_P(FileReplacer, SavesAllOrNothingWhenMemoryRunsOut) {
    std::string const path = Path("file");
    VString const text(std::string(100, 'b').c_str());
    ASSERT_TRUE(Save(path, 1, 'b'));
    std::string const whole = BytesOf(path);
    ASSERT_TRUE(Save(path, 1, 'a'));
    std::string last = BytesOf(path);
    FailEachAllocation([&] {
        bool const saved = [&] {
            VXMLFile file; // whose end saves nothing that lost something
            return file.OpenFileForWrite(path.c_str(), "R") && file.WriteObject(nullptr, text) &&
                   file.CloseFile();
        }();
        FailingAllocator::FailAt(0, false); // the checks have memory
        EXPECT_TRUE(saved || AllocationHasFailed());
        EXPECT_EQ(Entries(), 1);
        std::string const now = BytesOf(path);
        EXPECT_EQ(now, saved ? whole : last);
        last = now;
    });
}

TEST_P(FileReplacer, ADocumentIsDroppedWhenAnObjectThrows) {
    struct Throws : VString {
        bool SerializeAsXML(VXMLFile& file) override {
            file.WriteAttribute("half", 1);
            throw 5;
        }
    };
    ASSERT_TRUE(Save(Path("file"), 1, 'a'));
    std::string const before = BytesOf(Path("file"));
    try {
        VXMLFile file;
        file.OpenFileForWrite(Path("file").c_str(), "R");
        file.WriteObject("inner", Throws());
        ADD_FAILURE() << "what it throws passes";
    } catch (int thrown) {
        EXPECT_EQ(thrown, 5);
    }
    EXPECT_EQ(BytesOf(Path("file")), before) << "half an object is not saved";
}

TEST_P(FileReplacer, ADocumentIsSavedAtItsEndUnlessItWasDropped) {
    {
        VXMLFile file;
        VString text("before");
        file.OpenFileForWrite(Path("reopened").c_str(), "R");
        file.WriteFileToString(text, "R");
        file.Clear();
        EXPECT_FALSE(file.CloseFile());
        EXPECT_EQ(text, "before");
        EXPECT_FALSE(file.OpenFileForWrite(Path("no").c_str(), "a b"));
        file.OpenFileForWrite(Path("ended").c_str(), "R");
    }
    EXPECT_EQ(BytesOf(Path("ended")), "<R />\n");
    EXPECT_FALSE(std::filesystem::exists(Path("reopened")));
    EXPECT_FALSE(std::filesystem::exists(Path("no")));
}

} // namespace
