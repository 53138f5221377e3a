#include "foundation/threads/internal/EventFlag.h"

#include "foundation/threads/internal/Futex.h"

namespace VFoundation {

void EventFlag::Set() noexcept {
    m_word.store(1);
    FutexWakeAll(m_word);
}

bool EventFlag::WaitFor(long milliseconds) const noexcept {
    MonotonicTime const deadline = MillisecondsFromNow(milliseconds);
    while (!IsSet()) {
        if (!FutexWait(m_word, 0, &deadline)) {
            return IsSet();
        }
    }
    return true;
}

} // namespace VFoundation
