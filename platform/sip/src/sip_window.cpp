// SPDX-License-Identifier: MIT
#include "sip_window.h"

namespace {

const WCHAR kWindowClass[] = TEXT("SipWindow");

void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    if (!dc) return;
    FillRect(dc, &paint.rcPaint, GetSysColorBrush(COLOR_BTNFACE));
    EndPaint(window, &paint);
}

LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint(window);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace

SipWindow::SipWindow(HINSTANCE instance, const RECT& rectangle) : m_instance(instance) {
    WNDCLASSW description{};
    description.lpfnWndProc = HandleMessage;
    description.hInstance = instance;
    description.lpszClassName = kWindowClass;
    RegisterClassW(&description);
    m_window = CreateWindowExW(WS_EX_TOPMOST, kWindowClass, nullptr, WS_POPUP | WS_CLIPCHILDREN,
                               rectangle.left, rectangle.top, rectangle.right - rectangle.left,
                               rectangle.bottom - rectangle.top, nullptr, nullptr, instance, nullptr);
}

SipWindow::~SipWindow() {
    if (m_window) DestroyWindow(m_window);
    UnregisterClassW(kWindowClass, m_instance);
}

RECT SipWindow::Rectangle() const {
    RECT rectangle{};
    GetWindowRect(m_window, &rectangle);
    return rectangle;
}

void SipWindow::MoveTo(const RECT& rectangle) {
    MoveWindow(m_window, rectangle.left, rectangle.top, rectangle.right - rectangle.left,
               rectangle.bottom - rectangle.top, TRUE);
}

bool SipWindow::IsShown() const {
    return (static_cast<DWORD>(GetWindowLongPtrW(m_window, GWL_STYLE)) & WS_VISIBLE) != 0;
}
