#include "launcher/LauncherRun.h"

#include "foundation/host/VHostArchitecture.h"
#include "launcher/IAlertPanel.h"
#include "launcher/IElevationService.h"
#include "launcher/VApplication.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Launcher;
namespace fs = std::filesystem;
using testing_support::BytesOf;

struct SStatuses {
    AuthorizationStatus create = 0;
    AuthorizationStatus acquire = 0;
    AuthorizationStatus launch = 0;
};

std::string Describe(AuthorizationItems items) {
    std::ostringstream text;
    for (SAuthorizationItem const& item : items) {
        text << " {" << item.name << " " << item.valueLength << " "
             << (item.value ? std::string(static_cast<char const*>(item.value), item.valueLength) : "null")
             << " " << item.flags << "}";
    }
    return text.str();
}

/// Answers as told and writes down, line by line, what it was asked.
class ScriptedPair : public IElevationService, public IAlertPanel {
  public:
    ScriptedPair(SStatuses const& statuses, fs::path const& record) : m_statuses(statuses), m_record(record) {
        m_record << std::unitbuf; // the run ends without destructors
    }

    AuthorizationStatus Create(AuthorizationItems rights, AuthorizationItems environment,
                               AuthorizationFlags flags, Reference** reference) override {
        m_record << "create" << Describe(rights) << Describe(environment) << " " << flags << std::endl;
        *reference = m_statuses.create == 0 ? reinterpret_cast<Reference*>(this) : nullptr;
        return m_statuses.create;
    }
    AuthorizationStatus AcquireRights(Reference* reference, AuthorizationItems rights,
                                      AuthorizationItems environment, AuthorizationFlags flags) override {
        m_record << "acquire" << Describe(rights) << Describe(environment) << " " << flags
                 << Known(reference);
        return m_statuses.acquire;
    }
    AuthorizationStatus Execute(Reference* reference, char const* path, AuthorizationFlags flags,
                                char const* const* arguments) override {
        m_record << "execute " << path << " " << flags;
        for (; *arguments; ++arguments) {
            m_record << " [" << *arguments << "]";
        }
        m_record << Known(reference);
        return m_statuses.launch;
    }
    AuthorizationStatus Free(Reference* reference, AuthorizationFlags flags) override {
        m_record << "free " << flags << Known(reference);
        return 0;
    }
    bool RunModal(SAlert const& alert) override {
        m_record << "alert " << static_cast<int>(alert.style) << " [" << alert.messageText << "] ["
                 << alert.informativeText << "] [" << alert.buttonTitle << "]" << std::endl;
        return true;
    }

  private:
    char const* Known(Reference* reference) {
        return reference == reinterpret_cast<Reference*>(this) ? "\n" : " of another reference\n";
    }

    SStatuses m_statuses;
    std::ofstream m_record;
};

