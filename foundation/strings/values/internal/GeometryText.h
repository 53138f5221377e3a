#pragma once

#include <cstdint>
#include <span>

namespace VFoundation {

/// Writes "1, -2" and a terminator; cut to `size` bytes, nothing for a size of 0.
void WriteNumbers(char* buffer, unsigned long size, std::span<std::int32_t const> numbers);

/// Reads exactly as many decimal 32-bit numbers as `numbers` holds, with commas between and blanks only after commas.
/// False, with `numbers` untouched, for any other text and for null.
bool ReadNumbers(char const* text, std::span<std::int32_t> numbers);

} // namespace VFoundation
