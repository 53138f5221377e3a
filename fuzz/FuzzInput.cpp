#include "fuzz/FuzzInput.h"

#include "foundation/core/lifecycle/VLibrary.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

namespace fuzzing {

namespace {

int const s_errors = ::dup(STDERR_FILENO);

} // namespace

void Say(char const* text) {
    static_cast<void>(!::write(s_errors, text, std::strlen(text)));
}

void Require(bool condition, char const* what) {
    if (!condition) {
        Say("This does not hold: ");
        Say(what);
        Say("\n");
        std::abort();
    }
}

void StartLibrary() {
    static bool const isStarted = (VFoundation::InitializeLibrary(false), true);
    static_cast<void>(isStarted);
}

MemoryFile::MemoryFile(void const* bytes, std::size_t size)
    : m_descriptor(::memfd_create("fuzz", MFD_CLOEXEC)), m_path() {
    Require(m_descriptor >= 0, "a file in memory is made");
    Require(::write(m_descriptor, bytes, size) == static_cast<::ssize_t>(size), "the file is written whole");
    std::snprintf(m_path, sizeof m_path, "/proc/self/fd/%d", m_descriptor);
}

MemoryFile::~MemoryFile() {
    ::close(m_descriptor);
}

} // namespace fuzzing
