// What value objects look like in files: every class that holds data, once.

#include "foundation/strings/values/TSavedObject.h"

#include "foundation/strings/VStringTokenizer.h"
#include "foundation/strings/values/VBitString.h"
#include "foundation/strings/values/VColour.h"
#include "foundation/strings/values/VDate.h"
#include "foundation/strings/values/VPDFConnection.h"
#include "foundation/strings/values/VPoint.h"
#include "foundation/strings/values/VRange.h"
#include "foundation/strings/values/VRect.h"
#include "foundation/strings/values/VSize.h"
#include "foundation/strings/values/VTimeRange.h"
#include "foundation/strings/values/VURL.h"
#include "foundation/strings/values/VValue.h"
#include "tests/support/SavedForms.h"

#include <climits>

namespace {

using namespace VFoundation;
using TSavedObjectTest = testing_support::SavedForms;

TEST_F(TSavedObjectTest, EveryClassTravelsThroughBothForms) {
    ExpectRoundTrips(VPoint(SPoint{INT32_MIN, INT32_MAX}), VPoint(),
                     R"(<VPoint x="-2147483648" y="2147483647" />)");
    ExpectRoundTrips(VSize(SSize{1, -2}), VSize(), R"(<VSize width="1" height="-2" />)");
    ExpectRoundTrips(VRect(SRect{1, 2, 3, 4}), VRect(), R"(<VRect left="1" top="2" right="3" bottom="4" />)");
    ExpectRoundTrips(VDate(LLONG_MIN), VDate(), R"(<VDate seconds="-9223372036854775808" />)");
    ExpectRoundTrips(VRange(-5, INT32_MAX), VRange(1, 1), R"(<VRange location="-5" length="2147483647" />)");
    ExpectRoundTrips(VTimeRange(-0.25, 1e300), VTimeRange(),
                     R"(<VTimeRange start="-0.25" duration="1e+300" />)");
    ExpectRoundTrips(VURL("http://a/?<&>'\""), VURL("b"),
                     "<VURL url='http://a/?&lt;&amp;&gt;&apos;&quot;' />");
    ExpectRoundTrips(VURL(), VURL("b"), R"(<VURL url="" />)");
    VPDFConnection named;
    named.SetName("");
    named.SetPage(7);
    ExpectRoundTrips(VPDFConnection(), named,
                     R"(<VPDFConnection connection_name="Unconnected" connection_page="0" />)");
    ExpectRoundTrips(named, VPDFConnection(), R"(<VPDFConnection connection_name="" connection_page="7" />)");
}

TEST_F(TSavedObjectTest, AbsentMembersStayAndOthersAreBroughtIntoRange) {
    VPoint point(SPoint{1, 2});
    EXPECT_FALSE(ReadXML(point, "<VPoint y='5'/>"));
    EXPECT_STREQ(point.Description().CString(), "[VPoint] x: 1, y: 5");
    VRange range;
    EXPECT_TRUE(ReadXML(range, "<VRange location='-1' length='-7'/>"));
    EXPECT_TRUE(range == VRange(-1, 0));
    EXPECT_STREQ(VTimeRange(0.5, 2).Description().CString(), "[VTimeRange] start: 0.5, duration: 2");
}

template <class Base>
class ADerivedValue : public Registered<ADerivedValue<Base>, Base> {
  public:
    static constexpr char const* kClassName = "ADerivedValue";
    static inline VClass* ms_theClass = nullptr;
    template <class... Args>
    explicit ADerivedValue(Args const&... args) : Registered<ADerivedValue, Base>(nullptr, args...) {}
    static ADerivedValue* New() { return nullptr; }
};

/// A derived value made with arguments counts in its own class, and moves as its base does.
template <class Base, class... Args>
void ExpectOwnClass(Args const&... args) {
    ADerivedValue<Base> const value(args...);
    EXPECT_TRUE(value.IsMemberOfClass(ADerivedValue<Base>::TheClass())) << Base::kClassName;
    EXPECT_EQ(ADerivedValue<Base>::TheClass()->Existing(), 1) << Base::kClassName;
    if constexpr (std::is_copy_constructible_v<Base>) {
        Base copy(value);
        EXPECT_TRUE(copy.IsMemberOfClass(Base::TheClass()));
        Base moved(std::move(copy));
        Base assigned;
        assigned = std::move(moved);
        EXPECT_TRUE(assigned.IsEqual(Base(value)));
        copy = assigned; // what was moved from takes a value again
        EXPECT_TRUE(copy.IsEqual(assigned));
    }
}

TEST_F(TSavedObjectTest, DerivedValuesAreOfTheirOwnClass) {
    ExpectOwnClass<VPoint>(SPoint{1, 2});
    ExpectOwnClass<VSize>(SSize{1, 2});
    ExpectOwnClass<VRect>(SRect{1, 2, 3, 4});
    ExpectOwnClass<VDate>(5LL);
    ExpectOwnClass<VURL>("http://a/a-path-that-is-long-enough-for-memory-of-its-own");
    ExpectOwnClass<VBitString>(77);
    ExpectOwnClass<VPDFConnection>();
    ExpectOwnClass<VColour>(SColour(1, 2, 3, 4), "mine");
    ExpectOwnClass<VStringTokenizer>("a,b", ',');
    SValue text;
    text.SetValueToString("text");
    ExpectOwnClass<VValue>(text);
    ExpectOwnClass<VData>(33UL);
    SValue taken(std::move(text));
    text = SValue(taken);
    EXPECT_TRUE(text == taken);
    taken.SetValueToInt(5);
    text = std::move(taken);
    EXPECT_EQ(text.GetInt(), 5);
    EXPECT_EQ(taken.Type(), SValue::kUnknown);
}

} // namespace
