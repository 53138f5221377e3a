#include "launcher/linux/BrokerRightHolder.h"
#include "launcher/linux/ElevationService.h"
#include "launcher/linux/ProcessEnvironment.h"
#include "tests/support/Fork.h"
#include "tests/support/ScratchFile.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Launcher;
namespace fs = std::filesystem;

/// Scripts in the place of pkexec, sudo and the dialog. Each notes its environment and arguments, and refuses.
class RightHolder : public testing::Test {
  protected:
    RightHolder() {
        fs::permissions(m_scratch.Folder(), fs::perms::all);
        for (auto const& [path, status] :
             {std::pair(m_paths.pkexec, 127), {m_paths.sudo, 1}, {m_paths.dialog, 69}}) {
            std::ofstream(path)
                << "#!/bin/sh\n/usr/bin/tr '\\0' '\\n' </proc/$$/environ | LC_ALL=C /usr/bin/sort >" << path
                << ".environment\nprintf '%s\\n' \"$@\" >" << path << ".arguments\nexit " << status << "\n";
            fs::permissions(path, fs::perms::all);
        }
    }

    std::string Noted(std::string const& path, char const* what) const {
        return testing_support::BytesOf(path + what);
    }

    testing_support::ScratchFile const m_scratch;
    std::string const m_folder = m_scratch.Folder().string();
    SHelperPaths const m_paths{.broker = m_folder + "/broker",
                               .dialog = m_folder + "/dialog",
                               .pkexec = m_folder + "/pkexec",
                               .sudo = m_folder + "/sudo",
                               .systemBus = "/nowhere"};
};

/// In a session without a terminal to ask on, with an environment as a hostile caller may make it.
void InHostileSession(std::function<void()> const& work) {
    testing_support::InChild([&] {
        ::setsid();
        ::clearenv();
        for (auto const& [name, value] : {std::pair("PATH", "/nowhere"),
                                          {"HOME", "/home/x"},
                                          {"DISPLAY", ":9"},
                                          {"LD_LIBRARY_PATH", "/nowhere"},
                                          {"IFS", "x"},
                                          {"SUDO_ASKPASS", "/nowhere"},
                                          {"XDG_CONFIG_HOME", "/nowhere"}}) {
            ::setenv(name, value, 1);
        }
        work();
    });
}

bool HasChildren() {
    return ::waitpid(-1, nullptr, WNOHANG) >= 0;
}

} // namespace

TEST_F(RightHolder, ProgramsOfTheSystemGetTheirOwnEnvironment) {
    InHostileSession([this] {
        PolkitRightHolder polkit(m_paths);
        EXPECT_EQ(polkit.Ask({.iconPath = "/an icon", .program = "/p"}), kDenied);
        EXPECT_FALSE(HasChildren());
        SudoRightHolder sudo(m_paths);
        EXPECT_EQ(sudo.Ask({.iconPath = "/an icon", .program = "/p"}), kDenied);
        EXPECT_FALSE(HasChildren());
    });
    EXPECT_EQ(Noted(m_paths.pkexec, ".environment"), "PATH=/usr/bin:/bin\n");
    EXPECT_EQ(Noted(m_paths.pkexec, ".arguments"), "--disable-internal-agent\n" + m_paths.broker + "\n");
    EXPECT_EQ(Noted(m_paths.sudo, ".environment"),
              "DISPLAY=:9\nHOME=/home/x\nPATH=/usr/bin:/bin\nQUILLMARK_ASKPASS_ICON=/an icon\n"
              "QUILLMARK_ASKPASS_PROGRAM=/p\nSUDO_ASKPASS=" +
                  m_paths.dialog + "\n");
    EXPECT_TRUE(Noted(m_paths.sudo, ".arguments")
                    .starts_with("-A\n-p\npassword-of:%p\n--\n" + m_paths.broker + "\n"));
    EXPECT_NE(Noted(m_paths.dialog, ".environment").find("DISPLAY=:9\n"), std::string::npos);
    EXPECT_EQ(Noted(m_paths.dialog, ".arguments"), "agent\n/an icon\n/p\n");
}

TEST_F(RightHolder, AsksOnlyWhenTheCallerAllowsIt) {
    InHostileSession([this] {
        if (::geteuid() == 0) {
            EXPECT_EQ(::setuid(65534), 0);
        }
        ElevationService service(m_paths);
        IElevationService::Reference* reference = nullptr;
        EXPECT_EQ(service.Create({}, {}, kDefaultFlags, &reference), kAuthorized);
        EXPECT_EQ(service.AcquireRights(reference, {}, {}, kExtendRights), kInteractionNotAllowed);
        EXPECT_FALSE(fs::exists(m_paths.sudo + ".arguments"));
        EXPECT_EQ(service.AcquireRights(reference, {}, {}, kInteractionAllowed), kDenied);
        EXPECT_TRUE(fs::exists(m_paths.sudo + ".arguments"));
        service.Free(reference, kDefaultFlags);
    });
}

TEST(HelperProcess, EndsOneThatHangs) {
    testing_support::InChild([] {
        std::unique_ptr<HelperProcess> helper =
            HelperProcess::Start({.path = "/bin/sleep", .arguments = {"1000"}});
        EXPECT_EQ(helper->Receive(1), std::nullopt);
        EXPECT_EQ(helper->WaitForExit(1), std::nullopt);
        helper.reset();
        EXPECT_FALSE(HasChildren());
    });
}

TEST(ProcessEnvironment, MakesAnyProcessFit) {
    testing_support::InChild([] {
        ::signal(SIGCHLD, SIG_IGN);
        ::close(STDIN_FILENO);
        ::close(STDERR_FILENO);
        PrepareProcess();
        EXPECT_GE(::fcntl(STDIN_FILENO, F_GETFD), 0);
        EXPECT_GE(::fcntl(STDERR_FILENO, F_GETFD), 0);
        EXPECT_EQ(::prctl(PR_GET_DUMPABLE), 0);
        std::optional<int> const status = HelperProcess::Start({.path = "/bin/false"})->WaitForExit();
        EXPECT_EQ(WEXITSTATUS(status.value_or(0)), 1);
    });
}
