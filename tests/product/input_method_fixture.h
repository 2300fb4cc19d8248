// SPDX-License-Identifier: MIT
// The input method as the SIP uses it: created by the class factory, with the SIP's window and callback.
#pragma once

#include <optional>

#include "input_method/main_wnd.h"
#include "recording_callback.h"
#include "rectangles.h"
#include "server_fixture.h"
#include "test_skin.h"
#include "test_window.h"

inline RECT WindowRect(HWND window) {
    RECT rectangle{};
    EXPECT_TRUE(GetWindowRect(window, &rectangle));
    return rectangle;
}

class InputMethodTest : public ServerTest {
protected:
    // Its height is neither a third nor a quarter of the screen, its width not the screen's.
    static constexpr RECT kSipPlace{10, 200, 210, 300};
    static constexpr RECT kSipInfoPlace{30, 100, 50, 180};

    void SetUp() override {
        ServerTest::SetUp();
        MakeSipWindow();
        m_object = CreateInputMethod();
    }

    void TearDown() override {
        if (m_object) EXPECT_EQ(m_object->Release(), 0u);
        m_sipWindow.reset();
        ServerTest::TearDown();
    }

    // Detaches and attaches the library, and creates a new object.
    void Renew() {
        m_object->Release();
        Detach();
        Attach(TEXT("\\Windows\\Tolka.DLL"), "Windows/Tolka.DLL");
        m_object = CreateInputMethod();
    }

    void MakeSipWindow() {
        m_sipWindow.emplace(kSipPlace);
        m_sip = m_sipWindow->m_hWnd;
        ASSERT_NE(m_sip, nullptr);
    }

    // Selects the input method, with a usable skin and a callback.
    void SelectWithSkin() {
        test::TestSkin().Install("a.tlk");
        EXPECT_EQ(m_object->RegisterCallback(&m_callback), S_OK);
        ASSERT_EQ(m_object->Select(m_sip), S_OK);
        ASSERT_FALSE(Keyboard().m_bNoSkin);
    }

    // The input method's window; null if there is none.
    HWND Panel() const { return GetWindow(m_sip, GW_CHILD); }
    // The object of the panel's window.
    CMainWnd& PanelObject() const {
        return static_cast<CMainWnd&>(
            *reinterpret_cast<CWindowImplBaseT<CWindow, CWinTraits<0x06080000, 0>>*>(
                GetWindowLongPtrW(Panel(), GWLP_USERDATA)));
    }
    CKeyboard& Keyboard() const { return *PanelObject().m_pKbd; }

    // Sends kSipInfoPlace as the SIP's rectangle and returns it as changed by the input method.
    RECT ReceiveSipInfo(HRESULT expected = S_OK) {
        SIPINFO info{};
        info.rcSipRect = kSipInfoPlace;
        EXPECT_EQ(m_object->ReceiveSipInfo(&info), expected);
        return info.rcSipRect;
    }

    void MoveSip(LONG top, LONG height) { MoveWindow(m_sip, kSipPlace.left, top, 200, height, FALSE); }

    std::optional<TestWindow> m_sipWindow;
    HWND m_sip = nullptr;
    IInputMethod2* m_object = nullptr;
    test::RecordingCallback m_callback;
};
