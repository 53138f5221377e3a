#pragma once

#include "foundation/core/Registered.h"
#include "foundation/strings/values/SValue.h"

namespace VFoundation {

/// An `SValue` as an object, for containers, comparison and files.
///
/// What files carry: XML everything but raw pointers; a chunked file bools, chars, integers, floats and
/// doubles, of all others the type alone. In a chunked file a value stands inside a chunk: outside, its type
/// reads as unknown.
///
/// DELIBERATE: loading from a chunked file releases nothing; a string or object held by a value that becomes
/// another type is lost. Clear the value first.
///
/// Ownership: as `SValue`.
/// Threads: one thread at a time.
class VValue : public Registered<VValue, VObject> {
  public:
    static constexpr char const* kClassName = "VValue";
    static VClass* ms_theClass;

    /// A type and its name in XML.
    struct TypeName {
        std::int32_t type;
        char const* name;
    };
    static constexpr long kTypeCount = 9;
    /// All types, in order of their numbers.
    static TypeName const ms_typeNameMap[kTypeCount];

    /// An unknown value.
    explicit VValue(VClass* cls = nullptr) : Registered(cls) {}
    VValue(SValue const& value);
    VValue(VValue const& other);
    ~VValue() override = default;
    static VValue* New() { return new VValue; }

    virtual VValue& operator=(SValue const& value);
    virtual VValue& operator=(VValue const& other);

    SValue& Value() noexcept { return m_value; }
    SValue const& Value() const noexcept { return m_value; }

    /// A new instance of the object's own class (owned): a string is copied, an object shared.
    VObject* Copy() const override;
    /// Same class and `SValue` equality.
    bool IsEqual(VObject const& other) const override;
    /// True.
    bool Serialize(IAIFile& file) override;

    /// The attributes "type" and "value"; an object is a child called "value". A type that is not in the table
    /// reads as unknown, a missing value leaves the payload. False when something is missing or could not be
    /// written.
    bool SerializeAsXML(VXMLFile& file) override;

  private:
    bool SaveValue(VXMLFile& file) const;
    bool LoadValue(VXMLFile& file);

    SValue m_value;
};

} // namespace VFoundation
