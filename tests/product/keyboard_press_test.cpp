// SPDX-License-Identifier: MIT
#include "keyboard_fixture.h"

namespace {

using test::KeyCenter;

constexpr POINT kGap = {230, 70};  // no key of the test skin is there

using Press = KeyboardTest;

TEST_F(Press, EdgesBelongToTheKeyAndSharedOnesToTheLowerIndex) {
    StartWithKeys({{90, 20, 0, 40, 20}, {80, 0, 0, 20, 20}, {80, 100, 50, 110, 60}, {85, 0, 0, 200, 10}});
    const struct {
        LONG x, y, key;
    } cases[] = {
        {0, 0, 80},    {20, 20, 80},  {20, 5, 80},   {21, 11, 90},  {40, 20, 90},   {41, 20, -1},
        {40, 21, -1},  {30, 5, 85},   {200, 10, 85}, {201, 10, -1}, {-1, 5, -1},    {5, -1, -1},
        {100, 50, 80}, {110, 60, 80}, {111, 60, -1}, {99, 55, -1},  {70000, 5, -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(m_keyboard->FindKeyIndex(c.x, c.y, true), c.key) << c.x << "," << c.y;
    EXPECT_EQ(m_keyboard->FindKeyIndex(5, 5, false), LONG{test::KeyDigit7});
}

// A file may name keys beyond the table, which count as absent.
TEST_F(Press, KeysBeyondTheTableAreNeverHit) {
    StartWithKeys({{221, 0, 0, 10, 10}, {222, 0, 0, 50, 50}, {65535, 0, 0, 99, 99}});
    EXPECT_EQ(m_keyboard->FindKeyIndex(5, 5, true), 221);
    EXPECT_EQ(m_keyboard->FindKeyIndex(30, 30, true), -1);
    Down({30, 30});
    EXPECT_EQ(GetCapture(), nullptr);
    Up({30, 30});
    EXPECT_FALSE(m_keyboard->DblPressKey({30, 30}, &m_window));
    EXPECT_EQ(m_callback.Take(), Events());
}

TEST_F(Press, KeyLooksPressedWhileThePenIsOnIt) {
    Start();
    const Rects q = {RectOf(test::KeyQ)};
    Down(KeyCenter(test::KeyQ));
    EXPECT_EQ(Pressed(), q);
    EXPECT_EQ(m_window.TakeInvalid(), q[0]);
    EXPECT_EQ(GetCapture(), m_window.m_hWnd);
    EXPECT_EQ(m_keyboard->m_pWnd, &m_window);
    Move(KeyCenter(test::KeyQ));
    EXPECT_EQ(Pressed(), q);
    Move(KeyCenter(test::KeyW));
    EXPECT_EQ(Pressed(), Rects());
    EXPECT_EQ(m_window.TakeInvalid(), q[0]);
    Move(kGap);
    EXPECT_EQ(m_window.TakeInvalid(), RECT{});
    Move(KeyCenter(test::KeyQ));
    EXPECT_EQ(Pressed(), q);
    EXPECT_EQ(m_window.TakeInvalid(), q[0]);
    Move(KeyCenter(test::KeyQ));
    EXPECT_EQ(Pressed(), q) << "it has come back already";
    EXPECT_EQ(m_callback.Take(), Events());
    Up(KeyCenter(test::KeyQ));
    EXPECT_EQ(Pressed(), Rects());
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(m_callback.Take(), Typed('Q', 'q'));
    EXPECT_EQ(m_keyboard->m_nPressedIndex, LONG{test::KeyQ});
}

TEST_F(Press, EveryRectangleOfAKeyIsPressedWithIt) {
    StartWithKeys({{90, 0, 0, 19, 39}, {90, 20, 20, 39, 39}, {90, 60, 0, 60, 19}});
    Down({30, 30});
    EXPECT_EQ(Pressed(), (Rects{{0, 0, 19, 39}, {20, 20, 39, 39}})) << "one without area is never drawn";
    EXPECT_EQ(m_window.TakeInvalid(), (RECT{0, 0, 39, 39}));
    Up({5, 5});
    EXPECT_EQ(Pressed(), Rects());
    EXPECT_EQ(m_callback.Take().size(), 2u) << "both are the same key";
}

TEST_F(Press, ReleasingAPenThatWentDownInAGapDoesNothing) {
    Start();
    Tap(test::KeyShift);
    for (const DWORD swipe : {0u, 1u, 2u}) {
        m_keyboard->m_dwSwipe = swipe;
        Down(kGap);
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(m_keyboard->m_nPressedIndex, -1);
        SetCapture(m_window.m_hWnd);
        Move(KeyCenter(test::KeyQ));
        Up(KeyCenter(test::KeyQ));
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(m_callback.Take(), Events());
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bShift, 1) << "not even the modifier is released";
    }
}

// 46 and 53 count as one key; types the one under the pen at the end.
TEST_F(Press, TwinKeysAreOne) {
    StartWithKeys({{46, 0, 0, 19, 19}, {53, 20, 0, 39, 19}, {47, 40, 0, 59, 19}});
    Down({30, 5});
    Move({5, 5});
    EXPECT_EQ(Pressed(), (Rects{{20, 0, 39, 19}})) << "the pen has not left the key";
    EXPECT_EQ(m_keyboard->m_nPressedIndex, 53);
    Up({5, 5});
    EXPECT_EQ(m_keyboard->m_nPressedIndex, 46);
    EXPECT_EQ(m_callback.Take(), Typed('9', '9'));
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bUml, 0);
    m_keyboard->m_PressedRects.clear();

    Down({5, 5});
    Move({50, 5});
    EXPECT_EQ(Pressed(), Rects());
    Move({30, 5});
    EXPECT_EQ(Pressed(), (Rects{{20, 0, 39, 19}})) << "each is drawn at its own place";
    Up({30, 5});
    EXPECT_EQ(m_callback.Take(), Events());
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bUml, 1);

