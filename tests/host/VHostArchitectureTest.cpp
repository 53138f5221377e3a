#include "foundation/host/VHostArchitecture.h"
#include "tests/support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace {

using namespace VFoundation;

TEST(VHostArchitecture, SwapsBytes) {
    unsigned char bytes[] = {1, 2, 3, 4};
    VHostArchitecture::Swap4Bytes(bytes);
    VHostArchitecture::Swap2Bytes(bytes);
    EXPECT_EQ(std::memcmp(bytes, "\3\4\2\1", 4), 0);
}

TEST(VHostArchitecture, WritesTheUserNameIntoAnyBuffer) {
    ::setenv("USER", "somebody else", 1);
    char name[1024];
    std::memset(name, '#', sizeof name);
    VHostArchitecture::UserName(name, sizeof name);
    EXPECT_STREQ(name, ::getpwuid(::geteuid())->pw_name) << "whatever the environment says";
    EXPECT_EQ(std::string(name, sizeof name).find_first_not_of('\0', std::strlen(name)), std::string::npos);
    for (unsigned long const size : {3UL, 1UL, 0UL}) {
        char small[] = "####";
        VHostArchitecture::UserName(small, size);
        EXPECT_EQ(std::string(small, 4),
                  size == 0 ? "####" : std::string(name, size - 1) + '\0' + std::string(4 - size, '#'));
    }
    VHostArchitecture::UserName(nullptr, 10);
    testing_support::FailEachAllocation([&name] {
        char again[sizeof name];
        EXPECT_NO_THROW(VHostArchitecture::UserName(again, sizeof again));
        EXPECT_STREQ(again, testing_support::AllocationHasFailed() ? "" : name);
    });
}

TEST(VHostArchitecture, TakesTheProcessorForGranted) {
    using CPU = VHostArchitecture::VCPUInfo;
    EXPECT_EQ(CPU::InitializeClass(), 0);
    EXPECT_TRUE(CPU::ms_bHasFPU);
    EXPECT_TRUE(CPU::ms_bHasMMX);
    EXPECT_TRUE(CPU::ms_bHasSSE);
    EXPECT_TRUE(CPU::ms_bHasSSE2);
    EXPECT_TRUE(CPU::ms_bHasSSE3);
    EXPECT_FALSE(CPU::ms_bHasHyperThreading);
}

} // namespace
