// SPDX-License-Identifier: MIT
#include "keyboard_fixture.h"

namespace {

using test::TestSkin;

// A state of the six flags as a number, one bit each.
using State = unsigned;
constexpr State kShift = 1, kCaps = 2, kControl = 4, kLanguage1 = 8, kDigits = 16, kUmlaut = 32;
constexpr State kOneShot = kShift | kControl | kUmlaut;

KbStatus FlagsOf(State s) {
    const auto has = [s](State flag) { return BYTE((s & flag) != 0); };
    return {has(kShift), has(kCaps), has(kControl), has(kLanguage1), has(kDigits), has(kUmlaut)};
}

State StateOf(const KbStatus& f) {
    return f.m_bShift * kShift | f.m_bCAPS * kCaps | f.m_bCtrl * kControl | f.m_bLng1 * kLanguage1 |
           f.m_bDigit * kDigits | f.m_bUml * kUmlaut;
}

std::string NameOf(State s) {
    std::string name;
    for (int i = 0; i < 6; ++i)
        if (s >> i & 1) name += "SLC1DU"[i];
    return name;
}

// The state after a key with this code, and the events sent.
State After(State before, WCHAR code, bool hasCapsKey, Events& sent) {
    switch (code) {
        case kShiftCode:
            if (before & kCaps && !hasCapsKey) return before & ~kCaps;
            sent.push_back(before & kShift ? "vk 10 up" : "vk 10 down");
            return before ^ kShift;
        case kControlCode:
            sent.push_back(before & kControl ? "vk 11 up" : "vk 11 down");
            return before ^ kControl;
        case kCapsCode:
            return before ^ kCaps;
        case kLanguageCode:
            return before ^ kLanguage1;
        case kDigitCode:
            if (before & kDigits || !(before & kControl)) return before ^ kDigits;
            sent.push_back("vk 11 up");
            return (before | kDigits) & ~kControl;
        case kUmlautCode:
            return before ^ kUmlaut;
        default:
            return before;
    }
}

class Status : public KeyboardTest {
protected:
    static HGDIOBJ Selected(HDC dc) { return GetCurrentObject(dc, OBJ_BITMAP); }
    Events Set(WCHAR code) {
        m_keyboard->SetKbStatus(&code, &m_window);
        return m_callback.Take();
    }
    void Enter(State state) {
        SetFlags(FlagsOf(state));
        m_keyboard->m_PressedRects.clear();
        m_keyboard->PaintStatusButtons(&m_window);
        EXPECT_EQ(m_window.TakeInvalid(), state & kLanguage1 ? RECT{} : RectOf(test::KeyLanguage))
            << "the only one that is invalidated by its own drawing";
    }

