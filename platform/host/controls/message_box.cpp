// SPDX-License-Identifier: MIT
// Message boxes: a caption bar, an icon, the wrapped text and one or two buttons.
//
//     +--------------------------+
//     | caption                  |
//     |                          |
//     |  (X)  text               |
//     |       text               |
//     |      [  OK  ] [Cancel]   |
//     +--------------------------+
#include <algorithm>
#include <string>
#include <utility>

#include "controls/dialog.h"
#include "controls/painter.h"
#include "device/faults.h"

namespace host {

namespace {

constexpr int kPoints = 8;
constexpr WORD kTextId = 0xFFFF;
constexpr UINT kTypes = MB_OKCANCEL | MB_ICONHAND;
constexpr ATOM kButton = 0x0080;
constexpr ATOM kStatic = 0x0082;

MessageBoxHandler g_messageBoxHandler;

// The state of the dialog procedure. Sizes are in pixels.
struct Box {
    UINT type = MB_OK;
    HFONT captionFont = nullptr;
    LONG captionHeight = 0;
    RECT icon{};  // client coordinates; empty for none
};

// In units of the font's thin line.
constexpr int kMargin = 8;
constexpr int kIconSize = 26;
constexpr int kButtonWidth = 62;
constexpr int kButtonHeight = 24;
constexpr int kCaptionPadding = 3;
constexpr int kScreenMargin = 6;  // to the left and the right of the widest box

ControlTemplate MakeButton(WORD id, const WCHAR* text, DWORD type, const Placement& place) {
    ControlTemplate button;
    button.style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | type;
    button.place = place;
    button.id = id;
    button.classAtom = kButton;
    button.text = text;
    return button;
}

// Lays a box out for its text.
class BoxLayout {
public:
    BoxLayout(const FontMetrics& metrics, const FontMetrics& captionMetrics, UINT type)
        : m_metrics(metrics), m_caption(captionMetrics), m_unit(metrics.Unit()), m_type(type) {}

    DialogTemplate Make(const std::u16string& caption, const std::u16string& text, Box& box) const {
        const int margin = kMargin * m_unit;
        const int icon = HasIcon() ? kIconSize * m_unit + margin : 0;
        const int maximum =
            std::max(GetSystemMetrics(SM_CXSCREEN) - 2 * (kScreenMargin * m_unit + margin), 1);
        const SIZE textSize = Measure(text, maximum - icon);
        const int width = std::clamp(
            std::max({icon + static_cast<int>(textSize.cx), m_caption.Width(caption), ButtonsWidth()}), 1,
            maximum);
        box.captionHeight = m_caption.LineHeight() + 2 * kCaptionPadding * m_unit;
        const int textTop = box.captionHeight + margin;
        const int bodyHeight = std::max(static_cast<int>(textSize.cy), HasIcon() ? kIconSize * m_unit : 0);
        const int wanted = textTop + bodyHeight + 2 * margin + kButtonHeight * m_unit;
        const int height = std::min(wanted, GetSystemMetrics(SM_CYSCREEN));
        if (HasIcon())
            box.icon = {margin, textTop, margin + kIconSize * m_unit, textTop + kIconSize * m_unit};

        DialogTemplate layout;
        layout.style = WS_POPUP | DS_CENTER;
        layout.place = {0, 0, width + 2 * margin, height};
        layout.title = caption;
        const int buttonTop = height - margin - kButtonHeight * m_unit;
        AddText(layout, text, {margin + icon, textTop, width - icon, buttonTop - margin - textTop});
        AddButtons(layout, buttonTop);
        return layout;
    }

private:
    bool HasIcon() const { return (m_type & MB_ICONHAND) != 0; }
    int ButtonCount() const { return (m_type & MB_OKCANCEL) ? 2 : 1; }
    int ButtonsWidth() const {
        return ButtonCount() * kButtonWidth * m_unit + (ButtonCount() - 1) * kMargin * m_unit;
    }

    SIZE Measure(const std::u16string& text, int width) const {
        SIZE size{};
        for (const std::u16string_view line : m_metrics.Wrap(text, width)) {
            size.cx = std::max(size.cx, static_cast<LONG>(m_metrics.Width(line)));
            size.cy += m_metrics.LineHeight();
        }
        return size;
    }

    static void AddText(DialogTemplate& layout, const std::u16string& text, const Placement& place) {
        ControlTemplate control;
        control.style = WS_CHILD | WS_VISIBLE | SS_LEFT;
        control.place = place;
        control.id = kTextId;
        control.classAtom = kStatic;
        control.text = text;
        layout.controls.push_back(std::move(control));
    }

