// SPDX-License-Identifier: MIT
// A window's text and its class's name.
#include <algorithm>
#include <string_view>

#include "device/faults.h"
#include "windows/window.h"

namespace host {

namespace {

// Copies as much as fits and a null; returns the length without the null.
int CopyText(std::u16string_view text, LPWSTR buffer, std::size_t characters) {
    const std::size_t length = std::min(text.size(), characters - 1);
    text.copy(buffer, length);
    buffer[length] = u'\0';
    return static_cast<int>(length);
}

bool CheckBuffer(LPCWSTR buffer, int characters) {
    if (buffer && characters > 0) return true;
    return Fail(ERROR_INVALID_PARAMETER, false);
}

}  // namespace

LRESULT AnswerTextMessage(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETTEXT: {
            const auto text = reinterpret_cast<LPCWSTR>(lParam);
            window.text = text ? std::u16string(text) : std::u16string();
            return TRUE;
        }
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(window.text.size());
        case WM_GETTEXT: {
            const auto buffer = reinterpret_cast<LPWSTR>(lParam);
            return buffer && wParam > 0 ? CopyText(window.text, buffer, wParam) : 0;
        }
    }
    return 0;
}

}  // namespace host

using namespace host;

BOOL WINAPI SetWindowTextW(HWND handle, LPCWSTR text) {
    if (!RequireWindow(handle)) return FALSE;
    return SendMessageW(handle, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) > 0;
}

int WINAPI GetWindowTextW(HWND handle, LPWSTR text, int characters) {
    if (!CheckBuffer(text, characters)) return 0;
    text[0] = u'\0';
    return static_cast<int>(
        SendMessageW(handle, WM_GETTEXT, static_cast<WPARAM>(characters), reinterpret_cast<LPARAM>(text)));
}

int WINAPI GetWindowTextLengthW(HWND handle) {
    return static_cast<int>(SendMessageW(handle, WM_GETTEXTLENGTH, 0, 0));
}

int WINAPI GetClassNameW(HWND handle, LPWSTR name, int characters) {
    const Window* window = RequireWindow(handle);
    if (!window || !CheckBuffer(name, characters)) return 0;
    return CopyText(window->windowClass->name, name, static_cast<std::size_t>(characters));
}
