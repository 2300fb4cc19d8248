// SPDX-License-Identifier: MIT
// Contexts of the screen, and their effects for the driver of the device.
#include <gtest/gtest.h>
#include "graphics/graphics.h"

#include "picture.h"
#include "rectangles.h"

namespace {

using namespace test;

constexpr COLORREF kOrange = RGB(0xFA, 0x78, 0x0A);
constexpr DWORD kOrangePixel = 0xFA780A;

struct ScreenDC {
    ScreenDC(POINT origin, std::initializer_list<RECT> clip) {
        host::Region region;
        for (const RECT& r : clip)
            region.Add(r);
        dc = host::OpenScreenDC(origin, region);
    }
    ScreenDC(const ScreenDC&) = delete;
    ScreenDC& operator=(const ScreenDC&) = delete;
    ~ScreenDC() { host::CloseScreenDC(dc); }
    operator HDC() const { return dc; }

    HDC dc;
};

DWORD PixelAt(int x, int y) {
    const host::ScreenView screen = host::Screen();
    return screen.pixels[y * screen.width + x];
}

void Fill(HDC dc, const RECT& rectangle) {
    const CBrushOwner brush(CreateSolidBrush(kOrange));
    EXPECT_TRUE(FillRect(dc, &rectangle, brush.Get()));
}

class GraphicsScreen : public testing::Test {
protected:
    void SetUp() override { host::TakeScreenChanges(); }
};

TEST_F(GraphicsScreen, DrawingStaysInsideTheClipAndIsRecorded) {
    {
        const ScreenDC dc({10, 20}, {{12, 22, 20, 30}, {40, 22, 44, 26}});
        Fill(dc, {0, 0, 32, 5});
        EXPECT_EQ(GetPixel(dc, 2, 2), kOrange);
        EXPECT_EQ(GetPixel(dc, 1, 2), static_cast<COLORREF>(CLR_INVALID));
        EXPECT_EQ(SetPixel(dc, 25, 3, kOrange), static_cast<COLORREF>(CLR_INVALID));
    }
    for (const POINT& p : {POINT{12, 22}, POINT{19, 24}, POINT{41, 24}})
        EXPECT_EQ(PixelAt(p.x, p.y), kOrangePixel);
    for (const POINT& p : {POINT{11, 22}, POINT{20, 22}, POINT{42, 24}, POINT{12, 25}})
        EXPECT_EQ(PixelAt(p.x, p.y), 0u);
    EXPECT_EQ(host::TakeScreenChanges(), (RECT{12, 22, 42, 25}));
    EXPECT_TRUE(host::IsEmpty(host::TakeScreenChanges()));
}

TEST_F(GraphicsScreen, DrawingNothingChangesNothing) {
    const ScreenDC dc({0, 0}, {{0, 0, 10, 10}});
    Picture source(CreateBitmap(8, 8, 1, 32, nullptr));
    EXPECT_TRUE(BitBlt(dc, 10, 0, 8, 8, source, 0, 0, SRCCOPY));
    EXPECT_TRUE(ExtTextOutW(dc, 50, 50, 0, nullptr, u"text", 4, nullptr));
    EXPECT_TRUE(host::IsEmpty(host::TakeScreenChanges()));
    SetBkMode(dc, TRANSPARENT);
    EXPECT_TRUE(ExtTextOutW(dc, 0, 0, 0, nullptr, u"text", 4, nullptr));
    const RECT changes = host::TakeScreenChanges();
    EXPECT_FALSE(host::IsEmpty(changes));
    EXPECT_LE(changes.right, 10);
}

TEST_F(GraphicsScreen, MasksFollowTheOriginIntoEveryPartOfTheClip) {
    Random random;
    Picture source(CreateBitmap(64, 40, 1, 32, nullptr));
    Picture mask(CreateBitmap(64, 40, 1, 1, nullptr));
    source.Scatter(random);
    mask.Scatter(random);
    const ScreenDC dc({5, 7}, {{5, 7, 18, 30}, {21, 9, 60, 44}});
    ASSERT_TRUE(
        MaskBlt(dc, 0, 0, 64, 40, source, 0, 0, mask.Bitmap(), 0, 0, MAKEROP4(NOTSRCCOPY, WHITENESS)));
    for (const POINT& p : {POINT{0, 0}, POINT{12, 22}, POINT{16, 2}, POINT{17, 5}, POINT{54, 36}}) {
        const COLORREF negative = GetPixel(source, p.x, p.y) ^ 0xFFFFFF;
        EXPECT_EQ(GetPixel(dc, p.x, p.y), GetPixel(mask, p.x, p.y) ? negative : 0xFFFFFF);
    }
    EXPECT_EQ(PixelAt(19, 12), 0u);
}

TEST_F(GraphicsScreen, ScrollingThroughAClipOfPartsMovesTheOldPixels) {
    const ScreenDC all({0, 0}, {{0, 0, 240, 320}});
    for (int y = 0; y < 30; ++y)
        SetPixel(all, 3, y, RGB(y, 0, 0));
    const ScreenDC parts({0, 0}, {{0, 0, 10, 12}, {0, 12, 10, 20}, {0, 20, 10, 40}});
    ASSERT_TRUE(BitBlt(parts, 0, 5, 10, 30, all, 0, 0, SRCCOPY));
    for (int y = 0; y < 30; ++y)
        ASSERT_EQ(PixelAt(3, y + 5), static_cast<DWORD>(y) << 16);
}

TEST_F(GraphicsScreen, OnlyTheirCreatorsCloseContextsOfTheScreen) {
    Picture picture(CreateBitmap(2, 2, 1, 32, nullptr));
    const HDC dc = host::OpenScreenDC({}, {});
    EXPECT_FALSE(DeleteDC(dc));
    EXPECT_EQ(SelectObject(dc, picture.Bitmap()), nullptr);
    const HDC memory = CreateCompatibleDC(dc);
    EXPECT_EQ(SelectObject(memory, GetCurrentObject(dc, OBJ_BITMAP)), nullptr);
    EXPECT_FALSE(host::CloseScreenDC(memory));
    EXPECT_TRUE(DeleteDC(memory));
    EXPECT_TRUE(host::CloseScreenDC(dc));
    EXPECT_FALSE(host::CloseScreenDC(dc));
    EXPECT_FALSE(host::CloseScreenDC(nullptr));
}

TEST_F(GraphicsScreen, AReopenedContextStartsAfresh) {
    const HBRUSH brush = CreateSolidBrush(kOrange);
    const HDC first = host::OpenScreenDC({}, {});
    SetTextColor(first, kOrange);
    SetBkMode(first, TRANSPARENT);
    SetTextAlign(first, TA_CENTER);
    SelectObject(first, brush);
    EXPECT_FALSE(DeleteObject(brush));
    EXPECT_TRUE(host::CloseScreenDC(first));
    EXPECT_TRUE(DeleteObject(brush));
    const HDC second = host::OpenScreenDC({}, {});
    EXPECT_NE(first, second) << "the old handle is stale";
    EXPECT_EQ(SetTextColor(second, 0), RGB(0, 0, 0));
    EXPECT_EQ(SetBkColor(second, 0), RGB(255, 255, 255));
    EXPECT_EQ(SetBkMode(second, OPAQUE), OPAQUE);
    EXPECT_EQ(SetTextAlign(second, 0), static_cast<UINT>(TA_LEFT | TA_TOP));
    EXPECT_EQ(GetCurrentObject(second, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_TRUE(host::CloseScreenDC(second));
}

TEST_F(GraphicsScreen, AResizedScreenIsBlackAndFullyChanged) {
    const ScreenDC dc({0, 0}, {{0, 0, 500, 500}});
    Fill(dc, {0, 0, 500, 500});
    host::ResizeScreen({320, 240});
    EXPECT_EQ(PixelAt(319, 239), 0u);
    EXPECT_EQ(host::TakeScreenChanges(), (RECT{0, 0, 320, 240}));
    Fill(dc, {0, 0, 500, 500});
    EXPECT_EQ(PixelAt(319, 239), kOrangePixel);
}

TEST_F(GraphicsScreen, TheScreensWordsHaveNoFourthByte) {
    const DWORD pixel = 0xAB123456;
    Picture picture(CreateBitmap(1, 1, 1, 32, &pixel));
    Picture section(MakeSection(32, 1, 1));
    section.Bits()[3] = 0xFF;
    const ScreenDC dc({0, 0}, {{0, 0, 9, 9}});
    const auto drawn = [&](HDC source, DWORD code) {
        BitBlt(dc, 0, 0, 1, 1, source, 0, 0, code);
        return PixelAt(0, 0);
    };
    EXPECT_EQ(drawn(picture, SRCCOPY), 0x123456u);
    EXPECT_EQ(drawn(section, SRCCOPY), 0u);
    EXPECT_EQ(drawn(section, NOTSRCCOPY), 0xFFFFFFu);
    EXPECT_EQ(drawn(nullptr, WHITENESS), 0xFFFFFFu);
}

}  // namespace
