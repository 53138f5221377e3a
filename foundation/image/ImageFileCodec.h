#pragma once

#include "foundation/core/Export.h"
#include "foundation/image/IImageIO.h"

#include <atomic>

namespace VFoundation {

class VBitmapImage;

/// What the codecs have in common: how a path finds its file, the image cache, and the messages of a load that
/// failed. A codec adds the decoding in `LoadResolvedFile`.
///
/// A path's '\' counts as '/'. An image that the cache holds under the path, if the cache is enabled, is
/// retained, takes the path as its name and is the result. A file that does not exist is looked for below
/// `VImage::DefaultImageResourcePath()`.
///
/// DELIBERATE: a codec does not add to the cache, it only looks there; `VImage::ImageFromFile` adds.
///
/// Ownership, threads, memory: as `IImageIO`.
class VFOUNDATION_API ImageFileCodec : public IImageIO {
  public:
    VImage* LoadImageFromFile(char const* path) const final;
    VImage* LoadImageFromFile(VString const& path) const final;

    // DELIBERATE: a codec that only loads files still has these operations; they fail, or give null.
    bool ConvertDataToImage(VData const& data, VImage& image) const override;
    bool SaveImageToFile(VImage const& image, VString const& path) const override;
    VObjectArray* SupportedFileExtensions() const override;

    /// With true, a load that fails says why, for all codecs and threads from now on: the line that codecs write to the
    /// standard error stream goes to the log instead, whole and with the decoder's reason, and a Targa file that is
    /// refused gets such a line too. False at first, and what a codec writes is as it always was.
    static void SetLogsReasons(bool logs) noexcept { ms_logsReasons.store(logs, std::memory_order_relaxed); }
    static bool LogsReasons() noexcept { return ms_logsReasons.load(std::memory_order_relaxed); }

  protected:
    /// The image in the file at `path` (owned), or null once the failure has been reported. `exists` is false
    /// when there was no such file at either place.
    virtual VImage* LoadResolvedFile(VString const& path, bool exists) const = 0;

    /// An image (owned) of a decoded bitmap (adopted), which counts as having alpha. For a null bitmap null,
    /// after writing `failure` to the standard error stream (see `SetLogsReasons`) and the path to the log.
    static VImage* ImageFromBitmap(VBitmapImage* bitmap, char const* failure, char const* reason,
                                   VString const& path);
    static void TraceFailure(VString const& path);
    /// Logs "<failure>: <reason>" while `LogsReasons()`.
    static void TraceReason(char const* failure, char const* reason);

  private:
    VImage* LoadNamedFile(char const* path) const;

    static std::atomic<bool> ms_logsReasons; // relaxed: a switch
};

} // namespace VFoundation
