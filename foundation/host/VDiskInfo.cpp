#include "foundation/host/VDiskInfo.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/host/internal/HostServices.h"

#include <algorithm>

namespace VFoundation {

VClass* VDiskInfo::ms_theClass = nullptr;
VObjectArray* VDiskInfo::VDISK_INFO_VOLUME_NAMES = nullptr;
VObjectArray* VDiskInfo::VDISK_INFO_VOLUME_INFO = nullptr;

VDiskInfo::VDiskInfo(VClass* cls) : Registered(cls) {
}

VDiskInfo* VDiskInfo::New() {
    return new VDiskInfo;
}

void VDiskInfo::UninitializeClass() {
    detail::ReleaseAndClear(VDISK_INFO_VOLUME_NAMES);
    detail::ReleaseAndClear(VDISK_INFO_VOLUME_INFO);
}

void VDiskInfo::InitializeVolumeInformation() {
    if (VDISK_INFO_VOLUME_NAMES) {
        return;
    }
    auto names = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    auto infos = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    for (HostServices::MountedVolume const& volume : HostServices::MountedVolumes()) {
        auto const name = VObjectRef<VString>::Adopt(VString::NewString(volume.name.c_str()));
        bool const hasPath = volume.mountPath.size() < kMountPathSize;
        auto const info = VObjectRef<VDiskInfo>::Adopt(New());
        info->m_freeBytes = std::min(volume.freeBytes, volume.totalBytes);
        info->m_totalBytes = volume.totalBytes;
        info->m_usedBytes = info->m_totalBytes - info->m_freeBytes;
        info->m_volumeName = *name;
        info->m_kind = kMountedVolume;
        info->m_mountPath = hasPath ? volume.mountPath.c_str() : "";
        bool const hasTexts = *name == volume.name.c_str() && info->m_volumeName == *name &&
                              (!hasPath || info->m_mountPath == volume.mountPath.c_str());
        if (!hasTexts || !names->AddObject(name.Get()) || !infos->AddObject(info.Get())) {
            return; // both tables or none
        }
    }
    VDISK_INFO_VOLUME_NAMES = names.Detach();
    VDISK_INFO_VOLUME_INFO = infos.Detach();
}

void VDiskInfo::GetDescription(VString& out) const {
    out.Format("VolumeName [%s], Size [%llu], Free [%llu]", m_volumeName.CString(),
               static_cast<unsigned long long>(m_totalBytes), static_cast<unsigned long long>(m_freeBytes));
}

} // namespace VFoundation
