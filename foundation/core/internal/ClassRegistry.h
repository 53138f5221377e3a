#pragma once

#include "foundation/core/VClass.h"

namespace VFoundation {

class VCriticalSection;

/// The process's list of class records and what is kept beside it. Internal to the kernel: `VClass` is its
/// face.
///
/// Life of the list: made by the first record, ended by `Destroy`, made again by the next record. Records
/// that outlive a list (instances exist, or it is the entry that the walk does not visit) are *kept*: they
/// hang on a chain of their own until their class's next `TheClass()` enters them again. Records that were to
/// be deleted under living instances are *set aside* and freed once the last instance is gone.
///
/// Threads: `Register`, `Destroy` and everything that may make a class record hold `ClassCreationLock()`
/// first and the list's critical section second; look-ups take the critical section only, or no lock at all
/// when the name index stands.
struct ClassRegistry {
    /// Makes the list unless it exists or is just being made.
    static void MakeIfAbsent();
    static void Register(VClass* record);
    static void Unregister(VClass* record);
    static VClass* Find(char const* name);
    static VClass* FindExactly(char const* name);
    static void Sort();
    static void Destroy(VClass* criticalSectionRecord, VClass* objectRecord, VClass* profilerRecord);
    static bool Exists() noexcept;

    /// Null when there is no registry.
    static VCriticalSection* Lock() noexcept;
    static long Count();
    static VClass* RecordAt(long index);

    /// Ends a record outside the walk: deletes it, or sets it aside while instances exist.
    static void Retire(VClass* record);
    static void Reattach(VClass* record);
    static void MarkAllForInitialization();
    /// Frees the records set aside whose last instance is gone.
    static void SweepSetAside();

  private:
    static void Make();
    static void Append(VClass* record);
    static void DropNameIndex();
    static void WalkAndDelete(VClass* criticalSectionRecord, VClass* objectRecord, VClass* profilerRecord);
    static void Delete(VClass* record);
    static void ClearSlot(VClass* record);
    static void ForgetAsSuperClass(VClass const* record);
    static void Keep(VClass* record);
    static void DropFromKept(VClass const* record);
};

} // namespace VFoundation
