// SPDX-License-Identifier: MIT
#include "keyboard_fixture.h"

namespace {

using test::TestSkin;

std::string CharEvent(unsigned virtualKey, unsigned flags, unsigned character) {
    char text[64];
    const char* const format = character > 0x20 && character < 0x7F ? "char vk=%02X flags=%08X '%c'"
                                                                    : "char vk=%02X flags=%08X U+%04X";
    std::snprintf(text, sizeof text, format, virtualKey, flags, character);
    return text;
}

// A key-down with the character and a key-up without.
Events Typed(unsigned virtualKey, unsigned character, unsigned shiftFlag = 0) {
    return {CharEvent(virtualKey, 0x80 | shiftFlag, character),
            CharEvent(virtualKey, 0x10000 | shiftFlag, character)};
}

class Delivery : public KeyboardTest {
protected:
    void SetFlags(const KbStatus& status) {
        m_keyboard->m_stKbStatus = status;
        m_keyboard->GetKeyboardMask();
    }
    Events Send(std::size_t key, bool shifted = false) {
        m_keyboard->SendKeyToApp(m_keyboard->m_Charset.at(key), shifted);
        return m_callback.Take();
    }
};

constexpr unsigned kShiftFlag = 0x20000000;

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
            // Tab alone looks at the stroke.
            EXPECT_EQ(Send(key, key != test::KeyTab), expected) << key;
        }
    }
}

TEST_F(Delivery, ShiftChangesBackspaceAndTabAlone) {
    Start();
    Tap(test::KeyShift);
    EXPECT_EQ(Send(test::KeyTab), Events{"char vk=09 flags=20000080 U+0009"});
    EXPECT_EQ(Send(test::KeyEscape), Events{"vk 1B down"});
    EXPECT_EQ(Send(test::KeyEnter), (Events{"vk 0D down", "vk 0D up"}));
    // The first release of Shift makes it a plain Delete; the status releases it once more.
    EXPECT_EQ(Tap(test::KeyBackspace), (Events{"vk 10 up", "vk 2E down", "vk 2E up", "vk 10 up"}));
    EXPECT_EQ(Tap(test::KeyBackspace), (Events{"vk 08 down", "vk 08 up"}));
    EXPECT_EQ(Send(test::KeyTab, true), Events{"char vk=09 flags=20000080 U+0009"});
}

TEST_F(Delivery, EachPlaneSendsItsSlotAndStrokesTheOtherCase) {
    Start();
    const auto expectSent = [&](const KbStatus& status, unsigned plain, unsigned stroked, bool isShifted) {
        SetFlags(status);
        EXPECT_EQ(Send(test::KeyQ), Typed('Q', plain, isShifted ? kShiftFlag : 0)) << std::hex << plain;
        EXPECT_EQ(Send(test::KeyQ, true), Typed('Q', stroked, isShifted ? 0 : kShiftFlag))
            << std::hex << stroked;
    };
    const struct {
        BYTE language1, umlaut;
        unsigned small, large;
    } planes[] = {{1, 0, 'q', 'Q'}, {1, 1, 0xE0, 0xC0}, {0, 0, 0x430, 0x431}, {0, 1, 0x432, 0x433}};
    for (const auto& p : planes) {
        expectSent({0, 0, 0, p.language1, 0, p.umlaut}, p.small, p.large, false);
        expectSent({1, 0, 0, p.language1, 0, p.umlaut}, p.large, p.small, true);
        expectSent({0, 1, 0, p.language1, 0, p.umlaut}, p.large, p.small, true);
        expectSent({1, 1, 0, p.language1, 0, p.umlaut}, p.small, p.large, false);
    }
    // Digit records carry the same in all slots; of others the last slot is sent.
    expectSent({0, 0, 0, 1, 1, 0}, 0x433, 0x433, false);
    expectSent({1, 0, 0, 1, 1, 0}, 0x433, 0x433, true);
    EXPECT_EQ(Send(test::KeyDigit8), Typed('8', '8', kShiftFlag));
}

