// SPDX-License-Identifier: MIT
// Bitmaps, contexts and block transfers.
#include "differences.h"
#include "picture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ios>

namespace {

using namespace test;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kOrange = RGB(250, 120, 10);
constexpr COLORREF kBlue = RGB(3, 77, 201);

using Colors = std::vector<COLORREF>;

TEST(Graphics, SectionsShowTheirMemory) {
    Picture bytes(MakeSection(24, 3, 2));  // rows of 12 bytes, the lowest first
    Picture words(MakeSection(32, 3, -2));
    SetPixel(bytes, 0, 0, RGB(0x11, 0x22, 0x33));
    SetPixel(words, 2, 1, RGB(0x11, 0x22, 0x33));
    EXPECT_EQ(std::memcmp(bytes.Bits() + 12, "\x33\x22\x11", 3), 0);
    EXPECT_EQ(std::memcmp(words.Bits() + 20, "\x33\x22\x11", 3), 0);
    bytes.Bits()[8] = 0xFE;
    EXPECT_EQ(GetPixel(bytes, 2, 1), RGB(0xFE, 0, 0));
}

// In colour, the target's text and background colours stand for black and white. In monochrome, only the
// source's background colour becomes white.
TEST(Graphics, MonochromeIsTextAndBackgroundColour) {
    const WORD rows[] = {0x00B0, 0x0040};  // 1011, 0100
    const Picture mono(CreateBitmap(4, 2, 1, 1, rows));
    const Picture color(CreateBitmap(4, 2, 1, 32, nullptr));
    SetTextColor(color, kOrange);
    SetBkColor(color, kBlue);
    EXPECT_EQ(mono.Pixels(), (Colors{kWhite, kBlack, kWhite, kWhite, kBlack, kWhite, kBlack, kBlack}));
    ASSERT_TRUE(BitBlt(color, 0, 0, 4, 2, mono, 0, 0, SRCCOPY));
    EXPECT_EQ(color.Pixels(), (Colors{kBlue, kOrange, kBlue, kBlue, kOrange, kBlue, kOrange, kOrange}));
    SetPixel(color, 0, 0, kWhite);
    ASSERT_TRUE(BitBlt(mono, 0, 0, 4, 2, color, 0, 0, SRCCOPY));
    EXPECT_EQ(mono.Pixels(), (Colors{kBlack, kBlack, kWhite, kWhite, kBlack, kWhite, kBlack, kBlack}));
}

// Random pairs of codes, sizes and mask offsets, compared with the definition of a raster operation. Without
// a mask, which is every fifth time, only the foreground code counts.
TEST(Graphics, MaskBltFollowsAnyPairOfCodes) {
    constexpr int kWidth = 45;
    constexpr int kHeight = 7;
    Random random;
    Picture target(MakeSection(32, kWidth, -kHeight));
    Picture mask(CreateBitmap(kWidth, kHeight, 1, 1, nullptr));
    Picture sources[] = {Picture(CreateBitmap(kWidth, kHeight, 1, 32, nullptr)),
                         Picture(MakeSection(24, kWidth, kHeight)),
                         Picture(MakeSection(32, kWidth, -kHeight))};
    for (Picture& source : sources)
        source.Scatter(random);
    mask.Scatter(random);
    const Colors maskPixels = mask.Pixels();
    for (int round = 0; round < 300; ++round) {
        target.Scatter(random);
        const COLORREF pattern = random.Color();
        const HBRUSH brush = CreateSolidBrush(pattern);
        const HGDIOBJ oldBrush = SelectObject(target, brush);
        Picture& source = sources[random.Below(3)];
        // Every third pair is one that keyboards use.
        const DWORD common[] = {0x00CC0000, 0xFF330000, 0xCC330000};
        const DWORD rop =
            round % 3 ? static_cast<DWORD>(random.Below(0x10000)) << 16 : common[random.Below(3)];
        const int width = random.Below(kWidth) + 1, height = random.Below(kHeight) + 1;
        const auto at = [&](int size, int room) { return random.Below(room - size + 1); };
        const POINT to{at(width, kWidth), at(height, kHeight)}, from{at(width, kWidth), at(height, kHeight)};
        const POINT maskAt{at(width, kWidth), at(height, kHeight)};
        const HBITMAP usedMask = round % 5 ? mask.Bitmap() : nullptr;
        Colors expected = target.Pixels();
        const Colors sourcePixels = source.Pixels();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const auto index = [&](const POINT& p) {
                    return static_cast<std::size_t>((p.y + y) * kWidth + p.x + x);
                };
                const bool isForeground = !usedMask || maskPixels[index(maskAt)];
                const BYTE code = static_cast<BYTE>(isForeground ? rop >> 16 : rop >> 24);
                expected[index(to)] = Combine(code, pattern, sourcePixels[index(from)], expected[index(to)]);
            }
        }
        ASSERT_TRUE(MaskBlt(target, to.x, to.y, width, height, source, from.x, from.y, usedMask, maskAt.x,
                            maskAt.y, rop));
        ASSERT_EQ(target.Pixels(), expected)
            << std::hex << rop << std::dec << " width " << width << " mask at " << maskAt.x;
        SelectObject(target, oldBrush);
        DeleteObject(brush);
    }
}