std::string Replaced(std::string text, std::string const& from, std::string const& to) {
    for (std::size_t at = text.find(from); !from.empty() && at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// What a run left behind, with the folder shown as @ and the user's name as USER.
struct SRun {
    int exitStatus;
    std::string out;
    std::string err;
    bool isShutDown; ///< the log's context of the shut-down follows; it is cut off `err`
    std::string asked;
};

class LauncherRun : public testing::Test {
  protected:
    LauncherRun() {
        fs::create_directory(m_folder / "work");
        char name[1024];
        VFoundation::VHostArchitecture::UserName(name, sizeof(name));
        m_user = name;
    }

    /// Runs the steps in a process of their own, as they start and stop the library.
    SRun Run(SStatuses const& statuses, char const* const* argv) {
        pid_t const process = ::fork();
        if (process == 0) {
            fs::current_path(m_folder / "work");
            ScriptedPair scripted(statuses, m_folder / "asked");
            VFoundation::VApplication::SetAlertPanel(&scripted);
            bool const isRedirected = std::freopen((m_folder / "out").c_str(), "w", stdout) &&
                                      std::freopen((m_folder / "err").c_str(), "w", stderr);
            int const exitStatus = isRedirected ? RunLauncher(argv, scripted) : 99;
            std::fflush(nullptr);
            ::_exit(exitStatus);
        }
        int status = 0;
        ::waitpid(process, &status, 0);
        auto const written = [this](char const* name) {
            return Replaced(BytesOf(m_folder / name), m_folder.string(), "@");
        };
        std::string err = Replaced(written("err"), "Uname = " + m_user, "Uname = USER");
        std::size_t const shutDown = err.find("[ VFoundation::UninitializeLibrary - START ]\n");
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, written("out"), err.substr(0, shutDown),
                shutDown != std::string::npos, Replaced(written("asked"), "[" + m_user + "]", "[USER]")};
    }

    SRun Run(SStatuses const& statuses, std::string const& launcherPath) {
        char const* const argv[] = {launcherPath.c_str(), nullptr};
        return Run(statuses, argv);
    }

    testing_support::ScratchFile const m_scratch;
    fs::path const m_folder = m_scratch.Folder();
    std::string m_user;
};

constexpr char kLauncher[] = "QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher";
std::string const kGuide = "ZephGuide.app/Contents/MacOS/ZephGuide";
std::string const kMissing = "File doesnt exist, looking for ";
std::string const kInstaller =
    "QuillmarkLauncher.app/Contents/Resources/QuillmarkInstallSystem.app/Contents/MacOS/"
    "QuillmarkInstallSystem";
std::string const kUninstaller =
    "QuillmarkLauncher.app/Contents/Resources/QuillmarkUninstallSystem.app/Contents/"
    "MacOS/QuillmarkUninstallSystem";

constexpr char kBegin[] = R"(CWD = @/QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher
CWD Actual = @
Uname = USER
img path = @/QuillmarkLauncher.app/Contents/Resources/AuthIcon.png
Created authorisation
)";
constexpr char kAsked[] = "Copied the authorisation = \n";
constexpr char kNotFoundAlert[] =
    "Error: Unable to find installer application to run. Please contact Quillmark technical support";
constexpr char kAskedToCreate[] = "create 0\n";

std::string AskedToAcquire(std::string const& icon, std::size_t folderLength) {
    std::size_t const length = Replaced(icon, "@", std::string(folderLength, 'x')).size();
    return "acquire {system.privilege.admin 0 null 0} {icon " + std::to_string(length) + " " + icon +
           " 0} 19\n";
}

} // namespace

TEST_F(LauncherRun, EveryLaunchStatusForEveryProgram) {
    struct {
        AuthorizationStatus status;
        std::string alert, out;
        int exitStatus;
    } const outcomes[] = {{0, "", "valid 0\n", 0},
                          {-60031, kNotFoundAlert, "invalid -60031\n", 1},
                          {-60006, "", "cancelled -60006\n", 0},
                          {-60005, "Could not authorise with status -60005", "invalid -60005\n", 1},
                          {-60008, "Could not authorise with status -60008", "invalid -60008\n", 1},
                          {7, "Could not authorise with status 7", "invalid 7\n", 1}};
    std::string const icon = "@/QuillmarkLauncher.app/Contents/Resources/AuthIcon.png";
    // From the uninstaller, which nobody looks for, to the guide, beside which the installer does not matter.
    for (std::string const& program : {kUninstaller, kInstaller, kGuide}) {
        if (program != kUninstaller) {
            fs::create_directories((m_folder / program).parent_path());
            std::ofstream(m_folder / program) << "x";
        }
        std::string search = "Constructing path 1\nAbout to check default exe path @/" + kGuide + "\n";
        search += program == kGuide ? "" : kMissing + "install system on path @/" + kInstaller + "\n";
        search +=
            program == kUninstaller ? kMissing + "uninstall system on path @/" + kUninstaller + "\n" : "";
        search += "Exe path = @/" + program + " \n";
        for (auto const& outcome : outcomes) {
            SCOPED_TRACE(program + " " + outcome.out);
            SRun const run = Run({.launch = outcome.status}, (m_folder / kLauncher).string());
            EXPECT_EQ(run.exitStatus, outcome.exitStatus);
            EXPECT_EQ(run.out, "Called auth exe priv\nStatus is " + outcome.out);
            EXPECT_EQ(run.err, kBegin + std::string(kAsked) + search +
                                   (outcome.alert.empty() ? "" : "ALERT: " + outcome.alert + "\n"));
            EXPECT_TRUE(run.isShutDown);
            EXPECT_EQ(run.asked,
                      kAskedToCreate + AskedToAcquire(icon, m_folder.string().size()) + "execute @/" +
                          program + " 0 [-uname] [USER]\n" +
                          (outcome.alert.empty() ? "" : "alert 0 [ALERT!] [" + outcome.alert + "] [OK]\n") +
                          "free 0\n");
        }
    }
}

