#include "foundation/image/VImage.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <utility>

namespace VFoundation {

namespace {

/// Replaces `member` by the image in that file and releases the old one. False, with `member` unchanged, when the
/// file does not load.
bool LoadImageFileToMember(char const* path, VImage*& member) {
    VImage* const image = VImage::ImageFromFile(path);
    if (!image) {
        return false;
    }
    if (VImage* const old = std::exchange(member, image)) {
        old->Release();
    }
    return true;
}

} // namespace

bool VXMLFile::ReadImageAttribute(char const* name, VImage*& image) {
    char const* path = nullptr;
    if (!ReadAttribute(name, path) || !*path) {
        return false;
    }
    LoadImageFileToMember(path, image);
    return true;
}

bool VXMLFile::WriteImageAttribute(char const* name, VImage* image) {
    if (image) {
        WriteAttribute(name, image->GetName());
    }
    return false;
}

bool VXMLFile::SerializeImageAttribute(char const* name, VImage*& image) {
    return IsSaving() ? WriteImageAttribute(name, image) : ReadImageAttribute(name, image);
}

} // namespace VFoundation
