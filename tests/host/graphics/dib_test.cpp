// SPDX-License-Identifier: MIT
// Device-independent bitmaps in memory: all depths and headers, and damaged ones.
#include <gtest/gtest.h>
#include "graphics/graphics.h"

#include <algorithm>
#include <array>
#include <memory>
#include <type_traits>

#include "picture.h"

namespace {

using namespace test;
using Bytes = std::vector<BYTE>;

constexpr COLORREF kOrange = RGB(255, 132, 8);  // equal in 5-6-5 bits and in 8
constexpr COLORREF kBlue = RGB(0, 0, 255);

template <typename Value>
Bytes BytesOf(std::initializer_list<Value> values) {
    const auto* first = reinterpret_cast<const BYTE*>(values.begin());
    return {first, first + values.size() * sizeof(Value)};
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
Bytes Dib(const BITMAPINFOHEADER& header, std::initializer_list<DWORD> colors, const Bytes& rows) {
    Bytes bytes = BytesOf({header});
    for (const Bytes& part : {BytesOf(colors), rows})
        bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

// Copies the bytes to memory of exactly this size, so that the sanitizer notices a read beyond it.
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

constexpr std::initializer_list<DWORD> kColors = {0x000000, 0xFF8408, 0x0000FF};  // black, orange, blue

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
    ExpectPicture(Dib(header, {}, BytesOf({0xAAFF8408u, 0xBB0000FFu, 0x00FF8408u, 0u, 0u, 0u})));
}

TEST(GraphicsDib, BitFieldsDescribeTheChannels) {
    BITMAPINFOHEADER header = HeaderFor(16, 3, -2);
    header.biCompression = BI_BITFIELDS;
    const Bytes rows = BytesOf<WORD>({0xFC21, 0x001F, 0xFC21, 0, 0, 0, 0, 0});
    const Picture picture(Load(Dib(header, {0xF800, 0x07E0, 0x001F}, rows)));
    EXPECT_EQ(GetPixel(picture, 0, 0), RGB(255, 134, 8));

    // Red and blue swapped; the masks are in a longer header.
    header = HeaderFor(32, 3, -2);
    header.biSize = 108;
    header.biCompression = BI_BITFIELDS;
    Bytes words = BytesOf({0x000884FFu, 0x00FF0000u, 0x000884FFu, 0u, 0u, 0u});
    words.insert(words.begin(), 108 - sizeof header - 12, 0);  // the rest of the header
    ExpectPicture(Dib(header, {0x0000FFu, 0x00FF00u, 0xFF0000u}, words));
}

TEST(GraphicsDib, FiveBitsPerChannelWithoutMasks) {
    const Picture picture(Load(Dib(HeaderFor(16, 2, 1), {}, BytesOf<WORD>({0x7C1F, 0x83E0}))));
    EXPECT_EQ(picture.Pixels(), (std::vector<COLORREF>{RGB(255, 0, 255), RGB(0, 255, 0)}));
}

TEST(GraphicsDib, TheOldHeaderHasColoursOfThreeBytes) {
    Bytes bytes = {12, 0, 0, 0, 3,    0,    2,    0, 1, 0, 8, 0,  // header
                   0,  0, 0, 8, 0x84, 0xFF, 0xFF, 0, 0};
    bytes.resize(12 + 256 * 3);
    bytes.insert(bytes.end(), {0, 0, 0, 0, 1, 2, 1, 0});
    ExpectPicture(bytes);
}

TEST(GraphicsDib, OnlyBlackAndWhiteStaysMonochrome) {
    const auto depthOf = [](std::initializer_list<DWORD> colors) {
        const Picture picture(Load(Dib(HeaderFor(1, 9, 1), colors, {0x40, 0x80, 0, 0})));
        EXPECT_NE(GetPixel(picture, 0, 0), GetPixel(picture, 1, 0));
        EXPECT_EQ(GetPixel(picture, 8, 0), GetPixel(picture, 1, 0));
        BITMAP record{};
        GetObjectW(picture.Bitmap(), sizeof record, &record);
        return record.bmBitsPixel;
    };
    EXPECT_EQ(depthOf({0x000000, 0xFFFFFF}), 1);
    EXPECT_EQ(depthOf({0xFFFFFF, 0x000000}), 32);
    EXPECT_EQ(depthOf({0x000000, 0xFFFFFE}), 32);
}

TEST(GraphicsDib, TruncatedBitmapsAreRefused) {
    BITMAPINFOHEADER masked = HeaderFor(16);
    masked.biCompression = BI_BITFIELDS;
    const Bytes whole[] = {Dib(HeaderFor(1), {0, 0xFFFFFF}, Bytes(8)),
                           Dib(HeaderFor(4), {}, Bytes(16 * 4 + 8)), Dib(HeaderFor(24), {}, Bytes(24)),
                           Dib(masked, {0xF800, 0x7E0, 0x1F}, Bytes(16))};
    for (const Bytes& bytes : whole) {
        EXPECT_TRUE(CBitmapOwner(Load(bytes)));
        for (std::size_t size = 0; size < bytes.size(); ++size)
            EXPECT_EQ(Load(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size))), nullptr);
    }
    EXPECT_EQ(host::CreateBitmapFromDib(nullptr, 100), nullptr);
}

TEST(GraphicsDib, InconsistentHeadersAreRefused) {
    using Header = BITMAPINFOHEADER;
    const auto expectRefused = [](auto field, auto... values) {
        for (const auto value : {values...}) {
            Header header = HeaderFor(8, 4, 4);
            header.*field = static_cast<std::decay_t<decltype(header.*field)>>(value);
            SetLastError(ERROR_SUCCESS);
            EXPECT_EQ(Load(Dib(header, {}, Bytes(4096))), nullptr) << value;
            EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS)) << value;
        }
    };
    expectRefused(&Header::biSize, 41 << 20, 16);
    expectRefused(&Header::biWidth, 0, -4, 0x7FFFFFFF);
    expectRefused(&Header::biHeight, 0, -0x7FFFFFFF - 1, 0x40000000);
    expectRefused(&Header::biPlanes, 2);
    expectRefused(&Header::biBitCount, 0, 2, 0xFFFF);
    expectRefused(&Header::biCompression, 1, BI_BITFIELDS);
    expectRefused(&Header::biClrUsed, 257u, 0xFFFFFFFFu);
    Header many = HeaderFor(24, 4, 4);
    many.biClrUsed = 0x40000001;
    EXPECT_EQ(Load(Dib(many, {}, Bytes(4096))), nullptr);
    EXPECT_EQ(Load(Dib(HeaderFor(8, 32000, 32000), {}, Bytes(4096))), nullptr);
}

TEST(GraphicsDib, AnyHeaderIsHandled) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        BITMAPINFOHEADER header = HeaderFor(static_cast<WORD>(std::array{1, 4, 8, 16, 24, 32}[random() % 6]));
        header.biCompression = random() % 2 ? BI_BITFIELDS : BI_RGB;
        Bytes bytes = Dib(header, {0xFFFFFFFF, 0x80000001, 0}, Bytes(random() % 64, 0xA5));
        for (int changes = static_cast<int>(random() % 4); changes > 0; --changes)
            bytes[random() % sizeof header] = static_cast<BYTE>(random());
        const CBitmapOwner bitmap(Load(bytes));
    }
}

}  // namespace
