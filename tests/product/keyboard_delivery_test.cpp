// SPDX-License-Identifier: MIT
#include "keyboard_fixture.h"

namespace {

using test::TestSkin;

class Delivery : public KeyboardTest {
protected:
    Events Send(std::size_t key, bool shifted = false) {
        m_keyboard->SendKeyToApp(m_keyboard->m_Charset.at(key), shifted);
        return m_callback.Take();
    }
};

TEST_F(Delivery, FunctionKeysSendVirtualKeys) {
    Start();
    const std::map<WORD, Events>& sending = FunctionKeyEvents();
    const KbStatus statuses[] = {
        {}, {0, 1, 0, 1, 0, 0}, {0, 0, 1, 1, 0, 0}, {0, 0, 0, 0, 0, 1}, {0, 0, 0, 1, 1, 0}};
    for (const KbStatus& status : statuses) {
        SetFlags(status);
        for (WORD key = 48; key <= 69; ++key) {
            const Events expected = sending.contains(key) ? sending.at(key) : Events();
            EXPECT_EQ(Send(key), expected) << key;
            // Only Tab depends on the stroke.
            EXPECT_EQ(Send(key, key != test::KeyTab), expected) << key;
        }
    }
}

TEST_F(Delivery, ShiftChangesOnlyBackspaceAndTab) {
    Start();
    Tap(test::KeyShift);
    EXPECT_EQ(Send(test::KeyTab), Events{"char vk=09 flags=20000080 U+0009"});
    EXPECT_EQ(Send(test::KeyEscape), Events{"vk 1B down"});
    EXPECT_EQ(Send(test::KeyEnter), (Events{"vk 0D down", "vk 0D up"}));
    // Shift is released first, for a plain Delete, and again with the status.
    EXPECT_EQ(Tap(test::KeyBackspace), (Events{"vk 10 up", "vk 2E down", "vk 2E up", "vk 10 up"}));
    EXPECT_EQ(Tap(test::KeyBackspace), (Events{"vk 08 down", "vk 08 up"}));
    EXPECT_EQ(Send(test::KeyTab, true), Events{"char vk=09 flags=20000080 U+0009"});
    Tap(test::KeyShift);
    EXPECT_EQ(Tap(test::KeyNoAction), Events{"vk 10 up"}) << "a key that sends nothing also releases it";
}

TEST_F(Delivery, EachPlaneSendsItsSlotAndStrokesTheOtherCase) {
    Start();
    const struct {
        BYTE language1, digits, umlaut;
        unsigned small, large;
    } planes[] = {
        {1, 0, 0, 'q', 'Q'},     {1, 0, 1, 0xE0, 0xC0},   {0, 0, 0, 0x430, 0x431},
        {0, 0, 1, 0x432, 0x433}, {1, 1, 0, 0x433, 0x433},
    };
    for (const auto& p : planes) {
        for (const auto& [shift, caps, large] : {std::tuple(0, 0, 0), {1, 0, 1}, {0, 1, 1}, {1, 1, 0}}) {
            SetFlags({BYTE(shift), BYTE(caps), 0, p.language1, p.digits, p.umlaut});
            EXPECT_EQ(Send(test::KeyQ), Typed('Q', large ? p.large : p.small, large ? kShiftFlag : 0));
            EXPECT_EQ(Send(test::KeyQ, true), Typed('Q', large ? p.small : p.large, large ? 0 : kShiftFlag));
        }
    }
    EXPECT_EQ(Send(test::KeyDigit8), Typed('8', '8'))
        << "digits are the same in all slots; of others the last one is sent";
}

// If selecting a mask fails, the status has changed but the old plane is still shown.
TEST_F(Delivery, ThePlaneShownDecides) {
    Start();
    const CKeyboard& kb = *m_keyboard;
    const std::pair<HBITMAP, unsigned> planes[] = {
        {kb.m_hLng1SmlKbMask, 'q'},   {kb.m_hLng1LrgKbMask, 'Q'},   {kb.m_hUml1SmlKbMask, 0xE0},
        {kb.m_hUml1LrgKbMask, 0xC0},  {kb.m_hLng2SmlKbMask, 0x430}, {kb.m_hLng2LrgKbMask, 0x431},
        {kb.m_hUml2SmlKbMask, 0x432}, {kb.m_hUml2LrgKbMask, 0x433}, {kb.m_hDigitMask, 0x433}};
    for (const auto& [mask, character] : planes) {
        SelectObject(kb.m_hMaskDC, mask);
        EXPECT_EQ(Send(test::KeyQ), Typed('Q', character)) << std::hex << character;
    }
}

// Shift, caps lock and the stroke each change the case, but caps lock not in the digit row if the skin's CAPS
// rectangle has an area.
TEST_F(Delivery, DigitRowIgnoresCapsLockWhereTheSkinHasACapsRectangle) {
    for (const bool isPortrait : {true, false}) {
        for (const RECT& rect : {RECT{0, 0, 240, 20}, {5, 0, 5, 20}, {0, 20, 240, 20}}) {
            const bool ignoresCaps = isPortrait && rect.left == 0 && rect.top == 0;
            Start(TestSkin().Data("CAPS_RECT", test::RectBytes(rect)));
            ASSERT_TRUE(isPortrait ? InitPortrait() : InitLandscape());
            for (unsigned i = 0; i < 8; ++i) {
                const bool shift = i & 1, caps = i & 2, stroke = i & 4;
                SCOPED_TRACE(testing::Message() << "shift " << shift << ", caps " << caps << ", stroke "
                                                << stroke << ", ignored " << ignoresCaps);
                SetFlags({BYTE(shift), BYTE(caps), 0, 1, 0, 0});
                const bool large = shift ^ caps ^ stroke;
                const bool largeDigit = ignoresCaps && caps ? shift : large;
                EXPECT_EQ(Send(test::KeyQ, stroke), Typed('Q', large ? 'Q' : 'q', large ? kShiftFlag : 0));
                EXPECT_EQ(Send(test::Key1, stroke),
                          Typed('1', largeDigit ? '!' : '1', large ? kShiftFlag : 0));
            }
        }
    }
}

TEST_F(Delivery, DigitRowRuleHoldsInEveryPlane) {
    Start();
    SetFlags({0, 1, 0, 0, 0, 0});
    EXPECT_EQ(Send(test::KeyHyphen), Typed(VK_OEM_MINUS, 0x428, kShiftFlag));
    EXPECT_EQ(Send(test::KeyBracket), Typed(VK_OEM_4, 0x459, kShiftFlag));
    SetFlags({1, 1, 0, 0, 0, 1});
    EXPECT_EQ(Send(test::KeyEquals), Typed(VK_OEM_PLUS, 0x42F));
    SetFlags({0, 1, 0, 1, 0, 1});
    EXPECT_EQ(Send(114), Typed(VK_OEM_2, 0x3BC, kShiftFlag));
}

// In any plane; 0 for a character without a key. Characters anywhere in the table count.
TEST_F(Delivery, VirtualKeysNameThePhysicalKey) {
    Start();
    const std::pair<std::size_t, UINT> keys[] = {
        {94, 'A'},
        {105, 'Z'},
        {82, 'Q'},
        {91, 'P'},
        {111, 'M'},
        {70, '1'},
        {79, '0'},
        {4, '7'},
        {80, VK_OEM_MINUS},
        {81, VK_OEM_PLUS},
        {112, VK_OEM_COMMA},
        {113, VK_OEM_PERIOD},
        {103, VK_OEM_1},
        {114, VK_OEM_2},
        {115, VK_OEM_3},
        {92, VK_OEM_4},
        {116, VK_OEM_5},
        {93, VK_OEM_6},
        {104, VK_OEM_7},
        {130, VK_OEM_PLUS},
        {0, VK_OEM_4},
        {21, VK_OEM_2},
        {172, 0},
        {173, 0},
        {126, 0},
        {8, 0},
        {32, 0},
    };
    for (const auto& [planeSlot, status, shiftFlag] :
         {std::tuple(0, KbStatus{}, 0u), {7, KbStatus{1, 0, 0, 0, 0, 1}, kShiftFlag}}) {
        SetFlags(status);
        for (const auto& [key, virtualKey] : keys) {
            const WCHAR character = m_keyboard->m_Charset.at(key).m_Slots[planeSlot];
            EXPECT_EQ(Send(key), Typed(virtualKey, character, shiftFlag)) << key;
        }
    }
}

TEST_F(Delivery, ControlCombinesWithTheSmallCharacterOfLanguage1) {
    Start();
    for (const KbStatus& status : {KbStatus{}, KbStatus{1, 1, 0, 0, 0, 1}}) {
        SetFlags(status);
        EXPECT_EQ(Tap(test::KeyControl), Events{"vk 11 down"});
        const Events released = status.m_bShift ? Events{"vk 10 up", "vk 11 up"} : Events{"vk 11 up"};
        Events expected = {"char vk=43 flags=40010080 'c'"};
        expected.insert(expected.end(), released.begin(), released.end());
        EXPECT_EQ(Tap(test::KeyC), expected);
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bCtrl, 0);
    }
    SetFlags({0, 1, 1, 1, 0, 0});
    EXPECT_EQ(Send(test::KeyHyphen), Events{"char vk=BD flags=40010080 '-'"});
    EXPECT_EQ(Send(test::Key1, true), Events{"char vk=31 flags=40010080 '!'"})
        << "a stroke takes the other case";
}

