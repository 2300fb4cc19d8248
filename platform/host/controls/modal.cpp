// SPDX-License-Identifier: MIT
// Creates dialogs from templates and runs them.
#include <algorithm>

#include "controls/dialog.h"
#include "controls/painter.h"
#include "device/faults.h"
#include "modules/modules.h"

namespace host {

namespace {

std::vector<HWND> g_openDialogs;  // the last one opened is at the end

// Lists a dialog among the open ones while it lives.
class Opened {
public:
    explicit Opened(HWND dialog) : m_dialog(dialog) { g_openDialogs.push_back(dialog); }
    ~Opened() { std::erase(g_openDialogs, m_dialog); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

private:
    HWND m_dialog;
};

// Average width and height of the characters, in pixels.
SIZE BaseUnits(HFONT font) {
    constexpr std::u16string_view kLetters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr int kPairs = 26;
    const FontMetrics metrics(font);
    return {(metrics.Width(kLetters) / kPairs + 1) / 2, metrics.LineHeight()};
}

// The dialog's position is relative to its owner.
RECT PlaceOnScreen(const DialogTemplate& layout, HWND owner) {
    POINT corner{layout.place.x, layout.place.y};
    if (layout.style & DS_CENTER) {
        const RECT area = FreeScreenArea();
        corner.x = area.left + (area.right - area.left - layout.place.width) / 2;
        corner.y = area.top + (area.bottom - area.top - layout.place.height) / 2;
        corner = {std::max<LONG>(corner.x, 0), std::max<LONG>(corner.y, 0)};
    } else if (owner) {
        ClientToScreen(owner, &corner);
    }
    return {corner.x, corner.y, corner.x + layout.place.width, corner.y + layout.place.height};
}

bool CreateControl(const ControlTemplate& control, HWND dialog, const ModalRequest& request) {
    const Placement& place = control.place;
    const HWND window = CreateWindowExW(
        control.extendedStyle, control.ClassArgument(), control.text.c_str(),
        (control.style & ~WS_POPUP) | WS_CHILD, place.x, place.y, place.width, place.height, dialog,
        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(control.id)), request.instance, nullptr);
    if (window) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(request.font), FALSE);
    return window != nullptr;
}

// The dialog is hidden, and its procedure has got no message but WM_SETFONT. Null if any part of it cannot be
// created.
std::shared_ptr<Dialog> MakeDialog(const ModalRequest& request, const std::shared_ptr<ModalState>& state) {
    std::optional<PlatformScope> scope;
    if (request.maker == Maker::Platform) scope.emplace();
    const DialogTemplate& layout = request.layout;
    const RECT place = PlaceOnScreen(layout, request.owner);
    const DWORD style = (layout.style & ~(WS_CHILD | WS_VISIBLE | WS_DISABLED)) | WS_POPUP;
    const HWND handle = CreateWindowExW(layout.extendedStyle, kDialogClass, layout.title.c_str(), style,
                                        place.left, place.top, layout.place.width, layout.place.height,
                                        request.owner, nullptr, nullptr, nullptr);
    const std::shared_ptr<Dialog> dialog = FindSystemWindow<Dialog>(handle);
    if (!dialog) return nullptr;
    dialog->Start(request.procedure, state);
    SendMessageW(handle, WM_SETFONT, reinterpret_cast<WPARAM>(request.font), FALSE);
    const bool complete =
        std::all_of(layout.controls.begin(), layout.controls.end(),
                    [&](const ControlTemplate& control) { return CreateControl(control, handle, request); });
    if (complete && dialog->IsAlive()) return dialog;
    if (dialog->IsAlive()) DestroyWindow(handle);
    return nullptr;
}

std::optional<DialogTemplate> LoadTemplate(HINSTANCE instance, LPCWSTR name) {
    const auto bytes = FindResourceBytes(instance, name, RT_DIALOG);
    return bytes ? ReadDialogTemplate(*bytes) : std::nullopt;
}

}  // namespace

INT_PTR RunModal(const ModalRequest& request) {
    const auto state = std::make_shared<ModalState>(request.owner);
    const std::shared_ptr<Dialog> dialog = MakeDialog(request, state);
    if (!dialog) return -1;
    const Opened opened(dialog->Handle());
    dialog->Init(request.parameter);
    dialog->Run();
    state->Leave();
    if (dialog->IsAlive()) DestroyWindow(dialog->Handle());
    return dialog->Result();
}

HWND TopmostModalWindow() {
    for (auto dialog = g_openDialogs.rbegin(); dialog != g_openDialogs.rend(); ++dialog) {
        const auto open = FindSystemWindow<Dialog>(*dialog);
        if (open && !open->HasEnded()) return *dialog;
    }
    return nullptr;
}

}  // namespace host

using namespace host;

HWND WINAPI GetActiveWindow() {
    const Window* window = FindWindow(GetFocus());
    return window ? TopLevelOf(*window).handle : TopmostModalWindow();
}

// If its font cannot be created, the dialog uses the system font.
INT_PTR WINAPI DialogBoxParamW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC procedure,
                               LPARAM parameter) {
    if (owner && !RequireWindow(owner)) return 0;
    if (CallFails(Call::CreateDialog, ERROR_NOT_ENOUGH_MEMORY)) return -1;
    std::optional<DialogTemplate> layout = LoadTemplate(instance, name);
    if (!layout) return -1;
    std::optional<PointFont> font;
    if (layout->pointSize > 0) font.emplace(layout->pointSize, layout->faceName, FW_NORMAL);
    const HFONT handle = font ? font->Get() : nullptr;
    layout->Scale(BaseUnits(handle));
    return RunModal({*layout, handle, owner, instance, procedure, parameter});
}