    // No other keys do.
    m_keyboard->m_dwSwipe = 0;
    Down({5, 5});
    Up({50, 5});
    EXPECT_EQ(m_callback.Take(), Events());
}

TEST_F(Press, TheDigitKeyboardHasItsOwnKeys) {
    Start();
    EXPECT_EQ(Tap(test::KeyDigits), Events());
    EXPECT_EQ(Tap(test::Key1), Typed('7', '7'));
    EXPECT_EQ(Tap(test::KeyQ), Events()) << "nothing lies there now";
    EXPECT_EQ(Tap(test::KeyDigits), Events());
    EXPECT_EQ(Tap(test::KeyQ), Typed('Q', 'q'));
}

// The first tap releases caps lock if it is on; the second always engages it.
TEST_F(Press, DoubleTapOnShiftSetsCapsLock) {
    Start();
    const KbStatus& status = m_keyboard->m_stKbStatus;
    for (const int shift : {0, 1}) {  // after the second double tap
        EXPECT_EQ(Tap(test::KeyShift), shift ? Events() : Events{"vk 10 down"});
        EXPECT_FALSE(status.m_bCAPS);
        EXPECT_TRUE(m_keyboard->DblPressKey(KeyCenter(test::KeyShift), &m_window));
        EXPECT_EQ(m_callback.Take(), Events{shift ? "vk 10 down" : "vk 10 up"});
        EXPECT_TRUE(status.m_bCAPS);
        EXPECT_EQ(status.m_bShift, shift);
    }
}

TEST_F(Press, OtherDoubleTapsAreTwoTaps) {
    Start();
    for (const WORD key : {test::KeyQ, test::KeyControl, test::KeyUmlaut, test::KeySpace})
        EXPECT_FALSE(m_keyboard->DblPressKey(KeyCenter(key), &m_window));
    EXPECT_FALSE(m_keyboard->DblPressKey(kGap, &m_window));
    StartWithCapsKey();
    EXPECT_FALSE(m_keyboard->DblPressKey(KeyCenter(test::KeyShift), &m_window));
    EXPECT_EQ(m_callback.Take(), Events());
}

// The look is toggled: a key that looks pressed because of its status looks released under the pen.
TEST_F(Press, PressingAnEngagedStatusKeyShowsItReleased) {
    Start();
    Tap(test::KeyShift);
    Down(KeyCenter(test::KeyShift));
    EXPECT_EQ(Pressed(), Rects());
    Move(kGap);
    EXPECT_EQ(Pressed(), Rects{RectOf(test::KeyShift)});
}

TEST_F(Press, WithoutAWindowKeysAreTypedAndNothingIsDrawn) {
    Start();
    m_keyboard->PressKey(KeyCenter(test::KeyQ), nullptr, true);
    m_keyboard->MoveMouse(kGap, nullptr);
    m_keyboard->MoveMouse(KeyCenter(test::KeyQ), nullptr);
    m_keyboard->PressKey(KeyCenter(test::KeyQ), nullptr, false);
    EXPECT_EQ(m_callback.Take().size(), 2u);
    EXPECT_EQ(Pressed(), Rects());
    EXPECT_TRUE(m_keyboard->DblPressKey(KeyCenter(test::KeyShift), nullptr));
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bCAPS, 1);
}

}  // namespace
