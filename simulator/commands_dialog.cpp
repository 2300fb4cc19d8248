// SPDX-License-Identifier: MIT
// Commands for modal windows (options, message boxes, the open-file dialog) and button images.
#include <string>
#include <vector>

#include "commands.h"
#include "png_file.h"
#include "session.h"
#include "text.h"

namespace {

// The topmost modal window; null and a note if none is open.
HWND ModalWindow() {
    const HWND modal = host::TopmostModalWindow();
    if (!modal) Note("no dialog is open");
    return modal;
}

HWND ModalControl(const Arguments& arguments) {
    const HWND modal = ModalWindow();
    if (!modal) return nullptr;
    const HWND control = GetDlgItem(modal, arguments.Number(0, 0, 0xFFFF));
    if (!control) Note("the dialog has no control " + arguments.Text(0));
    return control;
}

std::u16string WindowText(HWND window) {
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::u16string ClassName(HWND window) {
    WCHAR name[64];
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 64))};
}

std::u16string ItemText(HWND combo, int index) {
    const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length < 0) return {};
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

int ItemCount(HWND combo) { return static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0)); }

void Options(Session& session, const Arguments&) {
    session.RequireNoCall();
    if (!session.Sip().HasInputMethod()) return Note("There is no input method to call.");
    session.Sip().OpenOptions(session.GetApplication().Handle());
}

// OK and Cancel also reach a dialog without such a button, like the hardware keys of a device.
void Click(Session&, const Arguments& arguments) {
    const HWND modal = ModalWindow();
    if (!modal) return;
    const int id = arguments.Number(0, 0, 0xFFFF);
    if (const HWND control = GetDlgItem(modal, id))
        PostMessageW(control, BM_CLICK, 0, 0);
    else if (id == IDOK || id == IDCANCEL)
        PostMessageW(modal, WM_COMMAND, static_cast<WPARAM>(id), 0);
    else
        Note("the dialog has no control " + arguments.Text(0));
}

void Choose(Session&, const Arguments& arguments) {
    const HWND combo = ModalControl(arguments);
    if (!combo) return;
    const std::u16string wanted = arguments.Wide(1);
    for (int index = 0; index < ItemCount(combo); ++index) {
        if (ItemText(combo, index) != wanted) continue;
        if (!host::ChooseItem(combo, index))
            Note("the control " + arguments.Text(0) + " cannot be chosen from");
        return;
    }
    Note("the control " + arguments.Text(0) + " has no item \"" + arguments.Text(1) + '"');
}

void File(Session&, const Arguments& arguments) {
    if (!host::AnswerOpenFile(arguments.Wide(0))) Note("no open-file dialog takes this name");
}

void CancelFile(Session&, const Arguments&) {
    if (!host::CancelOpenFile()) Note("no open-file dialog is open");
}

std::string Place(HWND window, POINT corner) {
    RECT client{};
    GetClientRect(window, &client);
    return std::to_string(corner.x) + ' ' + std::to_string(corner.y) + ' ' + std::to_string(client.right) +
           ' ' + std::to_string(client.bottom);
}

// "-" for a control that is no check box.
std::string CheckText(HWND control) {
    constexpr LONG_PTR typeBits = 0xF;
    const bool isCheckBox = ClassName(control) == u"Button" &&
                            (GetWindowLongPtrW(control, GWL_STYLE) & typeBits) == BS_AUTOCHECKBOX;
    return isCheckBox ? std::to_string(SendMessageW(control, BM_GETCHECK, 0, 0)) : "-";
}

std::string ItemsText(HWND combo) {
    std::u16string items;
    for (int index = 0; index < ItemCount(combo); ++index) {
        if (index > 0) items += u'|';
        items += ItemText(combo, index);
    }
    const auto selected = static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0));
    return " items=" + Quoted(items) + " selected=" + Quoted(ItemText(combo, selected)) +
           " index=" + std::to_string(selected);
}

std::string Describe(HWND modal, HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    POINT corner{place.left, place.top};
    ScreenToClient(modal, &corner);
    std::string line =
        "Control " + std::to_string(GetDlgCtrlID(control)) + ' ' + Escaped(ClassName(control)) + ' ' +
        Place(control, corner) + ' ' + Quoted(WindowText(control)) +
        (IsWindowEnabled(control) ? " enabled=1" : " enabled=0") + " checked=" + CheckText(control);
    if (ClassName(control) == u"ComboBox") line += ItemsText(control);
    return line;
}

void Dialog(Session& session, const Arguments&) {
    const HWND modal = ModalWindow();
    if (!modal) return;
    POINT corner{};
    ClientToScreen(modal, &corner);
    session.GetTrace().Write("Dialog " + Place(modal, corner) + ' ' + Quoted(WindowText(modal)));
    for (HWND control = GetWindow(modal, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT))
        session.GetTrace().Write(Describe(modal, control));
}

// Writes one of the pictures that GetInfo names now.
template <HANDLE IMINFO::*list, int IMINFO::*index>
void WriteImage(Session& session, const Arguments& arguments) {
    IMINFO info;
    if (FAILED(session.Sip().ReadInfo(info))) return;
    const host::Picture picture = host::PictureOf(info.*list, info.*index);
    if (picture.pixels.empty()) return Note("the input method has no such image");
    WritePng(arguments.Text(0), picture);
}

constexpr Command kCommands[] = {
    {"options", "", 0, 0, Options},
    {"click", "ID", 1, 1, Click},
    {"choose", "ID TEXT", 2, 2, Choose},
    {"file cancel", "", 0, 0, CancelFile},
    {"file", "PATH", 1, 1, File},
    {"dialog", "", 0, 0, Dialog},
    {"image narrow", "FILE", 1, 1, WriteImage<&IMINFO::hImageNarrow, &IMINFO::iNarrow>},
    {"image wide", "FILE", 1, 1, WriteImage<&IMINFO::hImageWide, &IMINFO::iWide>},
};

}  // namespace

std::span<const Command> DialogCommands() { return kCommands; }
