#include <gtest/gtest.h>

/// Children of tests start threads of their own.
extern "C" char const* __tsan_default_options() {
    return "die_after_fork=0";
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
