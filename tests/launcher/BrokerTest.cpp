#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/DisplayVariable.h"
#include "launcher/linux/HelperExit.h"
#include "launcher/linux/HelperProcess.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Launcher;
namespace fs = std::filesystem;

SLaunchRequest const kRequest{.path = "/bin/true",
                              .arguments = {"-uname", "-some body", "", "line\nfeed"},
                              .environment = {"DISPLAY=:0", "LANG=C.UTF-8"}};

/// A copy of the broker in a folder that others may write to, so that it starts whatever it is asked for.
struct PortableBroker {
    PortableBroker() {
        fs::permissions(m_scratch.Folder(), fs::perms::all);
        fs::copy_file(QUILLMARK_BROKER, m_scratch.Path());
    }
    std::unique_ptr<HelperProcess> Start() const {
        return HelperProcess::Start({.path = m_scratch.Path(), .environment = {}});
    }
    testing_support::ScratchFile const m_scratch;
};

/// The words between the marks '|'.
std::vector<std::string> Split(std::string const& text) {
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, '|');) {
        words.push_back(word);
    }
    return words;
}

} // namespace

TEST(BrokerProtocol, TakesExactlyARequest) {
    std::string const bytes = EncodeRequest(kRequest).value();
    SLaunchRequest decoded;
    ASSERT_TRUE(DecodeRequest(bytes, decoded));
    EXPECT_EQ(decoded.path, kRequest.path);
    EXPECT_EQ(decoded.arguments, kRequest.arguments);
    EXPECT_EQ(decoded.environment, kRequest.environment);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_FALSE(DecodeRequest(std::string_view(bytes).substr(0, length), decoded)) << length;
    }
    EXPECT_FALSE(DecodeRequest(bytes + "x", decoded));
    SLaunchRequest const refused[] = {{"bin/true", {}, {}},
                                      {"", {}, {}},
                                      {std::string("/a\0b", 4), {}, {}},
                                      {"/" + std::string(kMaxRequestBytes, 'x'), {}, {}},
                                      {"/a", std::vector<std::string>(17), {}},
                                      {"/a", {}, {"LD_PRELOAD=/tmp/x.so"}}};
    for (SLaunchRequest const& request : refused) {
        std::string const encoded = EncodeRequest(request).value_or("");
        EXPECT_FALSE(DecodeRequest(encoded, decoded)) << request.path.substr(0, 10);
    }
    std::string large = EncodeRequest({"/", {}, {}}).value(); // of a sender that keeps to no limit
    large.back() = 'x';
    large.replace(large.size() - 5, 4, std::string("\x00\x00\x01\x00", 4)); // the length
    large += std::string(0xffff, 'x');
    large[large.size() - 0x10000] = '/';
    EXPECT_FALSE(DecodeRequest(large, decoded));
}

TEST(DisplayVariable, HasItsRealForm) {
    for (std::string const& good :
         Split("DISPLAY=:0|DISPLAY=host-1.example:10.2|XAUTHORITY=/home/a b/.Xauthority|LANG=C|"
               "LANG=de_DE.UTF-8@euro|WAYLAND_DISPLAY=/run/user/1/wayland-0|XAUTHORITY=/" +
               std::string(200, 'x'))) {
        EXPECT_TRUE(IsDisplayVariable(good)) << good;
    }
    for (std::string const& bad :
         Split("|DISPLAY|DISPLAY=|=x|DISPLAY=:0\n|DISPLAY=0|DISPLAY=:|DISPLAY=:0.|DISPLAY=:123456|"
               "DISPLAY=:0.1.2|DISPLAY=a b:0|DISPLAY=/tmp/x:0|XAUTHORITY=a|XAUTHORITY=/a/../b|"
               "XAUTHORITY=/a/.|XAUTHORITY=/a\tb|WAYLAND_DISPLAY=wayland-0|WAYLAND_DISPLAY=/run/../x|"
               "LANG=|LANG=_DE|LANG=de_|LANG=de.|LANG=de@|LANG=de-DE|LANG=de_DE.UTF-8.x|LANG=.UTF-8|"
               "LANG=../../x|LANG=%s|PATH=/bin|LD_PRELOAD=/x|DISPLAYX=:0|LC_ALL=C|display=:0|DISPLAY=" +
               std::string(5000, 'x') + ":0|WAYLAND_DISPLAY=/" + std::string(200, 'x'))) {
        EXPECT_FALSE(IsDisplayVariable(bad)) << bad;
    }
}

