#include "foundation/image/VBitmapImage.h"
#include "tests/image/ImageTestSupport.h"
#include "tests/support/FailingAllocator.h"

#include <algorithm>

namespace {

using namespace image_test;
using BitmapRef = VObjectRef<VBitmapImage>;

Pixels PixelsOfBitmap(BitmapRef const& bitmap) {
    VImage image;
    image.SetImageRef(BitmapRef(bitmap).Detach());
    return PixelsOf(&image);
}

TEST(VBitmapImage, OwnsItsPixels) {
    Pixels const pixels = {1, 2, 3, 4, 5, 6};
    BitmapRef const bitmap = VBitmapImage::FromPixels(3, 2, pixels);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(PixelsOfBitmap(bitmap), pixels);
    EXPECT_FALSE(VBitmapImage::FromPixels(3, 3, pixels));
    EXPECT_FALSE(VBitmapImage::FromPixels(0, 2, {}));
    testing_support::FailEachAllocation([] {
        Pixels few(4);
        EXPECT_TRUE(VBitmapImage::FromPixels(2, 2, std::move(few)) || testing_support::AllocationHasFailed());
    });
}

TEST(VBitmapImage, ScalesByAFilter) {
    // A slope stays one, whatever the size; the middle of a pixel stays where it is.
    Pixels slope(64 * 8);
    for (std::size_t i = 0; i < slope.size(); ++i) {
        slope[i] = 0xFF000000U | static_cast<std::uint32_t>(i % 64 * 4) * 0x010101U;
    }
    BitmapRef const bitmap = VBitmapImage::FromPixels(64, 8, slope);
    for (std::uint32_t const width : {16U, 40U, 64U, 100U, 512U}) {
        Pixels const scaled = PixelsOfBitmap(bitmap->Scaled(width, 5));
        ASSERT_EQ(scaled.size(), width * 5);
        for (std::uint32_t x = width / 16; x < width - width / 16; ++x) { // without the edges
            double const expected = ((x + 0.5) * 64 / width - 0.5) * 4;
            EXPECT_NEAR(scaled[2 * width + x] & 0xFF, expected, 1.5) << width << ' ' << x;
        }
    }
    EXPECT_EQ(PixelsOfBitmap(bitmap->Scaled(64, 8)), slope);
    // Neither is a stripe lost when it gets smaller, nor does a sharp edge make a colour brighter than its alpha.
    Pixels edges(100 * 100);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        edges[i] = i % 100 % 10 == 0 ? 0xFFFFFFFF : i / 100 % 7 == 0 ? 0x80008000 : 0;
    }
    BitmapRef const sharp = VBitmapImage::FromPixels(100, 100, edges);
    Pixels const small = PixelsOfBitmap(sharp->Scaled(10, 10));
    EXPECT_TRUE(std::all_of(small.begin(), small.end(), [](auto pixel) { return (pixel & 0xFF) > 5; }));
    for (std::uint32_t const side : {10U, 37U, 99U, 250U}) {
        for (std::uint32_t const pixel : PixelsOfBitmap(sharp->Scaled(side, side))) {
            EXPECT_LE(std::max({pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF}), pixel >> 24) << side;
        }
    }
}

TEST(VBitmapImage, ScalesToAndFromAnySize) {
    BitmapRef const bitmap = VBitmapImage::FromPixels(3, 2, Pixels(6, 0x80402010));
    std::uint32_t const most = VBitmapImage::kMaxScaledSide;
    for (auto const& [width, height] : {std::pair{1U, 1U}, {most, 1U}, {1U, most}, {most, 3U}}) {
        BitmapRef const large = bitmap->Scaled(width, height);
        ASSERT_TRUE(large);
        EXPECT_EQ(large->Row(height - 1)[width - 1], 0x80402010);
        BitmapRef const back = large->Scaled(2, 1);
        ASSERT_TRUE(back);
        EXPECT_EQ(back->Row(0)[1], 0x80402010) << "a plane stays one";
    }
    EXPECT_FALSE(bitmap->Scaled(0, 1));
    EXPECT_FALSE(bitmap->Scaled(1, most + 1));
    BitmapRef const tall = bitmap->Scaled(1, most);
    EXPECT_FALSE(tall->Scaled(most, 1)) << "too much memory";
    testing_support::FailEachAllocation(
        [&] { EXPECT_TRUE(bitmap->Scaled(5, 5) || testing_support::AllocationHasFailed()); });
}

TEST(VBitmapImage, TurnsUpright) {
    // What is stored, row by row, when the upright picture is 1 2 3 above 4 5 6.
    Pixels const upright = {1, 2, 3, 4, 5, 6};
    std::vector<Pixels> const stored = {{1, 2, 3, 4, 5, 6}, {3, 2, 1, 6, 5, 4}, {6, 5, 4, 3, 2, 1},
                                        {4, 5, 6, 1, 2, 3}, {1, 4, 2, 5, 3, 6}, {3, 6, 2, 5, 1, 4},
                                        {6, 3, 5, 2, 4, 1}, {4, 1, 5, 2, 6, 3}};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        bool const isTurned = orientation >= 5;
        BitmapRef const bitmap = VBitmapImage::FromPixels(isTurned ? 2 : 3, isTurned ? 3 : 2,
                                                          stored[static_cast<std::size_t>(orientation - 1)]);
        BitmapRef const turned = bitmap->Upright(orientation);
        ASSERT_TRUE(turned);
        EXPECT_EQ(turned->Width(), 3U) << orientation;
        EXPECT_EQ(PixelsOfBitmap(turned), upright) << orientation;
        EXPECT_EQ(turned == bitmap, orientation == 1);
        EXPECT_EQ(bitmap->Upright(9), bitmap);
        if (orientation != 1) {
            testing_support::FailEachAllocation(
                [&] { EXPECT_TRUE(bitmap->Upright(orientation) || testing_support::AllocationHasFailed()); });
        }
    }
}

TEST(VBitmapImage, ScalesToFit) {
    struct Case {
        std::uint32_t width, height, side, fittedWidth, fittedHeight;
    };
    for (Case const& each : {Case{400, 300, 160, 160, 120},
                             {300, 400, 160, 120, 160},
                             {100, 50, 160, 100, 50},
                             {1, 1000, 10, 1, 10},
                             {7, 5, 3, 3, 2}}) {
        BitmapRef const fitted =
            VBitmapImage::FromPixels(each.width, each.height, Pixels(each.width * each.height))
                ->ScaledToFit(each.side);
        ASSERT_TRUE(fitted);
        EXPECT_EQ(fitted->Width(), each.fittedWidth) << each.width;
        EXPECT_EQ(fitted->Height(), each.fittedHeight) << each.width;
    }
    EXPECT_FALSE(VBitmapImage::FromPixels(3, 2, Pixels(6))->ScaledToFit(0));
}

} // namespace
