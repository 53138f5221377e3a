#pragma once

#include "foundation/core/VClass.h"

#include <map>
#include <string>

namespace VFoundation {

class VCriticalSection;

/// The process's list of class records and what is kept beside it. Internal to the kernel; `VClass` is its
/// interface.
///
/// Life of the list: made by the first record, ended by `Destroy`, made again by the next record. Records
/// that outlive a list (instances exist, or it is the entry that the walk does not visit) are *kept*: they
/// hang on a chain of their own until their class's next `TheClass()` enters them again. Records that were to
/// be deleted while instances exist are *set aside*: the last instance frees them.
///
/// Threads: any, except that nothing else uses the registry during `Destroy`. Whatever changes the registry holds
/// a `CreationScope` and, where there is a list, the list's critical section inside it. Look-ups read the name
/// index without a lock; without an index they lock and make one.
struct ClassRegistry {
    /// Serialises the making of records. Re-entrant: a record may be made while another is. Held while user code
    /// runs only by the dump, whose log it calls, and by the end of the registry.
    class CreationScope {
      public:
        CreationScope() noexcept;
        ~CreationScope();
        CreationScope(CreationScope const&) = delete;
        CreationScope& operator=(CreationScope const&) = delete;
        static bool IsHeldByThisThread() noexcept;
    };

    /// Enters a record that is being made, and counts it.
    static void Register(VClass* record);
    /// Undoes `Register`.
    static void Unregister(VClass* record);
    /// Empties the slot of a record that goes.
    static void ClearSlot(VClass* record);
    static VClass* Find(char const* name);
    /// The record registered under exactly this name, the last one included; null if none.
    static VClass* FindExactly(char const* name);
    /// The record whose name sorts last, which look-up by name does not find; null when there is no registry. The
    /// order of the records stays.
    static VClass* LastByName();
    static void Sort();
    static void Destroy();
    static bool Exists() noexcept;
    /// The record of `VClass` itself.
    static VClass* OwnRecord();
    static std::map<std::string, VClass*>& Substitutions();

    /// Null when there is no registry.
    static VCriticalSection* Lock() noexcept;
    static long Count();
    static VClass* RecordAt(long index);

    /// Ends a record outside the walk: deletes it, or sets it aside while instances exist. Its slot is cleared
    /// either way. Null is ignored.
    static void Retire(VClass* record);
    /// Takes out a record without instances and subclasses, with the substitutions that lead to it. Its slot is
    /// cleared; it is the caller's to delete.
    static void TakeOut(VClass* record);
    /// Whether a record derives directly from this one, apart from those that `ender` has claimed.
    static bool HasSubclasses(VClass const& record, void const* ender);
    static bool IsClaimed(VClass const& record, void const* ender) noexcept;
    /// Frees a record that was set aside and has no instances left.
    static void FreeSetAside(VClass* record) noexcept;
    /// Enters a record that outlived a registry in the present one, below `superClass`.
    static void Reattach(VClass* record, VClass* superClass);
    /// Marks every record, so that `InitializeMarked` or the class's turn at the next start runs its hook again.
    static void MarkAllForInitialization();
    static void InitializeMarked();

  private:
    static void MakeIfAbsent();
    static void Make();
    static void EnterInList(VClass* record);
    static void LeaveList(VClass* record);
    static void Append(VClass* record);
    static void DropNameIndex() noexcept;
    static void WalkAndDelete();
    static void Delete(VClass* record);
    static void ForgetAsSuperClass(VClass const* record);
    template <class Visit>
    static void ForAll(Visit visit);
    static void Keep(VClass* record);
    static void DropFromKept(VClass const* record);
    static VClass* NextMarked();
};

} // namespace VFoundation
