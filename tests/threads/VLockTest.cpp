#include "foundation/threads/VLock.h"
#include "tests/support/Jobs.h"

#include <gtest/gtest.h>

#include <future>

namespace {

using namespace VFoundation;
using testing_support::ExpectWaits;

TEST(VLock, IsBinaryAndBelongsToNoThread) {
    VLock lock;
    lock.Unlock(); // a free lock does not count up
    EXPECT_TRUE(lock.TryLock(0));
    EXPECT_TRUE(lock.IsLocked());
    for (int const wait : {0, -2, 3}) {
        EXPECT_FALSE(lock.TryLock(wait)) << wait;
        EXPECT_FALSE(lock.IsLocked()) << "the last result, not the state";
    }
    for (int const wait : {-1, 60'000}) {
        ExpectWaits([&] { return lock.TryLock(wait); }, [&] { lock.Unlock(); });
    }
}

} // namespace
