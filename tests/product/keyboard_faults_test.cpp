// SPDX-License-Identifier: MIT
// Whatever fails, the keyboard stays usable: nothing is thrown, nothing leaks (the handle count after each
// test shows it), and the next attempt works.
#include "fault_sweep.h"
#include "keyboard_fixture.h"

namespace {

using test::KeyCenter;
using test::TestSkin;

class Faults : public KeyboardTest {
protected:
    void UseKeyboard() {
        m_keyboard->PressKey(m_shift, &m_window, true);
        m_keyboard->PressKey(m_shift, &m_window, false);
        m_keyboard->DblPressKey(m_shift, &m_window);
        m_keyboard->PressKey(m_q, &m_window, true);
        m_keyboard->MoveMouse(m_shift, &m_window);
        m_keyboard->MoveMouse(m_q, &m_window);
        m_keyboard->PressKey(m_q, &m_window, false);
        for (const WCHAR code :
             {kLanguageCode, kUmlautCode, kControlCode, kDigitCode, kDigitCode, kLanguageCode})
            m_keyboard->SetKbStatus(&code, &m_window);
        m_keyboard->ResetKbStatus(nullptr);
        m_keyboard->ResetKbStatus(&m_window);
    }
    // Checks that everything works after a new Init.
    void ExpectWorkingKeyboard() {
        ASSERT_TRUE(InitPortrait());
        ASSERT_FALSE(m_keyboard->m_bNoSkin);
        m_keyboard->m_pCallback = &m_callback;
        m_callback.Take();
        EXPECT_EQ(Tap(test::KeyQ), Typed('Q', 'q'));
    }
    // With two skins in the folder, of which the second is chosen, and one of the user's.
    template <typename Sweep, typename Act>
    int SweepInit(Act act) {
        TestSkin().Install("a.tlk");
        TestSkin().Install("b.tlk");
        int faults = 0;
        for (Sweep sweep; sweep.Next(); faults += sweep.WasHit()) {
            SCOPED_TRACE(sweep.Describe());
            m_keyboard = std::make_unique<CKeyboard>();
            Store(kSkinValue, kB);
            Store(kUserSkinsValue, TextValue(TEXT("\\windows\\a.tlk")));
            sweep.Arm();
            EXPECT_NO_THROW(act());
            sweep.Disarm();
            m_window.TakeInvalid();
            ExpectWorkingKeyboard();
        }
        return faults;
    }

    inline static const test::RegistryValue kB = TextValue(TEXT("\\windows\\b.tlk"));
    const POINT m_shift = KeyCenter(test::KeyShift);
    const POINT m_q = KeyCenter(test::KeyQ);
};

TEST_F(Faults, AnyPlatformCallOfALaterInitMayFail) {
    SweepInit<test::FaultSweep>([&] {
        InitLandscape();
        m_keyboard->SetKbStatus(&kCapsCode, &m_window);
        InitPortrait();
    });
}

TEST_F(Faults, AnyPlatformCallOfUseMayFail) {
    Start();
    for (test::FaultSweep sweep; sweep.Next();) {
        SCOPED_TRACE(sweep.Describe());
        sweep.Arm();
        UseKeyboard();
        m_keyboard->Paint(nullptr, &m_window);
        sweep.Disarm();
        ExpectWorkingKeyboard();
    }
}

TEST_F(Faults, InitMayRunOutOfMemoryAnywhere) {
    bool isReady = false;
    const std::size_t keys = test::CharacterLayout().size();
    const int faults = SweepInit<test::AllocationSweep>([&] {
        isReady = InitPortrait();
        CKeyboard::FindSkinFiles(TEXT("tlk"));
        CKeyboard::GetSkinList();
        // An incomplete list of skins must not change the user's choice.
        EXPECT_TRUE(!isReady || m_keyboard->m_strSkinPath == TEXT("\\windows\\b.tlk"));
        // An incomplete table is empty.
        EXPECT_EQ(m_keyboard->m_Charset.size() % 222, 0u);
        EXPECT_EQ(m_keyboard->m_CharLayout.size() % keys, 0u);
    });
    EXPECT_GE(faults, 50);
    EXPECT_EQ(Stored(kSkinValue), kB);
}

// Without memory a key may not look pressed, but keys are sent and statuses change.
TEST_F(Faults, KeysAreSentWithoutMemory) {
    Start();
    m_callback.recording = false;
    UseKeyboard();
    const int calls = std::exchange(m_callback.calls, 0);
    EXPECT_GT(calls, 5);
    for (test::AllocationSweep sweep; sweep.Next();) {
        SCOPED_TRACE(sweep.Describe());
        ASSERT_TRUE(InitPortrait());
        m_keyboard->m_PressedRects.shrink_to_fit();
        sweep.Arm();
        EXPECT_NO_THROW(UseKeyboard());
        sweep.Disarm();
        EXPECT_EQ(std::exchange(m_callback.calls, 0), calls);
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bCAPS, 1);
    }
}

}  // namespace
