// SPDX-License-Identifier: MIT
// The common part of controls.
#pragma once

#include <memory>
#include <string>

#include "windows/system_window.h"

namespace host {

class ControlPainter;

// The classes' numbers in dialog templates.
inline constexpr ATOM kButtonAtom = 0x0080;
inline constexpr ATOM kStaticAtom = 0x0082;

// Registers "Static", "Button", "ComboBox" (with the atoms that dialog templates use), their helpers and the
// dialog itself.
void StartControls();

// Who uses a key: the control with the focus, or its dialog.
enum class KeyUse { Own, Dialog };

// A child window that shows something in a font and notifies its parent of the user's actions.
class Control : public SystemWindow {
public:
    using SystemWindow::SystemWindow;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    virtual KeyUse UseOf(UINT /*virtualKey*/) const { return KeyUse::Dialog; }
    virtual bool TakesFocus() const { return true; }
    // True if Enter presses it while it has the focus.
    virtual bool IsPushButton() const { return false; }

protected:
    virtual void Paint(ControlPainter& painter) = 0;
    virtual void OnFontChanged() {}

    bool HasStyleBits(DWORD bits) const;
    DWORD Style() const;
    bool IsEnabled() const { return IsWindowEnabled(Handle()) != FALSE; }
    bool HasFocus() const { return GetFocus() == Handle(); }
    HFONT Font() const { return m_font; }
    std::u16string Text() const;
    RECT Client() const;
    bool ContainsPoint(POINT clientPoint) const;
    void Redraw() const { InvalidateRect(Handle(), nullptr, FALSE); }
    // Sends WM_COMMAND to the parent. False if that destroyed the control.
    bool Notify(WORD code) const;

private:
    HFONT m_font = nullptr;  // owned by the sender of WM_SETFONT; null: the system font
};

// The point of a pen message, in client coordinates.
inline POINT PenPoint(LPARAM position) {
    return {static_cast<SHORT>(LOWORD(position)), static_cast<SHORT>(HIWORD(position))};
}

}  // namespace host
