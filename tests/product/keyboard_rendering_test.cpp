// SPDX-License-Identifier: MIT
#include <algorithm>
#include <limits>

#include "keyboard_fixture.h"
#include "picture.h"

namespace {

using test::PictureColor;
using test::PictureKind;
using test::RectBytes;
using test::TestSkin;

constexpr COLORREF kUntouched = RGB(200, 100, 50);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// The expected pixel: picture or black, inverted picture or white.
COLORREF Shown(PictureKind kind, int plane, POINT p, bool isPressed) {
    const bool bit = test::MaskBit(plane, p.x, p.y);
    const COLORREF color = bit ? PictureColor(kind, p.x, p.y) : RGB(0, 0, 0);
    return isPressed ? color ^ kWhite : color;
}

bool Covers(const RECT& r, POINT p) {
    return r.left <= p.x && p.x < r.right && r.top <= p.y && p.y < r.bottom;
}

// In the order of slots: 0 and 1 are language 1, small and large.
constexpr int kSmall = 0;
constexpr int kLarge = 1;
constexpr int kDigitPlane = 8;

class Rendering : public KeyboardTest {
protected:
    static constexpr int kWidth = 250;  // wider and higher than the picture
    static constexpr int kHeight = 90;

    std::vector<COLORREF> Paint(CWindow* window) {
        test::Picture target(test::MakeSection(32, kWidth, -kHeight));
        target.Fill(kUntouched);
        m_keyboard->Paint(target, window);
        return target.Pixels();
    }
    // Paints, and compares every pixel with the expected one.
    template <typename PlaneAt>
    void ExpectPicture(PictureKind kind, PlaneAt planeAt, int pictureWidth = 240) {
        const std::vector<COLORREF> pixels = Paint(&m_window);
        for (int i = 0; i < kWidth * kHeight; ++i) {
            const POINT p{i % kWidth, i / kWidth};
            bool isPressed = false;
            for (const RECT& r : m_keyboard->m_PressedRects)
                isPressed = isPressed || Covers(r, p);
            const bool isInside = p.x < pictureWidth && p.y < test::kSkinHeight;
            const COLORREF expected =
                isInside ? Shown(kind, planeAt(p, isPressed), p, isPressed) : kUntouched;
            ASSERT_EQ(pixels[static_cast<std::size_t>(i)], expected) << p.x << "," << p.y;
        }
    }
    void ExpectPlane(int plane, PictureKind kind = PictureKind::Portrait, int pictureWidth = 240) {
        ExpectPicture(
            kind, [=](POINT, bool) { return plane; }, pictureWidth);
    }
};

TEST_F(Rendering, PictureShowsThroughTheMaskAndPressedKeysAreInverted) {
    Start();
    ExpectPlane(kSmall);
    m_keyboard->m_PressedRects = {RectOf(test::KeyQ), {3, 45, 17, 46}};
    ExpectPlane(kSmall);
    // Only inside the picture.
    m_keyboard->m_PressedRects = {
        {230, 70, 65535, 65535}, {65535, 65535, 0, 0}, {60000, 60000, 60001, 60001}};
    ExpectPlane(kSmall);
    SetFlags({1, 0, 0, 0, 0, 1});
    ExpectPlane(7);
    SetFlags({1, 1, 1, 0, 1, 1});
    ExpectPlane(kSmall);
    SetFlags({1, 1, 0, 1, 1, 0});
    ExpectPlane(kDigitPlane, PictureKind::Digit);
}

TEST_F(Rendering, CapsLockKeepsTheMasksOfTheFiveRegions) {
    const RECT rect = {40, 20, 120, 60};
    Start(TestSkin().Data("CAPS_RECT", RectBytes(rect)));
    const struct {
        KbStatus status;  // Shift, caps lock, Control, language 1, digits, umlaut
        int outside, inside;
        PictureKind kind;
    } cases[] = {
        {{0, 1, 0, 1, 0, 0}, 1, 0, PictureKind::Portrait}, {{1, 1, 0, 1, 0, 0}, 0, 1, PictureKind::Portrait},
        {{0, 1, 0, 0, 0, 1}, 7, 6, PictureKind::Portrait}, {{1, 1, 0, 0, 0, 1}, 6, 7, PictureKind::Portrait},
        {{1, 0, 0, 1, 0, 0}, 1, 1, PictureKind::Portrait}, {{0, 1, 1, 1, 0, 0}, 0, 0, PictureKind::Portrait},
        {{0, 1, 0, 1, 1, 0}, 8, 8, PictureKind::Digit},
    };
    for (const auto& c : cases) {
        SetFlags(c.status);
        ExpectPicture(c.kind, [&](POINT p, bool) { return Covers(rect, p) ? c.inside : c.outside; });
    }
    ASSERT_TRUE(InitLandscape());  // which is never split
    SetFlags({0, 1, 0, 1, 0, 0});
    m_keyboard->m_PressedRects = {{30, 10, 80, 50}};
    ExpectPlane(kLarge, PictureKind::Landscape, kWidth);
}

// The top left corner of a pressed key, edges included, decides on its mask.
TEST_F(Rendering, PressedKeysHaveTheMaskOfTheirCorner) {
    const RECT rect = {40, 20, 120, 60};
    Start(TestSkin().Data("CAPS_RECT", RectBytes(rect)));
    SetFlags({0, 1, 0, 1, 0, 0});
    const std::pair<RECT, int> cases[] = {{{40, 20, 50, 30}, kSmall},   {{39, 20, 60, 30}, kLarge},
                                          {{40, 19, 60, 30}, kLarge},   {{110, 50, 140, 75}, kSmall},
                                          {{120, 60, 130, 70}, kSmall}, {{121, 60, 130, 70}, kLarge},
                                          {{120, 61, 130, 70}, kLarge}};
    for (const auto& [pressed, plane] : cases) {
        m_keyboard->m_PressedRects = {pressed};
        ExpectPicture(PictureKind::Portrait, [&, plane = plane](POINT p, bool isPressed) {
            return isPressed ? plane : Covers(rect, p) ? kSmall : kLarge;
        });
    }
}

// Empty, reversed, outside the picture: every pixel is drawn once, whatever the rectangle.
TEST_F(Rendering, TheCapsRectangleMayBeAnywhere) {
    constexpr LONG most = std::numeric_limits<LONG>::max();
    constexpr LONG least = std::numeric_limits<LONG>::min();
    const RECT rects[] = {
        {0, 0, 0, 0},      {30, 10, 30, 50},    {30, 10, 90, 10},           {-10, -5, 250, 30},
        {300, 0, 400, 50}, {100, 70, 260, 200}, {least, 10, most, 20},      {-90, -90, -10, -10},
        {0, 0, 240, 80},   {10, 500, 100, 600}, {least, least, most, most}, {most, most, least, least},
        {100, 40, 50, 10},
    };
    for (const RECT& rect : rects) {
        SCOPED_TRACE(testing::PrintToString(rect));
        Start(TestSkin().Data("CAPS_RECT", RectBytes(rect)));
        SetFlags({0, 1, 0, 1, 0, 0});
        ExpectPicture(PictureKind::Portrait,
                      [&](POINT p, bool) { return Covers(rect, p) ? kSmall : kLarge; });
    }
    // Without area it contains no pressed key's corner.
    Start(TestSkin().Data("CAPS_RECT", RectBytes({0, 0, 0, 20})));
    SetFlags({0, 1, 0, 1, 0, 0});
    m_keyboard->m_PressedRects = {{0, 0, 20, 20}};
    ExpectPlane(kLarge);
}

TEST_F(Rendering, ButtonsToggleExactlyTheirRectangles) {
    KeyEntry key;
    key.m_Rects = {{0, 0, 10, 10}, {5, 5, 5, 20}, {5, 5, 20, 5}, {10, 0, 20, 10}};
    m_keyboard->m_PressedRects = {{0, 0, 10, 11}};
    m_keyboard->DrawButton(nullptr, key, true);
    EXPECT_EQ(m_keyboard->m_PressedRects, (Rects{{0, 0, 10, 11}}));
    m_keyboard->DrawButton(&m_window, key, false);
    EXPECT_EQ(m_keyboard->m_PressedRects, (Rects{{0, 0, 10, 11}, {0, 0, 10, 10}, {10, 0, 20, 10}}));
    EXPECT_EQ(m_window.TakeInvalid(), RECT{});
    m_keyboard->DrawButton(&m_window, key, true);
    EXPECT_EQ(m_keyboard->m_PressedRects, (Rects{{0, 0, 10, 11}}));
    EXPECT_EQ(m_window.TakeInvalid(), (RECT{0, 0, 20, 10}));
    // Removes the first of two equal ones.
    m_keyboard->m_PressedRects = {{1, 1, 2, 2}, {3, 3, 4, 4}, {1, 1, 2, 2}};
    key.m_Rects = {{1, 1, 2, 2}};
    m_keyboard->DrawButton(&m_window, key, true);
    EXPECT_EQ(m_keyboard->m_PressedRects, (Rects{{3, 3, 4, 4}, {1, 1, 2, 2}}));
}

TEST_F(Rendering, AMissingMaskLeavesThePanelUnchanged) {
    Start(TestSkin().Without("LANG1_LARGE_MASK"));
    SetFlags({1, 0, 0, 1, 0, 0});
    Paint(&m_window);
    SetFlags({0, 1, 0, 1, 0, 0});
    Paint(&m_window);
    SetFlags({0, 0, 0, 1, 0, 0});
    ExpectPlane(kSmall);
}

TEST_F(Rendering, WithoutASkinTheMessageIsInTheMiddle) {
    ASSERT_TRUE(InitPortrait());
    ASSERT_TRUE(m_keyboard->m_bNoSkin);
    EXPECT_EQ(Paint(nullptr), std::vector<COLORREF>(kWidth * kHeight, kUntouched)) << "no window, no message";

    test::Picture target(test::MakeSection(32, kWidth, -kHeight));
    target.Fill(kUntouched);
    m_keyboard->Paint(target, &m_window);
    EXPECT_EQ(target.InkOn(kUntouched), (RECT{0, 0, 240, 80})) << "the window's client area";
    const std::vector<COLORREF> pixels = target.Pixels();
    EXPECT_NE(std::count(pixels.begin(), pixels.end(), GetSysColor(COLOR_ACTIVECAPTION)), 0);
    // Centred, with its baseline in the middle.
    const COLORREF paper = GetSysColor(COLOR_INACTIVECAPTION);
    test::Picture client(test::MakeSection(32, 240, -80));
    BitBlt(client, 0, 0, 240, 80, target, 0, 0, SRCCOPY);
    const RECT text = client.InkOn(paper);
    EXPECT_NEAR(text.left + text.right, 240, 4);
    EXPECT_NEAR(text.bottom, 40, 2);
    EXPECT_GT(text.right - text.left, 60);
    EXPECT_LT(text.top, 35);
}

}  // namespace
