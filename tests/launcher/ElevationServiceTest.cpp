#include "launcher/linux/ElevationService.h"

#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/HelperExit.h"
#include "launcher/linux/HelperProcess.h"
#include "launcher/linux/StartProgram.h"

#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Launcher;

SLaunchRequest const kRequest{.path = "/bin/true",
                              .arguments = {"-uname", "-some body", "", "line\nfeed"},
                              .environment = {"DISPLAY=:0", "LANG=C.UTF-8"}};

std::unique_ptr<HelperProcess> StartBroker() {
    return HelperProcess::Start({.path = QUILLMARK_BROKER, .environment = {}});
}

std::string Output(SProgramStart start) {
    std::FILE* const file = std::tmpfile();
    start.standardOutput = ::fileno(file);
    pid_t process = -1;
    EXPECT_EQ(StartProgram(start, &process), EStartResult::eStarted);
    ::waitpid(process, nullptr, 0);
    std::rewind(file);
    std::string text(4096, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    return text;
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

TEST(StartProgram, TellsApartWhyItDidNot) {
    EXPECT_EQ(StartProgram({.path = "/nowhere"}), EStartResult::eNotExecutable);
    EXPECT_EQ(StartProgram({.path = "/" + std::string(5000, 'x')}), EStartResult::eNotExecutable);
    EXPECT_EQ(StartProgram({.path = "/bin/true", .directory = "/nowhere"}), EStartResult::eNoProcess);
}

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

TEST(BrokerProtocol, LetsOnlyTheDisplayThrough) {
    for (char const* const good : {"DISPLAY=:0", "XAUTHORITY=/home/a b/.Xauthority", "LANG=de_DE.UTF-8@euro",
                                   "WAYLAND_DISPLAY=/run/user/1/wayland-0"}) {
        EXPECT_TRUE(IsDisplayVariable(good)) << good;
    }
    for (char const* const bad :
         {"", "DISPLAY", "DISPLAY=", "=x", "DISPLAY=:0\n", "XAUTHORITY=a", "WAYLAND_DISPLAY=wayland-0",
          "LANG=../../x", "LANG=%s", "PATH=/bin", "LD_PRELOAD=/x", "DISPLAYX=:0", "LC_ALL=C", "display=:0"}) {
        EXPECT_FALSE(IsDisplayVariable(bad)) << bad;
    }
    EXPECT_FALSE(IsDisplayVariable("DISPLAY=" + std::string(5000, 'x')));
}

TEST(Broker, LeavesUnlessItIsRootWithALine) {
    pid_t process = -1;
    int status = 0;
    ASSERT_EQ(StartProgram({.path = QUILLMARK_BROKER}, &process), EStartResult::eStarted);
    ::waitpid(process, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), kExitBadInput); // /dev/null is no line

    std::unique_ptr<HelperProcess> const broker = StartBroker();
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
        std::unique_ptr<HelperProcess> const broker = StartBroker();
        ASSERT_EQ(broker->Receive(), EWord::eReady);
        ASSERT_TRUE(SendRequest(broker->Socket(), request.bytes, STDOUT_FILENO, STDERR_FILENO));
        EXPECT_EQ(broker->Receive(), request.answer);
        EXPECT_EQ(WEXITSTATUS(broker->WaitForExit().value()), request.answer == EWord::eStarted ? 0
                                                              : request.answer == EWord::eFailed
                                                                  ? kExitBadInput
                                                                  : kExitNotStarted);
    }
    std::unique_ptr<HelperProcess> const broker = StartBroker();
    ASSERT_EQ(broker->Receive(), EWord::eReady);
    ASSERT_EQ(::send(broker->Socket(), good.data(), good.size(), 0), static_cast<ssize_t>(good.size()));
    EXPECT_EQ(broker->Receive(), EWord::eFailed); // the two descriptors are missing
}

TEST(ElevationService, KnowsOneRight) {
    ElevationService service(
        {.broker = "/nowhere", .dialog = "/nowhere", .pkexec = "/nowhere", .sudo = "/nowhere"});
    IElevationService::Reference* reference = nullptr;
    if (::geteuid() != 0) {
        EXPECT_EQ(service.Create({}, {}, kDefaultFlags, &reference), kInternalFailure);
        EXPECT_EQ(reference, nullptr);
        return;
    }
    ASSERT_EQ(service.Create({}, {}, kDefaultFlags, &reference), kAuthorized);
    SAuthorizationItem const administrator[] = {{kAdministratorRight, 0, nullptr, 0}};
    SAuthorizationItem const other[] = {{"system.shutdown", 0, nullptr, 0}};
    EXPECT_EQ(service.AcquireRights(reference, administrator, {}, 19), kAuthorized);
    EXPECT_EQ(service.AcquireRights(reference, other, {}, 19), kDenied);
    char const* const arguments[] = {"-uname", "somebody", nullptr};
    EXPECT_EQ(service.Execute(reference, "/bin/true", kDefaultFlags, arguments), kAuthorized);
    for (char const* const path : {"", "missing", "/"}) {
        EXPECT_EQ(service.Execute(reference, path, kDefaultFlags, arguments), kToolExecuteFailure) << path;
    }
    EXPECT_EQ(service.Free(reference, kDefaultFlags), kAuthorized);
    EXPECT_EQ(service.Free(nullptr, kDefaultFlags), kAuthorized);
    EXPECT_EQ(service.Execute(nullptr, "/bin/true", kDefaultFlags, arguments), kInternalFailure);
}
