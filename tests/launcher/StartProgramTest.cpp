#include "launcher/linux/StartProgram.h"
#include "launcher/linux/CleanStart.h"
#include "launcher/linux/RootLaunch.h"
#include "tests/support/Fork.h"
#include "tests/support/ScratchFile.h"

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Launcher;

/// Until no child is left.
void AwaitChildren() {
    while (::waitpid(-1, nullptr, 0) > 0) {
    }
}

/// What a program writes to the descriptor that `start` is called with.
template <class Start>
std::string OutputOf(Start start) {
    std::FILE* const file = std::tmpfile();
    start(::fileno(file));
    AwaitChildren();
    std::rewind(file);
    std::string text(4096, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    return text;
}

std::string Output(SProgramStart start) {
    return OutputOf([&](int output) {
        start.standardOutput = output;
        EXPECT_EQ(StartProgram(start), EStartResult::eStarted);
    });
}

// From here on execve kills, in this process and those it makes.
bool DieInExecve() {
    sock_filter rules[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                           BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_execve, 0, 1),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    sock_fprog const program{std::size(rules), rules};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

TEST(StartProgram, PassesOnlyWhatItIsGiven) {
    int const inherited = ::open("/dev/zero", O_RDONLY); // not closed on exec by itself
    std::string const text = Output({.path = ZEPH_GUIDE,
                                     .arguments = {"-a b", "", "$(id) 'x' \"y\";", "line\nfeed"},
                                     .environment = {"ONLY=this"},
                                     .directory = "/"});
    ::close(inherited);
    EXPECT_NE(text.find("folder /\nZephGuide: argument 0 = [" ZEPH_GUIDE "]\nZephGuide: argument 1 = [-a b]\n"
                        "ZephGuide: argument 2 = []\nZephGuide: argument 3 = [$(id) 'x' \"y\";]\n"
                        "ZephGuide: argument 4 = [line\nfeed]\nZephGuide: variable ONLY=this\n"
                        "ZephGuide: descriptor 0 = /dev/null\nZephGuide: descriptor 1 = "),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("/dev/zero"), std::string::npos) << text;
}

TEST(StartProgram, ResetsSignals) {
    testing_support::InChild([] {
        sigset_t blocked;
        ::sigfillset(&blocked);
        ::sigprocmask(SIG_SETMASK, &blocked, nullptr);
        ::signal(SIGTERM, SIG_IGN);
        EXPECT_EQ(Output({.path = "/bin/sh",
                          .arguments = {"-c", "exec /bin/grep -E '^Sig(Blk|Ign)' /proc/self/status"}}),
                  "SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n");
    });
}

TEST(RootLaunch, TakesNothingOfTheCallerOver) {
    std::string const text = OutputOf([](int output) {
        int const input = ::dup(STDIN_FILENO);
        ::dup2(output, STDIN_FILENO);
        EXPECT_EQ(LaunchAsRoot({ZEPH_GUIDE, {}, {"LANG=C"}}, output, output), EWord::eStarted);
        ::dup2(input, STDIN_FILENO);
        ::close(input);
    });
    EXPECT_NE(text.find("folder /\n"), std::string::npos) << text;
    EXPECT_NE(text.find("variable PATH=/usr/sbin:/usr/bin:/sbin:/bin\nZephGuide: variable HOME=/"),
              std::string::npos)
        << text;
    EXPECT_NE(
        text.find("variable SHELL=/bin/sh\nZephGuide: variable USER=root\nZephGuide: variable LOGNAME=root\n"
                  "ZephGuide: variable LANG=C\nZephGuide: descriptor 0 = /dev/null\n"),
        std::string::npos)
        << text;
    testing_support::InChild([] {
        ::umask(0);
        ResetInheritedState(-1);
        EXPECT_EQ(::umask(0), static_cast<mode_t>(S_IWGRP | S_IWOTH));
    });
}

TEST(StartProgram, CrossesStreams) {
    testing_support::ScratchFile const file;
    testing_support::InChild([&file] {
        for (int const stream : {STDOUT_FILENO, STDERR_FILENO}) {
            std::string const path = file.Path() + std::to_string(stream);
            ::dup2(::open(path.c_str(), O_WRONLY | O_CREAT, 0600), stream);
        }
        pid_t process = -1;
        EXPECT_EQ(StartProgram({.path = "/bin/sh",
                                .arguments = {"-c", "echo out; echo error >&2"},
                                .standardOutput = STDERR_FILENO,
                                .standardError = STDOUT_FILENO},
                               &process),
                  EStartResult::eStarted);
        ::waitpid(process, nullptr, 0);
    });
    EXPECT_EQ(testing_support::BytesOf(file.Path() + std::string("1")), "error\n");
    EXPECT_EQ(testing_support::BytesOf(file.Path() + std::string("2")), "out\n");
}

TEST(StartProgram, TellsApartWhyItDidNot) {
    AwaitChildren();
    EXPECT_EQ(StartProgram({.path = "/nowhere"}), EStartResult::eNotExecutable);
    EXPECT_EQ(StartProgram({.path = "/" + std::string(5000, 'x')}), EStartResult::eNotExecutable);
    EXPECT_EQ(StartProgram({.path = "/bin/true", .directory = "/nowhere"}), EStartResult::eNoProcess);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

TEST(StartProgram, AnEarlyEndIsAStartOnlyAfterExecve) {
    EXPECT_EQ(StartProgram({.path = "/bin/true"}), EStartResult::eStarted);
    EXPECT_EQ(StartProgram({.path = "/bin/sh", .arguments = {"-c", "kill -9 $$"}}), EStartResult::eStarted);
    pid_t const process = ::fork();
    if (process == 0) {
        EStartResult const result =
            DieInExecve() ? StartProgram({.path = "/bin/true"}) : EStartResult::eNotExecutable;
        ::_exit(static_cast<int>(result));
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), static_cast<int>(EStartResult::eNoProcess));
}
