// SPDX-License-Identifier: MIT
#include <host_control.h>

#include "windows/recorder.h"

using host::Pen;

namespace {

class PenInput : public test::RecordedWindows {
protected:
    std::vector<test::Message> Deliver() {
        host::DeliverMessages();
        return Take({WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_LBUTTONDBLCLK});
    }

    // The window that gets a pen-down at this point of the screen; null for none.
    HWND Target(POINT point) {
        host::PostPen(Pen::Down, point);
        host::PostPen(Pen::Up, point);
        const std::vector<test::Message> got = Deliver();
        return got.empty() ? nullptr : got.front().window;
    }

    // The messages from taps of a real pen.
    std::vector<UINT> Tap(std::initializer_list<POINT> points, DWORD pause) {
        for (const POINT point : points) {
            host::PostPen(host::RecognizePen(Pen::Down, point), point);
            host::PostPen(Pen::Up, point);
            host::AdvanceClock(pause);
        }
        std::vector<UINT> numbers;
        for (const test::Message& message : Deliver())
            if (message.number != WM_LBUTTONUP) numbers.push_back(message.number);
        return numbers;
    }
};

TEST_F(PenInput, ReachesTheTopmostVisibleEnabledWindow) {
    const HWND sip = CreateTop({0, 200, 240, 300}, TEXT("Plain"), WS_EX_TOPMOST);
    const HWND panel = Create({10, 10, 100, 60}, sip);
    const HWND dialog = CreateTop({0, 100, 240, 320});
    EXPECT_EQ(Target({20, 220}), panel);
    EXPECT_EQ(Target({5, 220}), sip);
    EXPECT_EQ(Target({5, 310}), dialog);
    EXPECT_EQ(Target({5, 50}), m_desktop);
    EXPECT_EQ(Target({240, 50}), nullptr);

    ShowWindow(panel, SW_HIDE);
    EXPECT_EQ(Target({20, 220}), sip);
}

TEST_F(PenInput, DisabledChildrenPassThePenOnAndDisabledWindowsSwallowIt) {
    const HWND below = Create({0, 0, 50, 50}, m_desktop);
    Create({0, 0, 50, 50}, m_desktop, TEXT("Plain"), WS_VISIBLE | WS_DISABLED);
    EXPECT_EQ(Target({5, 5}), below);
    SetWindowLongPtrW(m_desktop, GWL_STYLE, GetWindowLongPtrW(m_desktop, GWL_STYLE) | WS_DISABLED);
    EXPECT_EQ(Target({5, 5}), nullptr);
}

TEST_F(PenInput, PositionsAreSignedClientCoordinates) {
    const HWND panel = Create({100, 50, 200, 100}, m_desktop);
    SetCapture(panel);
    host::PostPen(Pen::Down, {95, 120});
    host::PostPen(Pen::Move, {-100000, 50});
    host::PostPen(Pen::Up, {0, 0});
    host::PostPen(Pen::Move, {101, 52});
    ReleaseCapture();
    const std::vector<test::Message> got = Deliver();
    ASSERT_EQ(got.size(), 4u);
    const LPARAM places[] = {MAKELPARAM(-5, 70), MAKELPARAM(-0x8000, 0), MAKELPARAM(-100, -50),
                             MAKELPARAM(1, 2)};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(got[i].window, panel);
        EXPECT_EQ(got[i].lParam, places[i]);
        EXPECT_EQ(got[i].wParam, static_cast<WPARAM>(i < 2 ? MK_LBUTTON : 0));
    }
}

