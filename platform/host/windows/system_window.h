// SPDX-License-Identifier: MIT
// Windows of the layer's own classes, which other rooms register here.
#pragma once

#include <memory>

#include "windows/window.h"

namespace host {

// The object of a window of one of the layer's own classes. The window owns it, and each message being
// handled shares it: a handler may destroy the window and then finds IsAlive false.
class SystemWindow {
public:
    explicit SystemWindow(HWND handle) : m_handle(handle) {}
    virtual ~SystemWindow() = default;
    SystemWindow(const SystemWindow&) = delete;
    SystemWindow& operator=(const SystemWindow&) = delete;

    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // The further values that GetWindowLongPtrW has for this class; null for any other index.
    virtual LONG_PTR* FindLong(int) { return nullptr; }
    // Changes the place that the window is about to get, in its parent's coordinates.
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

// The procedure of a class: creates the object at the window's first message.
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

// Registers a class for all instances that cannot be unregistered, with the caller's atom. A class that has
// this atom already stays.
void RegisterSystemClass(const WCHAR* name, ATOM atom, WNDPROC procedure, UINT style);

}  // namespace host
