// SPDX-License-Identifier: MIT
// What controls have in common.
#pragma once

#include <memory>
#include <string>

#include "windows/system_window.h"

namespace host {

class ControlPainter;

// Registers "Static", "Button", "ComboBox" (with the atoms that dialog templates use), their helpers and the
// dialog itself.
void StartControls();

// What a control does with a key before its dialog does.
enum class KeyUse { Own, Dialog };

// A child that shows something in a font, and tells its parent what a person does with it.
class Control : public SystemWindow {
public:
    using SystemWindow::SystemWindow;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    virtual KeyUse UseOf(UINT /*virtualKey*/) const { return KeyUse::Dialog; }
    virtual bool TakesFocus() const { return true; }
    // Enter presses it while it has the focus.
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
    // Sends WM_COMMAND to the parent. False when the control did not survive it.
    bool Notify(WORD code) const;

private:
    HFONT m_font = nullptr;  // the sender's of WM_SETFONT; null: the system font
};

// The point of a pen message, in client coordinates.
inline POINT PenPoint(LPARAM position) {
    return {static_cast<SHORT>(LOWORD(position)), static_cast<SHORT>(HIWORD(position))};
}

}  // namespace host
