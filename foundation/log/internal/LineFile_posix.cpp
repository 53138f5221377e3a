#include "foundation/log/internal/LineFile.h"

#include <sys/stat.h>
#include <unistd.h>

namespace VFoundation {

void LineFile::CutBack(std::FILE* stream, long long end, long long place) noexcept {
    struct stat status {};
    int const file = fileno(stream);
    // Not what another process has written after it, and nothing that has no length.
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size == end &&
        ftruncate(file, place) == 0) {
        fseeko(stream, place, SEEK_SET);
    }
}

} // namespace VFoundation
