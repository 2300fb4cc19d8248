// SPDX-License-Identifier: MIT
#include <limits>

#include "keyboard_fixture.h"

namespace {

using test::KeyCenter;

const Events kSpace = {"vk 20 down"};
const Events kBackspace = {"vk 08 down"};
const Events kEnter = {"vk 0D down"};
const Events kSmallQ = {"char vk=51 flags=00000080 'q'", "char vk=51 flags=00010000 'q'"};
const Events kLargeQ = {"char vk=51 flags=20000080 'Q'", "char vk=51 flags=20010000 'Q'"};

Events Joined(Events first, const Events& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class Swipe : public KeyboardTest {
protected:
    Swipe() { Start(); }
    // The same event, whichever call it came from.
    Events SwipeBetween(POINT begin, POINT end, WORD key = test::KeyQ) {
        m_keyboard->Swipe(begin.x, begin.y, end.x, end.y, &m_callback, &m_window, m_keyboard->m_Charset[key]);
        return m_callback.Take();
    }
};

TEST_F(Swipe, DirectionNeedsMoreThan15PixelsAndDiagonalsAreVertical) {
    const struct {
        LONG dx, dy;
        Events events;
    } cases[] = {
        {16, 0, kSpace},       {15, 0, {}},
        {16, 15, kSpace},      {16, -15, kSpace},
        {16, 16, kEnter},      {16, -16, kLargeQ},
        {-16, 0, kBackspace},  {-15, 0, {}},
        {-16, 15, kBackspace}, {-16, -15, kBackspace},
        {-16, 16, kEnter},     {-16, -16, kLargeQ},
        {0, 16, kEnter},       {0, 15, {}},
        {0, -16, kLargeQ},     {0, -15, {}},
        {15, 16, kEnter},      {15, 15, {}},
        {-15, -15, {}},        {0, 0, {}},
        {100, 99, kSpace},     {99, 100, kEnter},
        {-100, -100, kLargeQ}, {5000, 0, kSpace},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(SwipeBetween({100, 100}, {100 + c.dx, 100 + c.dy}), c.events) << c.dx << "," << c.dy;
    }
    constexpr LONG most = std::numeric_limits<LONG>::max();
    constexpr LONG least = std::numeric_limits<LONG>::min();
    EXPECT_EQ(SwipeBetween({least, 0}, {most, 0}), kSpace);
    EXPECT_EQ(SwipeBetween({most, 0}, {least, 0}), kBackspace);
    EXPECT_EQ(SwipeBetween({0, least}, {0, most}), kEnter);
    EXPECT_EQ(SwipeBetween({least, most}, {most, least}), kLargeQ);
}

TEST_F(Swipe, ModesTypeNothingOrTheStrokeOrBoth) {
    const struct {
        DWORD mode;
        LONG dx, dy;
        Events events;
    } cases[] = {
        {0, 40, 0, {}},
        {0, -40, 0, {}},
        {0, 0, 40, {}},
        {0, 0, -40, {}},
        {1, 40, 0, kSpace},
        {1, -40, 0, kBackspace},
        {1, 0, 40, kEnter},
        {1, 0, -40, kLargeQ},
        {2, 40, 0, Joined(kSmallQ, kSpace)},
        {2, 0, -40, Joined(kSmallQ, kLargeQ)},
        {2, 12, 12, kSmallQ},
        {3, 40, 0, kSpace},
        {0x80000000, -40, 0, kBackspace},
    };
    for (const auto& c : cases) {
        m_keyboard->m_dwSwipe = c.mode;
        EXPECT_EQ(Stroke(test::KeyQ, c.dx, c.dy), c.events)
            << "mode " << c.mode << ": " << c.dx << "," << c.dy;
    }
}

TEST_F(Swipe, EveryStrokeButNoneInModeZeroReleasesTheOneShotStatuses) {
    for (const DWORD mode : {1u, 2u, 3u, 0u}) {
        m_keyboard->m_dwSwipe = mode;
        Tap(test::KeyShift);
        const Events events = Stroke(test::KeyW, 15, 0);  // too short for a stroke, and off the key
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bShift, mode == 0) << mode;
        EXPECT_EQ(events.size(), mode == 0 ? 0u : mode == 2 ? 3u : 1u) << mode;
        EXPECT_TRUE(mode == 0 || events.back() == "vk 10 up") << mode;
    }
}

TEST_F(Swipe, UpwardStrokeTakesTheOtherCase) {
    EXPECT_EQ(Stroke(test::KeyQ, 0, -40), kLargeQ);
    Tap(test::KeyShift);
    EXPECT_EQ(Stroke(test::KeyQ, 0, -40), Joined(kSmallQ, {"vk 10 up"}));
    m_keyboard->SetKbStatus(&kCapsCode, &m_window);
    EXPECT_EQ(Stroke(test::KeyQ, 0, -40), kSmallQ);
    EXPECT_EQ(Stroke(test::KeyTab, 0, -40), Events{"char vk=09 flags=20000080 U+0009"});
    EXPECT_EQ(Stroke(test::KeyBackspace, 0, -40), (Events{"vk 08 down", "vk 08 up"}));
}

TEST_F(Swipe, UpwardStrokeFromTheLanguageKeySwitchesTheUmlautPlane) {
    for (const DWORD mode : {0u, 1u, 2u}) {
        m_keyboard->m_dwSwipe = mode;
        m_keyboard->m_stKbStatus = {};
        EXPECT_EQ(Stroke(test::KeyLanguage, 3, -40), Events());
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bUml, 1) << mode;
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bLng1, mode != 2) << "mode 2 taps the key first";
        EXPECT_EQ(Stroke(test::KeyLanguage, 3, -40), Events());
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bUml, 0) << mode;
        // Without extended symbols, the language key is a status key like any other.
        m_keyboard->m_bExtSym = 0;
        EXPECT_EQ(Stroke(test::KeyLanguage, 3, -40), Events());
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bUml, 0) << mode;
        m_keyboard->m_bExtSym = 1;
    }
}

