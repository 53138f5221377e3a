#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/VData.h"

namespace VFoundation {

/// A row of floats with the arithmetic that signals, curves and tables need: samples, spectra, look-up tables.
///
///     VFloatVector levels(512);
///     levels.Fill(1.0F);
///     levels.Scale(0.5F);
///     double const mean = levels.Sum() / levels.Count();
///
/// Two vectors are combined element by element and must have the same count. A count above `kMaxCount`, or one for
/// which there is no memory, throws a `VException` with id 1 and leaves the vector as it was.
///
/// XML holds the attribute "count" and the numbers as text, with blanks between. A chunked file holds a 32-bit count
/// and the floats. A vector reads back bit for bit, except that XML does not tell NaNs apart.
///
/// Ownership: owns its elements.
/// Threads: one thread at a time; any number may read.
class VFOUNDATION_API VFloatVector : public Registered<VFloatVector, VObject> {
  public:
    static constexpr char const* kClassName = "VFloatVector";
    static VClass* ms_theClass;

    static constexpr long kMaxCount = static_cast<long>(VData::kMaxLength / sizeof(float));

    /// `count` zeros; none for a negative count.
    explicit VFloatVector(long count = 0) : VFloatVector(nullptr, count) {}
    VFloatVector(VFloatVector const& other);
    VFloatVector& operator=(VFloatVector const& other);
    /// Takes the elements; `other` is empty then.
    VFloatVector(VFloatVector&& other) noexcept;
    VFloatVector& operator=(VFloatVector&& other) noexcept;
    ~VFloatVector() override;

    /// An empty vector (owned).
    [[nodiscard]] static VFloatVector* New();
    /// The same elements in a vector of their own (owned).
    [[nodiscard]] VFloatVector* Copy() const override;
    /// Same class and the same elements, bit for bit.
    bool IsEqual(VObject const& other) const override;
    /// "[<class name>] Count: <count>".
    void GetDescription(VString& out) const override;
    /// False, and the vector empty, when a chunked file does not hold as many floats as it says.
    bool Serialize(IAIFile& file) override;
    /// False, and the vector empty, when the text holds anything but "count" numbers.
    bool SerializeAsXML(VXMLFile& file) override;

    long Count() const noexcept { return static_cast<long>(m_data.Length() / sizeof(float)); }
    /// Cuts the vector off or appends zeros; a negative count is 0.
    void SetCount(long count);
    /// Exchanges the elements of two vectors.
    void Swap(VFloatVector& other) noexcept { m_data.Swap(other.m_data); }

    /// 0 out of range.
    float ElementAtIndex(long index) const noexcept { return Contains(index) ? Elements()[index] : 0.0F; }
    /// False out of range.
    bool SetElementAtIndex(float value, long index) noexcept;
    /// All elements (borrowed until the count changes), 16-byte aligned; null when there are none.
    float* Elements() noexcept { return reinterpret_cast<float*>(m_data.Bytes()); }
    float const* Elements() const noexcept { return reinterpret_cast<float const*>(m_data.Bytes()); }

    void Fill(float value) noexcept;
    /// Adds each element of `other`, which may be this vector. False, nothing changed, when the counts differ.
    bool Add(VFloatVector const& other) noexcept;
    /// Multiplies by each element of `other`, as `Add` adds.
    bool Multiply(VFloatVector const& other) noexcept;
    void Scale(float factor) noexcept;

    /// Added up in double precision; 0 when empty.
    double Sum() const noexcept;
    /// NaNs do not count; positive infinity when there is nothing else.
    float Minimum() const noexcept;
    /// NaNs do not count; negative infinity when there is nothing else.
    float Maximum() const noexcept;

  protected:
    /// For derived classes, with their record or null.
    VFloatVector(VClass* cls, long count);

  private:
    bool Contains(long index) const noexcept { return index >= 0 && index < Count(); }
    bool Load(IAIFile& file);
    bool Load(VXMLFile& file);

    VData m_data;
};

} // namespace VFoundation