TEST(Broker, LeavesUnlessItIsRootWithASocket) {
    PortableBroker const portable;
    pid_t process = -1;
    int status = 0;
    ASSERT_EQ(StartProgram({.path = QUILLMARK_BROKER}, &process), EStartResult::eStarted);
    ::waitpid(process, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), ::geteuid() == 0 ? kExitBadInput : kExitNotRoot); // /dev/null is no socket

    int ends[2]; // a socket of another kind
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    ASSERT_EQ(StartProgram({.path = portable.m_scratch.Path(), .standardInput = ends[0]}, &process),
              EStartResult::eStarted);
    ::close(ends[0]);
    ::close(ends[1]);
    ::waitpid(process, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), ::geteuid() == 0 ? kExitBadInput : kExitNotRoot);

    std::unique_ptr<HelperProcess> const broker = portable.Start();
    ASSERT_TRUE(broker);
    if (::geteuid() != 0) {
        EXPECT_EQ(WEXITSTATUS(broker->WaitForExit().value()), kExitNotRoot);
        return;
    }
    EXPECT_EQ(broker->Receive(), EWord::eReady);
    ::shutdown(broker->Socket(), SHUT_WR); // the launcher has nothing to ask
    EXPECT_EQ(WEXITSTATUS(broker->WaitForExit().value()), kExitUnused);
}

TEST(Broker, StartsOneProgramOnRequest) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "a broker works for root only";
    }
    PortableBroker const portable;
    std::string const good = EncodeRequest(kRequest).value();
    SLaunchRequest missing = kRequest;
    missing.path = "/nowhere/at all";
    struct {
        std::string bytes;
        EWord answer;
        int exitStatus;
    } const cases[] = {{good, EWord::eStarted, 0},
                       {EncodeRequest(missing).value(), EWord::eNotExecutable, kExitNotStarted},
                       {good.substr(1), EWord::eFailed, kExitBadInput},
                       {good + std::string(2 * kMaxRequestBytes, 'x'), EWord::eFailed, kExitBadInput}};
    for (auto const& [bytes, answer, exitStatus] : cases) {
        std::unique_ptr<HelperProcess> const broker = portable.Start();
        ASSERT_EQ(broker->Receive(), EWord::eReady);
        ASSERT_TRUE(SendRequest(broker->Socket(), bytes, STDOUT_FILENO, STDERR_FILENO));
        EXPECT_EQ(broker->Receive(), answer);
        EXPECT_EQ(WEXITSTATUS(broker->WaitForExit().value()), exitStatus);
    }
    std::unique_ptr<HelperProcess> const broker = portable.Start();
    ASSERT_EQ(broker->Receive(), EWord::eReady);
    ASSERT_EQ(::send(broker->Socket(), good.data(), good.size(), 0), static_cast<ssize_t>(good.size()));
    EXPECT_EQ(broker->Receive(), EWord::eFailed); // the two descriptors are missing
}

TEST(HelperProcess, HearsOnlyTheHelperAndRoot) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    auto const wordOf = [](EWord word, int asChild, int user) {
        std::string const code = R"(import os, socket, struct, sys
word, as_child, user = map(int, sys.argv[1:])
if as_child and os.fork(): os.wait(); os._exit(0)
os.setuid(user)
socket.socket(fileno=0).send(struct.pack("=II", 0x514d5731, word)))";
        return HelperProcess::Start({.path = "/usr/bin/python3",
                                     .arguments = {"-c", code, std::to_string(static_cast<int>(word)),
                                                   std::to_string(asChild), std::to_string(user)}})
            ->Receive();
    };
    constexpr int kNobody = 65534;
    EXPECT_EQ(wordOf(EWord::eReady, 0, kNobody), EWord::eReady);
    EXPECT_EQ(wordOf(EWord::eReady, 1, 0), EWord::eReady);
    EXPECT_EQ(wordOf(EWord::eReady, 1, kNobody), std::nullopt);
    EXPECT_EQ(wordOf(EWord::eStarted, 1, kNobody), std::nullopt);
    EXPECT_EQ(wordOf(EWord::eCancelled, 1, kNobody), EWord::eCancelled); // the prompt of sudo
}

TEST(PacketSocket, AHelperConnectsBackOnlyAsTheUserThatIsWaitedFor) {
    UniqueFd listener;
    UniqueFd helperEnd;
    UniqueFd launcherEnd;
    std::string name;
    ASSERT_TRUE(ListenForHelper(listener, name));
    EXPECT_FALSE(ConnectToLauncher(name + "0", helperEnd));
    ASSERT_TRUE(ConnectToLauncher(name, helperEnd));
    EXPECT_FALSE(AcceptHelper(listener.Get(), ::geteuid() + 1, launcherEnd));
    EXPECT_FALSE(SendWord(helperEnd.Get(), EWord::eReady)); // it was closed, which must not end this process
    EXPECT_FALSE(SendRequest(helperEnd.Get(), "x", STDOUT_FILENO, STDERR_FILENO));
    ASSERT_TRUE(ConnectToLauncher(name, helperEnd));
    ASSERT_TRUE(AcceptHelper(listener.Get(), ::geteuid(), launcherEnd));
    SPeer const self{::getpid(), ::geteuid()};
    EXPECT_EQ(PeerOf(helperEnd.Get()), self);
    ASSERT_TRUE(SendWord(helperEnd.Get(), EWord::eReady));
    EXPECT_EQ(ReceiveWord(launcherEnd.Get()).value().sender, self);
}
