#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/VString.h"

#include <cstdint>

namespace VFoundation {

class VObjectArray;

/// One mounted volume. The table of all of them is read once, when the library starts, and never refreshed.
///
/// Listed are the root and every volume on a device or a server, each once, in the order of the system's table.
/// Not listed are kernel file systems, single bound files and what a later mount hides, at the same folder or above it.
/// Network volumes and user-space file systems are not asked for their sizes (0): one that does not answer would
/// block the start.
///
/// Ownership: the tables belong to the class; callers borrow them and their entries.
/// Threads: made and removed by the thread that starts and ends the library; read by any in between.
class VFOUNDATION_API VDiskInfo : public Registered<VDiskInfo, VObject> {
  public:
    static constexpr char const* kClassName = "VDiskInfo";
    static VClass* ms_theClass;

    /// The kind of every volume that the scan finds.
    static constexpr std::int32_t kMountedVolume = 2;
    /// Bytes of a mount path, its terminator included; a longer one is left empty.
    static constexpr unsigned long kMountPathSize = 1024;

    explicit VDiskInfo(VClass* cls = nullptr);
    VDiskInfo(VDiskInfo const&) = delete;
    VDiskInfo& operator=(VDiskInfo const&) = delete;

    static VDiskInfo* New();
    static void UninitializeClass();

    /// Fills both tables, unless they exist. Without memory neither is made, and a later call tries again; what the
    /// failed allocation threw leaves (`std::bad_alloc` or a `VException` with id 1).
    static void InitializeVolumeInformation();

    /// The names (`VString`) and the records (`VDiskInfo`) in the same order; null before the scan.
    static VObjectArray* VDISK_INFO_VOLUME_NAMES;
    static VObjectArray* VDISK_INFO_VOLUME_INFO;

    /// Sizes in bytes; used is total less free, and free includes what only root may fill.
    std::uint64_t FreeBytes() const noexcept { return m_freeBytes; }
    std::uint64_t UsedBytes() const noexcept { return m_usedBytes; }
    std::uint64_t TotalBytes() const noexcept { return m_totalBytes; }
    /// The volume's label, else the last component of its mount path, else "/"; "Unknown" unless scanned.
    VString const& VolumeName() const noexcept { return m_volumeName; }
    /// 0, or `kMountedVolume`.
    std::int32_t Kind() const noexcept { return m_kind; }
    VString const& MountPath() const noexcept { return m_mountPath; }

    /// "VolumeName [<name>], Size [<total bytes>], Free [<free bytes>]".
    void GetDescription(VString& out) const override;

  private:
    std::uint64_t m_freeBytes = 0;
    std::uint64_t m_usedBytes = 0;
    std::uint64_t m_totalBytes = 0;
    [[maybe_unused]] unsigned char m_reserved[16] = {};
    VString m_volumeName{"Unknown"};
    VString m_secondName{"Unknown"}; // not filled by the library
    std::int32_t m_kind = 0;
    [[maybe_unused]] std::int32_t m_reservedWord = 0;
    VString m_mountPath;
};

} // namespace VFoundation
