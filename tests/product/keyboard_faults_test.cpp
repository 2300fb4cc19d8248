// SPDX-License-Identifier: MIT
// Whatever fails on the way, the keyboard stays whole: nothing is thrown, nothing leaks (the handle count
// after each test tells), and the next try works.
#include "fault_sweep.h"
#include "keyboard_fixture.h"

namespace {

using test::KeyCenter;
using test::TestSkin;

// Counts; its own memory is nobody's fault.
class CountingCallback final : public IIMCallback {
public:
    int calls = 0;
    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP SetImInfo(IMINFO*) override { return S_OK; }
    STDMETHODIMP SendVirtualKey(BYTE, DWORD) override { return Count(); }
    STDMETHODIMP SendCharEvents(UINT, UINT, UINT, UINT*, UINT*) override { return Count(); }
    STDMETHODIMP SendString(LPWSTR, DWORD) override { return S_OK; }

private:
    HRESULT Count() {
        ++calls;
        return S_OK;
    }
};

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
             {kLanguageCode, kUmlautCode, kControlCode, kDigitCode, kDigitCode, kLanguageCode}) {
            m_keyboard->SetKbStatus(&code, &m_window);
        }
        m_keyboard->ResetKbStatus(nullptr);
        m_keyboard->ResetKbStatus(&m_window);
    }
    // Everything works again after a fresh start.
    void ExpectWholeKeyboard() {
        ASSERT_TRUE(InitPortrait());
        ASSERT_FALSE(m_keyboard->m_bNoSkin);
        m_keyboard->m_pCallback = &m_callback;
        m_callback.Take();
        EXPECT_EQ(Tap(test::KeyQ).size(), 2u);
        EXPECT_EQ(GetCurrentObject(m_keyboard->m_hMaskDC, OBJ_BITMAP), m_keyboard->m_hLng1SmlKbMask);
    }
    static void StoreChoices() {
        SetText(kSkinValue, TEXT("\\windows\\b.tlk"));
        SetText(kUserSkinsValue, TEXT("\\windows\\a.tlk"));
    }
    template <typename Sweep, typename Prepare, typename Act>
    int SweepInit(Prepare prepare, Act act) {
        TestSkin().Install("a.tlk");
        TestSkin().Install("b.tlk");
        int faults = 0;
        for (Sweep sweep; sweep.Next(); faults += sweep.WasHit()) {
            SCOPED_TRACE(sweep.Describe());
            m_keyboard = std::make_unique<CKeyboard>();
            prepare();
            sweep.Arm();
            EXPECT_NO_THROW(act());
            sweep.Disarm();
            m_window.TakeInvalid();
            ExpectWholeKeyboard();
        }
        return faults;
    }

    const POINT m_shift = KeyCenter(test::KeyShift);
    const POINT m_q = KeyCenter(test::KeyQ);
    CountingCallback m_counter;
};

TEST_F(Faults, AnyPlatformCallOfTheFirstInitMayFail) {
    const auto forgetSettings = [] { RegDeleteKeyW(HKEY_LOCAL_MACHINE, kSettingsKey); };
    const int faults = SweepInit<test::FaultSweep>(forgetSettings, [&] { InitPortrait(); });
    // Searching, settings, modules, resources, bitmaps, contexts.
    EXPECT_GE(faults, 50);
}

TEST_F(Faults, AnyPlatformCallOfALaterInitMayFail) {
    SweepInit<test::FaultSweep>(StoreChoices, [&] {
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
        ExpectWholeKeyboard();
    }
}

TEST_F(Faults, InitMayRunOutOfMemoryAnywhere) {
    bool isReady = false;
    const int faults = SweepInit<test::AllocationSweep>(StoreChoices, [&] {
        isReady = InitPortrait();
        // A list of skins that is not whole must not cost the user the stored choice.
        EXPECT_TRUE(!isReady || m_keyboard->m_strSkinPath == TEXT("\\windows\\b.tlk"));
    });
    EXPECT_GE(faults, 50);
    EXPECT_EQ(Value(kSkinValue), Text(TEXT("\\windows\\b.tlk")));
}

TEST_F(Faults, ListsOfSkinsMayRunOutOfMemoryAnywhere) {
    SetText(kUserSkinsValue, TEXT("\\windows\\a.tlk"));
    Start();
    WideStringList skins;
    for (test::AllocationSweep sweep; sweep.Next();) {
        sweep.Arm();
        EXPECT_NO_THROW(skins = CKeyboard::GetSkinList());
        EXPECT_NO_THROW(CKeyboard::FindSkinFiles(TEXT("tlk")));
        sweep.Disarm();
    }
    EXPECT_EQ(skins.size(), 2u);
}

// The look of a key may be lost for want of memory; the keys themselves and the status are not.
TEST_F(Faults, KeysAreSentWithoutMemory) {
    Start();
    m_keyboard->m_pCallback = &m_counter;
    UseKeyboard();
    const int calls = m_counter.calls;
    EXPECT_GT(calls, 5);
    for (test::AllocationSweep sweep; sweep.Next();) {
        SCOPED_TRACE(sweep.Describe());
        ASSERT_TRUE(InitPortrait());
        m_counter.calls = 0;
        m_keyboard->m_PressedRects.shrink_to_fit();
        sweep.Arm();
        EXPECT_NO_THROW(UseKeyboard());
        sweep.Disarm();
        EXPECT_EQ(m_counter.calls, calls);
        EXPECT_EQ(m_keyboard->m_stKbStatus.m_bCAPS, 1);
    }
}

}  // namespace
