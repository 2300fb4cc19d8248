// SPDX-License-Identifier: MIT
// Creation and destruction of windows.
#include <memory>

#include "device/faults.h"
#include "device/handles.h"
#include "windows/pen.h"
#include "windows/queue.h"
#include "windows/system_window.h"

namespace host {

namespace {

using WindowTable = HandleTable<Window, HandleKind::Window>;
WindowTable g_table;
bool g_resetting = false;

bool IsChildStyle(DWORD style) { return (style & (WS_CHILD | WS_POPUP)) == WS_CHILD; }

// A window under destruction gets no new children and owns no new windows; during a reset no window does.
DWORD CheckParent(HWND parent, DWORD style) {
    if (g_resetting) return ERROR_INVALID_WINDOW_HANDLE;
    if (!parent) return IsChildStyle(style) ? ERROR_TLW_WITH_WSCHILD : ERROR_SUCCESS;
    const Window* window = FindWindow(parent);
    return window && window->life == Life::Alive ? ERROR_SUCCESS : ERROR_INVALID_WINDOW_HANDLE;
}

// Hidden until its creation messages have been sent.
Window* OpenWindow(const CREATESTRUCTW& creation, WindowClass& windowClass) {
    const HWND handle = ToHandle<HWND>(g_table.Open(std::make_unique<Window>()));
    Window* window = FindWindow(handle);
    if (!window) return nullptr;
    window->handle = handle;
    window->windowClass = &windowClass;
    window->procedure = windowClass.procedure;
    window->style = static_cast<DWORD>(creation.style) & ~WS_VISIBLE;
    window->extendedStyle = creation.dwExStyle;
    window->bounds = MessageBounds(creation.x, creation.y, creation.cx, creation.cy);
    if (creation.lpszName) window->text = creation.lpszName;
    if (IsChildStyle(window->style)) {
        window->parent = FindWindow(creation.hwndParent);
        window->id = reinterpret_cast<UINT_PTR>(creation.hMenu);
    } else {
        const Window* owner = FindWindow(creation.hwndParent);
        if (owner) window->owner = TopLevelOf(*owner).handle;
    }
    ++windowClass.windows;
    LinkNew(*window);
    return window;
}

// As on the handheld there are no nonclient messages. Null if a handler refused or destroyed the window.
Window* SendCreationMessages(HWND handle, const CREATESTRUCTW& creation) {
    const LPARAM parameter = reinterpret_cast<LPARAM>(&creation);
    if (CallProcedure(*FindWindow(handle), WM_CREATE, 0, parameter) == -1) {
        if (FindWindow(handle)) DestroyWindow(handle);
        return nullptr;
    }
    Window* window = FindWindow(handle);
    if (!window) return nullptr;
    const RECT client = ClientBounds(*window);
    CallProcedure(*window, WM_SIZE, 0, MAKELPARAM(client.right, client.bottom));
    window = FindWindow(handle);
    if (!window) return nullptr;
    CallProcedure(*window, WM_MOVE, 0, MAKELPARAM(window->bounds.left, window->bounds.top));
    return FindWindow(handle);
}

// Parents first; each window gets it once, even if its handler destroys others.
void SendDestroyMessages(HWND handle) {
    Window* window = FindWindow(handle);
    if (!window || window->life >= Life::Destroyed) return;
    window->life = Life::Destroyed;
    CallProcedure(*window, WM_DESTROY, 0, 0);
    window = FindWindow(handle);
    if (!window) return;
    std::vector<HWND> children;
    for (const Window* child : window->children)
        children.push_back(child->handle);
    for (const HWND child : children)
        SendDestroyMessages(child);
}

// Children first; no message is sent.
void Remove(HWND handle) {
    Window* window = FindWindow(handle);
    if (!window) return;
    while (!window->children.empty())
        Remove(window->children.front()->handle);
    HideQuietly(*window);
    Unlink(*window);
    DropMessages(handle);
    CloseContexts(handle);
    ForgetInput(handle);
    --window->windowClass->windows;
    g_table.Close(handle);
}

HWND FirstOwnedWindow(HWND owner) {
    for (const Window* window : TopLevelWindows())
        if (window->owner == owner && window->life == Life::Alive) return window->handle;
    return nullptr;
}

}  // namespace

Window* FindWindow(HWND handle) { return g_table.Find(handle); }

std::shared_ptr<SystemWindow> FindSystemWindow(HWND handle) {
    const Window* window = FindWindow(handle);
    return window ? window->object : nullptr;
}

Window* RequireWindow(HWND handle) {
    Window* window = g_table.Find(handle);
    if (!window) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return window;
}

// Also removes windows that could not be destroyed the usual way because their handler was itself part of a
// destruction.
void ResetWindows() {
    g_resetting = true;
    while (!TopLevelWindows().empty()) {
        const HWND handle = TopLevelWindows().front()->handle;
        DestroyWindow(handle);
        Remove(handle);
    }
    g_table.CloseAll();
    CloseContexts(nullptr);
    g_resetting = false;
    ResetClasses();
    ResetMessages();
    ResetInput();
}

void CountWindowHandles(LiveHandles& counts) { counts.windows = g_table.Count(); }

}  // namespace host

using namespace host;

HWND WINAPI CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                            LPVOID parameter) {
    if (CallFails(Call::CreateWindow, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    WindowClass* windowClass = FindClass(className, instance);
    const DWORD error = windowClass ? CheckParent(parent, style) : ERROR_CANNOT_FIND_WND_CLASS;
    if (error != ERROR_SUCCESS) return Fail(error, nullptr);
    const CREATESTRUCTW creation{.lpCreateParams = parameter,
                                 .hInstance = instance,
                                 .hMenu = menu,
                                 .hwndParent = parent,
                                 .cy = height,
                                 .cx = width,
                                 .y = y,
                                 .x = x,
                                 .style = static_cast<LONG>(style),
                                 .lpszName = title,
                                 .lpszClass = className,
                                 .dwExStyle = extendedStyle};
    const Window* window = OpenWindow(creation, *windowClass);
    if (!window) return Fail(ERROR_NOT_ENOUGH_MEMORY, nullptr);
    const HWND handle = window->handle;
    if (!SendCreationMessages(handle, creation)) return nullptr;
    if (style & WS_VISIBLE) ShowWindow(handle, SW_SHOW);
    return FindWindow(handle) ? handle : nullptr;
}

// WM_DESTROY goes to the window and then to its children. Does nothing for a window under destruction.
BOOL WINAPI DestroyWindow(HWND handle) {
    Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (window->life != Life::Alive) return TRUE;
    window->life = Life::Closing;
    while (const HWND owned = FirstOwnedWindow(handle))
        DestroyWindow(owned);
    ReleaseInput(handle);
    window = FindWindow(handle);
    if (window) HideQuietly(*window);
    SendDestroyMessages(handle);
    Remove(handle);
    return TRUE;
}
