#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VJob.h"

#include <atomic>
#include <type_traits>
#include <utility>

namespace VFoundation {

namespace detail {

/// Has no class record of its own: to the registry it is a `VJob`.
template <class Function>
class VFOUNDATION_API FunctionJob final : public VJob {
  public:
    FunctionJob(Function function, int priority, IVJobDelegate* delegate)
        : VJob(nullptr, delegate), m_function(std::move(function)) {
        Init(nullptr, delegate, priority);
    }

    bool DoJob() override {
        if constexpr (std::is_invocable_v<Function&, std::atomic<bool> const&>) {
            return Succeeds([this] { return m_function(std::as_const(m_isAborted)); });
        } else {
            return Succeeds(m_function);
        }
    }
    double JobProgress() override { return m_isOver.load(std::memory_order_relaxed) ? 1 : 0; }
    bool AbortJob() override {
        m_isAborted.store(true, std::memory_order_relaxed);
        return true;
    }
    void FinishedJob() override {
        m_isAborted.store(false, std::memory_order_relaxed); // for the next use
        m_isOver.store(true, std::memory_order_relaxed);
        VJob::FinishedJob();
    }

  private:
    template <class Call>
    static bool Succeeds(Call&& call) {
        if constexpr (std::is_void_v<decltype(call())>) {
            call();
            return true;
        } else {
            return static_cast<bool>(call());
        }
    }

    Function m_function;
    std::atomic<bool> m_isAborted{false}; // relaxed: flags to look at, now and then
    std::atomic<bool> m_isOver{false};    // relaxed, too
};

} // namespace detail

/// A job that calls `function`, once each time it is run:
///
///     server->AddJob(MakeJob([file] { return Import(file); }).Get());
///     server->AddJob(MakeJob([](std::atomic<bool> const& isAborted) { while (!isAborted && Step()) {} }).Get());
///
/// It succeeds when the function returns true or nothing, and fails when it returns false or throws. A function that
/// takes a flag is told by it of `AbortJob`. The job's progress is 0 until it is over, then 1.
///
/// Ownership: the job keeps a copy of the function; see `VJob` for the rest. Throws `std::bad_alloc`, and what copying
/// the function throws.
template <class Function>
[[nodiscard]] VObjectRef<VJob> MakeJob(Function&& function, int priority = 0,
                                       IVJobDelegate* delegate = nullptr) {
    using Job = detail::FunctionJob<std::decay_t<Function>>;
    return VObjectRef<VJob>::Adopt(new Job(std::forward<Function>(function), priority, delegate));
}

} // namespace VFoundation
