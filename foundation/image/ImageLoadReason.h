#pragma once

#include "foundation/core/Export.h"

#include <string>

namespace VFoundation {

class VString;

/// Why a picture could not be loaded by `VImage::ImageFromFile` or a codec, whose results do not say:
///
///     ImageLoadReason const reason;
///     auto const icon = VObjectRef<VImage>::Adopt(VImage::ImageFromFile("icons/warning.png"));
///     if (!icon) { VLog::Trace("%s\n", reason.ErrorDescription().CString()); }
///
/// It hears of the loads of its thread as long as it lives; of nested ones the innermost does. What a codec writes to the
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

    /// Of the last load that failed, as in "cannot load a/b.png: IDAT: CRC error"; empty when none did. Without memory
    /// `std::bad_alloc`.
    VString ErrorDescription() const;

    /// For codecs: tells the innermost object of the thread, if there is one. Without memory the reason is lost.
    static void Note(char const* path, char const* reason) noexcept;

  private:
    ImageLoadReason* const m_outer;
    std::string m_text;
};

} // namespace VFoundation
