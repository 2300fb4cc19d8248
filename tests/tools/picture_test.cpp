// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "bitmap.h"
#include "skin_module.h"

namespace tlk {
namespace {

Picture Gradient(Size size, int step) {
    Picture picture(size, Color{});
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            picture.At(x, y) = {static_cast<std::uint8_t>(x * step), static_cast<std::uint8_t>(y * step), 77};
    return picture;
}

Picture Loaded(const Bytes& bitmap) {
    const Bytes file = WriteModule({{ResourceKind::Bitmap, "CHAR_KEYBOARD_BITMAP", bitmap}});
    return ReadSkin(Module::Parse(file)).Board(BoardKind::Portrait).picture.pixels;
}

TEST(Bitmap, PicturesKeepEveryColourInEitherDepth) {
    const Picture few = Gradient({7, 5}, 3);
    const Picture many = Gradient({33, 31}, 5);
    EXPECT_EQ(Get16(EncodePicture(few), 14), 8);
    EXPECT_EQ(Get16(EncodePicture(many), 14), 24);
    EXPECT_EQ(Loaded(EncodePicture(few)), few);
    EXPECT_EQ(Loaded(EncodePicture(many)), many);
}

TEST(Bitmap, MaskHasOneBitBlackThenWhiteBottomUp) {
    Mask mask({33, 2}, 1);
    mask.At(32, 1) = 0;
    const Bytes bytes = EncodeMask(mask);
    EXPECT_EQ(Get16(bytes, 14), 1);
    EXPECT_EQ(Get32(bytes, 40), 0u);
    EXPECT_EQ(Get32(bytes, 44), 0x00FFFFFFu);
    ASSERT_EQ(bytes.size(), 48u + 2 * 8);
    EXPECT_EQ(Bytes(bytes.begin() + 48, bytes.end()),
              (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0x80, 0, 0, 0}));
}

}  // namespace
}  // namespace tlk
