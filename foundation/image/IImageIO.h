#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

class VData;
class VImage;
class VObjectArray;
class VString;

/// A codec: turns files of one format into images and back. The codecs keep no state between calls; make one
/// on the stack where it is needed, or let `VImage::ImageFromFile` choose.
///
/// Ownership: images that come out are owned by the caller; what goes in is borrowed.
/// Threads: any number of threads may use one codec.
/// Memory: loading, converting and saving that find none are null or false. `SupportedFileExtensions` throws
/// `std::bad_alloc`.
class VFOUNDATION_API IImageIO {
  public:
    virtual ~IImageIO() = default;

    /// The image in the file (owned), or null.
    virtual VImage* LoadImageFromFile(char const* path) const = 0;
    virtual VImage* LoadImageFromFile(VString const& path) const = 0;
    /// Decodes a whole file held in memory into `image`. False, with the image as it was, when the data cannot
    /// be decoded.
    virtual bool ConvertDataToImage(VData const& data, VImage& image) const = 0;
    /// False when the file could not be written, or not whole.
    virtual bool SaveImageToFile(VImage const& image, VString const& path) const = 0;
    /// The extensions without their dots, as strings (owned); null when the codec does not tell.
    virtual VObjectArray* SupportedFileExtensions() const = 0;
};

} // namespace VFoundation
