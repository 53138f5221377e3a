#include "launcher/linux/BrokerProtocol.h"

#include "launcher/linux/DisplayVariable.h"
#include "launcher/linux/HelperExit.h"
#include "launcher/linux/HelperProcess.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
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
class PortableBroker {
  public:
    PortableBroker() {
        char pattern[] = "/tmp/broker-XXXXXX";
        m_folder = ::mkdtemp(pattern);
        fs::permissions(m_folder, fs::perms::all);
        fs::copy_file(QUILLMARK_BROKER, m_folder / "QuillmarkBroker");
    }
    ~PortableBroker() { fs::remove_all(m_folder); }

    std::unique_ptr<HelperProcess> Start() const {
        return HelperProcess::Start({.path = m_folder / "QuillmarkBroker", .environment = {}});
    }

  private:
    fs::path m_folder;
};

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
    auto const isRefused = [&decoded](SLaunchRequest const& request) {
        std::optional<std::string> const encoded = EncodeRequest(request);
        return !encoded || !DecodeRequest(*encoded, decoded);
    };
    EXPECT_TRUE(isRefused({.path = "bin/true", .arguments = {}, .environment = {}}));
    EXPECT_TRUE(isRefused({.path = "", .arguments = {}, .environment = {}}));
    EXPECT_TRUE(isRefused({.path = std::string("/a\0b", 4), .arguments = {}, .environment = {}}));
    EXPECT_TRUE(
        isRefused({.path = "/" + std::string(kMaxRequestBytes, 'x'), .arguments = {}, .environment = {}}));
    EXPECT_TRUE(isRefused({.path = "/a", .arguments = std::vector<std::string>(17), .environment = {}}));
    EXPECT_TRUE(isRefused({.path = "/a", .arguments = {}, .environment = {"LD_PRELOAD=/tmp/x.so"}}));
}

TEST(DisplayVariable, HasItsRealForm) {
    for (char const* const good :
         {"DISPLAY=:0", "DISPLAY=host-1.example:10.2", "XAUTHORITY=/home/a b/.Xauthority", "LANG=C",
          "LANG=de_DE.UTF-8@euro", "WAYLAND_DISPLAY=/run/user/1/wayland-0"}) {
        EXPECT_TRUE(IsDisplayVariable(good)) << good;
    }
    for (char const* const bad : {"",
                                  "DISPLAY",
                                  "DISPLAY=",
                                  "=x",
                                  "DISPLAY=:0\n",
                                  "DISPLAY=0",
                                  "DISPLAY=:",
                                  "DISPLAY=:0.",
                                  "DISPLAY=:123456",
                                  "DISPLAY=:0.1.2",
                                  "DISPLAY=a b:0",
                                  "DISPLAY=/tmp/x:0",
                                  "XAUTHORITY=a",
                                  "XAUTHORITY=/a/../b",
                                  "XAUTHORITY=/a/.",
                                  "XAUTHORITY=/a\tb",
                                  "WAYLAND_DISPLAY=wayland-0",
                                  "WAYLAND_DISPLAY=/run/../x",
                                  "LANG=",
                                  "LANG=_DE",
                                  "LANG=de_",
                                  "LANG=de.",
                                  "LANG=de@",
                                  "LANG=de-DE",
                                  "LANG=de_DE.UTF-8.x",
                                  "LANG=.UTF-8",
                                  "LANG=../../x",
                                  "LANG=%s",
                                  "PATH=/bin",
                                  "LD_PRELOAD=/x",
                                  "DISPLAYX=:0",
                                  "LC_ALL=C",
                                  "display=:0"}) {
        EXPECT_FALSE(IsDisplayVariable(bad)) << bad;
    }
    EXPECT_FALSE(IsDisplayVariable("DISPLAY=" + std::string(5000, 'x') + ":0"));
    EXPECT_TRUE(IsDisplayVariable("XAUTHORITY=/" + std::string(200, 'x')));
    EXPECT_FALSE(IsDisplayVariable("WAYLAND_DISPLAY=/" + std::string(200, 'x')));
}

TEST(Broker, LeavesUnlessItIsRootWithASocket) {
    PortableBroker const portable;
    pid_t process = -1;
    int status = 0;
    ASSERT_EQ(StartProgram({.path = QUILLMARK_BROKER}, &process), EStartResult::eStarted);
    ::waitpid(process, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), ::geteuid() == 0 ? kExitBadInput : kExitNotRoot); // /dev/null is no socket

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
    } const cases[] = {{good, EWord::eStarted},
                       {EncodeRequest(missing).value(), EWord::eNotExecutable},
                       {good.substr(1), EWord::eFailed},
                       {good + std::string(2 * kMaxRequestBytes, 'x'), EWord::eFailed}};
    for (auto const& request : cases) {
        std::unique_ptr<HelperProcess> const broker = portable.Start();
        ASSERT_EQ(broker->Receive(), EWord::eReady);
        ASSERT_TRUE(SendRequest(broker->Socket(), request.bytes, STDOUT_FILENO, STDERR_FILENO));
        EXPECT_EQ(broker->Receive(), request.answer);
        EXPECT_EQ(WEXITSTATUS(broker->WaitForExit().value()), request.answer == EWord::eStarted ? 0
                                                              : request.answer == EWord::eFailed
                                                                  ? kExitBadInput
                                                                  : kExitNotStarted);
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
        std::string const code = "import os, socket, struct, time\n"
                                 "if " +
                                 std::to_string(asChild) +
                                 " and os.fork(): os.wait(); os._exit(0)\n"
                                 "os.setuid(" +
                                 std::to_string(user) +
                                 ")\n"
                                 "socket.socket(fileno=0).send(struct.pack('=II', 0x514d5731, " +
                                 std::to_string(static_cast<int>(word)) + "))\n";
        return HelperProcess::Start({.path = "/usr/bin/python3", .arguments = {"-c", code}})->Receive();
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
    EXPECT_FALSE(SendWord(helperEnd.Get(), EWord::eReady)); // it was closed
    ASSERT_TRUE(ConnectToLauncher(name, helperEnd));
    ASSERT_TRUE(AcceptHelper(listener.Get(), ::geteuid(), launcherEnd));
    SPeer const self{::getpid(), ::geteuid()};
    EXPECT_EQ(PeerOf(helperEnd.Get()), self);
    ASSERT_TRUE(SendWord(helperEnd.Get(), EWord::eReady));
    EXPECT_EQ(ReceiveWord(launcherEnd.Get()).value().sender, self);
}
