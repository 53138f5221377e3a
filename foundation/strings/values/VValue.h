#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/SValue.h"

namespace VFoundation {

/// An `SValue` as an object, for containers, comparison and files.
///
/// XML holds everything but raw pointers. A chunked file holds bools, chars, integers, floats and doubles, and only
/// the type of any other value; it must stand inside a chunk, for outside its type reads as unknown.
///
/// DELIBERATE: loading from a chunked file releases nothing; when the type changes, a string or object that was held
/// leaks. Clear the value first.
///
/// Ownership: as `SValue`.
/// Threads: one thread at a time.
class VFOUNDATION_API VValue : public Registered<VValue, VObject> {
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
    VValue(SValue const& value) : VValue(nullptr, value) {}
    VValue(VValue const& other) : VValue(nullptr, other.m_value) {}
    /// Takes the value; `other` is unknown then. Assignment copies, as derived classes may override it.
    VValue(VValue&& other) noexcept;
    ~VValue() override = default;
    [[nodiscard]] static VValue* New() { return new VValue; }

    virtual VValue& operator=(SValue const& value);
    virtual VValue& operator=(VValue const& other);

    SValue& Value() noexcept { return m_value; }
    SValue const& Value() const noexcept { return m_value; }

    /// A new instance of the object's own class (owned): a string is copied, an object shared.
    [[nodiscard]] VObject* Copy() const override;
    /// Same class and `SValue` equality.
    bool IsEqual(VObject const& other) const override;
    /// True.
    bool Serialize(IAIFile& file) override;

    /// The attributes "type" and "value"; an object is a child called "value", and a null object none. A type that is
    /// not in the table reads as unknown. A missing value leaves the payload, or makes it zero when the type changes.
    /// False when an attribute is missing or could not be written.
    bool SerializeAsXML(VXMLFile& file) override;

  protected:
    /// For derived classes, with their record or null.
    VValue(VClass* cls, SValue const& value) : Registered(cls), m_value(value) {}

  private:
    bool SaveValue(VXMLFile& file) const;
    bool LoadValue(VXMLFile& file);

    SValue m_value;
};

} // namespace VFoundation