TEST(Graphics, BitBltFollowsEveryCodeAtEveryDepth) {
    constexpr int kWidth = 19;
    Random random;
    Picture targets[] = {Picture(MakeSection(32, kWidth, 2)), Picture(MakeSection(24, kWidth, 2)),
                         Picture(CreateBitmap(kWidth, 2, 1, 32, nullptr)),
                         Picture(CreateBitmap(kWidth, 2, 1, 1, nullptr))};
    Picture monoSource(CreateBitmap(kWidth, 2, 1, 1, nullptr));
    Picture colorSource(MakeSection(24, kWidth, -2));
    monoSource.Scatter(random);
    colorSource.Scatter(random);
    for (Picture& target : targets) {
        const bool isMono = &target == &targets[3];
        Picture& source = isMono ? monoSource : colorSource;
        for (DWORD code = 0; code < 256; ++code) {
            target.Scatter(random);
            SelectObject(target, GetStockObject(code % 2 ? WHITE_BRUSH : BLACK_BRUSH));
            const COLORREF pattern = code % 2 ? kWhite : kBlack;
            Colors expected = target.Pixels();
            const Colors sourcePixels = source.Pixels();
            for (std::size_t i = 0; i < expected.size(); ++i)
                expected[i] = Combine(static_cast<BYTE>(code), pattern, sourcePixels[i], expected[i]);
            ASSERT_TRUE(BitBlt(target, 0, 0, kWidth, 2, source, 0, 0, code << 16));
            ASSERT_EQ(target.Pixels(), expected) << std::hex << code;
        }
    }
}

TEST(Graphics, ABitmapCanBeCopiedOntoItself) {
    constexpr int kSide = 23;
    const POINT shifts[] = {{3, 0}, {-3, 0}, {0, 2}, {0, -2}, {1, 1}, {-5, 4}, {7, -1}};
    Random random;
    for (const int bits : {1, 24, 32}) {
        Picture picture(bits == 24 ? MakeSection(24, kSide, kSide)
                                   : CreateBitmap(kSide, kSide, 1, static_cast<UINT>(bits), nullptr));
        for (const POINT& shift : shifts) {
            picture.Scatter(random);
            const Colors before = picture.Pixels();
            ASSERT_TRUE(BitBlt(picture, 8 + shift.x, 8 + shift.y, 8, 8, picture, 8, 8, SRCCOPY));
            for (int i = 0; i < 64; ++i) {
                const int x = 8 + i % 8, y = 8 + i / 8;
                ASSERT_EQ(GetPixel(picture, x + shift.x, y + shift.y),
                          before[static_cast<std::size_t>(y * kSide + x)]);
            }
        }
    }
}

TEST(Graphics, NothingIsDrawnOutsideTheTarget) {
    const Picture target(CreateBitmap(3, 2, 1, 32, nullptr));
    const Picture source(CreateBitmap(4, 4, 1, 32, nullptr), Colors(16, kOrange));
    const POINT outside[] = {{3, 0}, {0, -2000000000}, {-4, 0}, {0, 2}};
    for (const POINT& p : outside)
        EXPECT_TRUE(BitBlt(target, p.x, p.y, 4, 4, source, 0, 0, SRCCOPY));
    EXPECT_TRUE(BitBlt(target, 0, 0, 0, 4, source, 0, 0, SRCCOPY));
    EXPECT_TRUE(BitBlt(target, -2, 1, 4, 4, source, 0, 0, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Colors{kBlack, kBlack, kBlack, kOrange, kOrange, kBlack}));
    EXPECT_EQ(GetPixel(target, 3, 0), static_cast<COLORREF>(CLR_INVALID));
    EXPECT_EQ(SetPixel(target, 0, -1, kOrange),
              test::Either<COLORREF>(test::Difference::PixelsOutside, CLR_INVALID, kOrange));
}

TEST(Graphics, FilledRectanglesExcludeTheirRightAndBottomEdges) {
    const Picture picture(CreateBitmap(3, 2, 1, 32, nullptr));
    const HBRUSH brush = CreateSolidBrush(kOrange);
    const RECT middle{1, 0, 2, 1};
    const RECT corner{2, 1, 99, 99};
    EXPECT_TRUE(FillRect(picture, &middle, brush));
    EXPECT_TRUE(FillRect(picture, &corner, GetSysColorBrush(COLOR_HIGHLIGHT)));
    EXPECT_TRUE(DeleteObject(brush));
    const auto highlight = static_cast<COLORREF>(GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(picture.Pixels(), (Colors{kBlack, kOrange, kBlack, kBlack, kBlack, highlight}));
}

}  // namespace
