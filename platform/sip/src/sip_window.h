// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

// The window that holds the input methods' panels: above all others, empty itself. Owns the window and its
// class.
class SipWindow {
public:
    SipWindow(HINSTANCE instance, const RECT& rectangle);  // screen coordinates; Handle() is null on failure
    ~SipWindow();
    SipWindow(const SipWindow&) = delete;
    SipWindow& operator=(const SipWindow&) = delete;

    HWND Handle() const { return m_window; }
    RECT Rectangle() const;  // screen coordinates
    void MoveTo(const RECT& rectangle);
    void Show() { ShowWindow(m_window, SW_SHOWNOACTIVATE); }
    void Hide() { ShowWindow(m_window, SW_HIDE); }
    bool IsShown() const;  // its own flag

private:
    HINSTANCE m_instance;
    HWND m_window = nullptr;
};
