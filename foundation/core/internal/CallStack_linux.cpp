#include "foundation/core/internal/CallStack.h"

#include <array>
#include <cstdlib>
#include <cxxabi.h>
#include <execinfo.h>
#include <memory>

namespace VFoundation {

namespace {

constexpr int kDeepest = 32;

using Freed = std::unique_ptr<char, decltype(&std::free)>;

/// "file(mangled+offset) [address]" with the name as it stands in the source.
std::string Demangled(std::string line) {
    std::size_t const begin = line.find('(') + 1;
    std::size_t const end = line.find('+', begin);
    if (begin == 0 || end == std::string::npos) {
        return line;
    }
    int status = 0;
    Freed const name(abi::__cxa_demangle(line.substr(begin, end - begin).c_str(), nullptr, nullptr, &status),
                     &std::free);
    return name ? line.replace(begin, end - begin, name.get()) : line;
}

} // namespace

std::vector<void*> CallStack::Capture(int skipped) {
    std::array<void*, kDeepest> frames{};
    int const count = backtrace(frames.data(), kDeepest);
    int const first = skipped + 1 < count ? skipped + 1 : count; // this function too
    return std::vector<void*>(frames.begin() + first,
                              frames.begin() + count); // in braces: a list of two addresses
}

std::string CallStack::Text(std::vector<void*> const& stack) {
    std::unique_ptr<char*, decltype(&std::free)> const lines(
        backtrace_symbols(stack.data(), static_cast<int>(stack.size())), &std::free);
    std::string text;
    for (std::size_t i = 0; lines && i < stack.size(); ++i) {
        text += "    " + Demangled(lines.get()[i]) + '\n';
    }
    return text;
}

} // namespace VFoundation
