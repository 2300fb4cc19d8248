// SPDX-License-Identifier: MIT
// Update regions and painting. From InvalidateRect to EndPaint nothing is allocated once the regions have
// grown to their usual size.
#include <algorithm>

#include "device/faults.h"
#include "graphics/graphics.h"
#include "windows/window.h"

namespace host {

namespace {

struct ClientContext {
    HDC dc;
    HWND window;  // null: the whole screen
};
std::vector<ClientContext> g_clientContexts;  // open ones of GetDC

// A temporary region; not used across sending a message.
Region g_scratch;

// The visible part of the update region, in screen coordinates; returned in `scratch`.
const Region& VisibleUpdate(const Window& window) {
    const POINT origin = ScreenOrigin(window);
    g_scratch = window.update;
    g_scratch.Move(origin.x, origin.y);
    ClipToVisible(window, Children::Excluded, g_scratch);
    return g_scratch;
}

bool WantsPaint(Window& window) {
    if (window.update.Empty()) return false;
    if (!window.paintUnanswered && !VisibleUpdate(window).Empty()) return true;
    if (window.paintUnanswered)
        Report("A window leaves WM_PAINT unanswered; call BeginPaint or DefWindowProcW.");
    Validate(window);
    return false;
}

Window* FindUnpainted(const std::vector<Window*>& windows) {
    for (Window* window : windows) {
        if (!HasStyle(*window, WS_VISIBLE)) continue;
        if (WantsPaint(*window)) return window;
        Window* child = FindUnpainted(window->children);
        if (child) return child;
    }
    return nullptr;
}

bool EraseBackground(HWND handle, HDC dc) {
    return SendMessageW(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0) != 0;
}

// A class names a brush, or a system colour plus 1, which is far below every handle.
HBRUSH ClassBrush(const WindowClass& windowClass) {
    constexpr ULONG_PTR kLastColor = 30;
    const ULONG_PTR value =
        reinterpret_cast<ULONG_PTR>(windowClass.background) & ~ULONG_PTR{SYS_COLOR_INDEX_FLAG};
    if (value == 0 || value > kLastColor + 1) return windowClass.background;
    return GetSysColorBrush(static_cast<int>(value - 1));
}

LRESULT EraseWithClassBrush(const Window& window, HDC dc) {
    const HBRUSH brush = ClassBrush(*window.windowClass);
    const RECT client = ClientBounds(window);
    return brush && FillRect(dc, &client, brush) ? 1 : 0;
}

void InvalidateAll(const std::vector<Window*>& windows) {
    for (Window* window : windows) {
        if (!HasStyle(*window, WS_VISIBLE)) continue;
        AddToUpdate(*window, ClientBounds(*window), Erase::Yes);
        InvalidateAll(window->children);
    }
}

}  // namespace

void AddToUpdate(Window& window, const RECT& clientArea, Erase erase) {
    const RECT inside = Intersect(clientArea, ClientBounds(window));
    if (IsEmpty(inside)) return;
    window.update.Add(inside);
    if (erase == Erase::Yes) window.eraseWanted = true;
}

void Validate(Window& window) {
    window.update.Clear();
    window.eraseWanted = false;
    window.paintUnanswered = false;
}

void ValidateTree(Window& window) {
    Validate(window);
    for (Window* child : window.children)
        ValidateTree(*child);
}

Window* TakeWindowToPaint() {
    Window* window = FindUnpainted(TopLevelWindows());
    if (window) window->paintUnanswered = true;
    return window;
}

void CloseContexts(HWND handle) {
    Window* window = FindWindow(handle);
    if (window && window->paintContext) CloseScreenDC(window->paintContext);
    if (window) window->paintContext = nullptr;
    const auto gone =
        std::remove_if(g_clientContexts.begin(), g_clientContexts.end(), [handle](ClientContext open) {
            if (open.window != handle) return false;
            CloseScreenDC(open.dc);
            return true;
        });
    g_clientContexts.erase(gone, g_clientContexts.end());
}

void SetScreenSize(SIZE size) {
    ResizeScreen(size);
    InvalidateAll(TopLevelWindows());
}

}  // namespace host

using namespace host;

