#pragma once

namespace VFoundation {

/// Calls its owner around every fork of the process. A child has no thread but the one that forked, and a lock that
/// another thread held at that moment stays locked in it. So an owner that works with a thread of the library takes
/// its locks before the fork, gives them up after it, and notes in the child that the thread is not there.
/// Internal.
///
/// Declare it last in its owner, so that it exists only while the owner is whole. The calls must neither make nor
/// destroy hooks.
///
/// Threads: made and destroyed on any thread; all calls come on the thread that forks.
class ForkHook {
  public:
    using Call = void (*)(void* owner);
    /// Null calls nothing.
    struct Calls {
        Call before;
        Call inParent;
        Call inChild;
    };

    /// `std::bad_alloc` when the system does not take the process's first hook.
    ForkHook(void* owner, Calls const& calls);
    ForkHook(ForkHook const&) = delete;
    ForkHook& operator=(ForkHook const&) = delete;
    ~ForkHook();

  private:
    static void BeforeFork();
    static void InParent();
    static void InChild();
    static void CallAll(Call Calls::*which);

    void* const m_owner;
    Calls const m_calls;
    ForkHook* m_next = nullptr;
    ForkHook** m_link = nullptr;
};

} // namespace VFoundation
