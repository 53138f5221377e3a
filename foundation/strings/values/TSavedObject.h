#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VObject.h"

namespace VFoundation {

/// The base of value classes that consist of their saved members. The class lists its members once, in its source
/// file (SavedFields.h); copying, equality, description and both file forms follow from that list.
///
/// In a chunked file the members stand one after the other. A member that the file lacks stays or becomes 0, as
/// `IAIFile` says.
///
/// Ownership, threads: as the class.
template <class Derived>
class VFOUNDATION_API TSavedObject : public VObject {
  public:
    /// A new object (owned) of the object's own class with the same value; null when that class cannot be
    /// made.
    [[nodiscard]] VObject* Copy() const override;
    /// Same class and same value.
    bool IsEqual(VObject const& other) const override;
    /// "[<class name>] " and the members as "name: value", with commas between.
    void GetDescription(VString& out) const override;
    /// True.
    bool Serialize(IAIFile& file) override;
    /// Each member is an attribute of its name; an absent one leaves its member. False when one is absent or could not
    /// be written.
    bool SerializeAsXML(VXMLFile& file) override;

  protected:
    explicit TSavedObject(VClass* cls) : VObject(cls) {}
    ~TSavedObject() override = default;
    TSavedObject& operator=(TSavedObject const&) = default;
    TSavedObject(TSavedObject const&) = delete;

    /// Called after members were loaded: a class that restricts their values brings them into range here.
    virtual void MembersLoaded() {}
};

} // namespace VFoundation
