// What value objects look like in files: every class that holds data, once.

#include "foundation/strings/values/TSavedObject.h"

#include "foundation/strings/values/VDate.h"
#include "foundation/strings/values/VPDFConnection.h"
#include "foundation/strings/values/VPoint.h"
#include "foundation/strings/values/VRange.h"
#include "foundation/strings/values/VRect.h"
#include "foundation/strings/values/VSize.h"
#include "foundation/strings/values/VTimeRange.h"
#include "foundation/strings/values/VURL.h"
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

} // namespace
