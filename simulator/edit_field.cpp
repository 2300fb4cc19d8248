// SPDX-License-Identifier: MIT
#include "edit_field.h"

#include <unicode.h>

#include <algorithm>
#include <span>

namespace {

bool IsHeld(int virtualKey) { return GetKeyState(virtualKey) < 0; }
Selecting FromShift() { return IsHeld(VK_SHIFT) ? Selecting::Yes : Selecting::No; }

using Action = void (*)(EditText&, Selecting);
struct KeyAction {
    UINT virtualKey;
    Action action;
};

constexpr KeyAction kPlainKeys[] = {
    {VK_BACK, [](EditText& text, Selecting) { text.DeleteBackward(); }},
    {VK_DELETE, [](EditText& text, Selecting) { text.DeleteForward(); }},
    {VK_RETURN, [](EditText& text, Selecting) { text.Insert(u"\n"); }},
    {VK_SPACE, [](EditText& text, Selecting) { text.Insert(u" "); }},
    {VK_LEFT, [](EditText& text, Selecting selecting) { text.MoveLeft(selecting); }},
    {VK_RIGHT, [](EditText& text, Selecting selecting) { text.MoveRight(selecting); }},
};

// With Control, keys edit and move, and insert nothing.
constexpr KeyAction kControlKeys[] = {
    {'A', [](EditText& text, Selecting) { text.SelectAll(); }},
    {'C', [](EditText& text, Selecting) { text.Copy(); }},
    {'X', [](EditText& text, Selecting) { text.Cut(); }},
    {'V', [](EditText& text, Selecting) { text.Paste(); }},
    {'Z', [](EditText& text, Selecting) { text.Undo(); }},
    {VK_BACK, [](EditText& text, Selecting) { text.DeleteBackward(); }},
    {VK_DELETE, [](EditText& text, Selecting) { text.DeleteForward(); }},
    {VK_LEFT, [](EditText& text, Selecting selecting) { text.MoveWordLeft(selecting); }},
    {VK_RIGHT, [](EditText& text, Selecting selecting) { text.MoveWordRight(selecting); }},
};

// Null for a key without an action.
Action FindAction(std::span<const KeyAction> keys, UINT virtualKey) {
    const auto found = std::find_if(keys.begin(), keys.end(), [virtualKey](const KeyAction& key) {
        return key.virtualKey == virtualKey;
    });
    return found == keys.end() ? nullptr : found->action;
}

// By EditCommand.
struct Edit {
    void (EditText::*perform)();
    bool (EditText::*isPossible)() const;
};
constexpr Edit kEdits[] = {
    {&EditText::Clear, &EditText::HasText},    {&EditText::Undo, &EditText::CanUndo},
    {&EditText::Cut, &EditText::HasSelection}, {&EditText::Copy, &EditText::HasSelection},
    {&EditText::Paste, &EditText::CanPaste},   {&EditText::SelectAll, &EditText::HasText},
};

const Edit& FindEdit(EditCommand command) { return kEdits[static_cast<std::size_t>(command)]; }

}  // namespace

EditField::EditField(HWND parent, const RECT& bounds) {
    Create(TEXT("SimulatorEdit"), WS_CHILD | WS_VISIBLE, bounds, parent);
    SetFontHeight(12);
}

void EditField::SetText(std::u16string text) {
    m_text.Begin(std::move(text));
    OnChanged();
}

void EditField::SetFontHeight(int height) {
    SetFont(height, FW_NORMAL);
    m_margin = height / 3;
    m_caretWidth = std::max(height / 12, 1);
    m_widths.clear();
    m_lineHeight = std::max<int>(Measure(u"x").cy, 1);
    OnChanged();
}

LRESULT EditField::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_KEYDOWN:
            return OnKey(static_cast<UINT>(wParam)), 0;
        case WM_CHAR:
            return OnCharacter(static_cast<WCHAR>(wParam)), 0;
        case WM_MOUSEMOVE:
            m_penDown = m_penDown && (wParam & MK_LBUTTON) != 0;
            break;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_SIZE:
            return OnChanged(), 0;
        default:
            break;
    }
    return BoundWindow::OnMessage(message, wParam, lParam);
}

void EditField::OnKey(UINT virtualKey) {
    if (virtualKey == VK_UP) return MoveLine(-1, FromShift());
    if (virtualKey == VK_DOWN) return MoveLine(1, FromShift());
    const Action action =
        IsHeld(VK_CONTROL) ? FindAction(kControlKeys, virtualKey) : FindAction(kPlainKeys, virtualKey);
    if (!action) return;
    action(m_text, FromShift());
    OnChanged();
}

// Control characters act like their keys; those without a key, and Escape, do nothing.
void EditField::OnCharacter(WCHAR character) {
    if (IsHeld(VK_CONTROL)) return;
    if (character == u'\b') {
        m_text.DeleteBackward();
    } else if (character == u'\r' || character == u'\n') {
        m_text.Insert(u"\n");
    } else if (character == u'\t') {
        if (IsHeld(VK_SHIFT)) return;
        m_text.Insert(u"\t");
    } else if (character >= u' ' && character != 0x7F) {
        m_text.Insert({&character, 1});
    }
    OnChanged();
}

