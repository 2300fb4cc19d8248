// SPDX-License-Identifier: MIT
// Dialogs in the style of the handheld's shell: they fill the screen (the panel is above them) and have a
// Done button in the title area. Dialogs draw the title themselves, and a line below it at a thirteenth of
// the screen's longer side; the button stays above that line.
#include <aygshell.h>
#include <shell_dialogs.h>
#include <sip_layout.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<HWND> g_fullScreenDialogs;

// In the dialog's client coordinates.
RECT DoneButtonPlace(HWND dialog) {
    RECT client{};
    GetClientRect(dialog, &client);
    const SIZE screen = ScreenSize();
    const LONG titleHeight = std::max(screen.cx, screen.cy) / 13;
    const LONG margin = std::max<LONG>(titleHeight / 10, 1);
    const LONG width = titleHeight * 3 / 2;
    const LONG right = client.right - margin;
    return {right - width, margin, right, titleHeight - margin};
}

void Move(HWND window, const RECT& place) {
    MoveWindow(window, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
}

bool AddDoneButton(HWND dialog) {
    const RECT place = DoneButtonPlace(dialog);
    const HWND button =
        CreateWindowExW(0, TEXT("Button"), TEXT("OK"), WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON,
                        place.left, place.top, place.right - place.left, place.bottom - place.top, dialog,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDOK)), nullptr, nullptr);
    if (!button) return false;
    const LRESULT font = SendMessageW(dialog, WM_GETFONT, 0, 0);
    SendMessageW(button, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
    return true;
}

// Sends WM_SIZE in any case, as the dialog lays out its controls then.
void FillScreen(HWND dialog) {
    const SIZE screen = ScreenSize();
    RECT client{};
    GetClientRect(dialog, &client);
    const bool fits = client.right == screen.cx && client.bottom == screen.cy;
    const HWND done = GetDlgItem(dialog, IDOK);
    Move(dialog, {0, 0, screen.cx, screen.cy});
    if (fits) SendMessageW(dialog, WM_SIZE, 0, MAKELPARAM(screen.cx, screen.cy));
    if (done && IsWindow(done)) Move(done, DoneButtonPlace(dialog));
}

void ForgetClosedDialogs() {
    const auto gone = std::remove_if(g_fullScreenDialogs.begin(), g_fullScreenDialogs.end(),
                                     [](HWND dialog) { return !IsWindow(dialog); });
    g_fullScreenDialogs.erase(gone, g_fullScreenDialogs.end());
}

}  // namespace

// The size comes last, so that a dialog whose button failed gets it, too.
BOOL WINAPI SHInitDialog(SHINITDLGINFO* info) {
    if (!info || !(info->dwMask & SHIDIM_FLAGS)) return SetLastError(ERROR_INVALID_PARAMETER), FALSE;
    if (!IsWindow(info->hDlg)) return SetLastError(ERROR_INVALID_WINDOW_HANDLE), FALSE;
    const bool complete = !(info->dwFlags & SHIDIF_DONEBUTTON) || AddDoneButton(info->hDlg);
    if (info->dwFlags & SHIDIF_SIZEDLGFULLSCREEN) {
        ForgetClosedDialogs();
        g_fullScreenDialogs.push_back(info->hDlg);
        FillScreen(info->hDlg);
    }
    return complete;
}

// A dialog's handler may open or close dialogs.
void FitFullScreenDialogs() {
    ForgetClosedDialogs();
    for (const HWND dialog : std::vector<HWND>(g_fullScreenDialogs))
        if (IsWindow(dialog)) FillScreen(dialog);
}
