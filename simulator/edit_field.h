// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "bound_window.h"
#include "edit_layout.h"
#include "edit_text.h"

// The menu commands for the text.
enum class EditCommand { Clear, Undo, Cut, Copy, Paste, SelectAll };

// A multi-line edit field that wraps its lines: the window that receives the keys and the pen.
class EditField final : public BoundWindow {
public:
    EditField(HWND parent, const RECT& bounds);

    const std::u16string& Text() const { return m_text.Text(); }
    // The caret is at its end; there is nothing to undo.
    void SetText(std::u16string text);
    // In pixels per em.
    void SetFontHeight(int height);
    void Perform(EditCommand command);
    bool CanPerform(EditCommand command) const;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnKey(UINT virtualKey);
    void OnCharacter(WCHAR character);
    void OnPenDown(POINT point) override;
    void OnPenMove(POINT point) override;
    void OnPenUp(POINT point) override;
    void Draw(HDC dc) override;
    void SetCaret(POINT point, Selecting selecting);
    void MoveLine(int lines, Selecting selecting);
    // Scrolls to the caret and redraws.
    void OnChanged();

    void DrawLine(HDC dc, const EditLayout::Line& line, int top);
    void DrawCaret(HDC dc, const EditLayout& layout);
    EditLayout LayOut();
    int WidthOf(std::u16string_view character);
    std::size_t VisibleLines() const;

    EditText m_text;
    int m_lineHeight = 1;
    int m_margin = 0;  // around the text
    int m_caretWidth = 1;
    std::map<std::u16string, int, std::less<>> m_widths;  // of characters in this font
    std::size_t m_topLine = 0;
    int m_wantedX = -1;      // target of moves up and down; negative: the caret
    bool m_penDown = false;  // went down in this field
};
