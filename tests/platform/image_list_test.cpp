// SPDX-License-Identifier: MIT
#include <windows.h>

#include <commctrl.h>

#include <differences.h>
#include <picture.h>
#include <test_support.h>

#include <gtest/gtest.h>

namespace {

// Colours that are also among the 16.
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kPage = RGB(250, 250, 250);

using Colors = std::vector<COLORREF>;

// A bitmap in the screen's format, one row high.
test::Picture Strip(const Colors& colors) {
    return {CreateBitmap(static_cast<int>(colors.size()), 1, 1, 32, nullptr), colors};
}

class ImageLists : public testing::Test {
protected:
    ~ImageLists() override { EXPECT_TRUE(ImageList_Destroy(m_list)); }
    int Add(const Colors& colors) {
        test::Picture strip = Strip(colors);
        strip.Release();
        return ImageList_AddMasked(m_list, strip.Bitmap(), kRed);
    }

    // Images of 2 x 1 pixels.
    const HIMAGELIST m_list = ImageList_Create(2, 1, ILC_MASK, 1, 1);
};

TEST_F(ImageLists, AddAnImageForEachFullWidthAndDrawAllButTheMaskedColor) {
    EXPECT_EQ(ImageList_GetImageCount(m_list), 0);
    EXPECT_EQ(Add({kGreen, kGreen}), 0);
    EXPECT_EQ(Add({kGreen, kRed, kRed, kBlue, kBlue}), 1);
    EXPECT_EQ(ImageList_GetImageCount(m_list), 3);
    const test::Picture page = Strip({kPage, kPage, kPage, kPage});
    EXPECT_TRUE(ImageList_Draw(m_list, 2, page, 0, 0, ILD_TRANSPARENT));
    EXPECT_TRUE(ImageList_Draw(m_list, 1, page, 2, 0, ILD_TRANSPARENT));
    EXPECT_EQ(page.Pixels(), (Colors{kPage, kBlue, kGreen, kPage}));
}

TEST_F(ImageLists, HaveTheDepthOfTheScreenByDefault) {
    constexpr COLORREF nearlyBlue = RGB(0, 0, 250);
    Add({nearlyBlue, kRed});
    const test::Picture page = Strip({kPage, kPage});
    EXPECT_TRUE(ImageList_Draw(m_list, 0, page, 0, 0, ILD_TRANSPARENT));
    EXPECT_EQ(page.Pixels()[0], test::Either(test::Difference::ImageListDepth, nearlyBlue, kBlue));
}

TEST_F(ImageLists, ImagesAreClippedAtTheTarget) {
    Add({kGreen, kBlue});
    const test::Picture page = Strip({kPage, kPage, kPage, kPage});
    for (const int x : {-1, 3})
        EXPECT_TRUE(ImageList_Draw(m_list, 0, page, x, 0, ILD_TRANSPARENT));
    for (const POINT outside : {POINT{4, 0}, POINT{-2, 0}, POINT{0, 1}, POINT{0, -1}, POINT{30000, 30000}})
        EXPECT_TRUE(ImageList_Draw(m_list, 0, page, outside.x, outside.y, ILD_TRANSPARENT));
    EXPECT_EQ(page.Pixels(), (Colors{kBlue, kPage, kPage, kGreen}));
}

}  // namespace
