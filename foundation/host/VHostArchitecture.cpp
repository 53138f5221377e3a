#include "foundation/host/VHostArchitecture.h"

#include "foundation/host/internal/HostServices.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace VFoundation {

std::atomic<bool> VHostArchitecture::VCPUInfo::ms_bHasFPU{false};
std::atomic<bool> VHostArchitecture::VCPUInfo::ms_bHasMMX{false};
std::atomic<bool> VHostArchitecture::VCPUInfo::ms_bHasSSE{false};
std::atomic<bool> VHostArchitecture::VCPUInfo::ms_bHasSSE2{false};
std::atomic<bool> VHostArchitecture::VCPUInfo::ms_bHasSSE3{false};
std::atomic<bool> VHostArchitecture::VCPUInfo::ms_bHasHyperThreading{false};

void VHostArchitecture::Swap4Bytes(unsigned char* bytes) noexcept {
    if (bytes) {
        std::reverse(bytes, bytes + 4);
    }
}

void VHostArchitecture::Swap2Bytes(unsigned char* bytes) noexcept {
    if (bytes) {
        std::reverse(bytes, bytes + 2);
    }
}

void VHostArchitecture::UserName(char* buffer, unsigned long size) {
    if (buffer && size) {
        std::memset(buffer, 0, size);
        try {
            VString::strncpy(buffer, HostServices::UserName().c_str(), size);
        } catch (std::bad_alloc const&) {
            return; // without a name
        }
        buffer[size - 1] = '\0';
    }
}

long VHostArchitecture::VCPUInfo::InitializeClass() noexcept {
    unsigned long features = 0;
    long const status = HostServices::ProcessorFeatures(features);
    ms_bHasFPU = true;
    ms_bHasMMX = true;
    ms_bHasSSE = true;
    ms_bHasSSE2 = true;
    ms_bHasSSE3 = true;
    ms_bHasHyperThreading = false;
    return status;
}

} // namespace VFoundation
