#pragma once

#include "foundation/core/VObject.h"

namespace VFoundation {

/// The base of value classes whose saved members are all there is to them. The class lists its members once,
/// in its source file (SavedFields.h), and copying, equality, description and both file forms follow.
///
/// In a chunked file the members stand one after the other. Loading what that file lacks leaves the member, or
/// makes it 0, as `IAIFile` says.
///
/// Ownership, threads: as the class.
template <class Derived>
class TSavedObject : public VObject {
  public:
    /// A new object (owned) of the object's own class with the same value; null when that class cannot be
    /// made.
    VObject* Copy() const override;
    /// Same class and same value.
    bool IsEqual(VObject const& other) const override;
    /// "[<class name>] " and the members as "name: value", with commas between.
    void GetDescription(VString& out) const override;
    /// True.
    bool Serialize(IAIFile& file) override;
    /// Each member is an attribute of its name. False when one is absent, whose member stays, or could not be
    /// written.
    bool SerializeAsXML(VXMLFile& file) override;

  protected:
    explicit TSavedObject(VClass* cls) : VObject(cls) {}
    ~TSavedObject() override = default;
    TSavedObject& operator=(TSavedObject const&) = default;
    TSavedObject(TSavedObject const&) = delete;

    /// Called when members were loaded: a class that restricts their values restores its order here.
    virtual void MembersLoaded() {}
};

} // namespace VFoundation
