// SPDX-License-Identifier: MIT
// The pen, the keys, the capture and the focus.
#include "windows/pen.h"

#include <algorithm>
#include <bitset>
#include <cstdlib>
#include <utility>

#include "device/faults.h"
#include "windows/queue.h"

namespace host {

namespace {

constexpr DWORD kDoubleTapTime = 500;  // milliseconds between the two pen-downs
constexpr int kDoubleTapReach = 4;     // pixels in either direction

HWND g_capture = nullptr;
CaptureHandler g_captureHandler;
HWND g_focus = nullptr;
bool g_penIsDown = false;
POINT g_penPosition{};
std::bitset<256> g_pressedKeys;

// The last pen-down, which may become the first half of a double tap.
struct Tap {
    HWND window = nullptr;
    POINT point{};
    DWORD time = 0;
} g_firstTap;

void ChangeCapture(HWND window) {
    if (g_capture == window) return;
    g_capture = window;
    if (g_captureHandler) g_captureHandler(window);
}

// A disabled child passes the pen on to the window below it.
const Window* ChildAt(const Window& window, POINT point) {
    for (const Window* child : window.children) {
        if (!HasStyle(*child, WS_VISIBLE) || HasStyle(*child, WS_DISABLED)) continue;
        if (!PtInRect(&child->bounds, point)) continue;
        return ChildAt(*child, {point.x - child->bounds.left, point.y - child->bounds.top});
    }
    return &window;
}

// A disabled top-level window swallows the pen: while a modal window is open, neither its owner nor the
// windows below the owner get it.
const Window* WindowAt(POINT point) {
    for (const Window* window : TopLevelWindows()) {
        if (!HasStyle(*window, WS_VISIBLE) || !PtInRect(&window->bounds, point)) continue;
        if (HasStyle(*window, WS_DISABLED)) return nullptr;
        return ChildAt(*window, {point.x - window->bounds.left, point.y - window->bounds.top});
    }
    return nullptr;
}

const Window* PenTarget(POINT point) { return g_capture ? FindWindow(g_capture) : WindowAt(point); }

// One half of a message's position, limited to 16 bits.
WORD PositionHalf(LONG coordinate, LONG origin) {
    const std::int64_t position = std::int64_t{coordinate} - origin;
    return static_cast<WORD>(std::clamp<std::int64_t>(position, -0x8000, 0x7FFF));
}

UINT PenMessage(Pen event) {
    switch (event) {
        case Pen::Down:
            return WM_LBUTTONDOWN;
        case Pen::Up:
            return WM_LBUTTONUP;
        case Pen::DoubleClick:
            return WM_LBUTTONDBLCLK;
        case Pen::Move:
            break;
    }
    return WM_MOUSEMOVE;
}

void PostInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (Enqueue(window, message, wParam, lParam, Origin::Device)) return;
    NoteKey(message, wParam);
    Report(
        "The message queue is full: a message of the pen or a key is lost. Deliver the messages that wait.");
}

bool CompletesDoubleTap(const Window& window, POINT point) {
    if (g_firstTap.window != window.handle || !(window.windowClass->style & CS_DBLCLKS)) return false;
    return Now() - g_firstTap.time <= kDoubleTapTime &&
           std::llabs(std::int64_t{point.x} - g_firstTap.point.x) <= kDoubleTapReach &&
           std::llabs(std::int64_t{point.y} - g_firstTap.point.y) <= kDoubleTapReach;
}

// Repeat count 1; the virtual key in place of a scan code, as the device has none. The two top bits: the key
// was down before, and it is going up.
LPARAM KeyData(UINT virtualKey, bool wasDown, bool goingUp) {
    return static_cast<LPARAM>(1u | ((virtualKey & 0xFFu) << 16) | (wasDown ? 0x40000000u : 0u) |
                               (goingUp ? 0x80000000u : 0u));
}

}  // namespace

void PostPen(Pen event, POINT point) {
    g_penPosition = point;
    if (event != Pen::Move) g_penIsDown = event != Pen::Up;
    const Window* target = PenTarget(point);
    if (!target) return;
    const POINT origin = ScreenOrigin(*target);
    const LPARAM position = MAKELPARAM(PositionHalf(point.x, origin.x), PositionHalf(point.y, origin.y));
    PostInput(target->handle, PenMessage(event), g_penIsDown ? MK_LBUTTON : 0, position);
}

// The pen-down that completes a double tap is not the first half of another one.
Pen RecognizePen(Pen event, POINT point) {
    if (event != Pen::Down) return event;
    const Window* target = PenTarget(point);
    if (target && CompletesDoubleTap(*target, point)) {
        g_firstTap = {};
        return Pen::DoubleClick;
    }
    g_firstTap = {target ? target->handle : nullptr, point, Now()};
    return event;
}

