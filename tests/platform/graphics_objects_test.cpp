// SPDX-License-Identifier: MIT
// Which objects can be selected, described and deleted, and invalid handles.
#include <gtest/gtest.h>

#include "differences.h"
#include "picture.h"

namespace {

using namespace test;

template <typename Record>
int Describe(HGDIOBJ object, Record& record) {
    return GetObjectW(object, sizeof record, &record);
}
constexpr int kBitmapBytes = sizeof(BITMAP);

TEST(GraphicsObjects, SelectingReturnsWhatWasSelected) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP first = CreateBitmap(2, 2, 1, 32, nullptr);
    const HBITMAP second = CreateBitmap(2, 2, 1, 1, nullptr);
    const HGDIOBJ initial = GetCurrentObject(dc, OBJ_BITMAP);
    EXPECT_EQ(SelectObject(dc, first), initial);
    EXPECT_EQ(SelectObject(dc, nullptr), nullptr);
    EXPECT_EQ(SelectObject(dc, second), first);
    EXPECT_EQ(SelectObject(dc, second), second);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BITMAP), second);
    const HGDIOBJ font = GetCurrentObject(dc, OBJ_FONT);
    EXPECT_EQ(SelectObject(dc, GetStockObject(BLACK_BRUSH)), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BRUSH), GetStockObject(BLACK_BRUSH));
    EXPECT_EQ(SelectObject(dc, GetStockObject(SYSTEM_FONT)), font);
    EXPECT_EQ(SelectObject(dc, initial), second);
    EXPECT_TRUE(DeleteDC(dc));
    EXPECT_TRUE(DeleteObject(first));
    EXPECT_TRUE(DeleteObject(second));
}

TEST(GraphicsObjects, ABitmapIsInOneContextAtATime) {
    const HBITMAP bitmap = CreateBitmap(2, 2, 1, 32, nullptr);
    const HDC owner = CreateCompatibleDC(nullptr);
    SelectObject(owner, bitmap);
    const HDC other = CreateCompatibleDC(owner);
    const HGDIOBJ initial = GetCurrentObject(other, OBJ_BITMAP);
    EXPECT_EQ(SelectObject(other, bitmap), nullptr);
    EXPECT_EQ(GetCurrentObject(other, OBJ_BITMAP), initial);
    EXPECT_TRUE(DeleteDC(owner));
    EXPECT_FALSE(DeleteDC(owner));
    EXPECT_EQ(SelectObject(other, bitmap), initial) << "a deleted context has none";
    // The initial bitmap of contexts is the exception; it has one pixel.
    const HDC third = CreateCompatibleDC(nullptr);
    EXPECT_EQ(GetCurrentObject(third, OBJ_BITMAP), initial);
    BITMAP record{};
    EXPECT_EQ(Describe(initial, record), kBitmapBytes);
    EXPECT_TRUE(record.bmWidth == 1 && record.bmHeight == 1 && record.bmBitsPixel == 1);
    EXPECT_TRUE(DeleteDC(other));
    EXPECT_TRUE(DeleteDC(third));
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST(GraphicsObjects, BitmapsDescribeThemselves) {
    const HBITMAP mono = CreateBitmap(17, 3, 1, 1, nullptr);
    BITMAP record{};
    DIBSECTION section{};
    EXPECT_EQ(Describe(mono, section), kBitmapBytes) << "no section";
    ASSERT_EQ(Describe(mono, record), kBitmapBytes);
    EXPECT_EQ((std::vector<LONG>{record.bmWidth, record.bmHeight, record.bmWidthBytes, record.bmPlanes,
                                 record.bmBitsPixel}),
              (std::vector<LONG>{17, 3, 4, 1, 1}));
    EXPECT_EQ(record.bmBits, nullptr);
    EXPECT_EQ(GetObjectW(mono, sizeof record - 1, &record), 0);
    EXPECT_TRUE(DeleteObject(mono));
    EXPECT_EQ(Describe(mono, record), 0);

    const HBITMAP bytes = MakeSection(24, 5, 2);
    ASSERT_EQ(Describe(bytes, section), static_cast<int>(sizeof section));
    EXPECT_TRUE(section.dsBm.bmWidthBytes == 16 && section.dsBm.bmHeight == 2);
    EXPECT_TRUE(section.dsBm.bmBitsPixel == 24 && section.dsBmih.biBitCount == 24);
    EXPECT_EQ(section.dsBmih.biSizeImage, 32u);
    EXPECT_NE(section.dsBm.bmBits, nullptr);
    EXPECT_EQ(Describe(bytes, record), kBitmapBytes);
    EXPECT_EQ(record.bmBits, section.dsBm.bmBits);
    EXPECT_TRUE(DeleteObject(bytes));
}

TEST(GraphicsObjects, StockObjectsOutliveTheirDeletion) {
    EXPECT_TRUE(DeleteObject(GetStockObject(WHITE_BRUSH)));
    EXPECT_TRUE(DeleteObject(GetStockObject(SYSTEM_FONT)));
    DeleteObject(GetSysColorBrush(COLOR_WINDOW));
    Picture picture(CreateBitmap(1, 1, 1, 32, nullptr));
    const RECT all{0, 0, 1, 1};
    EXPECT_TRUE(FillRect(picture, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))));
    EXPECT_EQ(GetPixel(picture, 0, 0), RGB(255, 255, 255));
    EXPECT_TRUE(FillRect(picture, &all, GetSysColorBrush(COLOR_WINDOW)));
    EXPECT_EQ(GetPixel(picture, 0, 0), static_cast<COLORREF>(GetSysColor(COLOR_WINDOW)));
}