TEST_F(LauncherRun, WithoutTheRightTheLibraryStaysUp) {
    std::string const alert = "Failed to create the authorisation with status -60008";
    struct {
        SStatuses statuses;
        std::string err, end;
    } const cases[] = {
        {{.create = -60008}, "ALERT: " + alert + "\n", "create 0\nalert 0 [ALERT!] [" + alert + "] [OK]\n"},
        {{.acquire = -60006}, kAsked, " 19\nfree 0\n"}, // a cancelled dialog too is silent, and fails
        {{.acquire = -60005}, kAsked, " 19\nfree 0\n"}};
    for (auto const& [statuses, err, end] : cases) {
        SRun const run = Run(statuses, (m_folder / kLauncher).string());
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, kBegin + err);
        EXPECT_FALSE(run.isShutDown);
        EXPECT_EQ(run.asked.find("alert") != std::string::npos, statuses.create != 0);
        EXPECT_TRUE(run.asked.ends_with(end)) << run.asked;
    }
}

TEST_F(LauncherRun, OddArguments) {
    SRun const nothing = Run({}, static_cast<char const* const*>(nullptr));
    EXPECT_EQ(nothing.exitStatus, 1);
    EXPECT_EQ(nothing.out + nothing.err + nothing.asked, "");

    char const* const noName[] = {nullptr};
    EXPECT_EQ(Run({}, noName).asked, Run({}, "").asked);
    std::string const longName(5000, 'n');
    std::string const uninstaller =
        "/Resources/QuillmarkUninstallSystem.app/Contents/MacOS/QuillmarkUninstallSystem";
    struct {
        std::string path, workingFolder, icon, program;
    } const cases[] = {{"", "", "Resources/AuthIcon.png", uninstaller.substr(1)},
                       {"bare", "bare", "bare/Resources/AuthIcon.png", "bare" + uninstaller},
                       {"a/b", "a", "a/Resources/AuthIcon.png", "a" + uninstaller},
                       {"/a", "", "Resources/AuthIcon.png", uninstaller.substr(1)},
                       {"./x.app/C/M/l", ".", "./x.app/C/Resources/AuthIcon.png", "./x.app/C" + uninstaller},
                       {longName, longName, longName + "/Resources/AuthIcon.png", longName + uninstaller},
                       {"q '\"\n%s/x.app/C/M/l", "q '\"\n%s", "q '\"\n%s/x.app/C/Resources/AuthIcon.png",
                        "q '\"\n%s/x.app/C" + uninstaller},
                       // A backslash cuts first.
                       {R"(C:\x.app/C/M/l)", "C:", "C:/Resources/AuthIcon.png", "C:" + uninstaller}};
    for (auto const& odd : cases) {
        SCOPED_TRACE(odd.path.substr(0, 40));
        SRun const run = Run({}, odd.path);
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_TRUE(run.err.starts_with("CWD = " + odd.path + "\nCWD Actual = " + odd.workingFolder + "\n"));
        EXPECT_EQ(run.asked, kAskedToCreate + AskedToAcquire(odd.icon, 1) + "execute " + odd.program +
                                 " 0 [-uname] [USER]\nfree 0\n");
    }
}

TEST_F(LauncherRun, AlertTextIsBounded) {
    ScriptedPair panel({}, m_folder / "asked");
    VFoundation::VApplication::SetAlertPanel(&panel);
    VFoundation::VApplication::AlertBox("%s", std::string(10000, 'x').c_str());
    VFoundation::VApplication::SetAlertPanel(nullptr);
    VFoundation::VApplication::AlertBox("only traced");
    std::string const text(VFoundation::VApplication::kAlertTextSize - 1, 'x');
    EXPECT_EQ(BytesOf(m_folder / "asked"), "alert 0 [ALERT!] [" + text + "] [OK]\n");
}
