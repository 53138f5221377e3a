#pragma once

#include <string>
#include <vector>

namespace VFoundation {

/// The functions that are running on this thread, innermost first. Internal to the kernel.
struct CallStack {
    /// Return addresses, without the innermost `skipped` functions. Throws `std::bad_alloc`.
    static std::vector<void*> Capture(int skipped);
    /// A line for each, with the function's name where the program exports it (`-rdynamic`).
    static std::string Text(std::vector<void*> const& stack);
};

} // namespace VFoundation
