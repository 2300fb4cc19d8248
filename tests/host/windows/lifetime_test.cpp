// SPDX-License-Identifier: MIT
#include <host_control.h>

#include "test_support.h"
#include "windows/recorder.h"

namespace {

class WindowLifetime : public test::RecordedWindows {
protected:
    // How often a window got a message since the last Take.
    long Count(HWND window, UINT number) const {
        return std::count_if(
            messages.begin(), messages.end(),
            [=](const test::Message& message) {
                return message.window == window && message.number == number;
            });
    }
};

TEST_F(WindowLifetime, HandlersMayDestroyAnyWindowDuringAnyMessage) {
    constexpr UINT kMessages[] = {WM_SHOWWINDOW, WM_MOVE,      WM_SIZE,     WM_PAINT,         WM_ERASEBKGND,
                                  WM_DESTROY,    WM_KILLFOCUS, WM_SETFOCUS, WM_CAPTURECHANGED};
    for (const UINT trigger : kMessages) {
        for (const bool destroyParent : {false, true}) {
            onMessage = nullptr;
            const HWND parent = Create({0, 0, 200, 200}, m_desktop);
            const HWND child = Create({0, 0, 50, 50}, parent);
            onMessage = [&](const test::Message& message, LRESULT&) {
                if (message.window == child && message.number == trigger)
                    DestroyWindow(destroyParent ? parent : child);
                return false;
            };
            messages.clear();
            SetFocus(child);
            SetCapture(child);
            MoveWindow(child, 1, 1, 20, 20, TRUE);
            host::DeliverMessages();
            SetFocus(parent);
            SetCapture(parent);
            ShowWindow(child, SW_HIDE);
            DestroyWindow(child);
            DestroyWindow(parent);
            for (const HWND window : {parent, child}) {
                EXPECT_FALSE(IsWindow(window)) << trigger;
                EXPECT_EQ(Count(window, WM_DESTROY), 1) << trigger;
            }
            EXPECT_EQ(GetCapture(), nullptr);
            EXPECT_EQ(GetFocus(), nullptr);
        }
    }
}

TEST_F(WindowLifetime, HandlersMayDestroyTheWindowBeingCreated) {
    for (const int trigger : {WM_CREATE, WM_SIZE, WM_MOVE, WM_SHOWWINDOW}) {
        for (const bool destroyParent : {false, true}) {
            onMessage = nullptr;
            const HWND parent = Create({0, 0, 200, 200}, m_desktop);
            onMessage = [&](const test::Message& message, LRESULT&) {
                if (message.window == parent || message.number != static_cast<UINT>(trigger)) return false;
                DestroyWindow(destroyParent ? parent : message.window);
                return false;
            };
            EXPECT_EQ(Create({0, 0, 50, 50}, parent), nullptr) << trigger;
            EXPECT_EQ(IsWindow(parent), !destroyParent) << trigger;
            onMessage = nullptr;
            if (!destroyParent) DestroyWindow(parent);
        }
    }
}

TEST_F(WindowLifetime, AWindowUnderDestructionGetsNoChildren) {
    const HWND parent = Create({0, 0, 100, 100}, m_desktop);
    int created = 0;
    onMessage = [&](const test::Message& message, LRESULT&) {
        if (message.window == parent && message.number == WM_DESTROY)
            created += Create({0, 0, 5, 5}, parent) != nullptr;
        return false;
    };
    DestroyWindow(parent);
    EXPECT_EQ(created, 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
}

TEST_F(WindowLifetime, OwnedWindowsAreDestroyedWithTheirOwner) {
    const HWND owner = CreateTop({0, 0, 100, 100});
    const HWND child = Create({0, 0, 50, 50}, owner);
    const HWND owned =
        CreateWindowExW(0, TEXT("Plain"), nullptr, WS_POPUP, 0, 0, 9, 9, child, nullptr, nullptr, nullptr);
    EXPECT_EQ(GetParent(owned), owner);
    SetCapture(child);
    DestroyWindow(owner);
    EXPECT_FALSE(IsWindow(owned));
    EXPECT_EQ(Count(child, WM_CAPTURECHANGED), 1) << "the capture goes too";
}

TEST_F(WindowLifetime, OpenContextsAreClosedWithTheirWindow) {
    const HWND window = Create({0, 0, 100, 100}, m_desktop);
    PAINTSTRUCT paint;
    ASSERT_NE(BeginPaint(window, &paint), nullptr);
    const HDC dc = GetDC(window);
    DestroyWindow(window);
    EXPECT_EQ(host::CountHandles().dcs, 0);
    EXPECT_FALSE(EndPaint(window, &paint));
    EXPECT_EQ(ReleaseDC(window, dc), 0);
}

TEST_F(WindowLifetime, ClassesBelongToTheirInstanceOrToAll) {
    int first = 0;
    int second = 0;
    const auto instance = reinterpret_cast<HINSTANCE>(&first);
    const auto other = reinterpret_cast<HINSTANCE>(&second);
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = TEXT("Own");
    windowClass.hInstance = instance;
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    const auto create = [](LPCWSTR name, HINSTANCE from) {
        return DestroyWindow(
            CreateWindowExW(0, name, nullptr, WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, from, nullptr));
    };
    EXPECT_TRUE(create(TEXT("Own"), instance));
    EXPECT_FALSE(create(TEXT("Own"), other));
    EXPECT_TRUE(create(TEXT("Plain"), other));
    EXPECT_FALSE(UnregisterClassW(TEXT("Plain"), other));
    EXPECT_TRUE(UnregisterClassW(TEXT("Own"), instance));
}

TEST_F(WindowLifetime, StoppingTheDeviceEndsEverything) {
    int destroyed = 0;
    onMessage = [&](const test::Message& message, LRESULT&) {
        if (message.number != WM_DESTROY) return false;
        ++destroyed;
        EXPECT_EQ(Create({0, 0, 5, 5}), nullptr);
        return false;
    };
    const HBITMAP bitmap = CreateBitmap(1, 1, 1, 1, nullptr);
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap);
    const HWND child = Create({0, 0, 50, 50}, m_desktop);
    SetCapture(child);
    PostMessageW(child, WM_USER, 0, 0);
    PostQuitMessage(0);
    host::AdvanceClock(5);
    test::RestartDevice();
    EXPECT_EQ(destroyed, 2);
    EXPECT_FALSE(IsWindow(child));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(host::Now(), 0u);
    EXPECT_FALSE(DeleteDC(dc));
    EXPECT_FALSE(DeleteObject(bitmap));
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_FALSE(UnregisterClassW(TEXT("Plain"), nullptr));
}

}  // namespace