TEST(GraphicsObjects, InvalidHandlesFail) {
    Picture picture(CreateBitmap(2, 2, 1, 32, nullptr));
    const HDC closed = CreateCompatibleDC(nullptr);
    DeleteDC(closed);
    const auto notAContext = reinterpret_cast<HDC>(picture.Bitmap());
    const RECT all{0, 0, 2, 2};
    SIZE size{};
    for (const HDC dc : {HDC{}, closed, notAContext}) {
        EXPECT_FALSE(BitBlt(dc, 0, 0, 2, 2, picture, 0, 0, SRCCOPY));
        EXPECT_FALSE(BitBlt(picture, 0, 0, 2, 2, dc, 0, 0, SRCCOPY));
        EXPECT_FALSE(MaskBlt(dc, 0, 0, 2, 2, picture, 0, 0, nullptr, 0, 0, SRCCOPY));
        EXPECT_EQ(FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))),
                  Either(Difference::FillResult, FALSE, TRUE));
        EXPECT_FALSE(ExtTextOutW(dc, 0, 0, 0, nullptr, TEXT("a"), 1, nullptr));
        EXPECT_FALSE(GetTextExtentPoint32W(dc, TEXT("a"), 1, &size));
        EXPECT_EQ(SelectObject(dc, picture.Bitmap()), nullptr);
        EXPECT_EQ(SetTextColor(dc, 0), static_cast<COLORREF>(CLR_INVALID));
        EXPECT_EQ(GetPixel(dc, 0, 0), static_cast<COLORREF>(CLR_INVALID));
        EXPECT_FALSE(DeleteDC(dc));
    }
    EXPECT_FALSE(DeleteObject(nullptr));
}

TEST(GraphicsObjects, ImpossibleBitmapsAreRefused) {
    const HBITMAP negative = CreateBitmap(-1, 2, 1, 1, nullptr);
    EXPECT_EQ(negative == nullptr, Either(Difference::NegativeWidth, true, false));
    DeleteObject(negative);
    EXPECT_EQ(CreateBitmap(0x7FFFFFFF, 0x7FFFFFFF, 1, 32, nullptr), nullptr);
    const struct {
        WORD bits;
        int width, height;
    } cases[] = {
        {24, 0, 4}, {24, -4, 4}, {24, 4, 0}, {23, 4, 4}, {32, 0x10000, static_cast<int>(0x80000000)}};
    for (const auto& c : cases)
        EXPECT_EQ(MakeSection(c.bits, c.width, c.height), nullptr) << c.width << " x " << c.height;
    void* bits = &bits;
    EXPECT_EQ(CreateDIBSection(nullptr, nullptr, DIB_RGB_COLORS, &bits, nullptr, 0), nullptr);
}

TEST(GraphicsOfTheHandheld, SelectedObjectsCannotBeDeleted) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateBitmap(2, 2, 1, 32, nullptr);
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    const LOGFONTW record{};
    const HFONT font = CreateFontIndirectW(&record);
    for (const HGDIOBJ object : {HGDIOBJ{bitmap}, HGDIOBJ{brush}, HGDIOBJ{font}}) {
        const HGDIOBJ previous = SelectObject(dc, object);
        EXPECT_EQ(DeleteObject(object), Either(Difference::SelectedObjects, FALSE, TRUE));
        EXPECT_EQ(SelectObject(dc, previous), object);
        EXPECT_EQ(DeleteObject(object), Either(Difference::SelectedObjects, TRUE, FALSE)) << "already gone";
    }
    EXPECT_EQ(DeleteObject(dc), Either(Difference::DeletedContexts, FALSE, TRUE));
    EXPECT_EQ(DeleteDC(dc), Either(Difference::DeletedContexts, TRUE, FALSE));
}