// Shift, caps lock and the stroke; the digit row '1' !, the letter row q Q.
TEST_F(Delivery, DigitRowIgnoresCapsLockWhereTheSkinHasACapsRectangle) {
    const struct {
        bool shift, caps, stroke;
        unsigned char digitRow, landscapeRow, letter;
        bool isShifted;
    } cases[] = {
        {false, false, false, '1', '1', 'q', false}, {true, false, false, '!', '!', 'Q', true},
        {false, true, false, '1', '!', 'Q', true},   {true, true, false, '!', '1', 'q', false},
        {false, false, true, '!', '!', 'Q', true},   {true, false, true, '1', '1', 'q', false},
        {false, true, true, '1', '1', 'q', false},   {true, true, true, '!', '!', 'Q', true},
    };
    for (const bool isPortrait : {true, false}) {
        for (const RECT& rect : {RECT{0, 0, 240, 20}, RECT{5, 0, 5, 20}, RECT{0, 20, 240, 20}}) {
            const bool hasRect = rect.left == 0 && rect.top == 0;  // the others have no area
            Start(TestSkin().Data("CAPS_RECT", test::RectBytes(rect)));
            ASSERT_TRUE(isPortrait ? InitPortrait() : InitLandscape());
            for (const auto& c : cases) {
                SCOPED_TRACE(testing::Message()
                             << "portrait " << isPortrait << ", rectangle " << hasRect << ", shift "
                             << c.shift << ", caps " << c.caps << ", stroke " << c.stroke);
                SetFlags({BYTE(c.shift), BYTE(c.caps), 0, 1, 0, 0});
                const unsigned flag = c.isShifted ? kShiftFlag : 0;
                EXPECT_EQ(Send(test::Key1, c.stroke),
                          Typed('1', isPortrait && hasRect ? c.digitRow : c.landscapeRow, flag));
                EXPECT_EQ(Send(test::KeyQ, c.stroke), Typed('Q', c.letter, flag));
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

TEST_F(Delivery, VirtualKeysNameThePhysicalKey) {
    Start();
    const auto expectNamed = [&](const std::vector<std::size_t>& keys, const std::vector<int>& virtualKeys) {
        ASSERT_EQ(keys.size(), virtualKeys.size());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            char prefix[16];
            std::snprintf(prefix, sizeof prefix, "char vk=%02X ", static_cast<unsigned>(virtualKeys[i]));
            const Events events = Send(keys[i]);
            ASSERT_EQ(events.size(), 2u);
            EXPECT_TRUE(events[0].starts_with(prefix)) << keys[i] << ": " << events[0];
            EXPECT_TRUE(events[1].starts_with(prefix)) << keys[i] << ": " << events[1];
        }
    };
    for (const KbStatus& status : {KbStatus{}, KbStatus{1, 0, 0, 0, 0, 1}}) {
        SetFlags(status);
        expectNamed({94, 105, 82, 91, 111, 70, 79, 4}, {'A', 'Z', 'Q', 'P', 'M', '1', '0', '7'});
        expectNamed({80, 81, 112, 113}, {VK_OEM_MINUS, VK_OEM_PLUS, VK_OEM_COMMA, VK_OEM_PERIOD});
        expectNamed({103, 114, 115, 92}, {VK_OEM_1, VK_OEM_2, VK_OEM_3, VK_OEM_4});
        expectNamed({116, 93, 104}, {VK_OEM_5, VK_OEM_6, VK_OEM_7});
        // Elsewhere in the table too, and none for what no key has.
        expectNamed({130, 0, 21}, {VK_OEM_PLUS, VK_OEM_4, VK_OEM_2});
        expectNamed({172, 173, 126, 8, 32}, {0, 0, 0, 0, 0});
    }
}

TEST_F(Delivery, ControlMakesCombinationsOfTheFirstLanguagesSmallCharacter) {
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

TEST_F(Delivery, ShiftIsHeldForOneCharacter) {
    Start();
    EXPECT_EQ(Tap(test::KeyShift), Events{"vk 10 down"});
    Events expected = Typed('Q', 'Q', kShiftFlag);
    expected.push_back("vk 10 up");
    EXPECT_EQ(Tap(test::KeyQ), expected);
    EXPECT_EQ(Tap(test::KeyQ), Typed('Q', 'q'));
    // A key that sends nothing releases it as well.
    Tap(test::KeyShift);
    EXPECT_EQ(Tap(test::KeyNoAction), Events{"vk 10 up"});
}

// A plane without characters sends 0; one without a mask is what the status asks for.
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
    for (std::size_t key = 0; key < m_keyboard->m_Charset.size(); ++key) {
        EXPECT_EQ(Send(key, key % 2 == 0), Events());
    }
    EXPECT_EQ(m_callback.references, 0);
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
