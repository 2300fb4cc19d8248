// SPDX-License-Identifier: MIT
#pragma once

#include "framework/window.h"

// A visible window that leaves all messages to the system; 240 x 80 pixels by default.
class TestWindow : public CWindow {
public:
    explicit TestWindow(RECT place = {0, 0, 240, 80}) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.lpszClassName = kClass;
        RegisterClassW(&windowClass);
        m_hWnd = CreateWindowExW(0, kClass, nullptr, WS_POPUP | WS_VISIBLE, place.left, place.top,
                                 place.right - place.left, place.bottom - place.top, nullptr, nullptr,
                                 nullptr, nullptr);
        TakeInvalid();
    }
    ~TestWindow() {
        DestroyWindow(m_hWnd);
        UnregisterClassW(kClass, nullptr);
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    // The bounds of the area invalidated since the last call; all 0 for none.
    RECT TakeInvalid() {
        RECT invalid{};
        GetUpdateRect(m_hWnd, &invalid, FALSE);
        PAINTSTRUCT paint;
        BeginPaint(m_hWnd, &paint);
        EndPaint(m_hWnd, &paint);
        return invalid;
    }

private:
    static constexpr WCHAR kClass[] = TEXT("TestWindow");
};
