// SPDX-License-Identifier: MIT
#include <limits>

#include "keyboard_fixture.h"

namespace {

using test::KeyCenter;

const Events kSpace = {"vk 20 down"};
const Events kBackspace = {"vk 08 down"};
const Events kEnter = {"vk 0D down"};
const Events kSmallQ = Typed('Q', 'q');
const Events kLargeQ = Typed('Q', 'Q', kShiftFlag);

Events Joined(Events first, const Events& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class Swipe : public KeyboardTest {
protected:
    Swipe() { Start(); }
};

TEST_F(Swipe, DirectionNeedsMoreThan15PixelsAndDiagonalsAreVertical) {
    constexpr LONG most = std::numeric_limits<LONG>::max();
    constexpr LONG least = std::numeric_limits<LONG>::min();
    const struct {
        POINT begin, end;
        Events events;
    } cases[] = {
        {{0, 0}, {16, 0}, kSpace},       {{0, 0}, {15, 0}, {}},
        {{0, 0}, {16, 15}, kSpace},      {{0, 0}, {16, -15}, kSpace},
        {{0, 0}, {16, 16}, kEnter},      {{0, 0}, {16, -16}, kLargeQ},
        {{0, 0}, {-16, 0}, kBackspace},  {{0, 0}, {-15, 0}, {}},
        {{0, 0}, {-16, 15}, kBackspace}, {{0, 0}, {-16, -15}, kBackspace},
        {{0, 0}, {-16, 16}, kEnter},     {{0, 0}, {-16, -16}, kLargeQ},
        {{0, 0}, {0, 16}, kEnter},       {{0, 0}, {0, 15}, {}},
        {{0, 0}, {0, -16}, kLargeQ},     {{0, 0}, {0, -15}, {}},
        {{70, 90}, {170, 189}, kSpace},  {{70, 90}, {169, 190}, kEnter},
        {{least, 0}, {most, 0}, kSpace}, {{most, 0}, {least, 0}, kBackspace},
        {{0, least}, {0, most}, kEnter}, {{least, most}, {most, least}, kLargeQ},
    };
    for (const auto& c : cases) {
        m_keyboard->Swipe(c.begin.x, c.begin.y, c.end.x, c.end.y, &m_callback, &m_window,
                          m_keyboard->m_Charset[test::KeyQ]);
        EXPECT_EQ(m_callback.Take(), c.events) << c.end.x << "," << c.end.y;
    }
}

TEST_F(Swipe, ModesTypeNothingTheStrokeOrBoth) {
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

TEST_F(Swipe, StrokesReleaseTheOneShotStatusesExceptInModeZero) {
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

// Without extended symbols the language key is a status key like any other.
TEST_F(Swipe, UpwardStrokeFromTheLanguageKeySwitchesTheUmlautPlane) {
    KbStatus& status = m_keyboard->m_stKbStatus;
    for (const DWORD mode : {0u, 1u, 2u}) {
        m_keyboard->m_dwSwipe = mode;
        status = {};
        for (const auto& [extended, umlaut] : {std::pair(1, 1), {1, 0}, {0, 0}}) {
            m_keyboard->m_bExtSym = static_cast<DWORD>(extended);
            const BYTE language1 = status.m_bLng1;
            EXPECT_EQ(Stroke(test::KeyLanguage, 3, -40), Events());
            EXPECT_EQ(status.m_bUml, umlaut) << mode;
            EXPECT_EQ(status.m_bLng1 != language1, mode == 2) << "mode 2 taps the key first";
        }
    }
    status = {};
    m_keyboard->m_dwSwipe = 0;
    m_keyboard->m_bExtSym = 1;
    for (const POINT& stroke : {POINT{40, 0}, {-40, 0}, {0, 40}, {15, -15}}) {
        EXPECT_EQ(Stroke(test::KeyLanguage, stroke.x, stroke.y), Events());
        EXPECT_TRUE(!status.m_bUml && status.m_bLng1) << "other strokes do nothing in mode 0";
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

// A stroke ends at the last move, not at the pen-up; without a move, at that of an earlier gesture.
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

TEST_F(Swipe, AKeyThatTheTableHasLostDoesNothing) {
    Down(KeyCenter(test::KeyQ));
    Move({200, 30});
    m_keyboard->m_Charset.resize(test::KeyQ);
    Up({200, 30});
    EXPECT_EQ(m_callback.Take(), Events());
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
