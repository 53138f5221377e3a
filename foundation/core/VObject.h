#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VAtomicOp.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

class IAIFile;
class VClass;
class VString;
class VXMLFile;

/// The root of every class that is counted, created by name, described or saved.
///
/// An object is made with a count of 1, which is its creator's reference. `Retain` and `Release` pair up; the
/// last `Release` calls `DeleteInstance`. Never delete an object from outside. A subclass derives through
/// `Registered<Derived, Base>` (Registered.h), which gives it its class record.
///
/// Lifetime of every pointer in a public signature of this library, unless its comment says otherwise:
/// a parameter is borrowed for the call, and a result of `New...`, `Copy...` and `Create...` is owned by the
/// caller (release it); any other pointer result is borrowed.
///
/// The count word, 32 bits:
///
///     31  30 | 29 ... 0
///     flags  | count
///
/// DELIBERATE: only the low 30 bits count; an object dies when they reach zero whatever the two flag bits
/// say.
///
/// Ownership: by reference count.
/// Threads: `Retain` and `Release` from any thread; everything else is for one thread at a time unless a
/// subclass says more.
class VFOUNDATION_API VObject {
  public:
    static constexpr char const* kClassName = "VObject";
    static constexpr std::int32_t kRetainCountMask = 0x3fffffff;

    virtual ~VObject();

    /// Adds one reference.
    virtual void Retain() const;
    /// Drops one reference; the last one ends in `DeleteInstance`. The object is not touched after that.
    virtual void Release() const;
    /// What happens to an object without references: the base deletes it.
    virtual void DeleteInstance() const;

    /// A new object of the same class (owned), or null when the class has no factory. The base version gives
    /// a default-constructed instance; classes that can copy their state override it.
    [[nodiscard]] virtual VObject* Copy() const;

    /// Writes the object to a chunked file that is storing, reads it from one that is loading.
    /// The base version moves nothing and returns `file.IsLoading()`.
    virtual bool Serialize(IAIFile& file);
    /// Writes the object to an XML document that is saving, reads it from one that is loading.
    /// The base version moves nothing and returns `file.IsLoading()`.
    virtual bool SerializeAsXML(VXMLFile& file);

    /// The text of `GetDescription`.
    virtual VString Description() const;
    /// Sets `out` to a one-line description: "[<class name>]" here.
    virtual void GetDescription(VString& out) const;

    /// The object's address. No class of the library overrides it, so objects that are equal by content, such as
    /// two strings, have different hashes. `std::hash<VString>` hashes text.
    virtual unsigned long Hash() const;
    /// The base version compares the hashes, which makes it identity.
    virtual bool IsEqual(VObject const& other) const;

    VClass* Class() const noexcept { return m_class; }
    /// The registered name of the object's class.
    char const* ClassName() const;
    /// True when the object's class is exactly `cls`.
    bool IsMemberOfClass(VClass const* cls) const noexcept { return m_class == cls; }
    /// True when the object's class is `cls` or derived from it.
    bool IsKindOfClass(VClass const* cls) const;

    /// The references held, without the flag bits. Another thread may have changed it by the time it is used; but
    /// whoever reads 1 holds the last one and sees all that former holders did (hence acquire).
    long RetainCount() const noexcept { return m_count.load(std::memory_order_acquire) & kRetainCountMask; }

    /// The record of `VObject` itself; made on first use.
    static VClass* TheClass();
    /// Start of the library: destructors count again.
    static void InitializeVObject();
    /// End of the library: from here to the next start destructors leave the class records alone.
    static void UninitializeVObject();

    /// The slot that holds the record. Read through `LoadClassSlot`.
    static VClass* ms_theClass;
    static std::atomic<bool> ms_finalShutdown; // relaxed: a switch; counts are exact without it

    /// Copies neither class nor count: both stay those of the target.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    VObject& operator=(VObject const&) noexcept { return *this; }

  protected:
    /// `cls` is the record of the most derived class, whose counters advance; null means `VObject`'s own.
    explicit VObject(VClass* cls = nullptr);
    /// A copy is a new object of its own: count 1, counted in `VObject`. Subclasses pass their class instead.
    VObject(VObject const&) : VObject(nullptr) {}

    /// The whole count word with its flag bits.
    std::atomic<std::int32_t>& CountWord() const noexcept { return m_count; }

  private:
    VClass* m_class;
    mutable std::atomic<std::int32_t> m_count{1}; // acquire: see `RetainCount`
};

} // namespace VFoundation
