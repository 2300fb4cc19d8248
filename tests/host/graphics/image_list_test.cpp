// SPDX-License-Identifier: MIT
#include <commctrl.h>
#include <host_control.h>

#include <test_support.h>

#include <gtest/gtest.h>

#include <utility>

#include "picture.h"

namespace {

constexpr COLORREF kMask = RGB(0xC0, 0, 0);

HIMAGELIST CreateList() { return ImageList_Create(2, 2, ILC_MASK, 1, 1); }

TEST(ImageLists, PicturesHaveAlpha) {
    const HIMAGELIST list = CreateList();
    // One row for images of two rows: the missing row is transparent.
    const DWORD row[] = {0x00C00000, 0x00123456};
    EXPECT_EQ(ImageList_AddMasked(list, CBitmapOwner(CreateBitmap(2, 1, 1, 32, row)).Get(), kMask), 0);
    EXPECT_EQ(host::CountHandles().bitmaps, 0) << "its own bitmaps are no handles of the product";
    const host::Picture picture = host::PictureOf(list, 0);
    EXPECT_EQ(picture.width, 2);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.pixels, (std::vector<DWORD>{0, 0xFF123456, 0, 0}));
    for (const auto& [from, index] : {std::pair(list, 1), std::pair(list, -1), std::pair(HIMAGELIST{}, 0)})
        EXPECT_EQ(host::PictureOf(from, index).width, 0);
}

TEST(ImageLists, RefuseInvalidLists) {
    const HIMAGELIST stale = CreateList();
    ImageList_Destroy(stale);
    const CBitmapOwner bitmap(CreateBitmap(2, 2, 1, 32, nullptr));
    for (const HIMAGELIST bad : {stale, HIMAGELIST{nullptr}, reinterpret_cast<HIMAGELIST>(bitmap.Get())}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(ImageList_AddMasked(bad, bitmap.Get(), kMask), -1);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
        EXPECT_EQ(ImageList_GetImageCount(bad), 0);
        EXPECT_FALSE(ImageList_Draw(bad, 0, nullptr, 0, 0, ILD_NORMAL));
        EXPECT_FALSE(ImageList_Destroy(bad));
    }
}

TEST(ImageLists, RefuseBitmapsSmallerThanAnImage) {
    const HIMAGELIST list = CreateList();
    EXPECT_EQ(ImageList_AddMasked(list, nullptr, kMask), -1);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    const CBitmapOwner narrow(CreateBitmap(1, 2, 1, 32, nullptr));
    EXPECT_EQ(ImageList_AddMasked(list, narrow.Get(), kMask), -1);
    test::Picture held(CreateBitmap(2, 2, 1, 32, nullptr));
    EXPECT_EQ(ImageList_AddMasked(list, held.Bitmap(), kMask), -1);
    held.Release();
    EXPECT_EQ(ImageList_AddMasked(list, held.Bitmap(), kMask), 0);
    EXPECT_FALSE(ImageList_Draw(list, 0, nullptr, 0, 0, ILD_NORMAL));
    EXPECT_FALSE(ImageList_Draw(list, 1, held, 0, 0, ILD_NORMAL));
    for (const SIZE size : {SIZE{0, 2}, SIZE{2, -1}, SIZE{100000, 2}})
        EXPECT_EQ(ImageList_Create(size.cx, size.cy, ILC_MASK, 1, 1), nullptr);
}

}  // namespace
