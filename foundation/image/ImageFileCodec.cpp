#include "foundation/image/ImageFileCodec.h"

#include "foundation/core/VObjectRef.h"
#include "foundation/host/VFileManager.h"
#include "foundation/image/ImageLoadReason.h"
#include "foundation/image/VImage.h"
#include "foundation/image/internal/WithinMemory.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"

#include <cstdio>
#include <string>

namespace VFoundation {

namespace {

VString WithHostSeparators(char const* path) {
    std::string text(path);
    VFileManager::MakePathUseHostSeparator(text.data());
    return VString(text.c_str());
}

/// Makes `path` the place where its file is, or the last place where it was looked for.
bool ResolvePath(VString& path) {
    VFileManager const* const files = VFileManager::DefaultManager();
    if (files->FileExistsAtPath(path, nullptr)) {
        return true;
    }
    VString resource(*VImage::DefaultImageResourcePath());
    resource.AppendPathComponent(path.CString());
    path = resource;
    return files->FileExistsAtPath(path, nullptr);
}

} // namespace

std::atomic<bool> ImageFileCodec::ms_logsReasons{false};

VImage* ImageFileCodec::LoadImageFromFile(char const* path) const {
    VImage* image = nullptr;
    if (path && !DoWithinMemory([&] { image = LoadNamedFile(path); })) {
        VLog::Trace("Failed to load image: %s\n", path);
        ImageLoadReason::Note(path, "");
    }
    return image;
}

VImage* ImageFileCodec::LoadNamedFile(char const* path) const {
    VString resolved = WithHostSeparators(path);
    if (VImage::IsCacheEnabled()) {
        if (VObjectRef<VImage> cached(VImage::FindImageInCacheWithName(resolved.CString())); cached) {
            cached->SetName(path);
            return cached.Detach();
        }
    }
    bool const exists = ResolvePath(resolved);
    auto image = VObjectRef<VImage>::Adopt(LoadResolvedFile(resolved, exists));
    if (image) {
        image->SetName(path);
    }
    return image.Detach();
}

VImage* ImageFileCodec::LoadImageFromFile(VString const& path) const {
    return LoadImageFromFile(path.CString());
}

bool ImageFileCodec::ConvertDataToImage(VData const& /*data*/, VImage& /*image*/) const {
    return false;
}

bool ImageFileCodec::SaveImageToFile(VImage const& /*image*/, VString const& /*path*/) const {
    return false;
}

VObjectArray* ImageFileCodec::SupportedFileExtensions() const {
    return nullptr;
}

VImage* ImageFileCodec::ImageFromBitmap(VBitmapImage* bitmap, char const* failure, char const* reason,
                                        VString const& path) {
    if (!bitmap) {
        ImageLoadReason::Note(path.CString(), reason);
        if (LogsReasons()) {
            TraceReason(failure, reason);
        } else {
            std::fputs(failure, stderr);
        }
        TraceFailure(path);
        return nullptr;
    }
    auto held = VObjectRef<VBitmapImage>::Adopt(bitmap);
    VImage* const image = VImage::New();
    image->SetImageRef(held.Detach());
    image->SetHasAlpha(true);
    return image;
}

void ImageFileCodec::TraceFailure(VString const& path) {
    VLog::Trace("Failed to load image: %s\n", path.CString());
}

void ImageFileCodec::TraceReason(char const* failure, char const* reason) {
    if (LogsReasons()) {
        VLog::Trace("%s: %s\n", failure, *reason ? reason : "there is no memory");
    }
}

} // namespace VFoundation
