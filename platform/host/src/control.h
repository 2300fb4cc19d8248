// SPDX-License-Identifier: MIT
// Windows of the layer's own classes, and what the controls among them have in common.
#pragma once

#include <memory>
#include <string>

#include "window.h"

namespace host {

class ControlPainter;

// The object behind a window of one of the layer's own classes. The window owns it, and so does every message
// that is on its way through it: a handler may destroy the window, and then finds IsAlive false.
class SystemWindow {
public:
    explicit SystemWindow(HWND handle) : m_handle(handle) {}
    virtual ~SystemWindow() = default;
    SystemWindow(const SystemWindow&) = delete;
    SystemWindow& operator=(const SystemWindow&) = delete;

    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // What GetWindowLongPtrW knows of this class beyond what every window has; null for any other index.
    virtual LONG_PTR* FindLong(int) { return nullptr; }
    // Turns the place that the window is to get, in its parent's coordinates, into the one that it takes.
    virtual void AdjustBounds(RECT&) {}

    HWND Handle() const { return m_handle; }
    bool IsAlive() const { return IsWindow(m_handle) != FALSE; }

private:
    const HWND m_handle;
};

// Null for a stale handle and for windows of other classes.
std::shared_ptr<SystemWindow> FindSystemWindow(HWND handle);
template <typename Object>
std::shared_ptr<Object> FindSystemWindow(HWND handle) {
    return std::dynamic_pointer_cast<Object>(FindSystemWindow(handle));
}

// The procedure of a class: makes the object at the window's first message.
template <typename Object>
LRESULT CALLBACK SystemWindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        Window& window = *FindWindow(handle);
        window.object = std::make_shared<Object>(handle);
        window.object->AdjustBounds(window.bounds);
    }
    const std::shared_ptr<SystemWindow> object = FindSystemWindow(handle);
    return object ? object->OnMessage(message, wParam, lParam)
                  : DefWindowProcW(handle, message, wParam, lParam);
}

// "Static", "Button", "ComboBox" (with the atoms that dialog templates use), their helpers and the dialog
// itself. They are always there and cannot be unregistered. Null when there is none of this name or atom.
WindowClass* FindSystemClass(LPCWSTR name);

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
