// SPDX-License-Identifier: MIT
// The dialog's window and its state.
#include "controls/dialog.h"

#include <utility>

#include "controls/combo_box.h"
#include "device/faults.h"
#include "graphics/graphics.h"
#include "windows/queue.h"

namespace host {

namespace {

constexpr int kPointsPerInch = 72;
constexpr LONG kDotsPerInch = 96;

bool CanTakeFocus(HWND window) {
    return IsWindow(window) && IsWindowVisible(window) && IsWindowEnabled(window);
}

}  // namespace

PointFont::PointFont(int points, std::u16string_view faceName, LONG weight) {
    const PlatformScope scope;
    LOGFONTW font{};
    // Rounded before it is scaled, so that layouts keep their proportions.
    const LONG usualHeight = (points * kDotsPerInch + kPointsPerInch / 2) / kPointsPerInch;
    font.lfHeight = -ScaleToScreen(usualHeight);
    font.lfWeight = weight;
    faceName.copy(font.lfFaceName, LF_FACESIZE - 1);
    m_font = CreateFontIndirectW(&font);
}

PointFont::~PointFont() {
    if (m_font) DeleteObject(m_font);
}

ModalState::ModalState(HWND owner) : m_previousFocus(GetFocus()) {
    const Window* window = FindWindow(owner);
    if (!window) return;
    m_owner = TopLevelOf(*window).handle;
    m_ownerDisabled = !EnableWindow(m_owner, FALSE);
}

void ModalState::Leave() {
    if (std::exchange(m_ownerDisabled, false) && IsWindow(m_owner)) EnableWindow(m_owner, TRUE);
    RestoreFocus();
}

void ModalState::RestoreFocus() const {
    const HWND focus = GetFocus();
    const Window* focused = FindWindow(focus);
    if (focused && !IsInside(*focused, m_dialog)) return;
    if (CanTakeFocus(m_previousFocus))
        SetFocus(m_previousFocus);
    else
        SetFocus(CanTakeFocus(m_owner) ? m_owner : nullptr);
}

void Dialog::Start(DLGPROC procedure, std::shared_ptr<ModalState> state) {
    m_procedure = reinterpret_cast<LONG_PTR>(procedure);
    m_state = std::move(state);
    m_state->SetDialog(Handle());
}

LONG_PTR* Dialog::FindLong(int index) {
    switch (index) {
        case DWLP_MSGRESULT:
            return &m_messageResult;
        case DWLP_DLGPROC:
            return &m_procedure;
        case DWLP_USER:
            return &m_userLong;
    }
    return nullptr;
}

// The result of a message that the procedure handled is in DWLP_MSGRESULT; for WM_INITDIALOG it is what the
// procedure returned.
LRESULT Dialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    m_messageResult = 0;
    if (message == WM_DESTROY) Wake();
    const auto procedure = reinterpret_cast<DLGPROC>(m_procedure);
    const INT_PTR handled = procedure ? procedure(Handle(), message, wParam, lParam) : FALSE;
    if (message == WM_INITDIALOG) return handled;
    if (handled) return m_messageResult;
    return IsAlive() ? DoDefault(message, wParam, lParam) : 0;
}

LRESULT Dialog::DoDefault(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETFONT:
            m_font = reinterpret_cast<HFONT>(wParam);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(m_font);
    }
    return DefWindowProcW(Handle(), message, wParam, lParam);
}

// Chooses the control for the focus first: the procedure may change the order of the controls.
void Dialog::Init(LPARAM parameter) {
    const HWND first = FindTabStop(Handle(), nullptr, TabOrder::Forward);
    const bool setFocus =
        SendMessageW(Handle(), WM_INITDIALOG, reinterpret_cast<WPARAM>(first), parameter) != 0;
    if (HasEnded()) return;
    ShowWindow(Handle(), SW_SHOW);
    if (HasEnded()) return;
    const Window* focused = FindWindow(GetFocus());
    if (setFocus && CanTakeFocus(first)) {
        SetFocus(first);
    } else if (setFocus || !focused || !IsInside(*focused, Handle())) {
        const HWND other = setFocus ? FindTabStop(Handle(), nullptr, TabOrder::Forward) : nullptr;
        SetFocus(other ? other : Handle());
    }
}

void Dialog::Run() {
    MSG message;
    while (!HasEnded()) {
        if (GetMessageW(&message, nullptr, 0, 0) == FALSE) {
            PostQuitMessage(static_cast<int>(message.wParam));
            End(IDCANCEL);
            return;
        }
        CloseLists(message);
        if (!HasEnded() && TranslateKey(message)) continue;
        DispatchMessageW(&message);
    }
}

// Ends the wait of the message loop. Enqueue is not subject to the faults that tests inject.
void Dialog::Wake() { Enqueue(nullptr, WM_NULL, 0, 0, Origin::Program); }

void Dialog::End(INT_PTR result) {
    m_result = result;
    if (std::exchange(m_ended, true)) return;
    if (m_state) m_state->Leave();
    if (IsAlive()) ShowWindow(Handle(), SW_HIDE);
    Wake();
}

// A pen-down anywhere in the dialog closes an open list; one on the panel does not, so that its keys can move
// in the list.
void Dialog::CloseLists(const MSG& message) {
    if (message.message != WM_LBUTTONDOWN && message.message != WM_LBUTTONDBLCLK) return;
    const Window* target = FindWindow(message.hwnd);
    if (!target || !IsInside(*target, Handle())) return;
    HWND child = GetWindow(Handle(), GW_CHILD);
    while (child) {
        const HWND next = GetWindow(child, GW_HWNDNEXT);
        if (child != message.hwnd && FindSystemWindow<ComboBox>(child))
            SendMessageW(child, CB_SHOWDROPDOWN, FALSE, 0);
        child = IsWindow(next) ? next : nullptr;
    }
}

LRESULT Dialog::SendCommand(HWND control, int id) {
    if (control && !IsWindowEnabled(control)) return 0;
    return SendMessageW(Handle(), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED),
                        reinterpret_cast<LPARAM>(control));
}

}  // namespace host

using namespace host;

BOOL WINAPI EndDialog(HWND handle, INT_PTR result) {
    if (!RequireWindow(handle)) return FALSE;
    const std::shared_ptr<Dialog> dialog = FindSystemWindow<Dialog>(handle);
    if (!dialog) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    dialog->End(result);
    return TRUE;
}

HWND WINAPI GetDlgItem(HWND handle, int id) {
    const Window* window = RequireWindow(handle);
    if (!window) return nullptr;
    for (const Window* child : window->children)
        if (static_cast<int>(child->id) == id) return child->handle;
    return Fail(ERROR_CONTROL_ID_NOT_FOUND, nullptr);
}

int WINAPI GetDlgCtrlID(HWND handle) {
    const Window* window = RequireWindow(handle);
    return window ? static_cast<int>(window->id) : 0;
}
