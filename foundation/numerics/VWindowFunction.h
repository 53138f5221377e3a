#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <cstdint>

namespace VFoundation {

class VFloatVector;

/// A window that fades a piece of a signal in and out, as before a Fourier transform: 1 in the middle, low at both
/// ends.
///
///     VWindowFunction(VWindowFunction::eHann).Apply(samples);
///
/// Windows are symmetric: elements i and n - 1 - i are equal. XML holds the name of the type as the attribute "type", a
/// chunked file its 32-bit number.
///
/// Ownership: by reference count.
/// Threads: one thread at a time; any number may read.
class VFOUNDATION_API VWindowFunction : public Registered<VWindowFunction, VObject> {
  public:
    static constexpr char const* kClassName = "VWindowFunction";
    static VClass* ms_theClass;

    /// Both ends are 1 for the rectangular window, 0 for Hann and Blackman, 0.08 for Hamming.
    enum eType : std::int32_t { eRectangular = 0, eHann = 1, eHamming = 2, eBlackman = 3 };

    /// A number that is no type makes a rectangular window.
    explicit VWindowFunction(eType type = eRectangular) : VWindowFunction(nullptr, type) {}
    VWindowFunction(VWindowFunction const& other) : VWindowFunction(nullptr, other.m_type) {}
    VWindowFunction& operator=(VWindowFunction const& other) = default;
    ~VWindowFunction() override;

    /// A rectangular window (owned).
    [[nodiscard]] static VWindowFunction* New();
    /// A window of the same type (owned).
    [[nodiscard]] VWindowFunction* Copy() const override;
    /// Same class and type.
    bool IsEqual(VObject const& other) const override;
    /// "[<class name>] <type>".
    void GetDescription(VString& out) const override;
    /// False, and a rectangular window, when the file has no such type.
    bool Serialize(IAIFile& file) override;
    bool SerializeAsXML(VXMLFile& file) override;

    eType Type() const noexcept { return m_type; }
    /// A number that is no type makes a rectangular window.
    void SetType(eType type) noexcept { SetTypeNumber(type); }

    /// The window at element `index` of `count`: 1 when `count` is 1, 0 when there is no such element.
    double ValueAt(long index, long count) const noexcept;
    /// Multiplies the elements by the window of their count.
    void Apply(VFloatVector& samples) const noexcept;

  protected:
    /// For derived classes, with their record or null.
    VWindowFunction(VClass* cls, eType type);

  private:
    bool SetTypeNumber(int number) noexcept;

    eType m_type = eRectangular;
};

} // namespace VFoundation
