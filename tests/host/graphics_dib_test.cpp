// SPDX-License-Identifier: MIT
// Device-independent bitmaps in memory: every depth and header, and those that lie.
#include <gdi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>

#include "picture.h"

namespace {

using namespace test;
using Bytes = std::vector<BYTE>;

constexpr COLORREF kOrange = RGB(255, 132, 8);  // the same in 5-6-5 bits and in 8
constexpr COLORREF kBlue = RGB(0, 0, 255);

template <typename Value>
void Append(Bytes& bytes, const Value& value) {
    const auto* first = reinterpret_cast<const BYTE*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof value);
}

BITMAPINFOHEADER HeaderFor(WORD bits, LONG width = 3, LONG height = 2) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = bits;
    return header;
}

// Header, colours (blue, green, red, 0), rows.
Bytes Dib(const BITMAPINFOHEADER& header, const std::vector<DWORD>& colors, const Bytes& rows) {
    Bytes bytes;
    Append(bytes, header);
    for (const DWORD color : colors) {
        Append(bytes, color);
    }
    bytes.insert(bytes.end(), rows.begin(), rows.end());
    return bytes;
}

// Copied to memory of exactly this size, so that the sanitizer sees a read beyond it.
HBITMAP Load(const Bytes& bytes) {
    const auto exact = std::make_unique<BYTE[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), exact.get());
    return host::CreateBitmapFromDib(exact.get(), bytes.size());
}

// The upper row: orange, blue, orange; the lower one black.
void ExpectPicture(const Bytes& bytes) {
    const HBITMAP bitmap = Load(bytes);
    ASSERT_NE(bitmap, nullptr);
    BITMAP record{};
    GetObjectW(bitmap, sizeof record, &record);
    EXPECT_EQ(record.bmBitsPixel, 32);
    const Picture picture(bitmap);
    EXPECT_EQ(picture.Pixels(), (std::vector<COLORREF>{kOrange, kBlue, kOrange, 0, 0, 0}));
}

const std::vector<DWORD> kColors = {0x000000, 0xFF8408, 0x0000FF};  // black, orange, blue

TEST(GraphicsDib, EveryDepthGivesItsColours) {
    BITMAPINFOHEADER header = HeaderFor(4);
    header.biClrUsed = 3;
    ExpectPicture(Dib(header, kColors, {0x00, 0x00, 0, 0, 0x12, 0x10, 0, 0}));
    header = HeaderFor(8);
    header.biClrUsed = 3;
    ExpectPicture(Dib(header, kColors, {0, 0, 0, 0, 1, 2, 1, 0}));
    header = HeaderFor(24, 3, -2);
    ExpectPicture(Dib(header, {}, {0x08, 0x84, 0xFF, 0xFF, 0, 0, 0x08, 0x84, 0xFF, 0, 0, 0,
                                   0,    0,    0,    0,    0, 0, 0,    0,    0,    0, 0, 0}));
    header = HeaderFor(32, 3, -2);
    Bytes words;
    for (const DWORD word : {0xAAFF8408u, 0xBB0000FFu, 0x00FF8408u, 0u, 0u, 0u}) {
        Append(words, word);
    }
    ExpectPicture(Dib(header, {}, words));
}

TEST(GraphicsDib, BitFieldsPlaceTheChannels) {
    BITMAPINFOHEADER header = HeaderFor(16, 3, -2);
    header.biCompression = BI_BITFIELDS;
    Bytes rows;
    for (const WORD pixel : std::initializer_list<WORD>{0xFC21, 0x001F, 0xFC21, 0, 0, 0, 0, 0}) {
        Append(rows, pixel);
    }
    const std::vector<DWORD> masks = {0xF800, 0x07E0, 0x001F};
    const HBITMAP bitmap = Load(Dib(header, masks, rows));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(GetPixel(Picture(bitmap), 0, 0), RGB(255, 134, 8));

    // Red and blue change places; the masks lie in a longer header.
    header = HeaderFor(32, 3, -2);
    header.biSize = 108;
    header.biCompression = BI_BITFIELDS;
    Bytes words;
    for (const DWORD mask : {0x0000FFu, 0x00FF00u, 0xFF0000u}) {
        Append(words, mask);
    }
    words.resize(108 - sizeof header);
    for (const DWORD word : {0x000884FFu, 0x00FF0000u, 0x000884FFu, 0u, 0u, 0u}) {
        Append(words, word);
    }
    ExpectPicture(Dib(header, {}, words));
}

TEST(GraphicsDib, FiveBitsPerChannelWithoutMasks) {
    BITMAPINFOHEADER header = HeaderFor(16, 2, 1);
    Bytes rows;
    Append(rows, WORD{0x7C1F});
    Append(rows, WORD{0x83E0});
    const Picture picture(Load(Dib(header, {}, rows)));
    EXPECT_EQ(picture.Pixels(), (std::vector<COLORREF>{RGB(255, 0, 255), RGB(0, 255, 0)}));
}

