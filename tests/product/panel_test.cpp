// SPDX-License-Identifier: MIT
// The panel window, which passes the platform's messages to the keyboard.
#include <memory>

#include "input_method_fixture.h"

namespace {

using test::Events;
using test::Key;
using test::KeyCenter;

class PanelTest : public InputMethodTest {
protected:
    LRESULT Send(UINT message, POINT point) const {
        return SendMessageW(Panel(), message, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    }
    LRESULT Send(UINT message, Key key) const { return Send(message, KeyCenter(key)); }
    // The platform's messages for a double tap.
    void DoubleTap(Key key) const {
        for (const int message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
            EXPECT_EQ(Send(static_cast<UINT>(message), key), 0);
    }
    HWND CreateForeignPanel() const {
        return CreateWindowExW(0, CMainWnd::GetWndClassInfo().m_wc.lpszClassName, nullptr, WS_CHILD, 0, 0, 10,
                               10, m_sip, nullptr, m_library, nullptr);
    }
};

// Remembers its last window.
class FinalWnd : public CMainWnd {
public:
    void OnFinalMessage(HWND window) override {
        m_final = window;
        EXPECT_EQ(m_hWnd, nullptr);
    }

    HWND m_final = nullptr;
};

constexpr RECT kPlace{0, 0, 100, 50};

}  // namespace

TEST_F(PanelTest, TheRestOfAHandledDoubleTapIsKeptFromTheKeyboard) {
    SelectWithSkin();
    const CKeyboard& keyboard = Keyboard();
    DoubleTap(test::KeyShift);
    EXPECT_EQ(m_callback.Take(), (Events{"vk 10 down", "vk 10 up"}));
    EXPECT_TRUE(keyboard.m_stKbStatus.m_bCAPS && !keyboard.m_stKbStatus.m_bShift);
    const POINT before = keyboard.m_ptSwipeEnd;
    EXPECT_EQ(Send(WM_MOUSEMOVE, test::KeyQ), 0);
    EXPECT_EQ(Send(WM_LBUTTONUP, test::KeyShift), 0);
    EXPECT_TRUE(keyboard.m_ptSwipeEnd.x == before.x && keyboard.m_ptSwipeEnd.y == before.y);
    EXPECT_TRUE(keyboard.m_stKbStatus.m_bCAPS) << "a pen-up came through";

    Send(WM_LBUTTONDOWN, test::KeyShift);
    Send(WM_LBUTTONUP, test::KeyShift);
    EXPECT_FALSE(keyboard.m_stKbStatus.m_bCAPS) << "the next tap counts again";
}

TEST_F(PanelTest, ADeclinedDoubleTapIsTwoTaps) {
    SelectWithSkin();
    DoubleTap(test::KeyQ);
    EXPECT_EQ(m_callback.Take().size(), 4u);
    Send(WM_LBUTTONDBLCLK, test::KeyShift);
    EXPECT_TRUE(PanelObject().m_bDblPressHandled);
    Send(WM_LBUTTONDBLCLK, test::KeyQ);
    EXPECT_FALSE(PanelObject().m_bDblPressHandled) << "a pen-down, also after a consumed one";
    EXPECT_EQ(GetCapture(), Panel());
    Send(WM_LBUTTONUP, test::KeyQ);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(PanelTest, PenOutsideThePanelHasNegativeCoordinates) {
    SelectWithSkin();
    const POINT& begin = Keyboard().m_ptSwipeBegin;
    const POINT& end = Keyboard().m_ptSwipeEnd;
    Send(WM_LBUTTONDOWN, POINT{-1, -32768});
    EXPECT_TRUE(begin.x == -1 && begin.y == -32768);
    Send(WM_LBUTTONDOWN, test::KeyQ);
    for (const POINT& point : {POINT{-5, 70}, POINT{32767, -2}}) {
        Send(WM_MOUSEMOVE, point);
        EXPECT_TRUE(end.x == point.x && end.y == point.y);
    }
    Send(WM_LBUTTONUP, POINT{-5, 70});
}

TEST_F(PanelTest, EveryMessageHasItsResultWithAndWithoutAKeyboard) {
    SelectWithSkin();
    CMainWnd& panel = PanelObject();
    CKeyboard* const keyboard = panel.m_pKbd;
    for (CKeyboard* const connected : {keyboard, static_cast<CKeyboard*>(nullptr)}) {
        panel.m_pKbd = connected;
        InvalidateRect(Panel(), nullptr, TRUE);
        EXPECT_EQ(SendMessageW(Panel(), WM_PAINT, 0, 0), 0);
        EXPECT_FALSE(GetUpdateRect(Panel(), nullptr, FALSE)) << "not validated";
        EXPECT_EQ(SendMessageW(Panel(), WM_ERASEBKGND, 0, 0), 1);
        DoubleTap(test::KeyQ);
        EXPECT_EQ(Send(WM_MOUSEMOVE, test::KeyQ), 0);
        EXPECT_EQ(SendMessageW(Panel(), WM_USER, 0, 0), 0);
    }
    LRESULT result = 17;
    EXPECT_FALSE(panel.ProcessWindowMessage(nullptr, WM_ERASEBKGND, 0, 0, result, 1)) << "another map";
    EXPECT_EQ(result, 17);
    EXPECT_FALSE(panel.m_bDblPressHandled);
    EXPECT_EQ(m_callback.Take().size(), 4u) << "two taps with the keyboard, none without";
    panel.m_pKbd = keyboard;
}

TEST_F(PanelTest, WindowClassLivesFromTheFirstCreateToTheDetach) {
    const WNDCLASSW& description = CMainWnd::GetWndClassInfo().m_wc;
    EXPECT_EQ(WideString(description.lpszClassName), TEXT("3E8B6D14-C2A7-4F90-8B5E-71D0A9C4E26F-PanelHost"));
    EXPECT_EQ(description.style, CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS);
    EXPECT_EQ(description.hbrBackground, reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_WINDOW + 1)));
    EXPECT_EQ(CreateForeignPanel(), nullptr) << "registered before it was needed";

