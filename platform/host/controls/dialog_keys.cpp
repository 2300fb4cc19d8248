// SPDX-License-Identifier: MIT
// What keys do in a dialog:
//     Tab, Shift+Tab     the next, the previous control with WS_TABSTOP
//     arrows             the next, the previous control of the group (WS_GROUP begins one)
//     Enter              the push button with the focus, else the default button, else IDOK
//     Escape             IDCANCEL
// unless the control with the focus has its own use for them.
#include <algorithm>

#include "controls/button.h"
#include "controls/dialog.h"

namespace host {

namespace {

using Windows = std::vector<Window*>;

bool CanTakeFocus(const Window& window) {
    if (!HasStyle(window, WS_VISIBLE) || HasStyle(window, WS_DISABLED)) return false;
    const auto control = std::dynamic_pointer_cast<Control>(window.object);
    return !control || control->TakesFocus();
}

bool IsTabStop(const Window& window) { return HasStyle(window, WS_TABSTOP) && CanTakeFocus(window); }

// The next accepted window after this one, wrapping around; null if there is none.
template <typename Accept>
HWND FindRound(const Windows& windows, HWND from, TabOrder order, Accept accept) {
    const std::size_t count = windows.size();
    const auto self = std::find_if(windows.begin(), windows.end(),
                                   [from](const Window* window) { return window->handle == from; });
    std::size_t at = static_cast<std::size_t>(self - windows.begin());
    if (at == count) at = order == TabOrder::Forward ? count - 1 : 0;
    for (std::size_t step = 0; step < count; ++step) {
        at = (at + (order == TabOrder::Forward ? 1 : count - 1)) % count;
        if (accept(*windows[at])) return windows[at]->handle;
    }
    return nullptr;
}

// The controls from the last one with WS_GROUP to the one before the next.
Windows GroupOf(const Windows& siblings, HWND member) {
    const auto beginsGroup = [](const Window* window) { return HasStyle(*window, WS_GROUP); };
    const auto self = std::find_if(siblings.begin(), siblings.end(),
                                   [member](const Window* window) { return window->handle == member; });
    if (self == siblings.end()) return {};
    auto first = self;
    while (first != siblings.begin() && !beginsGroup(*first))
        --first;
    return {first, std::find_if(self + 1, siblings.end(), beginsGroup)};
}

HWND FindInGroup(HWND dialog, HWND from, TabOrder order) {
    const Window* window = FindWindow(dialog);
    return window ? FindRound(GroupOf(window->children, from), from, order, CanTakeFocus) : nullptr;
}

}  // namespace

HWND FindTabStop(HWND dialog, HWND from, TabOrder order) {
    const Window* window = FindWindow(dialog);
    return window ? FindRound(window->children, from, order, IsTabStop) : nullptr;
}

bool Dialog::TranslateKey(const MSG& message) {
    const Window* target = FindWindow(message.hwnd);
    if (message.message != WM_KEYDOWN || !target || !IsInside(*target, Handle())) return false;
    const auto key = static_cast<UINT>(message.wParam);
    const auto control = FindSystemWindow<Control>(message.hwnd);
    if (control && control->UseOf(key) == KeyUse::Own) return false;
    HWND next = nullptr;
    switch (key) {
        case VK_TAB:
            next = FindTabStop(Handle(), message.hwnd,
                               GetKeyState(VK_SHIFT) < 0 ? TabOrder::Backward : TabOrder::Forward);
            break;
        case VK_LEFT:
        case VK_UP:
            next = FindInGroup(Handle(), message.hwnd, TabOrder::Backward);
            break;
        case VK_RIGHT:
        case VK_DOWN:
            next = FindInGroup(Handle(), message.hwnd, TabOrder::Forward);
            break;
        case VK_RETURN:
            return PressDefaultButton(), true;
        case VK_ESCAPE:
            return SendCommand(GetDlgItem(Handle(), IDCANCEL), IDCANCEL), true;
        default:
            return false;
    }
    if (next) SetFocus(next);
    return true;
}

void Dialog::PressDefaultButton() {
    const auto focused = FindSystemWindow<Control>(GetFocus());
    if (focused && focused->IsPushButton()) {
        SendCommand(focused->Handle(), GetDlgCtrlID(focused->Handle()));
        return;
    }
    HWND button = GetDlgItem(Handle(), IDOK);
    for (HWND child = GetWindow(Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const auto candidate = FindSystemWindow<Button>(child);
        if (candidate && candidate->IsDefault()) {
            button = child;
            break;
        }
    }
    SendCommand(button, button ? GetDlgCtrlID(button) : IDOK);
}

}  // namespace host
