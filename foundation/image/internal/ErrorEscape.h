#pragma once

#include <csetjmp>

namespace VFoundation {

/// Calls C libraries that report an error by a callback which must not return. `Run` calls one step of the work, a
/// member function with such calls; the callback calls `Escape`, and `Run` is false.
///
/// A step that is left this way runs no destructors: local variables that have one belong in the object, or in the caller
/// of `Run`.
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
