// SPDX-License-Identifier: MIT
// Contexts of the screen, what the driver of the device sees of them, and failures on demand.
#include <gdi.h>
#include <gtest/gtest.h>

#include "picture.h"

namespace {

using namespace test;

constexpr COLORREF kOrange = RGB(0xFA, 0x78, 0x0A);
constexpr DWORD kOrangePixel = 0xFA780A;

struct ScreenDC {
    ScreenDC(POINT origin, std::initializer_list<RECT> clip) {
        host::Region region;
        for (const RECT& r : clip) {
            region.Add(r);
        }
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
    const HBRUSH brush = CreateSolidBrush(kOrange);
    EXPECT_TRUE(FillRect(dc, &rectangle, brush));
    DeleteObject(brush);
}

class GraphicsScreen : public testing::Test {
protected:
    void SetUp() override { host::TakeScreenChanges(); }
};

TEST_F(GraphicsScreen, DrawingStaysInsideTheClipAndIsNoted) {
    {
        const ScreenDC dc({10, 20}, {{12, 22, 20, 30}, {40, 22, 44, 26}});
        Fill(dc, {0, 0, 32, 5});
        EXPECT_EQ(GetPixel(dc, 2, 2), kOrange);
        EXPECT_EQ(GetPixel(dc, 1, 2), static_cast<COLORREF>(CLR_INVALID));
        EXPECT_EQ(SetPixel(dc, 25, 3, kOrange), static_cast<COLORREF>(CLR_INVALID));
    }
    EXPECT_EQ(PixelAt(12, 22), kOrangePixel);
    EXPECT_EQ(PixelAt(19, 24), kOrangePixel);
    EXPECT_EQ(PixelAt(41, 24), kOrangePixel);
    EXPECT_EQ(PixelAt(11, 22), 0u);
    EXPECT_EQ(PixelAt(20, 22), 0u);
    EXPECT_EQ(PixelAt(42, 24), 0u);
    EXPECT_EQ(PixelAt(12, 25), 0u);
    const RECT expected{12, 22, 42, 25};
    const RECT changes = host::TakeScreenChanges();
    EXPECT_TRUE(EqualRect(&changes, &expected));
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

TEST_F(GraphicsScreen, ScrollingThroughAClipOfPartsMovesThePixelsThatWereThere) {
    const ScreenDC all({0, 0}, {{0, 0, 240, 320}});
    for (int y = 0; y < 30; ++y) {
        SetPixel(all, 3, y, RGB(y, 0, 0));
    }
    const ScreenDC parts({0, 0}, {{0, 0, 10, 12}, {0, 12, 10, 20}, {0, 20, 10, 40}});
    ASSERT_TRUE(BitBlt(parts, 0, 5, 10, 30, all, 0, 0, SRCCOPY));
    for (int y = 0; y < 30; ++y) {
        ASSERT_EQ(PixelAt(3, y + 5), static_cast<DWORD>(y) << 16);
    }
}

TEST_F(GraphicsScreen, ContextsOfTheScreenBelongToTheirMakers) {
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

TEST_F(GraphicsScreen, AResizedScreenIsBlackAndChangedWhole) {
    const ScreenDC dc({0, 0}, {{0, 0, 500, 500}});
    Fill(dc, {0, 0, 500, 500});
    host::ResizeScreen({320, 240});
    const host::ScreenView screen = host::Screen();
    EXPECT_EQ(screen.width, 320);
    EXPECT_EQ(screen.height, 240);
    EXPECT_EQ(PixelAt(319, 239), 0u);
    const RECT changes = host::TakeScreenChanges();
    EXPECT_EQ(changes.right, 320);
    Fill(dc, {0, 0, 500, 500});
    EXPECT_EQ(PixelAt(319, 239), kOrangePixel);
}

TEST_F(GraphicsScreen, WordsOfTheScreenHaveNoFourthByte) {
    const DWORD pixel = 0xAB123456;
    Picture picture(CreateBitmap(1, 1, 1, 32, &pixel));
    Picture section(MakeSection(32, 1, 1));
    section.Bits()[3] = 0xFF;
    const ScreenDC dc({0, 0}, {{0, 0, 9, 9}});
    BitBlt(dc, 0, 0, 1, 1, picture, 0, 0, SRCCOPY);
    BitBlt(dc, 1, 0, 1, 1, section, 0, 0, SRCCOPY);
    BitBlt(dc, 2, 0, 1, 1, section, 0, 0, NOTSRCCOPY);
    BitBlt(dc, 3, 0, 1, 1, nullptr, 0, 0, WHITENESS);
    EXPECT_EQ(PixelAt(0, 0), 0x123456u);
    EXPECT_EQ(PixelAt(1, 0), 0u);
    EXPECT_EQ(PixelAt(2, 0), 0xFFFFFFu);
    EXPECT_EQ(PixelAt(3, 0), 0xFFFFFFu);
}

TEST_F(GraphicsScreen, HandlesCountForTheirMakers) {
    const Picture own(CreateBitmap(1, 1, 1, 1, nullptr));
    HBRUSH platformBrush;
    {
        const host::PlatformScope platform;
        platformBrush = CreateSolidBrush(0);
    }
    const LOGFONTW record{};
    const HFONT font = CreateFontIndirectW(&record);
    const host::LiveHandles live = host::CountHandles();
    EXPECT_EQ(live.bitmaps, 1);
    EXPECT_EQ(live.dcs, 1);
    EXPECT_EQ(live.fonts, 1);
    EXPECT_EQ(live.brushes, 0);
    DeleteObject(font);
    DeleteObject(platformBrush);
}

TEST_F(GraphicsScreen, ResettingForgetsAllButStockObjects) {
    const HGDIOBJ brush = GetStockObject(WHITE_BRUSH);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateBitmap(1, 1, 1, 1, nullptr);
    const HDC open = host::OpenScreenDC({}, {});
    SelectObject(dc, bitmap);
    host::ResetGraphics();
    EXPECT_FALSE(DeleteDC(dc));
    EXPECT_FALSE(DeleteObject(bitmap));
    EXPECT_FALSE(host::CloseScreenDC(open));
    EXPECT_EQ(GetStockObject(WHITE_BRUSH), brush);
    const Picture fresh(CreateBitmap(1, 1, 1, 1, nullptr));
    EXPECT_EQ(SetPixel(fresh, 0, 0, 0xFFFFFF), RGB(255, 255, 255));
}

TEST_F(GraphicsScreen, CallsFailOnDemand) {
    Picture picture(CreateBitmap(2, 2, 1, 32, nullptr));
    const LOGFONTW record{};
    RECT area{0, 0, 2, 2};
    BITMAP description{};
    const auto fails = [](host::Call call, auto attempt) {
        host::FailCall(call);
        SetLastError(ERROR_SUCCESS);
        const auto result = attempt();
        return !result && GetLastError() != ERROR_SUCCESS;
    };
    using host::Call;
    EXPECT_TRUE(fails(Call::CreateDC, [] { return CreateCompatibleDC(nullptr); }));
    EXPECT_TRUE(fails(Call::CreateBitmap, [] { return CreateBitmap(1, 1, 1, 1, nullptr); }));
    EXPECT_TRUE(fails(Call::CreateDIBSection, [] { return MakeSection(24, 1, 1); }));
    EXPECT_TRUE(fails(Call::CreateFont, [&] { return CreateFontIndirectW(&record); }));
    EXPECT_TRUE(fails(Call::CreateBrush, [] { return CreateSolidBrush(0); }));
    EXPECT_TRUE(
        fails(Call::SelectObject, [&] { return SelectObject(picture, GetStockObject(WHITE_BRUSH)); }));
    EXPECT_TRUE(fails(Call::GetObject,
                      [&] { return GetObjectW(picture.Bitmap(), sizeof description, &description); }));
    EXPECT_TRUE(fails(Call::BitBlt, [&] { return BitBlt(picture, 0, 0, 2, 2, nullptr, 0, 0, WHITENESS); }));
    EXPECT_TRUE(fails(Call::MaskBlt,
                      [&] { return MaskBlt(picture, 0, 0, 2, 2, nullptr, 0, 0, nullptr, 0, 0, WHITENESS); }));
    EXPECT_TRUE(
        fails(Call::FillRect, [&] { return FillRect(picture, &area, GetSysColorBrush(COLOR_WINDOW)); }));
    EXPECT_TRUE(fails(Call::DrawText, [&] { return DrawTextW(picture, u"a", 1, &area, 0); }));
    EXPECT_TRUE(fails(Call::LoadBitmap, [] { return LoadBitmapW(nullptr, u"picture"); }));
    EXPECT_EQ(picture.Pixels(), std::vector<COLORREF>(4, 0));
}

}  // namespace
