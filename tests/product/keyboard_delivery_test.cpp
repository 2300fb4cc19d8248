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
    const struct {
        std::size_t key;
        Events events;
    } cases[] = {
        {48, {}},
        {49, {}},
        {50, {}},
        {51, {}},
        {52, {}},
        {53, {}},
        {54, {"vk 1B down"}},
        {55, {"vk 08 down", "vk 08 up"}},
        {56, {"vk 0D down", "vk 0D up"}},
        {57, {"vk 20 down", "vk 20 up"}},
        {58, {"char vk=09 flags=00000080 U+0009"}},
        {59, {"vk 25 down", "vk 25 up"}},
        {60, {"vk 26 down", "vk 26 up"}},
        {61, {"vk 27 down", "vk 27 up"}},
        {62, {"vk 28 down", "vk 28 up"}},
        {63, {}},
        {64, {}},
        {65, {}},
        {66, {}},
        {67, {}},
        {68, {}},
        {69, {}},
    };
    const KbStatus statuses[] = {
        {}, {0, 1, 0, 1, 0, 0}, {0, 0, 1, 1, 0, 0}, {0, 0, 0, 0, 0, 1}, {0, 0, 0, 1, 1, 0}};
    for (const KbStatus& status : statuses) {
        SetFlags(status);
        for (const auto& c : cases) {
            EXPECT_EQ(Send(c.key), c.events) << c.key;
            // Tab alone looks at the stroke.
            EXPECT_EQ(Send(c.key, c.key != test::KeyTab), c.events) << c.key;
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
    const struct {
        KbStatus status;  // Shift, caps lock, Control, language 1, digits, umlaut
        unsigned plain, stroked;
        bool isShifted;
    } cases[] = {
        {{0, 0, 0, 1, 0, 0}, 'q', 'Q', false},
        {{1, 0, 0, 1, 0, 0}, 'Q', 'q', true},
        {{0, 1, 0, 1, 0, 0}, 'Q', 'q', true},
        {{1, 1, 0, 1, 0, 0}, 'q', 'Q', false},
        {{0, 0, 0, 1, 0, 1}, 0xE0, 0xC0, false},
        {{1, 0, 0, 1, 0, 1}, 0xC0, 0xE0, true},
        {{0, 1, 0, 1, 0, 1}, 0xC0, 0xE0, true},
        {{1, 1, 0, 1, 0, 1}, 0xE0, 0xC0, false},
        {{0, 0, 0, 0, 0, 0}, 0x430, 0x431, false},
        {{1, 0, 0, 0, 0, 0}, 0x431, 0x430, true},
        {{0, 1, 0, 0, 0, 0}, 0x431, 0x430, true},
        {{1, 1, 0, 0, 0, 0}, 0x430, 0x431, false},
        {{0, 0, 0, 0, 0, 1}, 0x432, 0x433, false},
        {{1, 0, 0, 0, 0, 1}, 0x433, 0x432, true},
        {{0, 1, 0, 0, 0, 1}, 0x433, 0x432, true},
        {{1, 1, 0, 0, 0, 1}, 0x432, 0x433, false},
        // Digit records carry the same in all slots; of others the last slot is sent.
        {{0, 0, 0, 1, 1, 0}, 0x433, 0x433, false},
        {{1, 0, 0, 1, 1, 0}, 0x433, 0x433, true},
    };
    for (const auto& c : cases) {
        SetFlags(c.status);
        EXPECT_EQ(Send(test::KeyQ), Typed('Q', c.plain, c.isShifted ? kShiftFlag : 0)) << std::hex << c.plain;
        EXPECT_EQ(Send(test::KeyQ, true), Typed('Q', c.stroked, c.isShifted ? 0 : kShiftFlag))
            << std::hex << c.stroked;
    }
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
    const struct {
        std::size_t key;
        unsigned virtualKey;
    } cases[] = {
        {94, 'A'},
        {105, 'Z'},
        {82, 'Q'},
        {91, 'P'},
        {111, 'M'},
        {70, '1'},
        {79, '0'},
        {104, VK_OEM_7},
        {112, VK_OEM_COMMA},
        {113, VK_OEM_PERIOD},
        {114, VK_OEM_2},
        {103, VK_OEM_1},
        {92, VK_OEM_4},
        {93, VK_OEM_6},
        {80, VK_OEM_MINUS},
        {81, VK_OEM_PLUS},
        {115, VK_OEM_3},
        {116, VK_OEM_5},
        {130, VK_OEM_PLUS},
        {172, 0},
        {173, 0},
        {126, 0},
        {0, VK_OEM_4},
        {4, '7'},
        {8, 0},
        {32, 0},
        {21, VK_OEM_2},
    };
    for (const KbStatus& status : {KbStatus{}, KbStatus{1, 0, 0, 0, 0, 1}}) {
        SetFlags(status);
        for (const auto& c : cases) {
            const Events events = Send(c.key);
            ASSERT_EQ(events.size(), 2u);
            char prefix[16];
            std::snprintf(prefix, sizeof prefix, "char vk=%02X ", c.virtualKey);
            EXPECT_EQ(events[0].substr(0, 11), prefix) << c.key;
            EXPECT_EQ(events[1].substr(0, 11), prefix) << c.key;
        }
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