TEST_F(PenInput, SecondTapInTimeAndPlaceIsADoubleClick) {
    const HWND keys = CreateTop({0, 0, 100, 100}, TEXT("Taps"));
    ASSERT_EQ(Target({10, 10}), keys);
    using Numbers = std::vector<UINT>;
    const Numbers twoTaps{WM_LBUTTONDOWN, WM_LBUTTONDOWN};
    EXPECT_EQ(Tap({{10, 10}, {14, 6}, {10, 10}}, 500),
              (Numbers{WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN}));
    host::AdvanceClock(501);
    EXPECT_EQ(Tap({{10, 10}, {15, 10}}, 10), twoTaps);
    host::AdvanceClock(501);
    EXPECT_EQ(Tap({{10, 10}, {10, 10}}, 501), twoTaps);
    EXPECT_EQ(Tap({{200, 200}, {200, 200}}, 10), twoTaps) << "a class without CS_DBLCLKS";
}

TEST(KeyInput, WithoutAFocusKeysChangeTheirStateAtOnce) {
    for (const bool down : {true, false}) {
        host::PostKey(VK_SHIFT, down);
        EXPECT_EQ(GetKeyState(VK_SHIFT) < 0, down);
    }
    EXPECT_EQ(GetKeyState(-1), 0);
    EXPECT_EQ(GetKeyState(256), 0);
}

class FocusedKeys : public test::RecordedWindows {};

TEST_F(FocusedKeys, ReachTheFocusInOrderWithTheStateAtTheirTime) {
    const HWND edit = Create({0, 0, 50, 50}, m_desktop);
    SetFocus(edit);
    std::vector<bool> shift;
    onMessage = [&](const test::Message& message, LRESULT&) {
        if (message.number == WM_CHAR) shift.push_back(GetKeyState(VK_SHIFT) < 0);
        return false;
    };
    host::PostKey(VK_SHIFT, true);
    host::PostCharacter('A', u'A');
    host::PostKey(VK_SHIFT, false);
    host::PostCharacter('A', u'a');
    host::DeliverMessages();
    const std::vector<test::Message> got = Take({WM_KEYDOWN, WM_CHAR, WM_KEYUP});
    ASSERT_EQ(got.size(), 4u);
    EXPECT_EQ(got[0].window, edit);
    EXPECT_EQ(got[1].wParam, static_cast<WPARAM>('A'));
    EXPECT_EQ(got[2].number, static_cast<UINT>(WM_KEYUP));
    EXPECT_EQ(got[0].lParam >> 30, 0);
    EXPECT_EQ(got[2].lParam >> 30, 3) << "was down and goes up";
    EXPECT_EQ(shift, (std::vector<bool>{true, false}));
}

TEST_F(FocusedKeys, KeyUpCountsEvenIfItsWindowIsGone) {
    const HWND edit = Create({0, 0, 50, 50}, m_desktop);
    SetFocus(edit);
    host::PostKey(VK_SHIFT, true);
    host::DeliverMessages();
    host::PostKey(VK_SHIFT, false);
    DestroyWindow(edit);
    EXPECT_EQ(GetKeyState(VK_SHIFT), 0);
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(FocusedKeys, FocusMovesWithBothMessages) {
    const HWND first = Create({0, 0, 50, 50}, m_desktop);
    const HWND second = Create({50, 0, 90, 50}, m_desktop);
    EXPECT_EQ(SetFocus(first), nullptr);
    messages.clear();
    EXPECT_EQ(SetFocus(second), first);
    const std::vector<test::Message> got = Take({WM_KILLFOCUS, WM_SETFOCUS});
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[0].window, first);
    EXPECT_EQ(got[1].window, second);
    EXPECT_EQ(reinterpret_cast<HWND>(got[1].wParam), first);

    // A handler of the window losing the focus may set it elsewhere; the window passed over gets no message.
    onMessage = [&](const test::Message& message, LRESULT&) {
        if (message.number == WM_KILLFOCUS && message.window == second) SetFocus(m_desktop);
        return false;
    };
    SetFocus(first);
    EXPECT_EQ(GetFocus(), m_desktop);
    for (const test::Message& message : Take({WM_SETFOCUS}))
        EXPECT_EQ(message.window, m_desktop);
}

}  // namespace
