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

#include "controls/box.h"
#include "controls/painter.h"
#include "device/faults.h"
#include "device/strings.h"

namespace host {

namespace {

constexpr WORD kTextId = 0xFFFF;
constexpr UINT kTypes = MB_OKCANCEL | MB_ICONHAND;

MessageBoxHandler g_messageBoxHandler;

// The state of the dialog procedure. Sizes are in pixels.
struct Box {
    UINT type = MB_OK;
    std::u16string caption;
    HFONT captionFont = nullptr;
    int captionHeight = 0;
    RECT icon{};  // client coordinates; empty for none
};

// In units of the font's thin line.
constexpr int kMargin = 8;
constexpr int kIconSize = 26;
constexpr int kScreenMargin = 6;  // to the left and the right of the widest box

// Lays a box out for its text.
class BoxLayout {
public:
    BoxLayout(const FontMetrics& metrics, const FontMetrics& captionMetrics, UINT type)
        : m_metrics(metrics), m_caption(captionMetrics), m_unit(metrics.Unit()), m_type(type) {}

    DialogTemplate Make(const std::u16string& text, Box& box) const {
        const int margin = kMargin * m_unit;
        const int icon = HasIcon() ? kIconSize * m_unit + margin : 0;
        const int maximum =
            std::max(GetSystemMetrics(SM_CXSCREEN) - 2 * (kScreenMargin * m_unit + margin), 1);
        const SIZE textSize = Measure(text, maximum - icon);
        const int width = std::clamp(
            std::max({icon + static_cast<int>(textSize.cx), m_caption.Width(box.caption), ButtonsWidth()}), 1,
            maximum);
        const int textTop = box.captionHeight + margin;
        const int bodyHeight = std::max(static_cast<int>(textSize.cy), HasIcon() ? kIconSize * m_unit : 0);
        const int wanted = textTop + bodyHeight + 2 * margin + kButtonHeight * m_unit;
        const int height = std::min(wanted, GetSystemMetrics(SM_CYSCREEN));
        if (HasIcon())
            box.icon = {margin, textTop, margin + kIconSize * m_unit, textTop + kIconSize * m_unit};

        DialogTemplate layout;
        layout.style = WS_POPUP | DS_CENTER;
        layout.place = {0, 0, width + 2 * margin, height};
        layout.title = box.caption;
        const int buttonTop = height - margin - kButtonHeight * m_unit;
        layout.controls.push_back(
            MakeControl(kTextId, kStaticAtom, text, SS_LEFT,
                        {margin + icon, textTop, width - icon, buttonTop - margin - textTop}));
        AddButtons(layout, ButtonCount(),
                   {(layout.place.width - ButtonsWidth()) / 2, buttonTop, kButtonWidth * m_unit,
                    kButtonHeight * m_unit},
                   margin);
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
        while (reach < size && (reach + 1) * (reach + 1) + height * height <= size * size)
            ++reach;
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

void Paint(HWND dialog, const Box& box) {
    ControlPainter painter(dialog, box.captionFont);
    if (!painter) return;
    PaintBox(painter, box.caption, box.captionHeight, kMargin * painter.Metrics().Unit());
    if (!IsEmpty(box.icon)) PaintHandIcon(painter, box.icon);
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
            return Paint(dialog, *box), TRUE;
        case WM_COMMAND:
            return OnCommand(dialog, *box, LOWORD(wParam)), TRUE;
    }
    return FALSE;
}

int ShowBox(HWND owner, const std::u16string& text, const std::u16string& caption, UINT type) {
    const BoxFonts fonts;
    Box box{.type = type,
            .caption = caption,
            .captionFont = fonts.Caption(),
            .captionHeight = fonts.CaptionHeight()};
    const DialogTemplate layout =
        BoxLayout(FontMetrics(fonts.Text()), FontMetrics(fonts.Caption()), type).Make(text, box);
    const INT_PTR result = RunModal({layout, fonts.Text(), owner, nullptr, HandleMessage,
                                     reinterpret_cast<LPARAM>(&box), Maker::Platform});
    return result < 0 ? 0 : static_cast<int>(result);
}

}  // namespace

void SetMessageBoxHandler(MessageBoxHandler handler) { g_messageBoxHandler = std::move(handler); }

void ResetMessageBoxes() { g_messageBoxHandler = nullptr; }

}  // namespace host

using namespace host;

int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
    const std::u16string shownText(View(text));
    const std::u16string shownCaption = caption ? caption : u"Error";
    if (g_messageBoxHandler) g_messageBoxHandler(type, shownCaption, shownText);
    if (CallFails(Call::MessageBox, ERROR_NOT_ENOUGH_MEMORY)) return 0;
    if (owner && !RequireWindow(owner)) return 0;
    if (type & ~kTypes) return Fail(ERROR_INVALID_MSGBOX_STYLE, 0);
    return ShowBox(owner, shownText, shownCaption, type);
}
