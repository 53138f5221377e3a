#pragma once

#include "foundation/VFoundation.h"

#include <cstdint>
#include <optional>

namespace catalogue {

using namespace VFoundation;

/// One picture: what the catalogue knows of its file, and what it has made of it. The former is an entry in a document,
/// the latter is in files of its own and found there by the id.
class Photo : public Registered<Photo, VObject> {
  public:
    static constexpr char const* kClassName = "Photo";
    static inline VClass* ms_theClass = nullptr;
    static constexpr int kThumbnailSide = 160;

    explicit Photo(VClass* cls = nullptr) : Registered(cls) {}
    static Photo* New() { return new Photo; }

    /// False when the entry is not a photo's.
    bool SerializeAsXML(VXMLFile& file) override;
    /// Decodes the file. The result is empty, or why that failed.
    VString Make();
    bool IsMade() const noexcept { return thumbnail && fingerprint; }

    int id = 0; // never given to another photo, nor to this one when its file has changed
    VString path;
    long long size = 0;
    long long modified = 0;
    int width = 0;
    int height = 0;
    VObjectRef<VData> thumbnail;                   // a PNG file
    std::optional<unsigned long long> fingerprint; // alike for pictures that look alike
};

} // namespace catalogue
