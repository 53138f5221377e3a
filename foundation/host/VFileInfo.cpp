#include "foundation/host/VFileInfo.h"

#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/strings/VString.h"

#include <cstring>
#include <memory>
#include <typeinfo>

namespace VFoundation {

VClass* VFileInfo::ms_theClass = nullptr;
std::atomic<bool> VFileInfo::ms_bRecyclingEnabled{true};
std::atomic<VObjectRingBufferTmpl<VFileInfo>*> VFileInfo::ms_recycledFileInfos{nullptr};

VFileInfo::VFileInfo(VClass* cls) : Registered(cls) {
}

VFileInfo* VFileInfo::NewFileInfo() {
    if (ms_bRecyclingEnabled.load(std::memory_order_relaxed)) {
        if (VFileInfo* const recycled =
                TRecyclePool<VFileInfo>::Pop(ms_recycledFileInfos, &VFileInfo::m_inPool)) {
            return recycled;
        }
    }
    return new VFileInfo;
}

void VFileInfo::SetPath(char const* path) noexcept {
    std::size_t const length = path ? ::strnlen(path, kPathSize - 1) : 0;
    std::memmove(m_path, path ? path : "", length); // the path may come from this record
    std::memset(m_path + length, 0, kPathSize - length);
}

bool VFileInfo::Serialize(IAIFile& file) {
    if (file.IsLoading()) {
        char* path = nullptr;
        file >> &path;
        std::unique_ptr<char[]> const owned(path);
        bool flag = m_flags[0];
        file >> flag;
        if (!path) {
            return false;
        }
        SetPath(path);
        m_flags[0] = flag;
    } else {
        file << static_cast<char const*>(m_path) << m_flags[0];
    }
    return !file.HasLostBytes();
}

void VFileInfo::Release() const {
    bool const isLast = RetainCount() == 1;
    if (isLast && !m_inPool && ms_bRecyclingEnabled.load(std::memory_order_relaxed) &&
        typeid(*this) == typeid(VFileInfo) &&
        TRecyclePool<VFileInfo>::Push(ms_recycledFileInfos, this, &VFileInfo::m_inPool)) {
        return; // another thread may have taken it already
    }
    VObject::Release();
}

void VFileInfo::InitializeClass() {
    TRecyclePool<VFileInfo>::Create(ms_recycledFileInfos, kPoolCapacity);
}

void VFileInfo::UninitializeClass() {
    ReleaseAllRecycledFileInfos();
}

void VFileInfo::ReleaseAllRecycledFileInfos() {
    TRecyclePool<VFileInfo>::Destroy(ms_recycledFileInfos);
}

} // namespace VFoundation
