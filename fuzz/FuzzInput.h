#pragma once

#include <cstddef>
#include <cstdint>

/// What every fuzz target has: the entry that libFuzzer and the replay program call with one hostile input.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size);

namespace fuzzing {

/// Writes to the standard error stream that the process started with; what the library writes there is discarded
/// while a target runs. May be called in a signal handler.
void Say(char const* text);

/// Ends the program with `what` unless `condition` holds: a target's way to say that a result is wrong.
void Require(bool condition, char const* what);

/// Starts the library once; it stays until the process ends.
void StartLibrary();

/// Bytes as a file in memory, gone with the object. Its path can be opened like that of any regular file.
class MemoryFile {
  public:
    MemoryFile(void const* bytes, std::size_t size);
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;
    ~MemoryFile();

    char const* Path() const { return m_path; }

  private:
    int m_descriptor;
    char m_path[32];
};

} // namespace fuzzing
