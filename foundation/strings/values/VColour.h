#pragma once

#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/NamedColours.h"
#include "foundation/strings/values/SColour.h"

#include <atomic>

namespace VFoundation {

/// A colour as an object, with an optional name; and the library's named colours:
///
///     VColour* const gold = VColour::Gold();
///     VColour* const same = VColour::GetColourNamed("gold");
///
/// Each named colour is made on first use; the start of the library makes all of them. They are shared: do not change
/// them. Several names share a value. "Light Blue" and "Orange" are not the web's colours of those names.
///
/// Ownership: owns its name. Accessors and `GetColourNamed` give borrowed colours, which live until
/// `UninitializeClass`, or until `ReleaseAllStaticColours` when they were made without `ms_namedColoursArray`.
/// Threads: one thread at a time per colour; any thread may ask for named ones.
class VFOUNDATION_API VColour : public Registered<VColour, VObject>, public SColour {
  public:
    static constexpr char const* kClassName = "VColour";
    static VClass* ms_theClass;

    /// Opaque black, unnamed.
    explicit VColour(VClass* cls = nullptr) : Registered(cls) {}
    /// A null name leaves the colour unnamed.
    VColour(int r, int g, int b, int a, char const* name) : VColour(nullptr, SColour(r, g, b, a), name) {}
    VColour(unsigned long packed, char const* name) : VColour(nullptr, SColour(packed), name) {}
    VColour(VColour const& other);
    /// Takes the name; `other` has none then.
    VColour(VColour&& other) noexcept;
    ~VColour() override;
    VColour& operator=(VColour const& other);
    VColour& operator=(VColour&& other) noexcept;

    [[nodiscard]] static VColour* New() { return new VColour; }
    /// The same colour and name (owned).
    [[nodiscard]] VColour* Copy() const override;

    /// Null sets an empty name.
    void SetName(char const* name);
    /// Empty when the colour has none.
    char const* GetName() const noexcept;

    /// Same class and same components; names do not count.
    bool IsEqual(VObject const& other) const override;

    /// Writes "colour" in the tagged style. Reads it, or else those of the attributes "red", "green", "blue" and
    /// "alpha" of older documents that are there. False when none of them is.
    bool SerializeAsXML(VXMLFile& file) override;

    /// The first colour in `ms_namedColoursArray` of that name, ignoring case; null when there is none.
    static VColour* GetColourNamed(char const* name);

#define VFOUNDATION_ROW(accessor, name, r, g, b, a) eNamed##accessor,
    enum eNamed : int { VFOUNDATION_NAMED_COLOURS(VFOUNDATION_ROW) kNamedCount };
#undef VFOUNDATION_ROW
    /// The named colour, made on first use and entered in `ms_namedColoursArray` when there is one. Null for a number
    /// that is none of `eNamed`. When memory runs out, throws `std::bad_alloc` or a `VException` with id 1, and the next
    /// use tries again.
    static VColour* Named(eNamed which);
    // `VColour::Aqua()` and the others.
#define VFOUNDATION_ROW(accessor, name, r, g, b, a)                                                          \
    static VColour* accessor() {                                                                             \
        return Named(eNamed##accessor);                                                                      \
    }
    VFOUNDATION_NAMED_COLOURS(VFOUNDATION_ROW)
#undef VFOUNDATION_ROW

    static void InitAllNamedColours();
    /// Forgets every named colour; the next use of an accessor makes a new one.
    static void ReleaseAllStaticColours();
    /// Makes the array of named colours, empty. No other thread may use named colours meanwhile.
    static void InitializeClass();
    static void UninitializeClass();

    static VObjectArrayTmpl<VColour>* ms_namedColoursArray;
    /// release and acquire: hand over the colour; relaxed under the lock of those who make one.
    static std::atomic<VColour*> ms_namedColours[kNamedCount];

    static char const* const ms_pchRedTag;
    static char const* const ms_pchGreenTag;
    static char const* const ms_pchBlueTag;
    static char const* const ms_pchAlphaTag;

  protected:
    /// For derived classes, with their record or null. A null name leaves the colour unnamed.
    VColour(VClass* cls, SColour const& colour, char const* name);

  private:
    static void UninitializeArray();

    VObjectRef<VString> m_name; // null until set
};

} // namespace VFoundation
