#include "foundation/numerics/VFloatVectorMapXY.h"

#include "tests/numerics/FloatVectors.h"
#include "tests/support/SavedForms.h"

#include <cmath>
#include <type_traits>
#include <utility>

namespace {

using namespace VFoundation;
using namespace testing_support;
using VFloatVectorMapXYTest = SavedForms;

TEST(VFloatVectorMapXY, IsStraightBetweenItsPointsAndLevelBeyond) {
    VFloatVectorMapXY curve;
    EXPECT_EQ(curve.ValueAt(3), 0.0F);
    for (float const x : {4.0F, 0.0F, 2.0F, 8.0F}) {
        EXPECT_TRUE(curve.AddPoint(x, x * 10));
    }
    EXPECT_TRUE(curve.AddPoint(2, -20)); // takes the place of the point there
    EXPECT_TRUE(curve.X().IsEqual(VectorOf({0, 2, 4, 8})));
    EXPECT_TRUE(curve.Y().IsEqual(VectorOf({0, -20, 40, 80})));
    EXPECT_TRUE(curve.SetPoints(VectorOf({-kLargest, 0, 2, 4}), VectorOf({-kLargest, 1, 2, 0})));
    VFloatVector values = VectorOf({-kInfinity, -kLargest, -kLargest / 2, 0, 1, 2, 2.5F, 4, kInfinity});
    curve.Apply(values);
    EXPECT_TRUE(values.IsEqual(VectorOf({-kLargest, -kLargest, -kLargest / 2, 1, 1.5F, 2, 1.5F, 0, 0})));
    EXPECT_TRUE(std::isnan(curve.ValueAt(kNaN)));
}

TEST(VFloatVectorMapXY, RefusesWhatIsNoCurve) {
    VFloatVectorMapXY curve;
    EXPECT_TRUE(curve.SetPoints(VectorOf({1, 2}), VectorOf({3, 4})));
    for (float const bad : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_FALSE(curve.AddPoint(bad, 0));
        EXPECT_FALSE(curve.AddPoint(0, bad));
        EXPECT_FALSE(curve.SetPoints(VectorOf({bad}), VectorOf({0})));
        EXPECT_FALSE(curve.SetPoints(VectorOf({0}), VectorOf({bad})));
    }
    EXPECT_FALSE(curve.SetPoints(VectorOf({1, 1}), VectorOf({0, 1})));
    EXPECT_FALSE(curve.SetPoints(VectorOf({1, 2}), VectorOf({0})));
    EXPECT_TRUE(curve.X().IsEqual(VectorOf({1, 2})));
    EXPECT_TRUE(curve.SetPoints(curve.Y(), curve.X())) << "its own vectors";
    EXPECT_TRUE(curve.X().IsEqual(VectorOf({3, 4})));
    EXPECT_TRUE(curve.Y().IsEqual(VectorOf({1, 2})));
}

static_assert(std::is_nothrow_move_constructible_v<VFloatVector> &&
              std::is_nothrow_move_assignable_v<VFloatVector>);
static_assert(std::is_nothrow_move_constructible_v<VFloatVectorMapXY> &&
              std::is_nothrow_move_assignable_v<VFloatVectorMapXY>);

TEST(VFloatVectorMapXY, MovesItsPoints) {
    VFloatVectorMapXY curve;
    EXPECT_TRUE(curve.SetPoints(VectorOf({1, 2}), VectorOf({3, 4})));
    float const* const elements = curve.X().Elements();
    VFloatVectorMapXY taken(std::move(curve));
    EXPECT_EQ(curve.Count(), 0); // NOLINT(bugprone-use-after-move)
    curve = std::move(taken);
    EXPECT_EQ(taken.Count(), 0); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(curve.X().Elements(), elements) << "no element is copied";
    EXPECT_TRUE(curve.IsKindOfClass(VFloatVectorMapXY::TheClass()));
    EXPECT_TRUE(curve.Y().IsEqual(VectorOf({3, 4})));
}

TEST_F(VFloatVectorMapXYTest, TravelsThroughBothForms) {
    VFloatVectorMapXY curve;
    curve.SetPoints(VectorOf({-1, 0.3F, 7}), VectorOf({3, 1, 4}));
    ExpectRoundTrips(curve, VFloatVectorMapXY(),
                     R"(<VFloatVectorMapXY><VFloatVector name="x" count="3">-1 0.3 7</VFloatVector>)"
                     R"(<VFloatVector name="y" count="3">3 1 4</VFloatVector></VFloatVectorMapXY>)");
    for (char const* const x : {"2 1", "1 inf", "1"}) {
        VFloatVectorMapXY read(curve);
        EXPECT_FALSE(ReadXML(read, "<VFloatVectorMapXY><VFloatVector name='x' count='2'>" + std::string(x) +
                                       "</VFloatVector><VFloatVector name='y' count='2'>2 1</VFloatVector>"
                                       "</VFloatVectorMapXY>"))
            << x;
        EXPECT_EQ(read.Count(), 0) << x;
    }
}

} // namespace
