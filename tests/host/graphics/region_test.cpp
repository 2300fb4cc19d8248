// SPDX-License-Identifier: MIT
#include "graphics/region.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <functional>

#include "picture.h"
#include "rectangles.h"

namespace {

constexpr int kSide = 12;
using Pixels = std::bitset<kSide * kSide>;

Pixels PixelsOf(const RECT& r) {
    Pixels pixels;
    for (LONG y = r.top; y < r.bottom; ++y)
        for (LONG x = r.left; x < r.right; ++x)
            pixels.set(static_cast<std::size_t>(y * kSide + x));
    return pixels;
}

// The region's pixels; a test failure if two of its rectangles overlap.
Pixels PixelsOf(const host::Region& region) {
    Pixels pixels;
    for (const RECT& r : region.Rectangles()) {
        EXPECT_FALSE(host::IsEmpty(r));
        EXPECT_TRUE((pixels & PixelsOf(r)).none()) << "rectangles overlap";
        pixels |= PixelsOf(r);
    }
    return pixels;
}

TEST(Region, OperationsAreThoseOfPixelSets) {
    test::Random random;
    const auto coordinate = [&] { return random.Below(kSide + 1); };
    host::Region region;
    host::Region other;
    Pixels expected;
    RECT r{};
    const std::function<void()> operations[] = {
        [&] { region.Set(r), expected = PixelsOf(r); },
        [&] { region.IntersectWith(r), expected &= PixelsOf(r); },
        [&] { region.Subtract(other), expected &= ~PixelsOf(other); },
        [&] { region.Swap(other), expected = PixelsOf(region); },
        [&] { region.Subtract(r), expected &= ~PixelsOf(r); },
        [&] { region.Add(r), expected |= PixelsOf(r); },
    };
    for (int step = 0; step < 3000; ++step) {
        // Sometimes empty or reversed.
        r = {coordinate(), coordinate(), coordinate(), coordinate()};
        operations[std::min(random.Below(12), 5)]();  // most often the last
        ASSERT_EQ(PixelsOf(region), expected) << "step " << step;
        ASSERT_EQ(region.Empty(), expected.none());
    }
}

TEST(Region, TheBoundsContainAllRectangles) {
    host::Region region;
    region.Add({3, 4, 5, 6});
    region.Add({8, 1, 9, 2});
    region.Add({3, 4, 4, 5});
    EXPECT_EQ(region.Rectangles().size(), 2u) << "one inside another splits nothing";
    region.Move(1, 2);
    EXPECT_EQ(region.BoundingBox(), (RECT{4, 3, 10, 8}));
}

TEST(Region, SubtractingItselfLeavesNothing) {
    host::Region region;
    region.Add({0, 0, 10, 10});
    region.Subtract(RECT{2, 2, 4, 4});
    EXPECT_EQ(PixelsOf(region).count(), 96u);
    region.Subtract(region);
    EXPECT_TRUE(region.Empty());
}

}  // namespace
