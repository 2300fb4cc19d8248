// SPDX-License-Identifier: MIT
// Windows as C++ objects: the window's messages arrive at its object's message map.
#pragma once

#include <windows.h>

#include "framework/module.h"

// A window handle that is not owned. Its only member is the handle.
class CWindow {
public:
    explicit CWindow(HWND window = nullptr) : m_hWnd(window) {}

    HWND m_hWnd;
};

class CMessageMap {
public:
    // True when the message was handled; its result is then in `result`. `map` is 0 for the default map.
    virtual BOOL ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      LRESULT& result, DWORD map) = 0;

protected:
    ~CMessageMap() = default;
};

// The common part of windows and dialogs: a handle that is bound at the first message and forgotten after
// WM_DESTROY, the last one on the handheld. Messages that other platforms send later reach no object.
template <typename Base>
class CWindowImplRoot : public Base, public CMessageMap {
public:
    virtual ~CWindowImplRoot() = default;

protected:
    // Binds the window to the object for which this thread is creating it, and returns that object; null when
    // there is none.
    static CWindowImplRoot* Bind(HWND window) {
        auto* object = static_cast<CWindowImplRoot*>(_Module.ExtractCreateWindowRecord());
        if (!object) return nullptr;
        object->m_hWnd = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
        return object;
    }

    static CWindowImplRoot* ObjectOf(HWND window) {
        return reinterpret_cast<CWindowImplRoot*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    }

    // No exception may reach the platform: a message whose handler ran out of memory counts as handled.
    bool Process(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
        try {
            return this->ProcessWindowMessage(window, message, wParam, lParam, result, 0) != FALSE;
        } catch (...) {
            return true;
        }
    }
};

// The styles that Create uses when its caller passes 0.
template <DWORD style, DWORD extendedStyle>
struct CWinTraits {
    static DWORD GetWndStyle(DWORD given) { return given ? given : style; }
    static DWORD GetWndExStyle(DWORD given) { return given ? given : extendedStyle; }
};

// The description from which a window class is registered at the first Create.
struct CWndClassInfo {
    WNDCLASSW m_wc;
    ATOM m_atom;

    // 0 when the class cannot be registered.
    ATOM Register();
};

template <typename Base, typename Traits>
class CWindowImplBaseT : public CWindowImplRoot<Base> {
public:
    virtual WNDPROC GetWindowProc() { return WindowProc; }
    // Called after the window's last message, when the handle is null again. The object may destroy itself.
    virtual void OnFinalMessage(HWND) {}

    // Null on failure. The rectangle is in the parent's client coordinates. This object owns the window.
    HWND Create(CWndClassInfo& classInfo, HWND parent, const RECT& rectangle, LPCWSTR title, DWORD style,
                DWORD extendedStyle) {
        if (!classInfo.Register()) return nullptr;
        CreateWindowRecord record{};
        _Module.AddCreateWindowRecord(&record, static_cast<Root*>(this));
        const HWND window = CreateWindowExW(
            Traits::GetWndExStyle(extendedStyle), classInfo.m_wc.lpszClassName, title,
            Traits::GetWndStyle(style), rectangle.left, rectangle.top, rectangle.right - rectangle.left,
            rectangle.bottom - rectangle.top, parent, nullptr, _Module.GetModuleInstance(), nullptr);
        _Module.RemoveCreateWindowRecord(&record);
        if (!window) this->m_hWnd = nullptr;  // creation failed after the binding
        return window;
    }

    // The procedure of the window class: binds a new window to its object at the first message.
    static LRESULT CALLBACK StartWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* object = static_cast<CWindowImplBaseT*>(Root::Bind(window));
        if (!object) return DefWindowProcW(window, message, wParam, lParam);
        const WNDPROC procedure = object->GetWindowProc();
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
        return procedure(window, message, wParam, lParam);
    }

private:
    using Root = CWindowImplRoot<Base>;

    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* object = static_cast<CWindowImplBaseT*>(Root::ObjectOf(window));
        LRESULT result = 0;
        const bool handled = object->Process(window, message, wParam, lParam, result);
        if (!handled) result = DefWindowProcW(window, message, wParam, lParam);
        if (message == WM_DESTROY) {
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DefWindowProcW));
            object->m_hWnd = nullptr;
            object->OnFinalMessage(window);
        }
        return result;
    }
};

// Class describes its window class in a static GetWndClassInfo.
template <typename Class, typename Base, typename Traits>
class CWindowImpl : public CWindowImplBaseT<Base, Traits> {
public:
    HWND Create(HWND parent, const RECT& rectangle, LPCWSTR title, DWORD style, DWORD extendedStyle) {
        return CWindowImplBaseT<Base, Traits>::Create(Class::GetWndClassInfo(), parent, rectangle, title,
                                                      style, extendedStyle);
    }
};
