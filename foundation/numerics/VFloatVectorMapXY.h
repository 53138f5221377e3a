#pragma once

#include "foundation/core/Export.h"
#include "foundation/numerics/VFloatVector.h"

namespace VFoundation {

/// A curve through points, ordered by x: a straight line between two points, level before the first and after the
/// last. For response curves, envelopes and calibration tables.
///
///     VFloatVectorMapXY fade;
///     fade.AddPoint(0.0F, 1.0F);
///     fade.AddPoint(10.0F, 0.0F);
///     fade.ValueAt(2.5F);                 // 0.75
///
/// Points have finite coordinates, and no two have the same x. In files a curve is its two vectors, x first; in XML
/// they are called "x" and "y". When memory runs out, a `VException` with id 1 is thrown, and the points stay.
///
/// Ownership: owns its points.
/// Threads: one thread at a time; any number may read.
class VFOUNDATION_API VFloatVectorMapXY : public Registered<VFloatVectorMapXY, VObject> {
  public:
    static constexpr char const* kClassName = "VFloatVectorMapXY";
    static VClass* ms_theClass;

    explicit VFloatVectorMapXY(VClass* cls = nullptr);
    VFloatVectorMapXY(VFloatVectorMapXY const& other);
    VFloatVectorMapXY& operator=(VFloatVectorMapXY const& other);
    /// Takes the points; `other` has none then.
    VFloatVectorMapXY(VFloatVectorMapXY&& other) noexcept;
    VFloatVectorMapXY& operator=(VFloatVectorMapXY&& other) noexcept;
    ~VFloatVectorMapXY() override;

    /// A curve without points (owned).
    [[nodiscard]] static VFloatVectorMapXY* New();
    /// The same points in a curve of their own (owned).
    [[nodiscard]] VFloatVectorMapXY* Copy() const override;
    /// Same class and the same points, bit for bit.
    bool IsEqual(VObject const& other) const override;
    /// "[<class name>] Count: <points>".
    void GetDescription(VString& out) const override;
    /// False, and no points, when the file does not hold a curve.
    bool Serialize(IAIFile& file) override;
    bool SerializeAsXML(VXMLFile& file) override;

    long Count() const noexcept { return m_x.Count(); }
    /// The coordinates in order of x, at equal indexes.
    VFloatVector const& X() const noexcept { return m_x; }
    VFloatVector const& Y() const noexcept { return m_y; }

    /// Adds a point, or gives the point at `x` another `y`. False for a coordinate that is not finite. Points after it
    /// are moved, so adding in order of x is cheapest.
    bool AddPoint(float x, float y);
    /// Replaces all points. False, nothing changed, when the counts differ, a coordinate is not finite or the x do not
    /// ascend. The vectors may be the curve's own.
    bool SetPoints(VFloatVector const& x, VFloatVector const& y);
    void RemoveAllPoints();

    /// The height of the curve at `x`; 0 without points, NaN at NaN.
    float ValueAt(float x) const noexcept;
    /// Replaces each element by the height of the curve there.
    void Apply(VFloatVector& values) const noexcept;

  private:
    bool SetOrClear(bool isRead, VFloatVector const& x, VFloatVector const& y);

    VFloatVector m_x;
    VFloatVector m_y;
};

} // namespace VFoundation
