#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <atomic>

namespace VFoundation {

template <class T>
class VObjectRingBufferTmpl;

/// The record of one file in an archive: its path and a flag whose meaning is the application's.
///
/// Records that are released for the last time go to a pool of `kPoolCapacity` objects, and come back from it as they
/// were: set what you read.
///
/// Ownership: factories give an owned record.
/// Threads: one thread at a time per record; any thread may release one or take one from the pool.
class VFOUNDATION_API VFileInfo : public Registered<VFileInfo, VObject> {
  public:
    static constexpr char const* kClassName = "VFileInfo";
    static VClass* ms_theClass;

    /// Bytes of a path, its terminator included; longer paths are cut.
    static constexpr unsigned long kPathSize = 260;
    static constexpr unsigned long kPoolCapacity = 8192;

    explicit VFileInfo(VClass* cls = nullptr);
    VFileInfo(VFileInfo const&) = delete;
    VFileInfo& operator=(VFileInfo const&) = delete;

    /// A record (owned), from the pool when it has one.
    /// DELIBERATE: a pooled record keeps its old contents; only a new one is empty.
    static VFileInfo* NewFileInfo();
    static VFileInfo* New() { return NewFileInfo(); }

    char const* Path() const noexcept { return m_path; }
    /// Cut to 259 bytes; null is empty. `path` may be part of the record's own.
    void SetPath(char const* path) noexcept;
    /// The flag that is saved with the path.
    bool Flag() const noexcept { return m_flags[0]; }
    void SetFlag(bool flag) noexcept { m_flags[0] = flag; }

    /// Path and flag. False, with the record as it was, when a path that was saved finds no memory on loading.
    bool Serialize(IAIFile& file) override;
    /// The last release puts the record into the pool, if there is room; records of derived classes are deleted.
    void Release() const override;

    static void InitializeClass();
    static void UninitializeClass();
    /// Empties the pool and removes it; records are deleted from then on.
    static void ReleaseAllRecycledFileInfos();

    /// Switches the pool. The library never does. Relaxed: the pool guards itself.
    static std::atomic<bool> ms_bRecyclingEnabled;
    static std::atomic<VObjectRingBufferTmpl<VFileInfo>*> ms_recycledFileInfos;

  private:
    char m_path[kPathSize] = {};
    bool m_flags[3] = {}; // the first is saved; the others are reserved
    [[maybe_unused]] unsigned char m_reserved[16] = {};
    mutable bool m_inPool = false;
};

} // namespace VFoundation