    // Checks the flags, the picture and the masks, and which keys look pressed.
    void ExpectState(State s) {
        CKeyboard& kb = *m_keyboard;
        const HBITMAP masks[] = {kb.m_hLng1SmlKbMask, kb.m_hLng1LrgKbMask, kb.m_hUml1SmlKbMask,
                                 kb.m_hUml1LrgKbMask, kb.m_hLng2SmlKbMask, kb.m_hLng2LrgKbMask,
                                 kb.m_hUml2SmlKbMask, kb.m_hUml2LrgKbMask};
        const bool digits = s & kDigits && !(s & kControl);
        const unsigned family = (s & kLanguage1 ? 0u : 4u) + (s & kUmlaut ? 2u : 0u);
        const unsigned withoutCaps = s & kControl ? 0 : family + (s & kShift ? 1 : 0);
        const bool capsCounts = s & kCaps && !(s & (kControl | kDigits));
        EXPECT_EQ(NameOf(StateOf(kb.m_stKbStatus)), NameOf(s));
        EXPECT_EQ(Selected(kb.m_hKbDC), digits ? kb.m_hDigitKbBitmap : kb.m_hKbBitmap);
        EXPECT_EQ(SelectedMask(), digits ? kb.m_hDigitMask : masks[withoutCaps ^ unsigned{capsCounts}]);
        EXPECT_EQ(Selected(kb.m_hExtMaskDC), capsCounts ? masks[withoutCaps] : kb.m_hOrigExtMaskBmp);

        Rects pressed;
        const bool characters = !(s & kDigits);  // the digit keyboard has only the language key of these
        if (s & kShift && characters) pressed.push_back(RectOf(test::KeyShift));
        if (s & kCaps && characters) pressed.push_back(kCapsPlace);
        if (s & kControl && characters) pressed.push_back(RectOf(test::KeyControl));
        if (!(s & kLanguage1)) pressed.push_back(RectOf(test::KeyLanguage));
        if (s & kUmlaut && characters) pressed.push_back(RectOf(test::KeyUmlaut));
        EXPECT_EQ(Pressed(), pressed);
    }
};

TEST_F(Status, EveryKeyInEveryStateAndTheReleaseAfterIt) {
    StartWithCapsKey();
    const RECT whole{0, 0, 240, 80};
    for (const WCHAR code : {kShiftCode, kControlCode, kCapsCode, kLanguageCode, kDigitCode, kUmlautCode,
                             kEscapeCode, WCHAR('q')}) {
        for (State before = 0; before < 128; ++before) {
            const bool hasCapsKey = before >= 64;
            m_keyboard->m_bHasCapsKey = hasCapsKey;
            SCOPED_TRACE(NameOf(before % 64) + " and the key " + std::to_string(code));
            Enter(before % 64);
            Events sent;
            const State after = After(before % 64, code, hasCapsKey, sent);
            EXPECT_EQ(Set(code), sent);
            ExpectState(after);
            EXPECT_EQ(m_window.TakeInvalid(), whole);

            // A key that types releases the one-shot statuses.
            Events released;
            if (after & kShift) released.push_back("vk 10 up");
            if (after & kControl) released.push_back("vk 11 up");
            if (after & kOneShot) m_keyboard->m_PressedRects.push_back({1, 2, 3, 4});  // removed, too
            m_keyboard->ResetKbStatus(&m_window);
            EXPECT_EQ(m_callback.Take(), released);
            ExpectState(after & ~kOneShot);
            EXPECT_EQ(m_window.TakeInvalid(), after & kOneShot ? whole : RECT{});
        }
    }
}

TEST_F(Status, MissingBitmapsLeaveTheInitialOnesSelected) {
    Start(TestSkin().Without("LANG1_LARGE_MASK").Without("digit_keyboard_bitmap").Without("DIGIT_MASK"));
    const CKeyboard& kb = *m_keyboard;
    Set(kShiftCode);
    EXPECT_EQ(SelectedMask(), kb.m_hOrigMaskBmp);
    Set(kShiftCode);
    EXPECT_EQ(SelectedMask(), kb.m_hLng1SmlKbMask);
    Set(kDigitCode);
    EXPECT_EQ(SelectedMask(), kb.m_hOrigMaskBmp);
    EXPECT_EQ(Selected(kb.m_hKbDC), kb.m_hKbBitmap) << "the digit keyboard has no picture of its own";
}

TEST_F(Status, NothingHappensBeforeTheTableIsLoaded) {
    Start();
    m_keyboard->m_Charset.resize(6);
    EXPECT_EQ(Set(kShiftCode), Events());
    EXPECT_EQ(StateOf(m_keyboard->m_stKbStatus), kLanguage1);
    EXPECT_EQ(m_window.TakeInvalid(), RECT{});
    m_keyboard->m_Charset.resize(7);
    EXPECT_EQ(Set(kShiftCode), Events{"vk 10 down"});
}

TEST_F(Status, ReleaseWithoutAWindowUsesTheLastOne) {
    Start();
    Enter(kUmlaut);
    m_keyboard->ResetKbStatus(nullptr);
    EXPECT_EQ(Pressed(), Rects()) << "no key was ever pressed";
    m_keyboard->SetKbStatus(&kLanguageCode, nullptr);
    Tap(test::KeyLanguage);
    Set(kUmlautCode);
    m_window.TakeInvalid();
    m_keyboard->ResetKbStatus(nullptr);
    EXPECT_EQ(Pressed(), Rects{RectOf(test::KeyLanguage)});
    EXPECT_EQ(m_window.TakeInvalid(), RectOf(test::KeyLanguage)) << "the language key alone is invalidated";
}

TEST_F(Status, WorksWithoutCallbackAndWhenCallsFail) {
    Start();
    m_callback.result = E_FAIL;
    const Events sent{"vk 10 up", "vk 11 up", "vk 10 down", "vk 11 down", "vk 10 up", "vk 11 up"};
    for (IIMCallback* const callback :
         {static_cast<IIMCallback*>(&m_callback), static_cast<IIMCallback*>(nullptr)}) {
        m_keyboard->m_pCallback = callback;
        Set(kShiftCode);
        Set(kControlCode);
        m_keyboard->ReleaseModifierKeys();
        m_keyboard->PressModifierKeys();
        EXPECT_EQ(StateOf(m_keyboard->m_stKbStatus), kShift | kControl | kLanguage1);
        m_keyboard->ResetKbStatus(&m_window);
        EXPECT_EQ(StateOf(m_keyboard->m_stKbStatus), kLanguage1);
        EXPECT_EQ(m_callback.Take(), callback ? sent : Events());
    }
    EXPECT_EQ(m_callback.references, 0) << "the callback is borrowed";
}

// The first table entry in the layout decides where the key is.
TEST_F(Status, FunctionKeyIsFoundInTheActiveLayout) {
    Start();
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects('1').m_Rects, Rects{RectOf(test::Key1)});
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects(kCapsCode).m_Rects, Rects{RECT{}});
    m_keyboard->m_stKbStatus.m_bDigit = 1;
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects(kShiftCode).m_Rects, Rects{RECT{}});
    EXPECT_EQ(m_keyboard->GetFunctionKeyRects(kDigitCode).m_Rects, Rects{RectOf(test::KeyDigits)});
}

}  // namespace
