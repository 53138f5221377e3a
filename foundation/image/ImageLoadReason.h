#pragma once

#include "foundation/core/Export.h"

#include <string>

namespace VFoundation {

class VString;

/// Why a picture could not be loaded by `VImage::ImageFromFile` or a codec, or saved by one, whose results do not say:
///
///     ImageLoadReason const reason;
///     auto const icon = VObjectRef<VImage>::Adopt(VImage::ImageFromFile("icons/warning.png"));
///     if (!icon) { VLog::Trace("%s\n", reason.ErrorDescription().CString()); }
///
/// It hears of its thread's pictures as long as it lives; of nested ones the innermost does. What a codec writes to the
/// standard error stream and the log stays as it is. `VImageReader` needs none.
///
/// Ownership: a local object; it cannot be copied.
/// Threads: used by the thread that made it.
class VFOUNDATION_API ImageLoadReason {
  public:
    ImageLoadReason() noexcept;
    ImageLoadReason(ImageLoadReason const&) = delete;
    ImageLoadReason& operator=(ImageLoadReason const&) = delete;
    ~ImageLoadReason();

    /// Of the last failure, as in "cannot load a/b.png: IDAT: CRC error" and "cannot save a/b.tga: No space left on
    /// device"; empty when there was none. Without memory `std::bad_alloc`.
    VString ErrorDescription() const;

    /// For codecs that could not load or save: tells the innermost object of the thread, if there is one. Without
    /// memory the reason is lost.
    static void Note(char const* path, char const* reason) noexcept;
    static void NoteSaving(char const* path, char const* reason) noexcept;

  private:
    static void Tell(char const* action, char const* path, char const* reason) noexcept;

    ImageLoadReason* const m_outer;
    std::string m_text;
};

} // namespace VFoundation
