#include "tests/support/FailingReads.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <sys/types.h>
#include <unistd.h>

using testing_support::FailingReads;

namespace {

int DescriptorOf(void* cookie) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(cookie));
}

::ssize_t Read(void* cookie, char* buffer, std::size_t size) {
    int const descriptor = DescriptorOf(cookie);
    long const position = ::lseek(descriptor, 0, SEEK_CUR);
    long const end = ::lseek(descriptor, 0, SEEK_END);
    ::lseek(descriptor, position, SEEK_SET);
    bool const isSpared = position >= end - FailingReads::ms_spared;
    long const left = isSpared ? end : FailingReads::ms_readable - position;
    if (left <= 0) {
        errno = FailingReads::ms_error;
        return FailingReads::ms_error ? -1 : 0;
    }
    return ::read(descriptor, buffer, std::min(size, static_cast<std::size_t>(left)));
}

int Seek(void* cookie, ::off64_t* offset, int origin) {
    *offset = ::lseek(DescriptorOf(cookie), *offset, origin);
    return *offset < 0 ? -1 : 0;
}

int Close(void* cookie) {
    return ::close(DescriptorOf(cookie));
}

} // namespace

extern "C" {
std::FILE* __real_fdopen(int descriptor, char const* mode);

std::FILE* __wrap_fdopen(int descriptor, char const* mode) {
    if (FailingReads::ms_readable < 0) {
        return __real_fdopen(descriptor, mode);
    }
    ::cookie_io_functions_t const functions = {&Read, nullptr, &Seek, &Close};
    return ::fopencookie(reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor)), mode, functions);
}
}