TEST_F(Swipe, OtherStrokesFromTheLanguageKeyInModeZeroDoNothing) {
    m_keyboard->m_dwSwipe = 0;
    for (const POINT stroke : {POINT{40, 0}, POINT{-40, 0}, POINT{0, 40}, POINT{15, -15}}) {
        EXPECT_EQ(Stroke(test::KeyLanguage, stroke.x, stroke.y), Events());
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bUml, 0);
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bLng1, 1);
    }
}

TEST_F(Swipe, StatusKeysAreNotResetByTheirStroke) {
    Tap(test::KeyControl);
    EXPECT_EQ(Stroke(test::KeyShift, 0, -40), Events()) << "a status key has no other case";
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bCtrl, 1);
    EXPECT_EQ(Stroke(test::KeyShift, 40, 0), kSpace);
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bCtrl, 1);
    m_keyboard->m_dwSwipe = 2;
    EXPECT_EQ(Stroke(test::KeyShift, 40, 0), (Events{"vk 10 down", "vk 20 down"}));
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bShift, 1);
}

// The end of a stroke is the last move, not the pen-up; without a move it is that of an earlier gesture.
TEST_F(Swipe, StrokeEndsWhereThePenLastMoved) {
    const POINT begin = KeyCenter(test::KeyQ);
    Down(begin);
    Move({begin.x, begin.y + 30});
    Up({begin.x + 40, begin.y});
    EXPECT_EQ(m_callback.Take(), kEnter);
    Down(begin);
    Up({begin.x + 40, begin.y});
    EXPECT_EQ(m_callback.Take(), kEnter);
    m_keyboard->UnloadSkin();
    ASSERT_TRUE(InitPortrait());
    Down(begin);
    Up({begin.x + 40, begin.y});
    EXPECT_EQ(m_callback.Take(), begin.x > begin.y ? kBackspace : kLargeQ)
        << "towards (0, 0) after a new start";
}

TEST_F(Swipe, ComingBackToTheKeyIsATap) {
    Down(KeyCenter(test::KeyQ));
    Move({200, 30});
    Move(KeyCenter(test::KeyQ));
    Up(KeyCenter(test::KeyQ));
    EXPECT_EQ(m_callback.Take(), kSmallQ);
}

TEST_F(Swipe, WithoutCallbackOrWindowNothingIsSent) {
    const CharsetEntry q = m_keyboard->m_Charset[test::KeyQ];
    m_keyboard->Swipe(0, 0, 40, 0, nullptr, &m_window, q);
    m_keyboard->Swipe(0, 0, 40, 0, &m_callback, nullptr, q);
    EXPECT_EQ(m_callback.Take(), Events());
    Tap(test::KeyShift);
    m_keyboard->m_pCallback = nullptr;
    EXPECT_EQ(Stroke(test::KeyQ, 40, 0), Events());
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bShift, 0) << "the status goes its way all the same";
}

}  // namespace