void SetCaptureHandler(CaptureHandler handler) { g_captureHandler = std::move(handler); }

// GetKeyState changes when the message is taken from the queue, so that a handler sees the keys as they were
// when its key was pressed; without a focus it changes at once.
void PostKey(UINT virtualKey, bool down) {
    const UINT message = down ? WM_KEYDOWN : WM_KEYUP;
    if (!g_focus) return NoteKey(message, virtualKey);
    const bool wasDown = !down || (virtualKey < g_pressedKeys.size() && g_pressedKeys[virtualKey]);
    PostInput(g_focus, message, virtualKey, KeyData(virtualKey, wasDown, !down));
}

// Only WM_CHAR: the driver posts the key messages around it.
void PostCharacter(UINT virtualKey, WCHAR character) {
    if (g_focus) PostInput(g_focus, WM_CHAR, character, KeyData(virtualKey, false, false));
}

void ReleaseInput(HWND handle) {
    const Window* captured = FindWindow(g_capture);
    if (captured && IsInside(*captured, handle)) ReleaseCapture();
    const Window* focused = FindWindow(g_focus);
    if (focused && IsInside(*focused, handle)) SetFocus(nullptr);
}

void ForgetInput(HWND handle) {
    if (g_capture == handle) ChangeCapture(nullptr);
    if (g_focus == handle) g_focus = nullptr;
}

void NoteKey(UINT message, WPARAM virtualKey) {
    if (message != WM_KEYDOWN && message != WM_KEYUP) return;
    if (virtualKey < g_pressedKeys.size()) g_pressedKeys[virtualKey] = message == WM_KEYDOWN;
}

POINT PenPosition() { return g_penPosition; }

void ResetInput() {
    g_capture = g_focus = nullptr;
    g_captureHandler = nullptr;
    g_penIsDown = false;
    g_penPosition = {};
    g_pressedKeys.reset();
    g_firstTap = {};
}

}  // namespace host

using namespace host;

// Null releases the capture.
HWND WINAPI SetCapture(HWND handle) {
    if (handle && !RequireWindow(handle)) return nullptr;
    const HWND previous = g_capture;
    if (previous == handle) return previous;
    ChangeCapture(handle);
    const Window* loser = FindWindow(previous);
    if (loser) CallProcedure(*loser, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(handle));
    return previous;
}

BOOL WINAPI ReleaseCapture() {
    SetCapture(nullptr);
    return TRUE;
}

HWND WINAPI GetCapture() { return g_capture; }

// Null removes the focus. If a handler of WM_KILLFOCUS moves the focus on, WM_SETFOCUS is not sent.
HWND WINAPI SetFocus(HWND handle) {
    const Window* window = handle ? RequireWindow(handle) : nullptr;
    if (handle && !window) return nullptr;
    if (window && HasStyle(*window, WS_DISABLED)) return Fail(ERROR_INVALID_PARAMETER, nullptr);
    const HWND previous = g_focus;
    if (previous == handle) return previous;
    g_focus = handle;
    const Window* loser = FindWindow(previous);
    if (loser) CallProcedure(*loser, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    window = g_focus == handle ? FindWindow(handle) : nullptr;
    if (window) CallProcedure(*window, WM_SETFOCUS, reinterpret_cast<WPARAM>(previous), 0);
    return previous;
}

HWND WINAPI GetFocus() { return g_focus; }

// A window to be disabled first loses the capture and the focus.
BOOL WINAPI EnableWindow(HWND handle, BOOL enable) {
    Window* window = RequireWindow(handle);
    if (!window) return FALSE;
    const bool wasDisabled = HasStyle(*window, WS_DISABLED);
    if (wasDisabled == !enable) return wasDisabled;
    window->style = enable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
    if (!enable) {
        const Window* captured = FindWindow(g_capture);
        if (captured && IsInside(*captured, handle)) ReleaseCapture();
        if (g_focus == handle) SetFocus(window->parent ? TopLevelOf(*window).handle : nullptr);
    }
    window = FindWindow(handle);
    if (window) CallProcedure(*window, WM_ENABLE, enable ? TRUE : FALSE, 0);
    return wasDisabled;
}

BOOL WINAPI IsWindowEnabled(HWND handle) {
    const Window* window = RequireWindow(handle);
    return window && !HasStyle(*window, WS_DISABLED);
}

SHORT WINAPI GetKeyState(int virtualKey) {
    const auto key = static_cast<std::size_t>(virtualKey);
    const bool pressed = key < g_pressedKeys.size() && g_pressedKeys[key];
    return static_cast<SHORT>(pressed ? -0x8000 : 0);
}