    void AddButtons(DialogTemplate& layout, int top) const {
        Placement place{(layout.place.width - ButtonsWidth()) / 2, top, kButtonWidth * m_unit,
                        kButtonHeight * m_unit};
        layout.controls.push_back(MakeButton(IDOK, u"OK", BS_DEFPUSHBUTTON | WS_GROUP, place));
        place.x += place.width + kMargin * m_unit;
        if (ButtonCount() == 2) {
            layout.controls.push_back(MakeButton(IDCANCEL, u"Cancel", BS_PUSHBUTTON, place));
        }
    }

    const FontMetrics& m_metrics;
    const FontMetrics& m_caption;
    const int m_unit;
    const UINT m_type;
};

// A red disc with a white cross.
void PaintHandIcon(ControlPainter& painter, const RECT& place) {
    const PlatformScope scope;
    const HBRUSH red = CreateSolidBrush(RGB(0xC8, 0x14, 0x14));
    const LONG size = place.bottom - place.top;
    for (LONG row = 0; row < size; ++row) {
        // Doubled, as the middle of an even width lies between two pixels.
        const LONG height = 2 * row + 1 - size;
        LONG reach = 0;
        while (reach < size && (reach + 1) * (reach + 1) + height * height <= size * size) {
            ++reach;
        }
        const LONG inset = (size - reach) / 2;
        painter.Fill({place.left + inset, place.top + row, place.right - inset, place.top + row + 1}, red);
    }
    const LONG arm = size * 3 / 10;
    const LONG thickness = std::max<LONG>(size / 7, 1);
    for (LONG row = arm; row < size - arm; ++row) {
        const LONG top = place.top + row;
        for (const LONG x : {row, size - 1 - row}) {
            const LONG left = place.left + x - thickness / 2;
            painter.Fill({left, top, left + thickness, top + 1}, COLOR_WINDOW);
        }
    }
    if (red) DeleteObject(red);
}

void PaintBox(HWND dialog, const Box& box) {
    ControlPainter painter(dialog, box.captionFont);
    if (!painter) return;
    const RECT& area = painter.Client();
    const int unit = painter.Metrics().Unit();
    const RECT caption{area.left, area.top, area.right, box.captionHeight};
    painter.Fill(caption, COLOR_ACTIVECAPTION);
    WCHAR text[256];
    GetWindowTextW(dialog, text, static_cast<int>(std::size(text)));
    painter.Line(
        text,
        {caption.left + kMargin * unit, caption.top, caption.right - kMargin * unit / 2, caption.bottom},
        DT_LEFT | DT_VCENTER, COLOR_CAPTIONTEXT);
    if (!IsEmpty(box.icon)) PaintHandIcon(painter, box.icon);
    painter.Frame(area, COLOR_WINDOWFRAME);
}

// Escape means OK if there is no Cancel.
void OnCommand(HWND dialog, const Box& box, WORD id) {
    if (id == IDOK || id == IDCANCEL) EndDialog(dialog, (box.type & MB_OKCANCEL) ? id : IDOK);
}

INT_PTR CALLBACK HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        return TRUE;
    }
    const auto* box = reinterpret_cast<const Box*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!box) return FALSE;
    switch (message) {
        case WM_PAINT:
            return PaintBox(dialog, *box), TRUE;
        case WM_COMMAND:
            return OnCommand(dialog, *box, LOWORD(wParam)), TRUE;
    }
    return FALSE;
}

int ShowBox(HWND owner, const std::u16string& text, const std::u16string& caption, UINT type) {
    const PointFont font(kPoints, u"System", FW_NORMAL);
    const PointFont captionFont(kPoints, u"System", FW_BOLD);
    Box box{.type = type, .captionFont = captionFont.Get()};
    const DialogTemplate layout =
        BoxLayout(FontMetrics(font.Get()), FontMetrics(captionFont.Get()), type).Make(caption, text, box);
    const INT_PTR result = RunModal(
        {layout, font.Get(), owner, nullptr, HandleMessage, reinterpret_cast<LPARAM>(&box), Maker::Platform});
    return result < 0 ? 0 : static_cast<int>(result);
}

}  // namespace

void SetMessageBoxHandler(MessageBoxHandler handler) { g_messageBoxHandler = std::move(handler); }

void ResetMessageBoxes() { g_messageBoxHandler = nullptr; }

}  // namespace host

using namespace host;

int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
    const std::u16string shownText = text ? text : u"";
    const std::u16string shownCaption = caption ? caption : u"Error";
    if (g_messageBoxHandler) g_messageBoxHandler(type, shownCaption, shownText);
    if (CallFails(Call::MessageBox, ERROR_NOT_ENOUGH_MEMORY)) return 0;
    if (owner && !RequireWindow(owner)) return 0;
    if (type & ~kTypes) return SetLastError(ERROR_INVALID_MSGBOX_STYLE), 0;
    return ShowBox(owner, shownText, shownCaption, type);
}
