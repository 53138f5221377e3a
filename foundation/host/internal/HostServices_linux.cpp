#include "foundation/host/internal/HostServices.h"

#include "foundation/host/internal/MountTable_linux.h"

#include <cerrno>
#include <sys/auxv.h>

namespace VFoundation::HostServices {

std::vector<MountedVolume> MountedVolumes() {
    return MountTable::Volumes("/proc/self/mountinfo", "/dev/disk/by-label");
}

long ProcessorFeatures(unsigned long& features) noexcept {
    errno = 0;
    features = ::getauxval(AT_HWCAP);
    return features ? 0 : errno;
}

} // namespace VFoundation::HostServices
