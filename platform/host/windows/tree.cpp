// SPDX-License-Identifier: MIT
// Places, order and visibility of windows.
#include <algorithm>
#include <utility>

#include "device/faults.h"
#include "windows/system_window.h"

namespace host {

namespace {

std::vector<Window*> g_topLevelWindows;

// Callers pass any 32-bit coordinates: sums wrap instead of overflowing.
LONG WrappingAdd(LONG a, LONG b) { return static_cast<LONG>(static_cast<ULONG>(a) + static_cast<ULONG>(b)); }

bool IsTopmost(const Window& window) { return !window.parent && (window.extendedStyle & WS_EX_TOPMOST) != 0; }

// Redraws the screen after a change of place, order or visibility. `before` is where the window was visible.
enum class Redraw { Gained, Everything };
void RedrawChange(Window& window, const Region& before, Redraw redraw) {
    const Region after = VisibleArea(window);
    Region lost = before;
    lost.Subtract(after);
    ExposeBelow(window, std::move(lost));
    Region gained = after;
    if (redraw == Redraw::Gained) gained.Subtract(before);
    InvalidateArea(window, std::move(gained));
}

bool HasMoved(const RECT& old, const RECT& now) { return old.left != now.left || old.top != now.top; }
bool HasNewWidth(const RECT& old, const RECT& now) { return now.right - now.left != old.right - old.left; }
bool HasNewHeight(const RECT& old, const RECT& now) { return now.bottom - now.top != old.bottom - old.top; }

bool NeedsFullRedraw(const Window& window, const RECT& old) {
    const UINT style = window.windowClass->style;
    return (HasNewWidth(old, window.bounds) && (style & CS_HREDRAW)) ||
           (HasNewHeight(old, window.bounds) && (style & CS_VREDRAW));
}

// The window's pixels are not moved: it is repainted at its new place.
void RedrawMove(Window& window, const Region& before, const RECT& old) {
    RedrawChange(window, before, HasMoved(old, window.bounds) ? Redraw::Everything : Redraw::Gained);
    if (NeedsFullRedraw(window, old)) AddToUpdate(window, ClientBounds(window), Erase::Yes);
}

}  // namespace

std::vector<Window*>& TopLevelWindows() { return g_topLevelWindows; }

std::vector<Window*>& Siblings(const Window& window) {
    return window.parent ? window.parent->children : g_topLevelWindows;
}

void LinkNew(Window& window) {
    if (window.parent) return window.parent->children.push_back(&window);
    LinkOnTop(window);
}

void LinkOnTop(Window& window) {
    std::vector<Window*>& siblings = Siblings(window);
    const auto place = std::find_if(siblings.begin(), siblings.end(), [&window](const Window* other) {
        return IsTopmost(window) || !IsTopmost(*other);
    });
    siblings.insert(place, &window);
}

void Unlink(Window& window) {
    std::vector<Window*>& siblings = Siblings(window);
    siblings.erase(std::remove(siblings.begin(), siblings.end(), &window), siblings.end());
    window.parent = nullptr;
}

bool IsInside(const Window& window, HWND ancestor) {
    for (const Window* level = &window; level; level = level->parent)
        if (level->handle == ancestor) return true;
    return false;
}

const Window& TopLevelOf(const Window& window) {
    const Window* level = &window;
    while (level->parent)
        level = level->parent;
    return *level;
}

bool HasStyle(const Window& window, DWORD style) { return (window.style & style) != 0; }

bool IsShown(const Window& window) {
    for (const Window* level = &window; level; level = level->parent)
        if (!HasStyle(*level, WS_VISIBLE)) return false;
    return true;
}

POINT ScreenOrigin(const Window& window) {
    POINT origin{};
    for (const Window* level = &window; level; level = level->parent) {
        origin.x += level->bounds.left;
        origin.y += level->bounds.top;
    }
    return origin;
}

RECT ScreenBounds(const Window& window) {
    const POINT origin = ScreenOrigin(window);
    return Offset(ClientBounds(window), origin.x, origin.y);
}

RECT ClientBounds(const Window& window) {
    return {0, 0, window.bounds.right - window.bounds.left, window.bounds.bottom - window.bounds.top};
}

RECT MessageBounds(int x, int y, int width, int height) {
    const int left = std::clamp(x, -0x8000, 0x7FFF);
    const int top = std::clamp(y, -0x8000, 0x7FFF);
    return {left, top, left + std::clamp(width, 0, 0x7FFF), top + std::clamp(height, 0, 0x7FFF)};
}

void HideQuietly(Window& window) {
    if (!HasStyle(window, WS_VISIBLE)) return;
    const Region before = VisibleArea(window);
    window.style &= ~WS_VISIBLE;
    ValidateTree(window);
    ExposeBelow(window, before);
}

}  // namespace host

using namespace host;

BOOL WINAPI IsWindow(HWND handle) { return FindWindow(handle) != nullptr; }

BOOL WINAPI IsWindowVisible(HWND handle) {
    const Window* window = RequireWindow(handle);
    return window && IsShown(*window);
}

HWND WINAPI GetParent(HWND handle) {
    const Window* window = RequireWindow(handle);
    if (!window) return nullptr;
    return window->parent ? window->parent->handle : window->owner;
}

