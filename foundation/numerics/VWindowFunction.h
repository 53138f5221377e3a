#pragma once

#include "foundation/core/Registered.h"

#include <cstdint>

namespace VFoundation {

class VFloatVector;

/// A window for cutting a piece out of a signal, as before a Fourier transform: 1 in the middle, low at both ends.
///
///     VWindowFunction(VWindowFunction::eHann).Apply(samples);
///
/// Windows are symmetric: element i and element n - 1 - i are equal. In files a window is its type: in XML the
/// attribute "type" with its name, in a chunked file 32 bits.
///
/// Ownership: by reference count.
/// Threads: one thread at a time; any number may read.
class VWindowFunction : public Registered<VWindowFunction, VObject> {
  public:
    static constexpr char const* kClassName = "VWindowFunction";
    static VClass* ms_theClass;

    /// Both ends are 1 for the rectangular window, 0 for Hann and Blackman, 0.08 for Hamming.
    enum eType : std::int32_t { eRectangular = 0, eHann = 1, eHamming = 2, eBlackman = 3 };

    explicit VWindowFunction(eType type = eRectangular) : VWindowFunction(nullptr, type) {}
    VWindowFunction(VWindowFunction const& other) : VWindowFunction(nullptr, other.m_type) {}
    VWindowFunction& operator=(VWindowFunction const& other) = default;
    ~VWindowFunction() override;

    /// A rectangular window (owned).
    static VWindowFunction* New();
    /// A window of the same type (owned).
    VWindowFunction* Copy() const override;
    /// Same class and type.
    bool IsEqual(VObject const& other) const override;
    /// "[<class name>] <type>".
    void GetDescription(VString& out) const override;
    /// False, and a rectangular window, when the file has no type of this class.
    bool Serialize(IAIFile& file) override;
    bool SerializeAsXML(VXMLFile& file) override;

    eType Type() const noexcept { return m_type; }
    void SetType(eType type) noexcept { m_type = type; }

    /// The window at element `index` of `count`; 0 outside of it, 1 for the only element of one.
    double ValueAt(long index, long count) const noexcept;
    /// Multiplies the elements by the window of their count.
    void Apply(VFloatVector& samples) const noexcept;

  protected:
    /// For derived classes, with their record or null.
    VWindowFunction(VClass* cls, eType type);

  private:
    bool SetTypeNumber(int number) noexcept;

    eType m_type;
};

} // namespace VFoundation
