// SPDX-License-Identifier: MIT
// The input method's operations in all its states, as the SIP may call them, a client written in C by the
// table of function pointers.
#include <cstring>

#include "fault_sweep.h"
#include "input_method_fixture.h"
#include "registry_values.h"
#include "settings/settings_dlg.h"
#include "store/registry_names.h"

namespace {

using test::Events;

void StoreSkin(const WideString& path) {
    test::WriteValue(HKEY_LOCAL_MACHINE, kSettingsKey, kSkinValue, test::TextValue(path));
}

// A pointer to a virtual member function is the offset of its slot in the table, plus one.
template <typename Member>
std::ptrdiff_t SlotOf(Member member) {
    std::ptrdiff_t distance;
    std::memcpy(&distance, &member, sizeof distance);
    return (distance - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

}  // namespace

TEST_F(InputMethodTest, SelectCreatesThePanelAndStretchesTheSipWindowOnce) {
    SelectWithSkin();
    ASSERT_NE(Panel(), nullptr);
    EXPECT_EQ(GetParent(Panel()), m_sip);
    EXPECT_TRUE(IsWindowVisible(Panel()));
    EXPECT_EQ(GetWindowLongPtrW(Panel(), GWL_STYLE), static_cast<LONG_PTR>(WS_CHILD | WS_VISIBLE));
    EXPECT_EQ(WindowRect(m_sip), (RECT{0, 200, 240, 300})) << "as wide as the screen, top and height kept";
    // The SIP window's screen rectangle, used as its client coordinates.
    EXPECT_EQ(WindowRect(Panel()), (RECT{10, 400, 210, 500}));
    EXPECT_NE(GetFocus(), Panel());

    const HWND panel = Panel();
    Keyboard().m_stKbStatus.m_bShift = 1;
    MoveSip(100, 100);
    EXPECT_EQ(m_object->Select(m_sip), S_OK);
    EXPECT_EQ(Panel(), panel);
    EXPECT_EQ(GetWindow(panel, GW_CHILD), nullptr);
    EXPECT_EQ(WindowRect(m_sip), (RECT{10, 100, 210, 200}));
    EXPECT_EQ(Keyboard().m_stKbStatus.m_bShift, 1) << "initialised again";
}

TEST_F(InputMethodTest, SelectNeedsASipWindowWithWhichThePanelGoes) {
    EXPECT_EQ(m_object->Select(nullptr), E_FAIL);
    for (const HRESULT result : {m_object->Showing(), m_object->Hiding(), m_object->Deselect()})
        EXPECT_EQ(result, S_OK) << "although there is no panel";
    EXPECT_EQ(WindowRect(m_sip), kSipPlace);
    DestroyWindow(m_sip);
    EXPECT_EQ(m_object->Select(m_sip), E_FAIL);
    for (int time = 0; time < 2; ++time) {
        MakeSipWindow();
        EXPECT_EQ(m_object->Select(m_sip), S_OK);
        EXPECT_TRUE(IsWindowVisible(Panel()));
        EXPECT_TRUE(Keyboard().m_bNoSkin) << "which is no reason to fail";
        DestroyWindow(m_sip);
        EXPECT_EQ(m_object->Showing(), S_OK);
        EXPECT_EQ(m_object->Deselect(), S_OK);
    }
}

TEST_F(InputMethodTest, FailedInitialisationLeavesAHiddenPanel) {
    test::SetScreenSize(320, 240);
    test::TestSkin().Without("LANSCAPE_KEYBOARD_BITMAP").Install("a.tlk");
    EXPECT_EQ(m_object->Select(m_sip), E_FAIL);
    const HWND panel = Panel();
    ASSERT_NE(panel, nullptr);
    EXPECT_FALSE(IsWindowVisible(panel));
    EXPECT_EQ(WindowRect(m_sip), (RECT{0, 200, 320, 300}));
    EXPECT_EQ(m_object->Select(m_sip), S_OK) << "selected already, and not tried again";
    EXPECT_EQ(Panel(), panel);
    EXPECT_FALSE(IsWindowVisible(panel));
    EXPECT_EQ(m_object->Showing(), S_OK);
    EXPECT_EQ(WindowRect(m_sip), (RECT{0, 200, 320, 280}));
    EXPECT_EQ(m_object->Deselect(), S_OK);
    EXPECT_EQ(Panel(), nullptr);
}

// Whatever call fails, there is no panel, a hidden one, or a visible one that works as far as it can.
TEST_F(InputMethodTest, SelectSurvivesEveryFailureOfThePlatform) {
    test::TestSkin().Install("a.tlk");
    for (test::FaultSweep sweep; sweep.Next();) {
        SCOPED_TRACE(sweep.Describe());
        Renew();  // the window class is registered once after each attach
        RegDeleteKeyW(HKEY_LOCAL_MACHINE, kSettingsKey);
        sweep.Arm();
        const HRESULT result = m_object->Select(m_sip);
        sweep.Disarm();
        EXPECT_TRUE(result == E_FAIL || result == S_OK);
        EXPECT_EQ(Panel() && IsWindowVisible(Panel()), result == S_OK);
        EXPECT_EQ(m_object->Deselect(), S_OK);
        ASSERT_EQ(m_object->Select(m_sip), S_OK);
        EXPECT_FALSE(Keyboard().m_bNoSkin);
    }
}

TEST_F(InputMethodTest, RunningOutOfMemoryNeverThrows) {
    test::TestSkin().Install("a.tlk");
    for (test::AllocationSweep sweep; sweep.Next();) {
        SCOPED_TRACE(sweep.Describe());
        Renew();
        SIPINFO info{};
        sweep.Arm();
        const HRESULT result = m_object->Select(m_sip);
        if (result == S_OK) SendMessageW(Panel(), WM_PAINT, 0, 0);
        m_object->ReceiveSipInfo(&info);
        sweep.Disarm();
        EXPECT_TRUE(result == E_FAIL || result == S_OK);
        EXPECT_EQ(m_object->Deselect(), S_OK);
    }
}

TEST_F(InputMethodTest, DeselectDestroysThePanelAndUnloadsTheSkin) {
    SelectWithSkin();
    const CKeyboard& keyboard = Keyboard();
    const HWND panel = Panel();
    EXPECT_EQ(m_object->Deselect(), S_OK);
    EXPECT_FALSE(IsWindow(panel));
    EXPECT_EQ(keyboard.m_hSkinLib, nullptr);
    EXPECT_EQ(keyboard.m_pCallback, &m_callback);
    EXPECT_EQ(m_object->Deselect(), S_OK);

    ASSERT_EQ(m_object->Select(m_sip), S_OK) << "a new selection of the same object";
    EXPECT_TRUE(IsWindowVisible(Panel()));
    EXPECT_NE(keyboard.m_hSkinLib, nullptr);
}

TEST_F(InputMethodTest, ShowingCorrectsTheHeightOfTheSipWindow) {
    struct {
        SIZE screen;
        LONG height;
        LONG corrected;  // 0: not changed
    } const cases[] = {
        {{240, 320}, 80, 0},  {{240, 320}, 106, 0},  {{240, 320}, 100, 80},  {{240, 320}, 81, 80},
        {{320, 240}, 80, 0},  {{320, 240}, 60, 0},   {{320, 240}, 100, 80},  {{240, 240}, 60, 0},
        {{240, 240}, 80, 0},  {{240, 240}, 100, 60}, {{480, 640}, 100, 160}, {{241, 323}, 80, 0},
        {{241, 323}, 107, 0}, {{241, 323}, 81, 80},  {{321, 239}, 80, 79},
    };
    for (const auto& c : cases) {
        test::SetScreenSize(c.screen.cx, c.screen.cy);
        ASSERT_EQ(m_object->Select(m_sip), S_OK);
        MoveSip(120, c.height);
        EXPECT_EQ(m_object->Showing(), S_OK);
        const RECT expected =
            c.corrected ? RECT{0, 120, c.screen.cx, 120 + c.corrected} : RECT{10, 120, 210, 120 + c.height};
        EXPECT_EQ(WindowRect(m_sip), expected)
            << c.screen.cx << " x " << c.screen.cy << ", height " << c.height;
        EXPECT_EQ(m_object->Deselect(), S_OK);
    }
}

TEST_F(InputMethodTest, HidingReleasesAndShowingPressesTheLatchedModifiers) {
    SelectWithSkin();
    KbStatus& status = Keyboard().m_stKbStatus;
    EXPECT_EQ(m_object->Hiding(), S_OK);
    EXPECT_EQ(m_object->Showing(), S_OK);
    EXPECT_EQ(m_callback.Take(), Events{});

    status.m_bShift = 1;
    status.m_bCtrl = 1;
    m_object->Hiding();
    EXPECT_EQ(m_callback.Take(), (Events{"vk 10 up", "vk 11 up"}));
    m_object->Showing();
    EXPECT_EQ(m_callback.Take(), (Events{"vk 10 down", "vk 11 down"}));
    EXPECT_TRUE(status.m_bShift && status.m_bCtrl);

    m_object->RegisterCallback(nullptr);
    m_object->Hiding();
    m_object->Showing();
    m_object->RegisterCallback(&m_callback);
    m_object->Deselect();
    m_object->Showing();
    EXPECT_EQ(m_callback.Take(), Events{}) << "nobody to send to, or no panel to show";
    m_object->Hiding();
    EXPECT_EQ(m_callback.Take(), (Events{"vk 10 up", "vk 11 up"})) << "the flags outlive the selection";
    EXPECT_EQ(m_callback.references, 0) << "the callback is borrowed";
}

TEST_F(InputMethodTest, InfoReportsADockedPanelAndLeavesTheRectangle) {
    EXPECT_EQ(m_object->GetInfo(nullptr), E_POINTER);
    IMINFO info{1, m_sip, m_sip, 5, 6, 7, {1, 2, 3, 4}};
    EXPECT_EQ(m_object->GetInfo(&info), S_OK);
    EXPECT_EQ(info.cbSize, 40u);
    EXPECT_EQ(info.fdwFlags, static_cast<DWORD>(SIPF_DOCKED));
    EXPECT_EQ(info.rcSipRect, (RECT{1, 2, 3, 4}));
}

TEST_F(InputMethodTest, SipInfoMovesThePanelToTheOrigin) {
    SelectWithSkin();
    Keyboard().m_stKbStatus.m_bShift = 1;
    SIPINFO info{48, SIPF_ON, {0, 26, 240, 200}, {30, 240, 200, 310}, 5, nullptr};
    const SIPINFO before = info;
    EXPECT_EQ(m_object->ReceiveSipInfo(nullptr), E_POINTER);
    EXPECT_EQ(m_object->ReceiveSipInfo(&info), S_OK);
    EXPECT_EQ(WindowRect(Panel()), (RECT{0, 200, 170, 270})) << "the origin of the SIP window";
    EXPECT_EQ(info.rcSipRect, before.rcSipRect);
    EXPECT_EQ(info.rcVisibleDesktop, before.rcVisibleDesktop);
    EXPECT_TRUE(info.cbSize == before.cbSize && info.fdwFlags == before.fdwFlags &&
                info.dwImDataSize == before.dwImDataSize && info.pvImData == before.pvImData);
    EXPECT_EQ(Keyboard().m_stKbStatus.m_bShift, 1) << "initialised without need";
}

TEST_F(InputMethodTest, AnotherScreenSizeInitialisesTheKeyboardAgain) {
    SelectWithSkin();
    for (const SIZE screen : {SIZE{320, 240}, SIZE{240, 320}, SIZE{240, 300}, SIZE{240, 240}}) {
        test::SetScreenSize(screen.cx, screen.cy);
        Keyboard().m_stKbStatus.m_bShift = 1;
        EXPECT_EQ(ReceiveSipInfo(), (RECT{0, 100, screen.cx, 180}));
        EXPECT_EQ(WindowRect(Panel()), (RECT{0, 200, screen.cx, 280}));
        EXPECT_EQ(Keyboard().m_stKbStatus.m_bShift, 0);
        EXPECT_EQ(Keyboard().m_bPortrait, screen.cx < screen.cy);
    }
    // After a failure the panel stays, and the same size is not tried again.
    test::TestSkin().Without("LANSCAPE_KEYBOARD_BITMAP").Install("a.tlk");
    const RECT before = WindowRect(Panel());
    test::SetScreenSize(320, 240);
    EXPECT_EQ(ReceiveSipInfo(E_FAIL), (RECT{0, 100, 320, 180}));
    EXPECT_EQ(WindowRect(Panel()), before);
    EXPECT_EQ(ReceiveSipInfo(), kSipInfoPlace);
    EXPECT_EQ(WindowRect(Panel()), (RECT{0, 200, 20, 280}));
}

TEST_F(InputMethodTest, SipInfoWithoutSelectInitialisesTheKeyboardIfNeeded) {
    test::TestSkin().Install("a.tlk");
    EXPECT_EQ(ReceiveSipInfo(), (RECT{0, 100, 240, 180})) << "no size before the first Select";
    EXPECT_EQ(test::ReadValue(HKEY_LOCAL_MACHINE, kSettingsKey, kSkinValue),
              test::TextValue(TEXT("\\windows\\a.tlk")));
    EXPECT_EQ(Panel(), nullptr);

    EXPECT_EQ(ReceiveSipInfo(), kSipInfoPlace);
    ASSERT_EQ(m_object->Select(m_sip), S_OK);
    m_object->Deselect();
    test::TestSkin().Install("b.tlk");
    StoreSkin(TEXT("\\windows\\b.tlk"));
    EXPECT_EQ(ReceiveSipInfo(), (RECT{0, 100, 240, 180})) << "another skin";
}

TEST_F(InputMethodTest, ADifferentStoredSkinInitialisesTheKeyboardAgain) {
    SelectWithSkin();
    EXPECT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, kSettingsKey), ERROR_SUCCESS);
    EXPECT_EQ(ReceiveSipInfo(), kSipInfoPlace) << "no skin is no different one";
    EXPECT_FALSE(test::KeyExists(HKEY_LOCAL_MACHINE, kSettingsKey)) << "looking must not create the key";
    test::WriteValue(HKEY_LOCAL_MACHINE, kSettingsKey, TEXT("Other"), test::NumberValue(1));
    EXPECT_EQ(ReceiveSipInfo(), kSipInfoPlace);
    test::TestSkin().Install("b.tlk");
    const WideString a = TEXT("\\windows\\a.tlk");
    const WideString b = TEXT("\\windows\\b.tlk");
    const struct {
        WideString stored;
        bool counts;
        WideString path;
    } cases[] = {
        {a, false, a},
        {b, true, b},
        {TEXT("\\windows\\B.tlk"), true, a},
        {WideString(), false, a},
        {TEXT("a.tlk"), true, TEXT("a.tlk")},
        {WideString(260, 'x'), false, TEXT("a.tlk")},  // too long to be read
    };
    for (const auto& c : cases) {
        StoreSkin(c.stored);
        Keyboard().m_stKbStatus.m_bShift = 1;
        EXPECT_EQ(ReceiveSipInfo(), (c.counts ? RECT{0, 100, 240, 180} : kSipInfoPlace));
        EXPECT_EQ(Keyboard().m_stKbStatus.m_bShift == 0, c.counts) << c.stored.size();
        EXPECT_EQ(Keyboard().m_strSkinPath, c.path);
    }
}

