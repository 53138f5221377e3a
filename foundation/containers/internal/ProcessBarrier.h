#pragma once

namespace VFoundation {

/// A memory barrier on all threads of the process at once. It lets one thread do without a locked operation what
/// others do rarely: the one writes a word and reads another, and the compiler keeps the order; the others write the
/// second word, call this, and read the first. One of both then sees the other's write, as with barriers on both sides.
/// Internal.
///
/// Announces that the process is going to use the barrier; false when there will be none. Costs next to nothing while
/// the process has one thread. Afterwards it would wait for every processor, which takes milliseconds, and so does
/// nothing.
bool PrepareProcessBarrier() noexcept;

/// False, and no barrier, when it was not prepared.
bool ProcessBarrier() noexcept;

} // namespace VFoundation
