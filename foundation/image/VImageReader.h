#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/image/VImage.h"

#include <cstddef>
#include <string>

namespace VFoundation {

class ByteSource;
struct DecodeReport;
class VData;

/// Reads JPEG, PNG and Targa pictures from files and from memory, past the image cache, and says why when it cannot.
///
///     VImageReader reader;
///     if (auto const photo = reader.ReadFile("photo.jpg")) {
///         ... photo->ImageRef()->Row(0), reader.Orientation() ...
///     } else {
///         VLog::Trace("%s\n", reader.ErrorDescription().CString());
///     }
///
/// The contents say what a picture is, not the file's name. Decoders, limits and `VImage::PixelBudget()` are those of
/// the codecs (`VImageIOJPEG`, `VImageIOPNG`, `VImageIOTarga`). Nothing is written to the log or to the standard error
/// stream. Images have alpha only where their file has.
///
/// Ownership: images are the caller's. Bytes are borrowed for the call.
/// Threads: one thread at a time; as many readers as are wanted.
/// Memory: without it reading is null, and the description says so.
class VFOUNDATION_API VImageReader {
  public:
    enum class Format { kNone, kJpeg, kPng, kTarga };

    /// Whether a file of that name is likely to be one: its extension is "jpg", "jpeg", "png" or "tga", in any case.
    [[nodiscard]] static bool HasPictureExtension(std::string const& path);

    /// The picture, or null. The image's name is the path; a '\' in it stays.
    [[nodiscard]] VObjectRef<VImage> ReadFile(std::string const& path);
    /// A whole file in memory. The image has no name.
    [[nodiscard]] VObjectRef<VImage> ReadBytes(void const* bytes, std::size_t count);
    [[nodiscard]] VObjectRef<VImage> ReadData(VData const& data);

    /// What the last picture was stored as; `kNone` when it was none of these.
    Format PictureFormat() const noexcept { return m_format; }
    /// How the last picture has to be turned to be upright, by the Exif standard: 1 as it is, 2 mirrored, 3 turned by
    /// 180 degrees, 4 both, 6 to be turned clockwise by 90 degrees, 8 anticlockwise, 5 and 7 likewise and mirrored. 1
    /// when the file does not say. The pixels are as they are stored; `VBitmapImage::Upright` turns them.
    int Orientation() const noexcept { return m_orientation; }
    /// Why the last picture could not be read, as in "cannot read a/b.png: IDAT: CRC error"; empty when it was read.
    VString ErrorDescription() const;

  private:
    template <class Work>
    VObjectRef<VImage> Read(std::string const& name, Work work);
    VObjectRef<VImage> Decode(ByteSource& source, DecodeReport& report) const;
    void Recognise(unsigned char const* start, std::size_t count);

    Format m_format = Format::kNone;
    int m_orientation = 1;
    std::string m_error;
};

} // namespace VFoundation
