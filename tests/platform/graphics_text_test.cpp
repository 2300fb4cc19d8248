// SPDX-License-Identifier: MIT
// The position of text, whatever the font.
#include <gtest/gtest.h>

#include <string_view>

#include "picture.h"

namespace {

using namespace test;

constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kGreen = RGB(0, 200, 0);

int Length(LPCWSTR text) { return static_cast<int>(std::basic_string_view<WCHAR>(text).size()); }

class GraphicsText : public testing::Test {
protected:
    void SetUp() override { Clear(); }
    void Clear() { m_page.Fill(kPaper); }

    SIZE Extent(LPCWSTR text) {
        SIZE size{};
        EXPECT_TRUE(GetTextExtentPoint32W(m_page, text, Length(text), &size));
        return size;
    }

    // The bounds of the ink of a text at (60, 30).
    RECT InkOf(LPCWSTR text, UINT align) {
        Clear();
        SetTextAlign(m_page, align);
        EXPECT_TRUE(ExtTextOutW(m_page, 60, 30, 0, nullptr, text, static_cast<UINT>(Length(text)), nullptr));
        SetTextAlign(m_page, TA_LEFT | TA_TOP);
        return m_page.InkOn(kPaper);
    }

    RECT InkOfDrawText(LPCWSTR text, RECT rectangle, UINT format) {
        Clear();
        EXPECT_GT(DrawTextW(m_page, text, -1, &rectangle, format), 0);
        return m_page.InkOn(kPaper);
    }

