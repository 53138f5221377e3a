#include "foundation/image/VImage.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/host/VFileManager.h"
#include "foundation/image/ImageLoadReason.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/image/internal/WithinMemory.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VCriticalSectionScope.h"

#include <utility>

namespace VFoundation {

VClass* VImage::ms_theClass = nullptr;
std::atomic<VObjectArray*> VImage::ms_imageCache{nullptr};
std::atomic<VObjectContainer*> VImage::ms_imageNames{nullptr};
std::atomic<bool> VImage::ms_cacheEnabled{false};
std::atomic<std::uint64_t> VImage::ms_pixelBudget{kNoPixelBudget};
std::atomic<VString*> VImage::ms_defaultImageResourcePath{nullptr};
VObject* VImage::ms_bundleIdentifier = nullptr;

namespace {

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
    if (has("png")) {
        return VImageIOPNG().LoadImageFromFile(path);
    }
    ImageLoadReason::Note(path, "its name has no extension of a picture");
    return nullptr;
}

} // namespace

VImage::VImage(VClass* cls) : Registered(cls) {
}

VImage::~VImage() = default;

void VImage::InitializeClass() {
    detail::MakeOnce(ms_imageCache, &VObjectArray::NewObjectArray);
    detail::MakeOnce(ms_imageNames, [] { return new VObjectContainer(nullptr, 0, true); });
    ms_cacheEnabled = true;
}

void VImage::UninitializeClass() {
    ms_cacheEnabled = false;
    detail::ReleaseAndClear(ms_imageCache);
    detail::ReleaseAndClear(ms_imageNames);
    detail::ReleaseAndClear(ms_defaultImageResourcePath);
    detail::ReleaseAndClear(ms_bundleIdentifier);
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
        // Another thread may have loaded the same file meanwhile: all callers share the image cached first.
        loaded.Exchange(FindImageInCacheWithName(name));
    }
    return loaded.Detach();
}

VImage* VImage::FindImageInCacheWithName(char const* name) {
    VObjectContainer* const allNames = ms_imageNames;
    VObjectArray* const cache = ms_imageCache;
    if (!name || !allNames || !cache) {
        return nullptr;
    }
    VCriticalSectionScope scope;
    VObject* const* const names = allNames->GetObjects(scope);
    for (long i = 0; i < allNames->Count(); ++i) {
        if (*static_cast<VString const*>(names[i]) == name) {
            return static_cast<VImage*>(cache->ObjectAtIndex(i));
        }
    }
    return nullptr;
}

bool VImage::AddNamedImageToCache(char const* name, VImage* image) {
    VObjectContainer* const names = ms_imageNames;
    VObjectArray* const cache = ms_imageCache;
    if (!name || !image || !names || !cache) {
        return false;
    }
    bool isCached = false;
    DoWithinMemory([&isCached, name, image, names, cache] {
        auto const newName = VObjectRef<VString>::Adopt(VString::NewString(name));
        VCriticalSectionScope const scope(names->CriticalSection());
        // An image whose name then fails to be added is not found; the next one takes its place.
        isCached = FindImageInCacheWithName(name) ||
                   (*newName == name && cache->ReplaceObjectAtIndex(image, names->Count()) &&
                    names->AddObject(newName.Get()));
    });
    return isCached;
}

VString* VImage::DefaultImageResourcePath() {
    return detail::MakeOnce(ms_defaultImageResourcePath, &VString::New);
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
