// SPDX-License-Identifier: MIT
#include "keyboard_fixture.h"

namespace {

using test::KeyCenter;
using test::TestSkin;

using Mask = HBITMAP CKeyboard::*;

class Status : public KeyboardTest {
protected:
    KbStatus& Flags() { return m_keyboard->m_stKbStatus; }
    HGDIOBJ Selected(HDC dc) const { return GetCurrentObject(dc, OBJ_BITMAP); }
    Events Set(WCHAR code) {
        m_keyboard->SetKbStatus(&code, &m_window);
        return m_callback.Take();
    }
    void StartWithCapsKey() {
        std::vector<test::LayoutRecord> records = test::CharacterLayout();
        records.push_back({test::KeyCaps, 200, 0, 219, 19});
        Start(TestSkin().Data("CHAR_LAYOUT_STRUCT", test::LayoutBytes(records)));
    }
    std::string FlagText() {
        const KbStatus& s = Flags();
        std::string text;
        for (const auto& [flag, letter] :
             {std::pair(s.m_bShift, 'S'), std::pair(s.m_bCAPS, 'L'), std::pair(s.m_bCtrl, 'C'),
              std::pair(s.m_bLng1, '1'), std::pair(s.m_bDigit, 'D'), std::pair(s.m_bUml, 'U')}) {
            if (flag) text += letter;
        }
        return text;
    }
};

TEST_F(Status, ItSelectsThePictureAndTheMasks) {
    Start();
    constexpr Mask kNone = &CKeyboard::m_hOrigExtMaskBmp;
    const struct {
        BYTE language1, umlaut;
        Mask small, large;
    } planes[] = {{1, 0, &CKeyboard::m_hLng1SmlKbMask, &CKeyboard::m_hLng1LrgKbMask},
                  {1, 1, &CKeyboard::m_hUml1SmlKbMask, &CKeyboard::m_hUml1LrgKbMask},
                  {0, 0, &CKeyboard::m_hLng2SmlKbMask, &CKeyboard::m_hLng2LrgKbMask},
                  {0, 1, &CKeyboard::m_hUml2SmlKbMask, &CKeyboard::m_hUml2LrgKbMask}};
    const auto expectSelected = [&](const KbStatus& status, Mask picture, Mask mask, Mask extMask) {
        Flags() = status;
        SCOPED_TRACE(FlagText());
        m_keyboard->GetKeyboardMask();
        EXPECT_EQ(Selected(m_keyboard->m_hKbDC), *m_keyboard.*picture);
        EXPECT_EQ(Selected(m_keyboard->m_hMaskDC), *m_keyboard.*mask);
        EXPECT_EQ(Selected(m_keyboard->m_hExtMaskDC), *m_keyboard.*extMask);
    };
    constexpr Mask kCharacters = &CKeyboard::m_hKbBitmap;
    constexpr Mask kDigits = &CKeyboard::m_hDigitKbBitmap;
    for (const auto& p : planes) {
        expectSelected({0, 0, 0, p.language1, 0, p.umlaut}, kCharacters, p.small, kNone);
        expectSelected({1, 0, 0, p.language1, 0, p.umlaut}, kCharacters, p.large, kNone);
        expectSelected({0, 1, 0, p.language1, 0, p.umlaut}, kCharacters, p.large, p.small);
        expectSelected({1, 1, 0, p.language1, 0, p.umlaut}, kCharacters, p.small, p.large);
        // Control and the digits count more than Shift and caps lock.
        for (int keys = 0; keys < 8; ++keys) {
            KbStatus status{BYTE(keys & 1), BYTE(keys >> 1 & 1), 1, p.language1, BYTE(keys >> 2), p.umlaut};
            expectSelected(status, kCharacters, planes[0].small, kNone);
            status.m_bCtrl = 0;
            status.m_bDigit = 1;
            expectSelected(status, kDigits, &CKeyboard::m_hDigitMask, kNone);
        }
    }
}

TEST_F(Status, MissingBitmapsLeaveTheContextsAsTheyCame) {
    Start(TestSkin().Without("LANG1_LARGE_MASK").Without("digit_keyboard_bitmap").Without("DIGIT_MASK"));
    CKeyboard& kb = *m_keyboard;
    Set(kShiftCode);
    EXPECT_EQ(Selected(kb.m_hMaskDC), kb.m_hOrigMaskBmp);
    Set(kShiftCode);
    EXPECT_EQ(Selected(kb.m_hMaskDC), kb.m_hLng1SmlKbMask);
    Set(kDigitCode);
    EXPECT_EQ(Selected(kb.m_hMaskDC), kb.m_hOrigMaskBmp);
    EXPECT_EQ(Selected(kb.m_hKbDC), kb.m_hKbBitmap) << "the digit keyboard has no picture of its own";
}

// Flags: S Shift, L caps lock, C Control, 1 language 1, D digits, U umlaut.
TEST_F(Status, StatusKeysToggleTheirFlagAndMirrorTheModifiers) {
    const struct {
        const char* before;
        WCHAR code;
        const char* after;
        Events events;
        bool hasCapsKey;
    } cases[] = {
        {"1", kShiftCode, "S1", {"vk 10 down"}, true},
        {"S1", kShiftCode, "1", {"vk 10 up"}, true},
        {"L1", kShiftCode, "SL1", {"vk 10 down"}, true},
        {"SL1", kShiftCode, "L1", {"vk 10 up"}, true},
        {"1", kShiftCode, "S1", {"vk 10 down"}, false},
        {"L1", kShiftCode, "1", {}, false},
        {"SL1", kShiftCode, "S1", {}, false},
        {"1", kControlCode, "C1", {"vk 11 down"}, false},
        {"C1", kControlCode, "1", {"vk 11 up"}, false},
        {"1", kCapsCode, "L1", {}, true},
        {"SL1", kCapsCode, "S1", {}, false},
        {"L1", kLanguageCode, "L", {}, false},
        {"S", kLanguageCode, "S1", {}, false},
        {"SU1", kDigitCode, "S1DU", {}, false},
        {"SC1", kDigitCode, "S1D", {"vk 11 up"}, false},
        {"CD1", kDigitCode, "C1", {}, false},
        {"D1", kControlCode, "C1D", {"vk 11 down"}, false},
        {"1", kUmlautCode, "1U", {}, false},
        {"U", kUmlautCode, "", {}, false},
        {"SC", kEscapeCode, "SC", {}, false},
        {"SC", 'q', "SC", {}, false},
    };
    StartWithCapsKey();
    for (const auto& c : cases) {
        const std::string before = c.before;
        const auto has = [&](char letter) { return BYTE(before.find(letter) != std::string::npos); };
        Flags() = {has('S'), has('L'), has('C'), has('1'), has('D'), has('U')};
        m_keyboard->m_bHasCapsKey = c.hasCapsKey;
        SCOPED_TRACE(testing::Message() << before << " and code " << std::hex << unsigned{c.code});
        EXPECT_EQ(Set(c.code), c.events);
        EXPECT_EQ(FlagText(), c.after);
        m_window.TakeInvalid();
    }
}

TEST_F(Status, EveryChangeRedrawsTheWholeWindow) {
    Start();
    const RECT whole{0, 0, 240, 80};
    for (const WCHAR code : {kCapsCode, kLanguageCode, kEscapeCode}) {
        Set(code);
        EXPECT_EQ(m_window.TakeInvalid(), whole);
    }
    m_keyboard->SetKbStatus(&kUmlautCode, nullptr);
    EXPECT_EQ(m_window.TakeInvalid(), RECT{});
    for (const RECT& expected : {whole, RECT{}}) {  // the second time there is nothing to release
        m_keyboard->ResetKbStatus(&m_window);
        EXPECT_EQ(m_window.TakeInvalid(), expected);
    }
}

TEST_F(Status, NothingHappensBeforeTheTableIsLoaded) {
    Start();
    m_keyboard->m_Charset.resize(6);
    EXPECT_EQ(Set(kShiftCode), Events());
    EXPECT_EQ(FlagText(), "1");
    EXPECT_EQ(m_window.TakeInvalid(), RECT{});
    m_keyboard->m_Charset.resize(7);
    EXPECT_EQ(Set(kShiftCode), Events{"vk 10 down"});
}

TEST_F(Status, KeysOfActiveStatusesLookPressed) {
    StartWithCapsKey();
    const auto& pressed = m_keyboard->m_PressedRects;
    Set(kUmlautCode);
    Set(kLanguageCode);
    Set(kControlCode);
    Set(kCapsCode);
    Set(kShiftCode);
    EXPECT_EQ(pressed, (Rects{RectOf(test::KeyShift),
                              {200, 0, 219, 19},
                              RectOf(test::KeyControl),
                              RectOf(test::KeyLanguage),
                              RectOf(test::KeyUmlaut)}));
    // Of them the language key alone is invalidated by its own drawing.
    m_window.TakeInvalid();
    m_keyboard->PaintStatusButtons(&m_window);
    EXPECT_EQ(pressed, Rects());
    EXPECT_EQ(m_window.TakeInvalid(), RectOf(test::KeyLanguage));
    m_keyboard->PaintStatusButtons(&m_window);
    EXPECT_EQ(pressed.size(), 5u);
    // The digit keyboard has a language key too and no other of them; its own key never looks pressed.
    Set(kDigitCode);
    EXPECT_EQ(pressed, Rects{RectOf(test::KeyLanguage)});
    Set(kDigitCode);
    EXPECT_EQ(
        pressed,
        (Rects{
            RectOf(test::KeyShift), {200, 0, 219, 19}, RectOf(test::KeyLanguage), RectOf(test::KeyUmlaut)}));
    m_keyboard->ResetKbStatus(&m_window);
    EXPECT_EQ(pressed, (Rects{{200, 0, 219, 19}, RectOf(test::KeyLanguage)}));
    Set(kLanguageCode);
    Set(kCapsCode);
    EXPECT_EQ(pressed, Rects());
}

TEST_F(Status, ResetReleasesTheOneShotStatusesAlone) {
    StartWithCapsKey();
    m_keyboard->ResetKbStatus(&m_window);
    for (const WCHAR code :
         {kShiftCode, kControlCode, kUmlautCode, kCapsCode, kLanguageCode, kDigitCode, kControlCode}) {
        Set(code);
    }
    ASSERT_EQ(FlagText(), "SLCDU");
    m_keyboard->m_PressedRects.push_back({1, 2, 3, 4});
    m_keyboard->ResetKbStatus(&m_window);
    EXPECT_EQ(m_callback.Take(), (Events{"vk 10 up", "vk 11 up"}));
    EXPECT_EQ(FlagText(), "LD");
    EXPECT_EQ(m_keyboard->m_PressedRects, Rects{RectOf(test::KeyLanguage)})
        << "emptied, then the locking ones";
    EXPECT_EQ(Selected(m_keyboard->m_hMaskDC), m_keyboard->m_hDigitMask);
    m_keyboard->ResetKbStatus(&m_window);
    EXPECT_EQ(m_callback.Take(), Events());
}

TEST_F(Status, ResetWithoutAWindowUsesThatOfTheLastPress) {
    Start();
    Set(kLanguageCode);
    Set(kUmlautCode);
    m_keyboard->ResetKbStatus(nullptr);
    EXPECT_EQ(m_keyboard->m_PressedRects, Rects()) << "no key was ever pressed";
    Set(kLanguageCode);
    m_keyboard->m_PressedRects.clear();
    Tap(test::KeyLanguage);
    Set(kUmlautCode);
    m_window.TakeInvalid();
    m_keyboard->ResetKbStatus(nullptr);
    EXPECT_EQ(m_keyboard->m_PressedRects, Rects{RectOf(test::KeyLanguage)});
    EXPECT_EQ(m_window.TakeInvalid(), RectOf(test::KeyLanguage)) << "the language key alone is invalidated";
}

TEST_F(Status, ItGoesItsWayWithoutCallbackAndWhenCallsFail) {
    Start();
    m_callback.result = E_FAIL;
    const Events sent{"vk 10 up", "vk 11 up", "vk 10 down", "vk 11 down", "vk 10 up", "vk 11 up"};
    for (test::RecordingCallback* const callback :
         {&m_callback, static_cast<test::RecordingCallback*>(nullptr)}) {
        m_keyboard->m_pCallback = callback;
        Set(kShiftCode);
        Set(kControlCode);
        m_keyboard->ReleaseModifierKeys();
        m_keyboard->PressModifierKeys();
        EXPECT_EQ(FlagText(), "SC1");
        EXPECT_EQ(Selected(m_keyboard->m_hMaskDC), m_keyboard->m_hLng1SmlKbMask);
        m_keyboard->ResetKbStatus(&m_window);
        EXPECT_EQ(FlagText(), "1");
        EXPECT_EQ(m_callback.Take(), callback ? sent : Events());
    }
    EXPECT_EQ(m_callback.references, 0) << "the callback is borrowed";
}

// The first of the table's entries that the layout holds gives the key its place.
TEST_F(Status, FunctionKeyIsFoundInTheActiveLayout) {
    Start();
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects(kShiftCode).m_Rects, Rects{RectOf(test::KeyShift)});
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects(kCapsCode).m_Rects, Rects{RECT{}});
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects('1').m_Rects, Rects{RectOf(test::Key1)});
    Flags().m_bDigit = 1;
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects(kShiftCode).m_Rects, Rects{RECT{}});
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects(kDigitCode).m_Rects, Rects{RectOf(test::KeyDigits)});
}

}  // namespace
