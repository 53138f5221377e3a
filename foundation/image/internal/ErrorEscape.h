#pragma once

#include <csetjmp>

namespace VFoundation {

/// Calls into C libraries that report an error by a callback which must not return. `Run` makes one step of the
/// work, a member function that makes such calls; the callback calls `Escape`, and `Run` is false.
///
/// A step that was escaped from is simply gone: it must hold nothing in local variables that has a destructor.
/// What the work needs lives in the object, or with whoever calls `Run`. Not for clients.
///
/// Threads: one thread at a time.
class ErrorEscape {
  public:
    template <class Object>
    [[gnu::noinline]] bool Run(Object& object, void (Object::*step)()) {
        if (setjmp(m_return) != 0) {
            return false;
        }
        (object.*step)();
        return true;
    }

    /// Only from within a step that `Run` makes.
    [[noreturn]] void Escape() { std::longjmp(m_return, 1); }

  private:
    std::jmp_buf m_return;
};

} // namespace VFoundation
