// SPDX-License-Identifier: MIT
#include "input_method/button_images.h"

#include <algorithm>
#include <set>

#include "fault_sweep.h"
#include "picture.h"
#include "server_fixture.h"

namespace {

constexpr COLORREF kPage = RGB(255, 0, 255);  // in neither picture
using Colors = std::vector<COLORREF>;
using test::MakeSection;
using test::Picture;

// The image, drawn on a page of a colour that it does not have.
Colors DrawImage(HANDLE list, int width) {
    Picture page(MakeSection(24, width, 16));
    page.Fill(kPage);
    EXPECT_TRUE(ImageList_Draw(static_cast<HIMAGELIST>(list), 0, page, 0, 0, ILD_TRANSPARENT));
    return page.Pixels();
}

std::set<COLORREF> Distinct(const Colors& colors) { return {colors.begin(), colors.end()}; }

// GetInfo of an input method from this factory; all 0 if none can be created.
IMINFO CreateAndGetInfo(IClassFactory& factory) {
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

TEST_F(ButtonImages, TheGlyphHasTheColorOfCaptionTextAndThePictureItsOwn) {
    const IMINFO info = CreateAndGetInfo(*m_factory);
    ASSERT_TRUE(info.iNarrow == 0 && info.iWide == 0);
    EXPECT_EQ(Distinct(DrawImage(info.hImageNarrow, 16)),
              (std::set<COLORREF>{kPage, GetSysColor(COLOR_CAPTIONTEXT)}));
    const Colors wide = DrawImage(info.hImageWide, 32);
    EXPECT_EQ(wide.front(), kPage);
    EXPECT_GT(Distinct(wide).size(), 2u);
    EXPECT_LE(Distinct(wide).size(), 16u);

    constexpr COLORREF other = RGB(0x80, 0, 0x80);  // also one of 16 colours
    test::ChangeSystemColor(COLOR_CAPTIONTEXT, other);
    const IMINFO recolored = CreateAndGetInfo(*m_factory);
    EXPECT_EQ(Distinct(DrawImage(recolored.hImageNarrow, 16)), (std::set<COLORREF>{kPage, other}));
    EXPECT_EQ(Distinct(DrawImage(info.hImageNarrow, 16)).count(other), 0u);
    EXPECT_EQ(DrawImage(recolored.hImageWide, 32), wide);
}

// A fault during creation loses at most one image, and never a handle.
TEST_F(ButtonImages, AFaultLosesOneImageAtMost) {
    const Colors whole = DrawImage(CreateAndGetInfo(*m_factory).hImageNarrow, 16);
    bool listsFailed = false;
    bool picturesFailed = false;
    for (test::FaultSweep sweep; sweep.Next();) {
        sweep.Arm();
        const IMINFO info = CreateAndGetInfo(*m_factory);
        sweep.Disarm();
        if (info.cbSize == 0) continue;
        SCOPED_TRACE(sweep.Describe());
        EXPECT_EQ(info.iNarrow, ImageList_GetImageCount(static_cast<HIMAGELIST>(info.hImageNarrow)) - 1);
        EXPECT_EQ(info.iWide, ImageList_GetImageCount(static_cast<HIMAGELIST>(info.hImageWide)) - 1);
        EXPECT_LE(info.iNarrow, 0);
        EXPECT_LE(info.iWide, 0);
        EXPECT_GE(info.iNarrow + info.iWide, -1);
        if (info.iNarrow == 0) EXPECT_EQ(DrawImage(info.hImageNarrow, 16), whole);
        listsFailed |= !info.hImageNarrow || !info.hImageWide;
        picturesFailed |= (info.hImageNarrow && info.iNarrow < 0) || (info.hImageWide && info.iWide < 0);
    }
    EXPECT_TRUE(listsFailed);
    EXPECT_TRUE(picturesFailed);
}

// 5 x 3 pixels, so rows are padded. The first pixel in memory is the bottom left one, whose colour is kept.
TEST(Colorizing, MakesABottomUpSectionOf24BitsWhateverTheSource) {
    constexpr COLORREF key = RGB(1, 2, 3);
    constexpr COLORREF other = RGB(3, 2, 1);
    constexpr COLORREF paint = RGB(0x12, 0x34, 0x56);
    constexpr COLORREF white = RGB(255, 255, 255);
    constexpr COLORREF similar = RGB(1, 2, 4);
    const Colors colors{
        other,   key,   white, key, white,    // top
        similar, key,   paint, key, similar,  //
        key,     other, other, key, key,      // bottom
    };
    Colors painted = colors;
    std::replace_if(
        painted.begin(), painted.end(), [](COLORREF color) { return color != key; }, paint);
    test::ChangeSystemColor(COLOR_CAPTIONTEXT, paint);
    for (const HBITMAP bitmap : {MakeSection(24, 5, 3), CreateBitmap(5, 3, 1, 32, nullptr)}) {
        Picture source(bitmap, colors);
        source.Release();
        const Picture result(ColorizeBitmap(bitmap).Detach());
        EXPECT_EQ(result.Pixels(), painted);
        source.Select();
        EXPECT_EQ(source.Pixels(), colors) << "the source is read only";

        DIBSECTION section{};
        EXPECT_EQ(GetObjectW(result.Bitmap(), sizeof section, &section), static_cast<int>(sizeof section));
        EXPECT_EQ(section.dsBmih.biHeight, 3);
        EXPECT_EQ(section.dsBmih.biBitCount, 24);
        EXPECT_EQ(section.dsBmih.biSizeImage, 48u);
        EXPECT_EQ(section.dsBmih.biXPelsPerMeter, 3780);
        EXPECT_EQ(section.dsBmih.biYPelsPerMeter, 3780);
    }
    EXPECT_FALSE(ColorizeBitmap(nullptr));
}

}  // namespace
