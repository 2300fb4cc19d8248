// SPDX-License-Identifier: MIT
#include "region.h"

#include <gtest/gtest.h>

#include <bitset>
#include <random>

namespace {

constexpr int kSide = 12;
using Pixels = std::bitset<kSide * kSide>;

Pixels PixelsOf(const RECT& r) {
    Pixels pixels;
    for (LONG y = r.top; y < r.bottom; ++y) {
        for (LONG x = r.left; x < r.right; ++x) {
            pixels.set(static_cast<std::size_t>(y * kSide + x));
        }
    }
    return pixels;
}

// The region's pixels; a test failure when two of its rectangles overlap.
Pixels PixelsOf(const host::Region& region) {
    Pixels pixels;
    for (const RECT& r : region.Rectangles()) {
        EXPECT_FALSE(host::IsEmpty(r));
        EXPECT_TRUE((pixels & PixelsOf(r)).none()) << "rectangles overlap";
        pixels |= PixelsOf(r);
    }
    return pixels;
}

class Dice {
public:
    // Empty or turned around now and then.
    RECT Rectangle() { return {Coordinate(), Coordinate(), Coordinate(), Coordinate()}; }
    int Choice(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

private:
    LONG Coordinate() { return Choice(kSide + 1); }
    std::mt19937 m_random{7};
};

TEST(Region, OperationsAreThoseOfPixelSets) {
    Dice dice;
    host::Region region;
    host::Region other;
    Pixels expected;
    for (int step = 0; step < 3000; ++step) {
        const RECT r = dice.Rectangle();
        switch (dice.Choice(12)) {
            case 0:
                region.Set(r);
                expected = PixelsOf(r);
                break;
            case 1:
                region.IntersectWith(r);
                expected &= PixelsOf(r);
                break;
            case 2:
                region.IntersectWith(other);
                expected &= PixelsOf(other);
                break;
            case 3:
                region.Subtract(other);
                expected &= ~PixelsOf(other);
                break;
            case 4:
                region.Swap(other);
                expected = PixelsOf(region);
                break;
            case 5:
            case 6:
                region.Subtract(r);
                expected &= ~PixelsOf(r);
                break;
            default:
                region.Add(r);
                expected |= PixelsOf(r);
        }
        ASSERT_EQ(PixelsOf(region), expected) << "step " << step;
        ASSERT_EQ(region.Empty(), expected.none());
    }
}

TEST(Region, BoxSurroundsAllRectangles) {
    host::Region region;
    region.Add({3, 4, 5, 6});
    region.Add({8, 1, 9, 2});
    region.Move(1, 2);
    const RECT box = region.BoundingBox();
    EXPECT_EQ(box.left, 4);
    EXPECT_EQ(box.top, 3);
    EXPECT_EQ(box.right, 10);
    EXPECT_EQ(box.bottom, 8);
}

TEST(Region, RectangleInsideAnotherSplitsNothing) {
    host::Region region;
    region.Add({0, 0, 10, 10});
    region.Add({2, 2, 4, 4});
    EXPECT_EQ(region.Rectangles().size(), 1u);
}

TEST(Region, SubtractingItselfLeavesNothing) {
    host::Region region;
    region.Add({0, 0, 10, 10});
    region.Subtract(RECT{2, 2, 4, 4});
    region.IntersectWith(region);
    EXPECT_EQ(PixelsOf(region).count(), 96u);
    region.Subtract(region);
    EXPECT_TRUE(region.Empty());
}

}  // namespace