TEST(GraphicsDib, TheOldHeaderHasColoursOfThreeBytes) {
    const Bytes bytes = {12, 0, 0, 0, 3,    0,    2,    0, 1, 0, 8, 0,  // header
                         0,  0, 0, 8, 0x84, 0xFF, 0xFF, 0, 0};
    Bytes full = bytes;
    full.resize(12 + 256 * 3);
    const Bytes rows = {0, 0, 0, 0, 1, 2, 1, 0};
    full.insert(full.end(), rows.begin(), rows.end());
    ExpectPicture(full);
}

TEST(GraphicsDib, OnlyBlackAndWhiteStaysMonochrome) {
    const auto depthOf = [](const std::vector<DWORD>& colors) {
        const Picture picture(Load(Dib(HeaderFor(1, 9, 1), colors, {0x40, 0x80, 0, 0})));
        EXPECT_EQ(GetPixel(picture, 0, 0) == GetPixel(picture, 1, 0), false);
        EXPECT_EQ(GetPixel(picture, 8, 0), GetPixel(picture, 1, 0));
        BITMAP record{};
        GetObjectW(picture.Bitmap(), sizeof record, &record);
        return record.bmBitsPixel;
    };
    EXPECT_EQ(depthOf({0x000000, 0xFFFFFF}), 1);
    EXPECT_EQ(depthOf({0xFFFFFF, 0x000000}), 32);
    EXPECT_EQ(depthOf({0x000000, 0xFFFFFE}), 32);
}

TEST(GraphicsDib, TruncatedOnesAreRefused) {
    BITMAPINFOHEADER masked = HeaderFor(16);
    masked.biCompression = BI_BITFIELDS;
    const Bytes whole[] = {Dib(HeaderFor(1), {0, 0xFFFFFF}, Bytes(8)),
                           Dib(HeaderFor(4), std::vector<DWORD>(16), Bytes(8)),
                           Dib(HeaderFor(24), {}, Bytes(24)), Dib(masked, {0xF800, 0x7E0, 0x1F}, Bytes(16))};
    for (const Bytes& bytes : whole) {
        const HBITMAP bitmap = Load(bytes);
        EXPECT_NE(bitmap, nullptr);
        DeleteObject(bitmap);
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            EXPECT_EQ(Load(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size))), nullptr);
        }
    }
    EXPECT_EQ(host::CreateBitmapFromDib(nullptr, 100), nullptr);
}

TEST(GraphicsDib, LyingHeadersAreRefused) {
    const auto refused = [](auto change) {
        BITMAPINFOHEADER header = HeaderFor(8, 4, 4);
        change(header);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(Load(Dib(header, {}, Bytes(4096))), nullptr);
        return GetLastError() != ERROR_SUCCESS;
    };
    constexpr LONG kLeast = -0x7FFFFFFF - 1;
    EXPECT_TRUE(refused([](auto& h) { h.biSize = 41u << 20; }));
    EXPECT_TRUE(refused([](auto& h) { h.biSize = 16; }));
    EXPECT_TRUE(refused([](auto& h) { h.biWidth = 0; }));
    EXPECT_TRUE(refused([](auto& h) { h.biWidth = -4; }));
    EXPECT_TRUE(refused([](auto& h) { h.biWidth = 0x7FFFFFFF; }));
    EXPECT_TRUE(refused([](auto& h) { h.biHeight = 0; }));
    EXPECT_TRUE(refused([](auto& h) { h.biHeight = kLeast; }));
    EXPECT_TRUE(refused([](auto& h) { h.biHeight = 0x40000000; }));
    EXPECT_TRUE(refused([](auto& h) { h.biWidth = 32000, h.biHeight = 32000; }));
    EXPECT_TRUE(refused([](auto& h) { h.biPlanes = 2; }));
    EXPECT_TRUE(refused([](auto& h) { h.biBitCount = 0; }));
    EXPECT_TRUE(refused([](auto& h) { h.biBitCount = 2; }));
    EXPECT_TRUE(refused([](auto& h) { h.biBitCount = 0xFFFF; }));
    EXPECT_TRUE(refused([](auto& h) { h.biCompression = 1; }));
    EXPECT_TRUE(refused([](auto& h) { h.biCompression = BI_BITFIELDS; }));
    EXPECT_TRUE(refused([](auto& h) { h.biClrUsed = 257; }));
    EXPECT_TRUE(refused([](auto& h) { h.biClrUsed = 0xFFFFFFFF; }));
    EXPECT_TRUE(refused([](auto& h) { h.biBitCount = 24, h.biClrUsed = 0x40000001; }));
}

TEST(GraphicsDib, AnyHeaderIsSurvived) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        BITMAPINFOHEADER header = HeaderFor(static_cast<WORD>(std::array{1, 4, 8, 16, 24, 32}[random() % 6]));
        header.biCompression = random() % 2 ? BI_BITFIELDS : BI_RGB;
        Bytes bytes = Dib(header, {0xFFFFFFFF, 0x80000001, 0}, Bytes(random() % 64, 0xA5));
        for (int changes = static_cast<int>(random() % 4); changes > 0; --changes) {
            bytes[random() % sizeof header] = static_cast<BYTE>(random());
        }
        DeleteObject(Load(bytes));
    }
}

}  // namespace
