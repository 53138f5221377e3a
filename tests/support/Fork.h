#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

namespace testing_support {

/// Runs `work` in a child process; a failure when it fails there, or has not ended in a minute.
template <class Work>
void InChild(Work work) {
    std::fflush(stdout);
    std::fflush(stderr);
    pid_t const child = fork();
    if (child == 0) {
        alarm(60);
        work();
        std::fflush(stdout);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the child failed";
}

} // namespace testing_support
