#include "launcher/linux/ElevationService.h"
#include "tests/support/FailingNew.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace Launcher;

SHelperPaths const kNothing{
    .broker = "/nowhere", .dialog = "/nowhere", .pkexec = "/nowhere", .sudo = "/nowhere"};
SAuthorizationItem const kAdministrator[] = {{kAdministratorRight, 0, nullptr, 0}};
char const* const kArguments[] = {"-uname", "somebody with quite a long name", nullptr};

} // namespace

TEST(ElevationService, KnowsOneRight) {
    ElevationService service(kNothing);
    IElevationService::Reference* reference = nullptr;
    if (::geteuid() != 0) {
        EXPECT_EQ(service.Create({}, {}, kDefaultFlags, &reference), kInternalFailure);
        EXPECT_EQ(reference, nullptr);
        return;
    }
    ASSERT_EQ(service.Create({}, {}, kDefaultFlags, &reference), kAuthorized);
    SAuthorizationItem const other[] = {{"system.shutdown", 0, nullptr, 0}};
    EXPECT_EQ(service.AcquireRights(reference, kAdministrator, {}, 19), kAuthorized);
    EXPECT_EQ(service.AcquireRights(reference, other, {}, 19), kDenied);
    SAuthorizationItem const both[] = {{kAdministratorRight, 0, nullptr, 0}, other[0]};
    EXPECT_EQ(service.AcquireRights(reference, both, {}, 19), kDenied);
    EXPECT_EQ(service.Execute(reference, "/bin/true", kDefaultFlags, kArguments), kAuthorized);
    for (char const* const path : {"", "missing", "/"}) {
        EXPECT_EQ(service.Execute(reference, path, kDefaultFlags, kArguments), kToolExecuteFailure) << path;
    }
    EXPECT_EQ(service.Free(reference, kDefaultFlags), kAuthorized);
    EXPECT_EQ(service.Free(nullptr, kDefaultFlags), kAuthorized);
    EXPECT_EQ(service.Execute(nullptr, "/bin/true", kDefaultFlags, kArguments), kInternalFailure);
}

TEST(ElevationService, MemoryThatRunsOutIsAFailure) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "another user would be asked for a password";
    }
    ElevationService service(kNothing);
    SAuthorizationItem const icon[] = {{kDialogIconItem, 40, "/a path/that is longer/than a short text", 0}};
    testing_support::FailEachNew([&] {
        IElevationService::Reference* reference = nullptr;
        AuthorizationStatus status = service.Create({}, {}, kDefaultFlags, &reference);
        EXPECT_EQ(status == kAuthorized, reference != nullptr);
        if (status == kAuthorized) {
            status = service.AcquireRights(reference, kAdministrator, icon, kInteractionAllowed);
        }
        if (status == kAuthorized) {
            status = service.Execute(reference, "/bin/true", kDefaultFlags, kArguments);
        }
        bool const hasFailed = testing_support::NewHasFailed();
        EXPECT_EQ(status, hasFailed ? kInternalFailure : kAuthorized);
        service.Free(reference, kDefaultFlags);
        return hasFailed;
    });
}
