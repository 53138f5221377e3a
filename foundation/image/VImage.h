#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/image/VBitmapImage.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

class VObjectArray;
class VObjectContainer;
class VString;

/// A picture: one bitmap with a name, its size and whether it has an alpha channel.
///
///     auto const icon = VObjectRef<VImage>::Adopt(VImage::ImageFromFile("icons/warning.png"));
///     if (icon) { ... icon->ImageRef()->Row(0) ... }
///
/// `ImageFromFile` decodes Targa, JPEG and PNG files, chosen by the path's extension, and remembers every
/// image in a cache of the process, so that a file is decoded once and every caller shares one image. Cached
/// images stay until the library shuts down and are shared: make a new `VImage` for a picture that you change.
///
/// DELIBERATE: of a path `ImageFromFile` uses the first 260 characters; a longer one names another file or none.
/// DELIBERATE: `IsCacheEnabled()` is asked by the codecs only; `ImageFromFile` uses the cache whatever it
/// says.
///
/// Ownership: owns its bitmap; the cache retains the images in it. `ImageFromFile` gives an owned image.
/// Threads: loading, the cache and the name are safe from any thread; two threads that load the same file at
/// once get the same image. Bitmap, size and alpha flag are set by one thread before others see the image.
/// `InitializeClass` and `UninitializeClass` while no other thread loads.
/// Memory: `ImageFromFile` is null without it. `New`, `SetName` and the first `DefaultImageResourcePath` throw
/// `std::bad_alloc`, and leave things as they were.
class VFOUNDATION_API VImage : public Registered<VImage, VObject> {
  public:
    static constexpr char const* kClassName = "VImage";
    static VClass* ms_theClass;

    /// What `ImageFromFile` uses of a path, in characters.
    static constexpr unsigned long kMaxPathLength = 260;
    /// The pixel budget at first.
    static constexpr std::uint64_t kNoPixelBudget = ~0ULL;

    explicit VImage(VClass* cls = nullptr);
    VImage(VImage const&) = delete;
    VImage& operator=(VImage const&) = delete;
    ~VImage() override;

    [[nodiscard]] static VImage* New() { return new VImage; }
    /// Makes the cache and switches it on.
    static void InitializeClass();
    /// Ends the cache and forgets the resource path; images in use elsewhere live on.
    static void UninitializeClass();

    /// The image in the file (owned), from the cache if it is there. '\' counts as '/'. The extensions are
    /// "tga", "jpeg", "jpg" and "png", any case. Null when the path is null or has another extension, and when the
    /// file is missing, damaged or too large, which the codec reports (`ImageLoadReason`). Without memory for the cache
    /// the image is not cached.
    [[nodiscard]] static VImage* ImageFromFile(char const* path);

    /// The first image cached under exactly this name (borrowed), or null.
    static VImage* FindImageInCacheWithName(char const* name);
    /// Caches `image` (retained) under `name`. True as well when that name is taken, and then nothing is added;
    /// false without a cache or memory, and for null arguments.
    static bool AddNamedImageToCache(char const* name, VImage* image);
    static bool IsCacheEnabled() noexcept { return ms_cacheEnabled.load(std::memory_order_relaxed); }

    /// Where files are looked for that do not exist at their own path: the path is appended to this one.
    /// Empty at first; the application sets it before it loads images from several threads. Never null;
    /// borrowed.
    static VString* DefaultImageResourcePath();

    /// The most pixels that a picture may have to be loaded, for all codecs and threads from now on. At first the limits
    /// of each codec hold alone; a budget only lowers them. It outlives the library's shut-down.
    static void SetPixelBudget(std::uint64_t pixels) noexcept {
        ms_pixelBudget.store(pixels, std::memory_order_relaxed);
    }
    static std::uint64_t PixelBudget() noexcept { return ms_pixelBudget.load(std::memory_order_relaxed); }

    /// The file that the image came from, as its loader was given it; empty when none was set. A copy, as a
    /// cached image takes another name when it is asked for by another spelling of its path.
    VString GetName() const;
    /// Null is the empty name.
    void SetName(char const* name);

    /// Shows `image` instead (adopted: takes over the caller's reference) with its width and height, 0 for
    /// null.
    void SetImageRef(CGImage* image);
    /// The bitmap (borrowed), or null.
    CGImage* ImageRef() const noexcept { return m_image.Get(); }

    /// Whether any pixel may be other than opaque. DELIBERATE: always true for JPEG and PNG files.
    bool HasAlpha() const noexcept { return m_hasAlpha; }
    void SetHasAlpha(bool hasAlpha) noexcept { m_hasAlpha = hasAlpha; }

    /// Pixels.
    std::uint32_t Width() const noexcept { return m_width; }
    std::uint32_t Height() const noexcept { return m_height; }

    /// The cache: entry i of the names, whose lock guards both, names image i. Null before `InitializeClass`.
    static std::atomic<VObjectArray*> ms_imageCache;
    static std::atomic<VObjectContainer*> ms_imageNames;
    static std::atomic<bool> ms_cacheEnabled; // relaxed: a switch; the cache has a lock
    static std::atomic<VString*> ms_defaultImageResourcePath;
    /// For an application's own use; released with the class.
    static VObject* ms_bundleIdentifier;

  private:
    static std::atomic<std::uint64_t> ms_pixelBudget; // relaxed: a setting

    VObjectRef<CGImage> m_image;
    VObjectRef<VObject>
        m_importer; // a decoder that lives as long as the image; the library's codecs keep none
    mutable detail::Mutex m_nameLock;
    /// Null until a name is set; the string itself never changes.
    VObjectRef<VString> m_name VFOUNDATION_GUARDED_BY(m_nameLock);
    bool m_hasAlpha = false;
    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
};

} // namespace VFoundation
