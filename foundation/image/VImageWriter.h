#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VObjectRef.h"

#include <string>

namespace VFoundation {

class VBitmapImage;
class VData;
class VImage;
class VString;

/// Writes pictures as PNG files, and says why when it cannot.
///
///     VImageWriter writer;
///     if (!writer.WritePng(*image, "small.png")) { ... writer.ErrorDescription() ... }
///
/// A picture that is opaque everywhere is stored as 24-bit colours, every other one as 32-bit colours with alpha, not
/// multiplied by it. Read again, the pixels are the same; only colours brighter than their alpha, which no picture
/// should have, are cut to it.
///
/// Ownership: pictures are borrowed for the call, results are the caller's.
/// Threads: one thread at a time; as many writers as are wanted.
/// Memory: without it writing is false or null, and the description says so.
class VFOUNDATION_API VImageWriter {
  public:
    /// From 0, fast, to 9, small.
    static constexpr int kUsualCompression = 6;

    /// A compression out of range counts as the nearest.
    explicit VImageWriter(int compression = kUsualCompression) noexcept;

    /// Writes a file next to `path`, which it replaces once it is complete and on the disk; on failure what was at
    /// `path` stays. False also for an image without bitmap.
    [[nodiscard]] bool WritePng(VImage const& image, std::string const& path);
    [[nodiscard]] bool WritePng(VBitmapImage const& bitmap, std::string const& path);
    /// The file in memory; null when that fails.
    [[nodiscard]] VObjectRef<VData> EncodePng(VImage const& image);
    [[nodiscard]] VObjectRef<VData> EncodePng(VBitmapImage const& bitmap);

    /// Why the last picture could not be written, as in "cannot write a/b.png: No space left on device"; empty when it
    /// was.
    VString ErrorDescription() const;

  private:
    template <class Work>
    bool Do(VBitmapImage const* bitmap, std::string const& name, Work work);
    bool Write(VBitmapImage const* bitmap, std::string const& path);
    VObjectRef<VData> Encode(VBitmapImage const* bitmap);

    int m_compression;
    std::string m_error;
};

} // namespace VFoundation
