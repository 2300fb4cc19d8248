// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "bound_window.h"
#include "drawing.h"
#include "edit_field.h"

// The application that the keys go to: a full-screen window with a title bar, an edit field and a menu bar.
class Application final : public BoundWindow {
public:
    Application();
    ~Application() override;

    // Takes the whole of the present screen; the edit field takes what the SIP leaves of it.
    void LayOut(const RECT& visibleDesktop);
    // What the focused edit field holds; empty when the focus is elsewhere.
    std::u16string FocusedText() const;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPaint();
    void DrawBar(HDC dc, const RECT& bar, LPCWSTR text, COLORREF background, COLORREF color);

    Font m_titleFont;
    Font m_menuFont;
    SIZE m_screen{};
    RECT m_visibleDesktop{};
    std::unique_ptr<EditField> m_edit;
};
