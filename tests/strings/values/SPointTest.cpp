// `SPoint`, `SSize` and `SRect` share the form of their text.

#include "foundation/strings/values/SPoint.h"
#include "foundation/strings/values/SRect.h"
#include "foundation/strings/values/SSize.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using namespace VFoundation;

TEST(SPoint, ReadsStrictly) {
    SPoint point{7, 8};
    EXPECT_TRUE(point.PointFromString("1,2"));
    EXPECT_EQ(point, (SPoint{1, 2}));
    EXPECT_TRUE(point.PointFromString("-3,   4"));
    for (char const* const text : {"", "1", "1,", ",2", "1, 2,", "1, 2, 3", " 1, 2", "1, 2 ", "1 ,2",
                                   "1.0, 2", "+1, 2", "0x1, 2", "2147483648, 0", "1, -2147483649", "1;2"}) {
        EXPECT_FALSE(point.PointFromString(text)) << text;
    }
    EXPECT_FALSE(point.PointFromString(nullptr));
    EXPECT_EQ(point, (SPoint{-3, 4})) << "a refused text changes nothing";
    char buffer[4] = "old";
    point.PointToString(buffer, 0);
    EXPECT_STREQ(buffer, "old");
    point.PointToString(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "-3,");
}

TEST(SRect, TextReadsBackWhatItWrote) {
    char buffer[SPoint::kTextSize];
    SSize size;
    SSize{3, 4}.SizeToString(buffer, sizeof buffer);
    EXPECT_TRUE(size.SizeFromString(buffer));
    EXPECT_EQ(size, (SSize{3, 4}));
    SRect const rect{INT_MIN, -1, 0, INT_MAX};
    rect.RectToString(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "-2147483648, -1, 0, 2147483647");
    SRect read;
    EXPECT_TRUE(read.RectFromString(buffer));
    EXPECT_EQ(read, rect);
}

} // namespace
