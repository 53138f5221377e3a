#pragma once

#include "foundation/threads/VJob.h"
#include "foundation/threads/VJobServer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <utility>

namespace testing_support {

/// Waits for what another thread is about to do; a failure, and false, when it does not come in a minute.
template <class Condition>
bool WaitUntil(Condition condition, int line = __builtin_LINE()) {
    auto const end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    bool const came = condition();
    EXPECT_TRUE(came) << "waited from line " << line;
    return came;
}

/// `enter` waits on another thread until this one has called `leave`.
template <class Enter, class Leave>
void ExpectWaits(Enter enter, Leave leave) {
    auto entered = std::async(std::launch::async, enter);
    EXPECT_EQ(entered.wait_for(std::chrono::milliseconds(10)), std::future_status::timeout);
    leave();
    EXPECT_TRUE(entered.get());
}

/// A job that does what it is told.
struct AJob : VFoundation::Registered<AJob, VFoundation::VJob> {
    static constexpr char const* kClassName = "AJob";
    static inline VFoundation::VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
    explicit AJob(std::function<bool()> work, int priority = 0,
                  VFoundation::IVJobDelegate* delegate = nullptr)
        : Registered(nullptr), m_work(std::move(work)) {
        Init(nullptr, delegate, priority);
    }
    bool DoJob() override { return m_work(); }
    double JobProgress() override { return 0; }
    bool AbortJob() override { return m_onAbort && m_onAbort(); }
    std::function<bool()> m_onAbort;
    std::function<bool()> m_work;
};

/// A name for a server whose semaphore no other test of the program has used.
inline std::string UniqueName() {
    static std::atomic<int> s_number{0};
    return "VFoundationTest." + std::to_string(++s_number);
}

/// A server, ended with the object.
struct ServerScope : VFoundation::VObjectRef<VFoundation::VJobServer> {
    explicit ServerScope(int queueSize)
        : ServerScope(new VFoundation::VJobServer(UniqueName().c_str(), queueSize)) {}
    explicit ServerScope(VFoundation::VJobServer* adopted) : VObjectRef(Adopt(adopted)) {}
    ~ServerScope() override { Get()->EndServer(true); }
    bool Add(AJob* adopted) const {
        return Get()->AddJob(VFoundation::VObjectRef<AJob>::Adopt(adopted).Get());
    }
};

} // namespace testing_support
