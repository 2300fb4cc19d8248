// SPDX-License-Identifier: MIT
#include "input_method/button_images.h"

#include <cstring>
#include <set>

#include "fault_sweep.h"
#include "server_fixture.h"
#include "system_colors.h"

namespace {

constexpr COLORREF kPage = RGB(255, 0, 255);  // in neither picture
using Colors = std::vector<COLORREF>;

BITMAPINFO SectionInfo(LONG width, LONG height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    return info;
}

CBitmapOwner MakeSection(LONG width, LONG height) {
    const BITMAPINFO info = SectionInfo(width, height);
    void* bits = nullptr;
    return CBitmapOwner(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
}

// The pixels of a bitmap, rows from the top.
Colors ReadColors(HBITMAP bitmap, int width, int height) {
    const CMemoryDC dc(CreateCompatibleDC(nullptr));
    const CSelection selection(dc.Get(), bitmap);
    EXPECT_TRUE(selection);
    Colors colors;
    for (int i = 0; i < width * height; ++i) {
        colors.push_back(GetPixel(dc.Get(), i % width, i / width));
    }
    return colors;
}

void WriteColors(HBITMAP bitmap, int width, const Colors& colors) {
    const CMemoryDC dc(CreateCompatibleDC(nullptr));
    const CSelection selection(dc.Get(), bitmap);
    ASSERT_TRUE(selection);
    for (int i = 0; i < static_cast<int>(colors.size()); ++i) {
        SetPixel(dc.Get(), i % width, i / width, colors[static_cast<std::size_t>(i)]);
    }
}

// An image as it looks on a page of a colour that it does not have.
Colors DrawImage(HANDLE list, int index, int width) {
    const CBitmapOwner page = MakeSection(width, 16);
    WriteColors(page.Get(), width, Colors(static_cast<std::size_t>(width * 16), kPage));
    {
        const CMemoryDC dc(CreateCompatibleDC(nullptr));
        const CSelection selection(dc.Get(), page.Get());
        EXPECT_TRUE(ImageList_Draw(static_cast<HIMAGELIST>(list), index, dc.Get(), 0, 0, ILD_TRANSPARENT));
    }
    return ReadColors(page.Get(), width, 16);
}

std::set<COLORREF> Distinct(const Colors& colors) { return {colors.begin(), colors.end()}; }

DIBSECTION Describe(const CBitmapOwner& bitmap) {
    DIBSECTION section{};
    EXPECT_EQ(GetObjectW(bitmap.Get(), sizeof section, &section), static_cast<int>(sizeof section));
    return section;
}

// What GetInfo says of an input method made by this factory; all 0 when none can be made.
IMINFO CreateAndAsk(IClassFactory& factory) {
    IMINFO info{};
    void* created = nullptr;
    if (FAILED(factory.CreateInstance(nullptr, IID_IInputMethod2, &created))) return info;
    auto* object = static_cast<IInputMethod2*>(created);
    EXPECT_EQ(object->GetInfo(&info), S_OK);
    object->Release();
    return info;
}

class ButtonImages : public ServerTest {
protected:
    void SetUp() override {
        ServerTest::SetUp();
        m_factory = GetFactory();
    }
    void TearDown() override {
        m_factory->Release();
        ServerTest::TearDown();
    }

    IClassFactory* m_factory = nullptr;
};

TEST_F(ButtonImages, NarrowGlyphHasTheColorOfCaptionText) {
    const IMINFO info = CreateAndAsk(*m_factory);
    ASSERT_EQ(info.iNarrow, 0);
    EXPECT_EQ(Distinct(DrawImage(info.hImageNarrow, 0, 16)),
              (std::set<COLORREF>{kPage, GetSysColor(COLOR_CAPTIONTEXT)}));

    constexpr COLORREF other = RGB(0x80, 0, 0x80);  // one that lists of 16 colours have as well
    test::ChangeSystemColor(COLOR_CAPTIONTEXT, other);
    const IMINFO recolored = CreateAndAsk(*m_factory);
    EXPECT_EQ(Distinct(DrawImage(recolored.hImageNarrow, 0, 16)), (std::set<COLORREF>{kPage, other}));
    EXPECT_EQ(Distinct(DrawImage(info.hImageNarrow, 0, 16)).count(other), 0u);
}

TEST_F(ButtonImages, WidePictureKeepsItsColors) {
    const IMINFO info = CreateAndAsk(*m_factory);
    ASSERT_EQ(info.iWide, 0);
    const Colors before = DrawImage(info.hImageWide, 0, 32);
    EXPECT_EQ(before.front(), kPage);
    EXPECT_GT(Distinct(before).size(), 2u);
    EXPECT_LE(Distinct(before).size(), 16u);
    test::ChangeSystemColor(COLOR_CAPTIONTEXT, RGB(1, 2, 3));
    EXPECT_EQ(DrawImage(CreateAndAsk(*m_factory).hImageWide, 0, 32), before);
}

// Faults during creation lose at most the image that they met, and never a handle.
TEST_F(ButtonImages, AFaultCostsOneImageAtMost) {
    bool listsFailed = false;
    bool picturesFailed = false;
    for (test::FaultSweep sweep; sweep.Next();) {
        sweep.Arm();
        const IMINFO info = CreateAndAsk(*m_factory);
        sweep.Disarm();
        if (info.cbSize == 0) continue;
        SCOPED_TRACE(sweep.Describe());
        EXPECT_EQ(info.iNarrow, ImageList_GetImageCount(static_cast<HIMAGELIST>(info.hImageNarrow)) - 1);
        EXPECT_EQ(info.iWide, ImageList_GetImageCount(static_cast<HIMAGELIST>(info.hImageWide)) - 1);
        EXPECT_LE(info.iNarrow, 0);
        EXPECT_LE(info.iWide, 0);
        EXPECT_GE(info.iNarrow + info.iWide, -1);
        listsFailed |= !info.hImageNarrow || !info.hImageWide;
        picturesFailed |= (info.hImageNarrow && info.iNarrow < 0) || (info.hImageWide && info.iWide < 0);
    }
    EXPECT_TRUE(listsFailed);
    EXPECT_TRUE(picturesFailed);
}

// 5 x 3 pixels, so rows are padded; the first pixel in memory is the bottom left one.
class Colorizing : public testing::Test {
protected:
    static constexpr COLORREF kKey = RGB(1, 2, 3);
    static constexpr COLORREF kNearKey = RGB(3, 2, 1);
    static constexpr COLORREF kPaint = RGB(0x12, 0x34, 0x56);

    void SetUp() override { test::ChangeSystemColor(COLOR_CAPTIONTEXT, kPaint); }

    const Colors m_colors{
        kNearKey,
        kKey,
        RGB(255, 255, 255),
        kKey,
        RGB(0xC0, 0xC0, 0xC0),  // top
        RGB(1, 2, 4),
        kKey,
        kPaint,
        kKey,
        RGB(0, 0, 0),  //
        kKey,
        kNearKey,
        RGB(1, 0, 3),
        kKey,
        kKey,  // bottom
    };
    const Colors m_expected{
        kPaint, kKey,   kPaint, kKey, kPaint,  //
        kPaint, kKey,   kPaint, kKey, kPaint,  //
        kKey,   kPaint, kPaint, kKey, kKey,
    };
};

TEST_F(Colorizing, PaintsAllButTheKeyColorWhateverTheSource) {
    const CBitmapOwner section = MakeSection(5, 3);
    WriteColors(section.Get(), 5, m_colors);
    const CBitmapOwner device(CreateBitmap(5, 3, 1, 32, nullptr));
    WriteColors(device.Get(), 5, m_colors);
    for (const CBitmapOwner* source : {&section, &device}) {
        const CBitmapOwner result = ColorizeBitmap(source->Get());
        ASSERT_TRUE(result);
        EXPECT_EQ(ReadColors(result.Get(), 5, 3), m_expected);
        EXPECT_EQ(ReadColors(source->Get(), 5, 3), m_colors) << "the source is read only";
    }
}

TEST_F(Colorizing, MakesABottomUpSectionOf24Bits) {
    const CBitmapOwner device(CreateBitmap(5, 3, 1, 32, nullptr));
    const BITMAPINFOHEADER header = Describe(ColorizeBitmap(device.Get())).dsBmih;
    EXPECT_EQ(header.biWidth, 5);
    EXPECT_EQ(header.biHeight, 3);
    EXPECT_EQ(header.biBitCount, 24);
    EXPECT_EQ(header.biSizeImage, 48u);
    EXPECT_EQ(header.biXPelsPerMeter, 3780);
    EXPECT_EQ(header.biYPelsPerMeter, 3780);
}

TEST_F(Colorizing, FailureLeavesNothingBehind) {
    EXPECT_FALSE(ColorizeBitmap(nullptr));
    const CBitmapOwner device(CreateBitmap(5, 3, 1, 32, nullptr));
    WriteColors(device.Get(), 5, m_colors);
    unsigned failures = 0;
    for (test::FaultSweep sweep; sweep.Next();) {
        sweep.Arm();
        const CBitmapOwner result = ColorizeBitmap(device.Get());
        sweep.Disarm();
        SCOPED_TRACE(sweep.Describe());
        if (result) {
            EXPECT_EQ(ReadColors(result.Get(), 5, 3), m_expected);
        } else {
            EXPECT_TRUE(sweep.WasHit());
            ++failures;
        }
    }
    // One description, two sections, two contexts, two selections and the copy.
    EXPECT_EQ(failures, 8u);
}

}  // namespace
