#include "foundation/host/VFileManager.h"

#include "foundation/core/internal/ClassOwned.h"
#include "foundation/host/VFile.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/host/internal/HostServices.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cstring>

namespace VFoundation {

namespace {

/// The directory bit alone, not the whole file type.
constexpr unsigned long kDirectoryBit = 0x4000;

} // namespace

VClass* VFileManager::ms_theClass = nullptr;
std::atomic<VFileManager*> VFileManager::ms_defaultManager{nullptr};

VFileManager::VFileManager(VClass* cls) : Registered(cls) {
}

VFileManager::~VFileManager() = default;

VFileManager* VFileManager::New() {
    return new VFileManager;
}

void VFileManager::InitializeClass() {
    VFile::InitializeClass();
    VFileInfo::InitializeClass();
}

void VFileManager::UninitializeClass() {
    DeleteDefaultManager();
}

VFileManager* VFileManager::DefaultManager() {
    return detail::MakeOnce(ms_defaultManager, &New);
}

void VFileManager::DeleteDefaultManager() {
    detail::ReleaseAndClear(ms_defaultManager);
}

bool VFileManager::FileExistsAtPath(VString const& path, bool* isDirectory) const {
    unsigned long mode = 0;
    bool const exists = HostServices::ModeOfPath(path.CString(), mode);
    if (isDirectory) {
        *isDirectory = exists && (mode & kDirectoryBit);
    }
    return exists;
}

VObjectRef<VData> VFileManager::ContentsAtPath(char const* path) const {
    VFile file;
    VObjectRef<VData> contents;
    if (!path || !file.OpenForReading(path)) {
        return contents;
    }
    auto const length = static_cast<unsigned long>(file.GetLength());
    contents.Allocate()->SetLength(length, false);
    unsigned long const read = file.ReadBytes(contents->Bytes(), length);
    if (file.ReadError() != 0) {
        return {};
    }
    // A file that got shorter meanwhile: what is gone is zero.
    VData::FastZeroMemory(contents->Bytes() + read, length - read);
    return contents;
}

void VFileManager::MakePathUseHostSeparator(char* path) noexcept {
    if (path) {
        std::replace(path, path + std::strlen(path), '\\', HostFileSystemPathComponentSeparator());
    }
}

std::FILE* VFileManager::vfc_fopen(char const* path, char const* mode) {
    return VFile::vfc_fopen(path, mode);
}

std::FILE* VFileManager::vfc_fopen(VString const& path, char const* mode) {
    return VFile::vfc_fopen(path, mode);
}

} // namespace VFoundation