void EditField::OnPenDown(POINT point) {
    m_penDown = true;
    SetFocus(Handle());
    SetCapture(Handle());
    SetCaret(point, FromShift());
}

void EditField::OnPenMove(POINT point) {
    if (m_penDown) SetCaret(point, Selecting::Yes);
}

void EditField::OnPenUp(POINT) {
    m_penDown = false;
    if (GetCapture() == Handle()) ReleaseCapture();
}

void EditField::SetCaret(POINT point, Selecting selecting) {
    const EditLayout layout = LayOut();
    const int row = (static_cast<int>(point.y) - m_margin) / m_lineHeight + static_cast<int>(m_topLine);
    const int last = static_cast<int>(layout.Lines().size()) - 1;
    const auto line = static_cast<std::size_t>(std::clamp(row, 0, last));
    m_text.MoveTo(layout.PositionAt(line, static_cast<int>(point.x) - m_margin), selecting);
    OnChanged();
}

void EditField::Perform(EditCommand command) {
    if (!CanPerform(command)) return;
    (m_text.*FindEdit(command).perform)();
    OnChanged();
}

bool EditField::CanPerform(EditCommand command) const { return (m_text.*FindEdit(command).isPossible)(); }

// If there is no such line, the caret stays.
void EditField::MoveLine(int lines, Selecting selecting) {
    const EditLayout layout = LayOut();
    if (m_wantedX < 0) m_wantedX = layout.XOf(m_text.Caret());
    const int wantedX = m_wantedX;
    const int line = static_cast<int>(layout.LineOf(m_text.Caret())) + lines;
    const bool exists = line >= 0 && line < static_cast<int>(layout.Lines().size());
    const std::size_t position =
        exists ? layout.PositionAt(static_cast<std::size_t>(line), wantedX) : m_text.Caret();
    m_text.MoveTo(position, selecting);
    OnChanged();
    m_wantedX = wantedX;
}

void EditField::OnChanged() {
    m_wantedX = -1;
    const std::size_t line = LayOut().LineOf(m_text.Caret());
    m_topLine = std::min(m_topLine, line);
    if (line >= m_topLine + VisibleLines()) m_topLine = line + 1 - VisibleLines();
    Invalidate();
}

void EditField::Draw(HDC dc) {
    const RECT area = ClientArea();
    FillArea(dc, area, GetSysColor(COLOR_WINDOW));
    const EditLayout layout = LayOut();
    int top = m_margin;
    for (std::size_t line = m_topLine; line < layout.Lines().size() && top < area.bottom; ++line) {
        DrawLine(dc, layout.Lines()[line], top);
        top += m_lineHeight;
    }
    if (GetFocus() == Handle() && !m_text.HasSelection()) DrawCaret(dc, layout);
}

// Character by character, so that each is at the position that the layout gives it.
void EditField::DrawLine(HDC dc, const EditLayout::Line& line, int top) {
    int x = m_margin;
    for (std::size_t i = line.start; i < line.end;) {
        const std::u16string_view character = unicode::CharacterAt(m_text.Text(), i);
        const int width = WidthOf(character);
        const bool selected = i >= m_text.SelectionStart() && i < m_text.SelectionEnd();
        if (selected) FillArea(dc, {x, top, x + width, top + m_lineHeight}, GetSysColor(COLOR_HIGHLIGHT));
        SetTextColor(dc, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        if (character != u"\t") {
            ExtTextOutW(dc, x, top, 0, nullptr, character.data(), static_cast<UINT>(character.size()),
                        nullptr);
        }
        x += width;
        i += character.size();
    }
}

void EditField::DrawCaret(HDC dc, const EditLayout& layout) {
    const int x = m_margin + layout.XOf(m_text.Caret());
    const std::size_t line = layout.LineOf(m_text.Caret());
    const int top = m_margin + static_cast<int>(line - m_topLine) * m_lineHeight;
    FillArea(dc, {x, top, x + m_caretWidth, top + m_lineHeight}, GetSysColor(COLOR_WINDOWTEXT));
}

EditLayout EditField::LayOut() {
    const int width = static_cast<int>(ClientArea().right) - 2 * m_margin;
    return {m_text.Text(), width, [this](std::u16string_view character) { return WidthOf(character); }};
}

int EditField::WidthOf(std::u16string_view character) {
    if (character == u"\t") return 4 * WidthOf(u" ");
    const auto known = m_widths.find(character);
    if (known != m_widths.end()) return known->second;
    return m_widths[std::u16string(character)] = static_cast<int>(Measure(character).cx);
}

std::size_t EditField::VisibleLines() const {
    const int lines = (static_cast<int>(ClientArea().bottom) - 2 * m_margin) / m_lineHeight;
    return static_cast<std::size_t>(std::max(lines, 1));
}
