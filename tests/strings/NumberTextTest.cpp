#include "foundation/strings/internal/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

// Built a second time for a standard library that cannot read floating point: the results are the same.

namespace {

using namespace VFoundation;

TEST(NumberText, ReadsFloatsAsTheStandardLibraryDoes) {
    constexpr float kInfinite = std::numeric_limits<float>::infinity();
    constexpr auto kFine = std::errc();
    constexpr auto kNone = std::errc::invalid_argument;
    constexpr auto kTooMuch = std::errc::result_out_of_range;
    constexpr float kBefore = 7;
    struct {
        char const* text;
        std::errc error;
        long length;
        float number;
    } const cases[] = {
        {"1.5 2", kFine, 3, 1.5F},
        {"-.5e1x", kFine, 5, -5},
        {"5.", kFine, 2, 5},
        {"1,5", kFine, 1, 1},
        {"1e", kFine, 1, 1},
        {"1e-45", kFine, 5, 1e-45F},
        {"0x1p3", kFine, 1, 0},
        {"-0X1", kFine, 2, -0.0F},
        {"-inf", kFine, 4, -kInfinite},
        {"infinit", kFine, 3, kInfinite},
        {"nan(x)", kFine, 6, NAN},
        {"0e-9999", kFine, 7, 0},
        {"1e60", kTooMuch, 4, kBefore},
        {"-1e60", kTooMuch, 5, kBefore},
        {"1e-60", kTooMuch, 5, kBefore},
        {"", kNone, 0, kBefore},
        {"-", kNone, 0, kBefore},
        {" 1", kNone, 0, kBefore},
        {"- 1", kNone, 0, kBefore},
        {"+1", kNone, 0, kBefore},
        {"-+1", kNone, 0, kBefore},
        {"--1", kNone, 0, kBefore},
        {"x", kNone, 0, kBefore},
    };
    for (auto const& [text, expectedError, length, expected] : cases) {
        float number = kBefore;
        auto const [end, error] = FloatFromChars(text, text + std::strlen(text), number);
        EXPECT_EQ(error, expectedError) << text;
        EXPECT_EQ(end - text, length) << text;
        EXPECT_EQ(std::memcmp(&number, &expected, sizeof number), 0) << text << " is " << number;
    }
}

TEST(NumberText, ReadsDoublesAsFarAsTheyMakeSense) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    struct {
        char const* text;
        double number;
    } const cases[] = {
        {" \t\n\v\f\r1.5x", 1.5},
        {"+.25", 0.25},
        {"-1e3", -1000},
        {"1,5", 1},
        {"0x1p3", 8},
        {" -0X10", -16},
        {"0x", 0},
        {"1x2", 1},
        {"x", 0},
        {"", 0},
        {"+-1", 0},
        {"1e400", kInfinite},
        {"-1e400", -kInfinite},
        {"-1e-400", -0.0},
        {"5e-324", 5e-324},
        {"INFINITY", kInfinite},
        {"-0", -0.0},
    };
    for (auto const& [text, expected] : cases) {
        double const number = DoubleFromText(text);
        EXPECT_EQ(number, expected) << text;
        EXPECT_EQ(std::signbit(number), std::signbit(expected)) << text;
    }
    EXPECT_TRUE(std::isnan(DoubleFromText("nan")));
}

} // namespace
