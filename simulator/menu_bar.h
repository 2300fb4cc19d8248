// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "bound_window.h"

// The bar at the bottom of the screen: words on the left, the keyboard button with its arrow on the right. It
// sends WM_COMMAND with the identifier of the tapped part to its parent: for a button when the pen is lifted
// on it, for a menu when the pen goes down.
class MenuBar final : public BoundWindow {
public:
    enum class Kind { Button, Menu };
    struct Word {
        UINT id;
        std::u16string text;
        Kind kind;
    };

    MenuBar(HWND parent, std::vector<Word> words, UINT keyboardButton, UINT keyboardArrow);

    // Call it after MoveTo.
    void LayOut(SIZE screen);
    // The picture on the keyboard button; an empty one leaves it blank.
    void SetPicture(host::Picture picture);
    // Shows the word of this menu pressed; 0 for none.
    void ShowOpenMenu(UINT id);
    // In client coordinates.
    RECT PlaceOf(UINT id) const;

private:
    enum class Look { Word, Picture, Arrow };
    struct Part {
        UINT id;
        Kind kind;
        Look look;
        std::u16string text;
        RECT place;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPenDown(POINT point) override;
    void OnPenMove(POINT point) override;
    void OnPenUp(POINT point) override;
    void Draw(HDC dc) override;
    void DrawPart(HDC dc, const Part& part);
    void DrawWord(HDC dc, const Part& part, bool pressed);
    void DrawKeyboard(HDC dc, const Part& part, bool pressed);
    void DrawArrow(HDC dc, const Part& part, bool pressed);
    const Part* PartAt(POINT point) const;

    std::vector<Part> m_parts;
    host::Picture m_picture;
    SIZE m_screen{};
    UINT m_pressed = 0;  // where the pen went down and still is
    UINT m_held = 0;     // where the pen went down
    UINT m_openMenu = 0;
};
