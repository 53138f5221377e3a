#include "foundation/image/VImage.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/host/VFileManager.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/image/internal/WithinMemory.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VCriticalSectionScope.h"

#include <utility>

namespace VFoundation {

VClass* VImage::ms_theClass = nullptr;
VObjectArray* VImage::ms_imageCache = nullptr;
VObjectContainer* VImage::ms_imageNames = nullptr;
std::atomic<bool> VImage::ms_cacheEnabled{false};
std::atomic<std::uint64_t> VImage::ms_pixelBudget{kNoPixelBudget};
std::atomic<VString*> VImage::ms_defaultImageResourcePath{nullptr};
VObject* VImage::ms_bundleIdentifier = nullptr;

namespace {

template <class T>
void ReleaseAndClear(T*& object) {
    if (T* const released = std::exchange(object, nullptr)) {
        released->Release();
    }
}

/// What the codec that the path's extension asks for makes of the file (owned); null when it asks for none.
VImage* DecodeFile(char const* path) {
    auto const has = [path](char const* extension) {
        return VString::CStringHasPathExtension(path, extension, true);
    };
    if (has("tga")) {
        return VImageIOTarga().LoadImageFromFile(path);
    }
    if (has("jpeg") || has("jpg")) {
        return VImageIOJPEG().LoadImageFromFile(path);
    }
    return has("png") ? VImageIOPNG().LoadImageFromFile(path) : nullptr;
}

} // namespace

VImage::VImage(VClass* cls) : Registered(cls) {
}

VImage::~VImage() = default;

void VImage::InitializeClass() {
    if (!ms_imageCache) {
        ms_imageCache = VObjectArray::NewObjectArray();
    }
    if (!ms_imageNames) {
        ms_imageNames = new VObjectContainer(nullptr, 0, true);
    }
    ms_cacheEnabled = true;
}

void VImage::UninitializeClass() {
    ms_cacheEnabled = false;
    ReleaseAndClear(ms_imageCache);
    ReleaseAndClear(ms_imageNames);
    if (VString* const path = ms_defaultImageResourcePath.exchange(nullptr)) {
        path->Release();
    }
    ReleaseAndClear(ms_bundleIdentifier);
}

// Loading and the cache

VImage* VImage::ImageFromFile(char const* path) {
    if (!path) {
        return nullptr;
    }
    char name[kMaxPathLength + 1] = {};
    VString::strncpy(name, path, kMaxPathLength);
    VFileManager::MakePathUseHostSeparator(name);
    if (VImage* const cached = FindImageInCacheWithName(name)) {
        cached->Retain();
        return cached;
    }
    auto loaded = VObjectRef<VImage>::Adopt(DecodeFile(name));
    if (loaded && AddNamedImageToCache(name, loaded.Get())) {
        // Another thread may have loaded the same file meanwhile: the first one in the cache is everyone's.
        loaded.Exchange(FindImageInCacheWithName(name));
    }
    return loaded.Detach();
}

VImage* VImage::FindImageInCacheWithName(char const* name) {
    if (!name || !ms_imageNames || !ms_imageCache) {
        return nullptr;
    }
    VCriticalSectionScope scope;
    VObject* const* const names = ms_imageNames->GetObjects(scope);
    for (long i = 0; i < ms_imageNames->Count(); ++i) {
        if (*static_cast<VString const*>(names[i]) == name) {
            return static_cast<VImage*>(ms_imageCache->ObjectAtIndex(i));
        }
    }
    return nullptr;
}

bool VImage::AddNamedImageToCache(char const* name, VImage* image) {
    if (!name || !image || !ms_imageNames || !ms_imageCache) {
        return false;
    }
    bool isCached = false;
    DoWithinMemory([&isCached, name, image] {
        auto const newName = VObjectRef<VString>::Adopt(VString::NewString(name));
        VCriticalSectionScope const scope(ms_imageNames->CriticalSection());
        // An image whose name then fails to be added is not found; the next one takes its place.
        isCached = FindImageInCacheWithName(name) ||
                   (*newName == name && ms_imageCache->ReplaceObjectAtIndex(image, ms_imageNames->Count()) &&
                    ms_imageNames->AddObject(newName.Get()));
    });
    return isCached;
}

VString* VImage::DefaultImageResourcePath() {
    VString* path = ms_defaultImageResourcePath.load(std::memory_order_acquire);
    if (!path) {
        VString* const made = VString::New();
        if (ms_defaultImageResourcePath.compare_exchange_strong(path, made)) {
            return made;
        }
        made->Release(); // another thread was first
    }
    return path;
}

// One image

VString VImage::GetName() const {
    VObjectRef<VString> name;
    {
        detail::MutexLock const lock(m_nameLock);
        name = m_name;
    }
    return name ? *name : VString();
}

void VImage::SetName(char const* name) {
    auto changed = VObjectRef<VString>::Adopt(VString::NewString(name));
    detail::MutexLock const lock(m_nameLock);
    std::swap(m_name, changed); // the old name is released after the lock
}

void VImage::SetImageRef(CGImage* image) {
    m_image = VObjectRef<CGImage>::Adopt(image);
    m_width = image ? image->Width() : 0;
    m_height = image ? image->Height() : 0;
}

} // namespace VFoundation
