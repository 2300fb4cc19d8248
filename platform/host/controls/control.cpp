// SPDX-License-Identifier: MIT
#include "controls/control.h"

#include "controls/button.h"
#include "controls/combo_box.h"
#include "controls/dialog.h"
#include "controls/drop_down_list.h"
#include "controls/file_list.h"
#include "controls/painter.h"
#include "controls/static_text.h"

namespace host {

namespace {

constexpr ATOM kComboAtom = 0x0085;
constexpr ATOM kDialogAtom = 0x8002;
constexpr ATOM kListAtom = 0x8003;
constexpr ATOM kFileListAtom = 0x8004;

}  // namespace

void StartControls() {
    RegisterSystemClass(u"Button", kButtonAtom, SystemWindowProcedure<Button>, 0);
    RegisterSystemClass(u"Static", kStaticAtom, SystemWindowProcedure<StaticText>, 0);
    RegisterSystemClass(u"ComboBox", kComboAtom, SystemWindowProcedure<ComboBox>, 0);
    RegisterSystemClass(u"ComboLBox", kListAtom, SystemWindowProcedure<DropDownList>, 0);
    RegisterSystemClass(kFileListClass, kFileListAtom, SystemWindowProcedure<FileList>, CS_DBLCLKS);
    RegisterSystemClass(kDialogClass, kDialogAtom, SystemWindowProcedure<Dialog>, 0);
}

LRESULT Control::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            ControlPainter painter(Handle(), m_font);
            if (painter) Paint(painter);
            return 0;
        }
        case WM_ERASEBKGND:  // painting covers all of the control
            return 1;
        case WM_SETFONT:
            m_font = reinterpret_cast<HFONT>(wParam);
            OnFontChanged();
            Redraw();
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(m_font);
        case WM_SETTEXT:
        case WM_ENABLE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            Redraw();
            break;
    }
    return DefWindowProcW(Handle(), message, wParam, lParam);
}

DWORD Control::Style() const { return static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_STYLE)); }

bool Control::HasStyleBits(DWORD bits) const { return (Style() & bits) == bits; }

std::u16string Control::Text() const {
    const Window* window = FindWindow(Handle());
    return window ? window->text : std::u16string();
}

RECT Control::Client() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    return client;
}

bool Control::ContainsPoint(POINT point) const {
    const RECT client = Client();
    return PtInRect(&client, point);
}

bool Control::Notify(WORD code) const {
    const HWND parent = GetParent(Handle());
    const auto id = static_cast<WORD>(GetDlgCtrlID(Handle()));
    if (parent) SendMessageW(parent, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(Handle()));
    return IsAlive();
}

}  // namespace host
