// SPDX-License-Identifier: MIT
#include "bound_window.h"

#include <host_control.h>

#include "framework/screen.h"

void BoundWindow::Create(const WCHAR* className, DWORD style, const RECT& bounds, HWND parent,
                         DWORD extendedStyle) {
    const host::PlatformScope scope;
    WNDCLASSW description{};
    description.lpfnWndProc = HandleMessage;
    description.lpszClassName = className;
    RegisterClassW(&description);
    m_window = CreateWindowExW(extendedStyle, className, nullptr, style, bounds.left, bounds.top,
                               bounds.right - bounds.left, bounds.bottom - bounds.top, parent, nullptr,
                               nullptr, this);
}

BoundWindow::~BoundWindow() {
    if (!m_window) return;
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    DestroyWindow(m_window);
}

void BoundWindow::MoveTo(const RECT& bounds) {
    MoveWindow(m_window, bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top,
               TRUE);
}

RECT BoundWindow::ClientArea() const {
    RECT area{};
    GetClientRect(m_window, &area);
    return area;
}

bool BoundWindow::IsOne(HWND window) {
    return window && GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(HandleMessage);
}

LRESULT CALLBACK BoundWindow::HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        auto* creation = reinterpret_cast<CREATESTRUCTW*>(lParam);
        auto* object = static_cast<BoundWindow*>(creation->lpCreateParams);
        object->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    }
    auto* object = reinterpret_cast<BoundWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return object ? object->OnMessage(message, wParam, lParam)
                  : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT BoundWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return OnPenDown(GetPenPoint(lParam)), 0;
        case WM_MOUSEMOVE:
            return OnPenMove(GetPenPoint(lParam)), 0;
        case WM_LBUTTONUP:
            return OnPenUp(GetPenPoint(lParam)), 0;
        case WM_PAINT:
            return OnPaint(), 0;
        case WM_ERASEBKGND:
            return 1;
        default:
            return DefWindowProcW(m_window, message, wParam, lParam);
    }
}

void BoundWindow::OnPaint() {
    const CPaintCycle paint(m_window);
    if (!paint.Get()) return;
    const CSelection selection(paint.Get(), m_font.Get());
    SetBkMode(paint.Get(), TRANSPARENT);
    Draw(paint.Get());
}

SIZE BoundWindow::Measure(std::u16string_view text) const {
    const CWindowDC context(m_window);
    const CSelection selection(context.Get(), m_font.Get());
    SIZE size{};
    GetTextExtentPoint32W(context.Get(), text.data(), static_cast<int>(text.size()), &size);
    return size;
}
