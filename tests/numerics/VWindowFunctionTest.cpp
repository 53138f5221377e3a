#include "foundation/numerics/VWindowFunction.h"

#include "tests/numerics/FloatVectors.h"
#include "tests/support/SavedForms.h"

namespace {

using namespace VFoundation;
using VWindowFunctionTest = testing_support::SavedForms;

TEST(VWindowFunction, HasItsValues) {
    struct {
        VWindowFunction::eType type;
        double end, quarter;
    } const windows[] = {{VWindowFunction::eRectangular, 1, 1},
                         {VWindowFunction::eHann, 0, 0.5},
                         {VWindowFunction::eHamming, 0.08, 0.54},
                         {VWindowFunction::eBlackman, 0, 0.34}};
    for (auto const& [type, end, quarter] : windows) {
        VWindowFunction const window(type);
        EXPECT_NEAR(window.ValueAt(0, 9), end, 1e-12);
        EXPECT_NEAR(window.ValueAt(2, 9), quarter, 1e-12);
        EXPECT_NEAR(window.ValueAt(4, 9), 1.0, 1e-12);
        EXPECT_EQ(window.ValueAt(9, 9), 0.0);
        EXPECT_EQ(window.ValueAt(-1, 9), 0.0);
        EXPECT_EQ(window.ValueAt(0, 1), 1.0);
        for (long const count : {0L, 1L, 2L, 9L, 10L}) {
            VFloatVector samples(count);
            samples.Fill(2);
            window.Apply(samples);
            for (long i = 0; i < count; ++i) {
                EXPECT_EQ(samples.ElementAtIndex(i),
                          2 * static_cast<float>(window.ValueAt(count - 1 - i, count)));
            }
        }
    }
}

TEST_F(VWindowFunctionTest, IsRectangularWithoutAType) {
    VWindowFunction window(VWindowFunction::eHann);
    for (int const number : {-1, 4, INT32_MAX}) {
        auto const type = static_cast<VWindowFunction::eType>(number);
        window.SetType(type);
        EXPECT_STREQ(window.Description().CString(), "[VWindowFunction] rectangular");
        EXPECT_EQ(VWindowFunction(type).Type(), VWindowFunction::eRectangular);
    }
    for (bool const isXML : {true, false}) {
        window.SetType(VWindowFunction::eHann);
        m_scratch.SetBytes(std::string("OBJT\0\0\0\4\0\0\0\4", 12));
        EXPECT_FALSE(isXML ? ReadXML(window, "<VWindowFunction type='Bartlett'/>") : ReadChunk(window));
        EXPECT_EQ(window.Type(), VWindowFunction::eRectangular);
    }
}

TEST_F(VWindowFunctionTest, TravelsThroughBothForms) {
    ExpectRoundTrips(VWindowFunction(VWindowFunction::eBlackman), VWindowFunction(),
                     R"(<VWindowFunction type="Blackman" />)");
}

} // namespace