// A plane without characters sends 0; without a mask, the status decides.
TEST_F(Delivery, PlanesThatTheSkinLacks) {
    Start(TestSkin().Without("LOCALE_CHARSET"));
    SetFlags({0, 0, 0, 0, 0, 0});
    EXPECT_EQ(Send(test::KeyQ), Typed('Q', 0));
    Start(TestSkin().Without("LANG1_LARGE_MASK").Without("UML2_SMALL_MASK").Without("DIGIT_MASK"));
    SetFlags({1, 0, 0, 1, 0, 0});
    EXPECT_EQ(Send(test::KeyQ), Typed('Q', 'Q', kShiftFlag));
    SetFlags({1, 1, 0, 0, 0, 1});
    EXPECT_EQ(Send(test::KeyQ), Typed('Q', 0x432));
    SetFlags({0, 0, 0, 1, 1, 0});
    EXPECT_EQ(Send(test::KeyDigit8), Typed('8', '8'));
}

TEST_F(Delivery, WithoutCallbackNothingIsSentAndFailuresAreIgnored) {
    Start();
    m_callback.result = E_FAIL;
    EXPECT_EQ(Tap(test::KeyQ), Typed('Q', 'q'));
    EXPECT_EQ(Tap(test::KeyEnter), (Events{"vk 0D down", "vk 0D up"}));
    m_keyboard->m_pCallback = nullptr;
    for (std::size_t key = 0; key < m_keyboard->m_Charset.size(); ++key)
        EXPECT_EQ(Send(key), Events());
}

// Before the table is loaded nothing counts as a function key.
TEST_F(Delivery, EverythingIsACharacterWithoutATable) {
    Start();
    const CharsetEntry enter = m_keyboard->m_Charset.at(test::KeyEnter);
    m_keyboard->m_Charset.resize(10);
    m_keyboard->SendKeyToApp(enter, false);
    EXPECT_EQ(m_callback.Take(), Typed(0, 0xF012));
}

}  // namespace