    SelectWithSkin();
    EXPECT_EQ(description.hCursor, LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_EQ(description.hInstance, m_library);
    m_object->Deselect();
    ASSERT_EQ(m_object->Select(m_sip), S_OK);
    m_object->Deselect();
    const HWND foreign = CreateForeignPanel();
    EXPECT_NE(foreign, nullptr) << "a window without an object is harmless";
    EXPECT_EQ(SendMessageW(foreign, WM_LBUTTONDOWN, 0, 0), 0);
    DestroyWindow(foreign);

    Renew();
    EXPECT_EQ(CreateForeignPanel(), nullptr) << "still registered";
    EXPECT_EQ(m_object->Select(m_sip), S_OK);
}

TEST_F(PanelTest, TheLastMessageFreesTheObjectForAnotherWindowAndItsEndDestroysTheLast) {
    auto object = std::make_unique<FinalWnd>();
    FinalWnd& panel = *object;
    for (const bool withParent : {false, true}) {
        const HWND window = panel.Create(m_sip, kPlace, nullptr, WS_CHILD, 0);
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(panel.m_hWnd, window);
        EXPECT_FALSE(IsWindowVisible(window));
        DestroyWindow(withParent ? m_sip : window);
        EXPECT_EQ(panel.m_final, window);
        EXPECT_EQ(panel.m_hWnd, nullptr);
    }
    MakeSipWindow();
    const HWND last = panel.Create(nullptr, kPlace, nullptr, 0, 0);
    EXPECT_EQ(GetWindowLongPtrW(last, GWL_STYLE) & 0x06080000, 0x06080000) << "the default style";
    object.reset();
    EXPECT_FALSE(IsWindow(last));
}