// The destructor has two slots.
TEST(WindowTable, IsMessageMapDestructorProcedureFinalMessage) {
    EXPECT_EQ(SlotOf(&CMainWnd::ProcessWindowMessage), 0);
    EXPECT_EQ(SlotOf(&CMainWnd::GetWindowProc), 3);
    EXPECT_EQ(SlotOf(&CMainWnd::OnFinalMessage), 4);
    EXPECT_EQ(SlotOf(&CSettingsDlg::ProcessWindowMessage), 0);
    EXPECT_EQ(SlotOf(&CSettingsDlg::GetDialogProc), 3);
    EXPECT_EQ(SlotOf(&CSettingsDlg::OnFinalMessage), 4);
}

// After the three slots of IUnknown.
TEST(InputMethodTable, SlotsAreInTheOrderOfTheInterfaces) {
    using Table = IInputMethod2;
    const std::ptrdiff_t slots[] = {
        SlotOf(&Table::Select),
        SlotOf(&Table::Deselect),
        SlotOf(&Table::Showing),
        SlotOf(&Table::Hiding),
        SlotOf(&Table::GetInfo),
        SlotOf(&Table::ReceiveSipInfo),
        SlotOf(&Table::RegisterCallback),
        SlotOf(&Table::GetImData),
        SlotOf(&Table::SetImData),
        SlotOf(&Table::UserOptionsDlg),
        SlotOf(&Table::SetIMMActiveContext),
        SlotOf(&Table::RegisterCallback2),
    };
    for (std::ptrdiff_t i = 0; i < 12; ++i)
        EXPECT_EQ(slots[i], i + 3);
}

TEST_F(InputMethodTest, CallsWithoutMeaningSucceed) {
    SelectWithSkin();
    Keyboard().m_stKbStatus.m_bShift = 1;
    BYTE data[] = {1, 2};
    EXPECT_EQ(m_object->GetImData(2, data), S_OK);
    EXPECT_EQ(m_object->SetImData(2, data), S_OK);
    EXPECT_TRUE(data[0] == 1 && data[1] == 2);
    EXPECT_EQ(m_object->SetIMMActiveContext(m_sip, TRUE, 1, 2, 3), S_OK);
    EXPECT_EQ(m_object->RegisterCallback2(nullptr), S_OK);
    EXPECT_EQ(m_object->Hiding(), S_OK);
    EXPECT_EQ(m_callback.Take(), Events{"vk 10 up"}) << "the second callback is not stored";
}
