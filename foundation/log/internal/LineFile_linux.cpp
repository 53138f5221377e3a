#include "foundation/log/internal/LineFile.h"

#include <stdio_ext.h>
#include <unistd.h>

namespace VFoundation {

long long LineFile::DropUnwritten(std::FILE* stream) noexcept {
    __fpurge(stream);
    std::clearerr(stream);
    return lseek(fileno(stream), 0, SEEK_CUR);
}

} // namespace VFoundation