HWND WINAPI GetWindow(HWND handle, UINT relation) {
    const Window* window = RequireWindow(handle);
    if (!window) return nullptr;
    if (relation == GW_CHILD) return window->children.empty() ? nullptr : window->children.front()->handle;
    if (relation != GW_HWNDNEXT) return Fail(ERROR_INVALID_PARAMETER, nullptr);
    const std::vector<Window*>& siblings = Siblings(*window);
    const auto self = std::find(siblings.begin(), siblings.end(), window);
    if (self == siblings.end() || self + 1 == siblings.end()) return nullptr;
    return (*(self + 1))->handle;
}

BOOL WINAPI ShowWindow(HWND handle, int command) {
    Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    const bool show = command != SW_HIDE;
    const BOOL wasVisible = HasStyle(*window, WS_VISIBLE);
    if (show == static_cast<bool>(wasVisible)) return wasVisible;
    CallProcedure(*window, WM_SHOWWINDOW, show ? TRUE : FALSE, 0);
    window = FindWindow(handle);
    if (!window || HasStyle(*window, WS_VISIBLE) == show) return wasVisible;
    if (!show) {
        HideQuietly(*window);
    } else if (window->life == Life::Alive) {
        window->style |= WS_VISIBLE;
        RedrawChange(*window, {}, Redraw::Everything);
    }
    return wasVisible;
}

// Sends WM_MOVE and WM_SIZE only for a change. Without `repaint` invalidates nothing: the caller paints.
BOOL WINAPI MoveWindow(HWND handle, int x, int y, int width, int height, BOOL repaint) {
    Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    const RECT old = window->bounds;
    RECT now = MessageBounds(x, y, width, height);
    if (window->object) window->object->AdjustBounds(now);
    if (EqualRect(&old, &now)) return TRUE;
    const Region before = repaint ? VisibleArea(*window) : Region{};
    window->bounds = now;
    window->update.IntersectWith(ClientBounds(*window));
    if (repaint && IsShown(*window)) RedrawMove(*window, before, old);
    if (HasMoved(old, now)) {
        CallProcedure(*window, WM_MOVE, 0, MAKELPARAM(now.left, now.top));
        window = FindWindow(handle);
    }
    if (window && (HasNewWidth(old, now) || HasNewHeight(old, now))) {
        const RECT client = ClientBounds(*window);
        CallProcedure(*window, WM_SIZE, 0, MAKELPARAM(client.right, client.bottom));
    }
    return TRUE;
}

BOOL WINAPI BringWindowToTop(HWND handle) {
    Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    const Region before = VisibleArea(*window);
    Window* const parent = window->parent;
    Unlink(*window);
    window->parent = parent;
    LinkOnTop(*window);
    RedrawChange(*window, before, Redraw::Gained);
    return TRUE;
}

BOOL WINAPI GetWindowRect(HWND handle, RECT* rectangle) {
    const Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (!rectangle) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    *rectangle = ScreenBounds(*window);
    return TRUE;
}

BOOL WINAPI GetClientRect(HWND handle, RECT* rectangle) {
    const Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (!rectangle) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    *rectangle = ClientBounds(*window);
    return TRUE;
}

BOOL WINAPI ScreenToClient(HWND handle, POINT* point) {
    const Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (!point) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const POINT origin = ScreenOrigin(*window);
    *point = {WrappingAdd(point->x, -origin.x), WrappingAdd(point->y, -origin.y)};
    return TRUE;
}

BOOL WINAPI ClientToScreen(HWND handle, POINT* point) {
    const Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (!point) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const POINT origin = ScreenOrigin(*window);
    *point = {WrappingAdd(point->x, origin.x), WrappingAdd(point->y, origin.y)};
    return TRUE;
}

LONG_PTR WINAPI GetWindowLongPtrW(HWND handle, int index) {
    const Window* window = RequireWindow(handle);
    if (!window) return 0;
    switch (index) {
        case GWLP_WNDPROC:
            return reinterpret_cast<LONG_PTR>(window->procedure);
        case GWLP_USERDATA:
            return window->userData;
        case GWL_STYLE:
            return static_cast<LONG>(window->style);
    }
    const LONG_PTR* own = window->object ? window->object->FindLong(index) : nullptr;
    if (own) return *own;
    return Fail(ERROR_INVALID_INDEX, 0);
}

// Setting a style sends no message and paints nothing. A child stays a child, a popup a popup.
LONG_PTR WINAPI SetWindowLongPtrW(HWND handle, int index, LONG_PTR value) {
    constexpr DWORD kFixed = WS_CHILD | WS_POPUP;
    const LONG_PTR old = GetWindowLongPtrW(handle, index);
    Window* window = RequireWindow(handle);
    if (!window) return 0;
    LONG_PTR* own = window->object ? window->object->FindLong(index) : nullptr;
    if (own) *own = value;
    if (index == GWLP_USERDATA) window->userData = value;
    if (index == GWL_STYLE) window->style = (window->style & kFixed) | (static_cast<DWORD>(value) & ~kFixed);
    if (index == GWLP_WNDPROC) {
        if (value == 0) return Fail(ERROR_INVALID_PARAMETER, 0);
        window->procedure = reinterpret_cast<WNDPROC>(value);
    }
    return old;
}

int WINAPI GetSystemMetrics(int index) {
    const ScreenView screen = Screen();
    if (index == SM_CXSCREEN) return screen.width;
    return index == SM_CYSCREEN ? screen.height : 0;
}

BOOL WINAPI EqualRect(const RECT* a, const RECT* b) {
    return a && b && a->left == b->left && a->top == b->top && a->right == b->right && a->bottom == b->bottom;
}

BOOL WINAPI PtInRect(const RECT* r, POINT point) {
    return point.x >= r->left && point.x < r->right && point.y >= r->top && point.y < r->bottom;
}