TEST(GraphicsOfTheHandheld, AMaskMustCoverTheBlock) {
    Picture target(CreateBitmap(8, 8, 1, 32, nullptr));
    Picture source(CreateBitmap(8, 8, 1, 32, nullptr));
    const HBITMAP mask = CreateBitmap(4, 4, 1, 1, nullptr);
    const auto draw = [&](int width, int height, HBITMAP with, int maskX, int maskY) -> DWORD {
        SetLastError(ERROR_SUCCESS);
        const BOOL drawn = MaskBlt(target, 0, 0, width, height, source, 0, 0, with, maskX, maskY,
                                   MAKEROP4(WHITENESS, SRCCOPY));
        return drawn ? ERROR_SUCCESS : GetLastError();
    };
    const struct {
        int width, height, maskX, maskY;
        bool isCovered;
    } cases[] = {{4, 4, 0, 0, true},   {1, 3, 3, 1, true},  {2, 0, 9, 9, true},
                 {5, 4, 0, 0, false},  {4, 4, 0, 1, false}, {2, 2, 0x7FFFFFFF, 0, false},
                 {2, 2, -1, 0, false}, {-2, 2, 0, 0, false}};
    const auto badParameter = Either<DWORD>(Difference::MaskBounds, ERROR_INVALID_PARAMETER, ERROR_SUCCESS);
    for (const auto& c : cases) {
        EXPECT_EQ(draw(c.width, c.height, mask, c.maskX, c.maskY),
                  c.isCovered ? DWORD{ERROR_SUCCESS} : badParameter)
            << c.width << " x " << c.height << " at " << c.maskX << "," << c.maskY;
    }
    EXPECT_EQ(draw(2, 2, target.Bitmap(), 0, 0), badParameter) << "not monochrome";
    // Codes that are not used, or do not use it, need no source.
    EXPECT_TRUE(MaskBlt(target, 0, 0, 2, 2, nullptr, 0, 0, nullptr, 0, 0, MAKEROP4(WHITENESS, SRCCOPY)));
    EXPECT_TRUE(MaskBlt(target, 0, 0, 2, 2, nullptr, 0, 0, mask, 0, 0, MAKEROP4(WHITENESS, BLACKNESS)));
    EXPECT_TRUE(DeleteObject(mask));
    EXPECT_EQ(draw(2, 2, mask, 0, 0),
              Either<DWORD>(Difference::MaskBounds, ERROR_INVALID_HANDLE, ERROR_SUCCESS));
}

TEST(GraphicsOfTheHandheld, NothingComesFromOutsideTheSource) {
    Picture target(CreateBitmap(4, 1, 1, 32, nullptr));
    Picture source(CreateBitmap(2, 1, 1, 32, nullptr));
    target.Fill(RGB(9, 9, 9));
    EXPECT_TRUE(BitBlt(target, 0, 0, 4, 1, source, -1, 0, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (std::vector<COLORREF>{RGB(9, 9, 9), 0, 0, RGB(9, 9, 9)}));
    EXPECT_TRUE(BitBlt(target, 0, 0, 4, 1, source, 0x7FFFFFFF, 0, SRCCOPY));
    EXPECT_EQ(GetPixel(target, 0, 0), RGB(9, 9, 9));
}

TEST(GraphicsOfTheHandheld, SystemColoursAreFoundWithAndWithoutTheFlag) {
    EXPECT_EQ(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(13));
    EXPECT_EQ(GetSysColorBrush(COLOR_HIGHLIGHT), GetSysColorBrush(13));
    EXPECT_EQ(GetSysColorBrush(1000), nullptr);
    Picture picture(CreateBitmap(1, 1, 1, 32, nullptr));
    const RECT all{0, 0, 1, 1};
    for (const int color : {COLOR_HIGHLIGHT, 13}) {
        picture.Fill(RGB(1, 2, 3));
        EXPECT_TRUE(FillRect(picture, &all, reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(color) + 1)));
        EXPECT_EQ(GetPixel(picture, 0, 0), static_cast<COLORREF>(GetSysColor(color)));
    }
    EXPECT_EQ(FillRect(picture, &all, nullptr), Either(Difference::FillResult, FALSE, TRUE));
}

}  // namespace
