#pragma once

#include "foundation/containers/IndexIterator.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <string_view>

namespace VFoundation {

class VObjectArray;
class VString;

/// Maps key objects to value objects: two parallel arrays in order of insertion. Look-up is linear, by
/// `IsEqual`; for the few dozen entries of a settings record, not for an index. 20 000 entries take seconds to set:
/// use a `std::unordered_map` there, with `std::string` or `VString` as the key.
///
///     auto const icons = MakeObject<VDictionary>();
///     icons->SetObjectForKey(icon, "warning");
///     for (auto const& [key, value] : *icons) { ... }
///
/// Keys are copied, so that a caller may change its key afterwards; a key's class must have a `Copy()` that
/// copies. A dictionary that reads itself keeps the entries that it holds already.
///
/// In XML, an entry with a null value is lost. In a chunked file a dictionary writes nothing.
///
/// Destructors of keys and values may use the dictionary: they find it after the change, or empty when it dies.
///
/// Ownership: retains values, owns the copies of keys.
/// Threads: one thread at a time.
class VFOUNDATION_API VDictionary : public Registered<VDictionary, VObject> {
  public:
    static constexpr char const* kClassName = "VDictionary";
    static VClass* ms_theClass;
    /// The version of the class, and of the form in which dictionaries are saved to XML.
    static constexpr long kVersion = 2;

    /// How many dictionaries inside each other can be copied.
    static constexpr int kMaxCopiedNesting = 1000;

    explicit VDictionary(VClass* cls = nullptr);
    VDictionary(VDictionary const&) = delete;
    VDictionary& operator=(VDictionary const&) = delete;
    ~VDictionary() override;

    [[nodiscard]] static VDictionary* New() { return new VDictionary(nullptr); }
    static void InitializeClass();
    static void UninitializeClass();

    /// A new dictionary (owned) of copies of all keys and values.
    [[nodiscard]] VDictionary* Copy() const override;
    /// "[<class name>]", the number of items and both arrays.
    void GetDescription(VString& out) const override;
    /// `kVersion` is written; that and the older form, two named arrays, are read. What cannot be read is
    /// traced and skipped. False when an entry could not be written.
    bool SerializeAsXML(VXMLFile& file) override;

    /// Replaces the value of an equal key, which stays the object it was, or appends a copy of the key and
    /// the value, which may be null. Nothing happens for a null key, for one that cannot be copied, and when an array
    /// may not grow.
    void SetObjectForKey(VObject* value, VObject const* key);
    /// The value; null when the key is null or absent, or when null is the value.
    VObject* ObjectForKey(VObject const* key) const;
    /// Whether there was such a key.
    bool RemoveObjectForKey(VObject const* key);
    /// True also when null is the value. False for null.
    bool ContainsKey(VObject const* key) const;
    long Count() const;

    // The same for a `VString` of that text as the key, or one of a class derived from it. Text from a view ends at
    // its first NUL. Looking up makes no object.
    void SetObjectForKey(VObject* value, std::string_view key);
    VObject* ObjectForKey(std::string_view key) const;
    bool RemoveObjectForKey(std::string_view key);
    bool ContainsKey(std::string_view key) const;

    /// For a range-for over the entries, in order.
    struct Entry {
        VObject* key;   // borrowed
        VObject* value; // borrowed; may be null
    };
    /// Both null out of range.
    Entry EntryAtIndex(long index) const;
    using Iterator = IndexIterator<VDictionary, &VDictionary::EntryAtIndex>;
    Iterator begin() const noexcept { return Iterator(*this); }
    static std::default_sentinel_t end() noexcept { return {}; }

    /// Copies all keys and values of `other` in place of its own. When a copy throws, nothing has changed.
    /// `VException` of id 3 when dictionaries are nested deeper than `kMaxCopiedNesting`.
    void DeepCopyContents(VDictionary const& other);

    /// Keys and values at equal indexes, for the life of the dictionary. A caller that changes the arrays keeps them
    /// equally long.
    VObjectArray* Keys() const noexcept { return m_pKeys.Get(); }
    VObjectArray* Values() const noexcept { return m_pValues.Get(); }

    /// "keyArray" and "valueArray".
    static VString* ms_memberName_keyArray;
    static VString* ms_memberName_valueArray;

  private:
    long IndexOfKey(std::string_view key) const;
    void SetObjectAt(VObject* value, long index);
    void AppendEntry(VObject* value, VObjectRef<VObject> const& key);
    bool RemoveAt(long index);
    void SwapEntries(VObjectArray& keys, VObjectArray& values);
    bool Save(VXMLFile& file);
    void LoadOlderForm(VXMLFile& file);
    void LoadPairs(VXMLFile& file);

    VObjectRef<VObjectArray> m_pKeys;
    VObjectRef<VObjectArray> m_pValues;
};

} // namespace VFoundation
