// SPDX-License-Identifier: MIT
// What the simulator draws.
#include <fstream>
#include <iterator>

#include "desktop.h"
#include "simulator_run.h"

namespace {

class PicturesTest : public SimulatorTest {
protected:
    PicturesTest() { InstallSkin(); }
};

TEST_F(PicturesTest, PicturesShowTheVisiblePanel) {
    Trace("select\nscreenshot all.png\nscreenshot panel panel.png\nhide\nscreenshot panel hidden.png\n");
    const auto bytes = [this](const char* name) {
        std::ifstream file(Folder() / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    // Width and height are at byte 16, followed by bit depth and colour type (2: RGB).
    EXPECT_EQ(bytes("all.png").substr(16, 10), std::string("\0\0\0\xF0\0\0\x01\x40\x08\x02", 10));
    EXPECT_EQ(bytes("panel.png").substr(16, 10), std::string("\0\0\0\xF0\0\0\0\x50\x08\x02", 10));
    EXPECT_GT(bytes("panel.png").size(), bytes("hidden.png").size());
}

TEST_F(PicturesTest, TheDemonstrationTypesItsSentence) {
    std::ifstream script(DEMONSTRATION);
    const std::string trace =
        Trace(std::string(std::istreambuf_iterator<char>(script), {}), "--skin '" STANDARD_SKIN "'");
    EXPECT_EQ(LastLine(trace, "Text"), "Text \"Hello, TOLKA 2024 café 12.50€\\nSchöne Grüße, ok!\"");
    EXPECT_TRUE(std::filesystem::exists(Folder() / "portrait.png"));
    EXPECT_TRUE(std::filesystem::exists(Folder() / "landscape.png"));
}

TEST_F(PicturesTest, TheFocusLeavesTheTextOfASmallButtonReadable) {
    Trace("select\noptions\nscreenshot before.png\nclick 219\nfile cancel\nscreenshot after.png\n");
    const Pixels before = ReadPng(Folder() / "before.png");
    const Pixels after = ReadPng(Folder() / "after.png");
    EXPECT_NE(before.values, after.values);
    // "+" is 15 x 15 pixels, from 194 x 35 on.
    for (int pixel = 0; pixel < 11 * 11; ++pixel) {
        const int x = 196 + pixel % 11;
        const int y = 37 + pixel / 11;
        EXPECT_EQ(before.At(x, y), after.At(x, y)) << x << ' ' << y;
    }
}

}  // namespace