BOOL WINAPI InvalidateRect(HWND handle, const RECT* rectangle, BOOL erase) {
    if (CallFails(Call::InvalidateRect, ERROR_NOT_ENOUGH_MEMORY)) return FALSE;
    Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (!IsShown(*window)) return TRUE;
    const RECT area = rectangle ? *rectangle : ClientBounds(*window);
    AddToUpdate(*window, area, erase ? Erase::Yes : Erase::No);
    return TRUE;
}

BOOL WINAPI UpdateWindow(HWND handle) {
    const Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (!window->update.Empty() && IsShown(*window)) CallProcedure(*window, WM_PAINT, 0, 0);
    return TRUE;
}

// With `erase`, erases the background of the update region at once, if that has not been done.
BOOL WINAPI GetUpdateRect(HWND handle, RECT* rectangle, BOOL erase) {
    const Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (erase) return Fail(ERROR_CALL_NOT_IMPLEMENTED, FALSE);
    const RECT box = window->update.BoundingBox();
    if (rectangle) *rectangle = box;
    return !IsEmpty(box);
}

// rcPaint is the bounding box of the visible update region. The window counts as painted from here on, so a
// handler of WM_ERASEBKGND may invalidate it again.
HDC WINAPI BeginPaint(HWND handle, PAINTSTRUCT* paint) {
    const bool fails = CallFails(Call::BeginPaint, ERROR_NOT_ENOUGH_MEMORY);
    Window* window = RequireWindow(handle);
    if (!window) return nullptr;
    if (fails) {
        window->paintUnanswered = false;  // painting was tried, so WM_PAINT is sent again
        return nullptr;
    }
    if (!paint || window->paintContext) return Fail(ERROR_INVALID_PARAMETER, nullptr);
    const POINT origin = ScreenOrigin(*window);
    const Region& clip = VisibleUpdate(*window);
    *paint = {};
    paint->rcPaint = Offset(clip.BoundingBox(), -origin.x, -origin.y);
    paint->hdc = window->paintContext = OpenScreenDC(origin, clip);
    if (!paint->hdc) return nullptr;
    const bool erase = window->eraseWanted;
    Validate(*window);
    if (erase) paint->fErase = !EraseBackground(handle, paint->hdc);
    if (!FindWindow(handle)) paint->hdc = nullptr;
    return paint->hdc;
}

// False if no such painting is open: its window is gone, it has ended, or it began on another window.
BOOL WINAPI EndPaint(HWND handle, const PAINTSTRUCT* paint) {
    Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    if (!paint || !paint->hdc || paint->hdc != window->paintContext)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    window->paintContext = nullptr;
    return CloseScreenDC(paint->hdc);
}

// A null window means the whole screen, above all windows.
HDC WINAPI GetDC(HWND handle) {
    const Window* window = handle ? RequireWindow(handle) : nullptr;
    if (handle && !window) return nullptr;
    const ScreenView screen = Screen();
    const RECT area = window ? ScreenBounds(*window) : RECT{0, 0, screen.width, screen.height};
    g_scratch.Set(area);
    if (window) ClipToVisible(*window, Children::Excluded, g_scratch);
    const HDC dc = OpenScreenDC({area.left, area.top}, g_scratch);
    if (dc) g_clientContexts.push_back({dc, handle});
    return dc;
}

int WINAPI ReleaseDC(HWND handle, HDC dc) {
    const auto open = std::find_if(g_clientContexts.begin(), g_clientContexts.end(),
                                   [=](ClientContext one) { return one.dc == dc && one.window == handle; });
    if (open == g_clientContexts.end()) return Fail(ERROR_INVALID_HANDLE, 0);
    g_clientContexts.erase(open);
    return CloseScreenDC(dc);
}

LRESULT WINAPI DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* window = RequireWindow(handle);
    if (!window) return 0;
    if (message == WM_ERASEBKGND) return EraseWithClassBrush(*window, reinterpret_cast<HDC>(wParam));
    PAINTSTRUCT paint;
    if (message == WM_PAINT && BeginPaint(handle, &paint)) EndPaint(handle, &paint);
    return AnswerTextMessage(*window, message, wParam, lParam);
}