    Picture m_page{CreateBitmap(120, 80, 1, 32, nullptr)};
};

TEST_F(GraphicsText, ExtentsAddUp) {
    const SIZE letter = Extent(TEXT("H"));
    EXPECT_GT(letter.cx, 0);
    EXPECT_GT(letter.cy, letter.cx / 2);
    EXPECT_EQ(Extent(TEXT("HHHH")).cx, 4 * letter.cx);
    EXPECT_EQ(Extent(TEXT("HHHH")).cy, letter.cy);
    SIZE size{};
    EXPECT_TRUE(GetTextExtentPoint32W(m_page, TEXT("HHHH"), 0, &size));
    EXPECT_EQ(size.cx, 0);
}

TEST_F(GraphicsText, AlignmentMovesTheCellAroundThePoint) {
    const LPCWSTR text = TEXT("HHH");
    const SIZE cell = Extent(text);
    const RECT left = InkOf(text, TA_LEFT | TA_TOP);
    EXPECT_GE(left.left, 60);
    EXPECT_LE(left.right, 60 + cell.cx);
    EXPECT_GE(left.top, 30);
    EXPECT_LE(left.bottom, 30 + cell.cy);
    const RECT centred = InkOf(text, TA_CENTER | TA_BASELINE);
    EXPECT_EQ(centred.left, left.left - cell.cx / 2);
    EXPECT_EQ(centred.bottom, 30);  // capitals stand on the baseline
    EXPECT_EQ(centred.bottom - centred.top, left.bottom - left.top);
}

TEST_F(GraphicsText, ClippedTextStaysInside) {
    const RECT clip{63, 32, 70, 37};
    ExtTextOutW(m_page, 60, 30, ETO_CLIPPED, &clip, TEXT("HHHHH"), 5, nullptr);
    const RECT ink = m_page.InkOn(kPaper);
    EXPECT_LT(ink.left, ink.right);
    EXPECT_GE(ink.left, clip.left);
    EXPECT_GE(ink.top, clip.top);
    EXPECT_LE(ink.right, clip.right);
    EXPECT_LE(ink.bottom, clip.bottom);
    // Without ETO_CLIPPED the rectangle does not clip.
    ExtTextOutW(m_page, 60, 30, 0, &clip, TEXT("HHHHH"), 5, nullptr);
    EXPECT_GT(m_page.InkOn(kPaper).right, clip.right);
}

TEST_F(GraphicsText, OpaqueTextFillsItsCell) {
    SetBkColor(m_page, kGreen);
    const SIZE cell = Extent(TEXT("HH"));
    const RECT opaque = InkOf(TEXT("HH"), TA_LEFT | TA_TOP);
    EXPECT_EQ(opaque.left, 60);
    EXPECT_EQ(opaque.top, 30);
    EXPECT_EQ(opaque.right, 60 + cell.cx);
    EXPECT_EQ(opaque.bottom, 30 + cell.cy);
    EXPECT_EQ(SetBkMode(m_page, TRANSPARENT), OPAQUE);
    EXPECT_LT(InkOf(TEXT("HH"), TA_LEFT | TA_TOP).bottom, opaque.bottom);
}

TEST_F(GraphicsText, DrawTextPlacesLines) {
    SetBkMode(m_page, TRANSPARENT);
    const RECT area{10, 10, 110, 70};
    const SIZE cell = Extent(TEXT("HHH"));
    const RECT left = InkOfDrawText(TEXT("HHH"), area, DT_LEFT);
    const RECT right = InkOfDrawText(TEXT("HHH"), area, DT_RIGHT);
    const RECT centre = InkOfDrawText(TEXT("HHH"), area, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    EXPECT_EQ(right.left - left.left, 100 - cell.cx);
    EXPECT_NEAR(centre.left - left.left, (100 - cell.cx) / 2, 1);
    EXPECT_NEAR(centre.top - left.top, (60 - cell.cy) / 2, 1);
    // Vertical centring needs a single line.
    EXPECT_EQ(InkOfDrawText(TEXT("HHH"), area, DT_VCENTER).top, left.top);
    const RECT lines = InkOfDrawText(TEXT("H\r\n\nHHH"), area, DT_LEFT);
    EXPECT_EQ(lines.top, left.top);
    EXPECT_EQ(lines.bottom, left.bottom + 2 * cell.cy);
    EXPECT_EQ(lines.right, left.right);
}

TEST_F(GraphicsText, DrawTextClipsUnlessTold) {
    SetBkMode(m_page, TRANSPARENT);
    const RECT narrow{10, 10, 14, 13};
    const RECT clipped = InkOfDrawText(TEXT("HHH"), narrow, DT_LEFT);
    EXPECT_LE(clipped.right, narrow.right);
    EXPECT_LE(clipped.bottom, narrow.bottom);
    const RECT free = InkOfDrawText(TEXT("HHH"), narrow, DT_LEFT | DT_NOCLIP);
    EXPECT_GT(free.right, narrow.right);
    EXPECT_GT(free.bottom, narrow.bottom);
}

TEST_F(GraphicsText, FontsDescribeThemselvesAndDifferInSizeAndWeight) {
    constexpr int kSize = sizeof(LOGFONTW);
    LOGFONTW record{};
    EXPECT_EQ(GetObjectW(GetStockObject(SYSTEM_FONT), kSize, &record), kSize);
    EXPECT_NE(record.lfHeight, 0);
    const HGDIOBJ initial = GetCurrentObject(m_page, OBJ_FONT);
    std::vector<SIZE> sizes;
    for (const auto& [height, weight] : {std::pair(-12, FW_NORMAL), {-12, FW_BOLD}, {24, FW_BOLD}}) {
        record = {};
        record.lfHeight = height;
        record.lfWeight = weight;
        const HFONT font = CreateFontIndirectW(&record);
        LOGFONTW read{};
        EXPECT_EQ(GetObjectW(font, kSize, &read), kSize);
        EXPECT_TRUE(read.lfHeight == height && read.lfWeight == weight);
        SelectObject(m_page, font);
        sizes.push_back(Extent(TEXT("Keyboard")));
        SelectObject(m_page, initial);
        EXPECT_TRUE(DeleteObject(font));
        EXPECT_FALSE(DeleteObject(font));
    }
    EXPECT_GT(sizes[1].cx, sizes[0].cx);
    EXPECT_NEAR(sizes[2].cy, 24, 1);
}

TEST_F(GraphicsText, TextReachesMonochromeBitmaps) {
    Picture mono(CreateBitmap(40, 20, 1, 1, nullptr));
    mono.Fill(kPaper);
    EXPECT_TRUE(ExtTextOutW(mono, 2, 2, 0, nullptr, TEXT("HH"), 2, nullptr));
    const RECT ink = mono.InkOn(kPaper);
    EXPECT_LT(ink.left, ink.right);
    EXPECT_GE(ink.top, 2);
}

}  // namespace
