#include "launcher/linux/ElevationService.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <unistd.h>

namespace {

using namespace Launcher;

long s_allocationsLeft = -1; // below 0: any number

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = s_allocationsLeft == 0 ? nullptr : std::malloc(size ? size : 1);
    if (!block) {
        throw std::bad_alloc();
    }
    s_allocationsLeft -= s_allocationsLeft > 0 ? 1 : 0;
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
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

TEST(ElevationService, MemoryThatRunsOutIsAFailure) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "another user would be asked for a password";
    }
    ElevationService service(
        {.broker = "/nowhere", .dialog = "/nowhere", .pkexec = "/nowhere", .sudo = "/nowhere"});
    SAuthorizationItem const rights[] = {{kAdministratorRight, 0, nullptr, 0}};
    SAuthorizationItem const icon[] = {{kDialogIconItem, 40, "/a path/that is longer/than a short text", 0}};
    char const* const arguments[] = {"-uname", "somebody with quite a long name", nullptr};
    int failures = 0;
    for (bool isDone = false; !isDone;) {
        IElevationService::Reference* reference = nullptr;
        s_allocationsLeft = failures;
        AuthorizationStatus status = service.Create({}, {}, kDefaultFlags, &reference);
        EXPECT_EQ(status == kAuthorized, reference != nullptr);
        if (status == kAuthorized) {
            status = service.AcquireRights(reference, rights, icon, kInteractionAllowed);
        }
        if (status == kAuthorized) {
            status = service.Execute(reference, "/bin/true", kDefaultFlags, arguments);
        }
        s_allocationsLeft = -1;
        service.Free(reference, kDefaultFlags);
        isDone = status == kAuthorized;
        if (!isDone) {
            ASSERT_EQ(status, kInternalFailure) << "after " << failures << " allocations";
            ++failures;
        }
    }
    EXPECT_GT(failures, 5);
}
