// SPDX-License-Identifier: MIT
// The window manager's model: classes, the window tree, and the functions that its files share. All of it
// belongs to one thread. A window procedure may destroy any window, so a Window pointer is valid only until
// the next message is sent: code that sends one keeps the handle and looks the window up again.
#pragma once

#include <host_control.h>

#include <memory>
#include <string>
#include <vector>

#include "graphics/region.h"

namespace host {

class SystemWindow;  // windows/system_window.h

struct WindowClass {
    std::u16string name;
    HINSTANCE instance = nullptr;  // null: found from every instance
    ATOM atom = 0;
    UINT style = 0;
    WNDPROC procedure = nullptr;
    HBRUSH background = nullptr;  // a brush, a system colour plus 1, or null
    int windows = 0;              // live ones; a class in use cannot be unregistered
};

// The steps of destruction, in order; each is entered once, whatever the window's handlers call.
enum class Life {
    Alive,
    Closing,   // DestroyWindow has begun; no more children can be created
    Destroyed  // WM_DESTROY, the last message, was sent
};

struct Window {
    HWND handle = nullptr;
    WindowClass* windowClass = nullptr;
    Window* parent = nullptr;       // null for a top-level window
    HWND owner = nullptr;           // of a top-level window; may be null
    std::vector<Window*> children;  // topmost first
    WNDPROC procedure = nullptr;
    DWORD style = 0;
    DWORD extendedStyle = 0;
    UINT_PTR id = 0;  // identifier of a child
    LONG_PTR userData = 0;
    std::u16string text;
    std::shared_ptr<SystemWindow> object;  // for the layer's own classes only
    RECT bounds{};  // in the parent's client coordinates; for a top-level window on the screen
    Life life = Life::Alive;

    Region update;  // client coordinates
    bool eraseWanted = false;
    bool paintUnanswered = false;  // WM_PAINT was delivered and BeginPaint has not followed
    HDC paintContext = nullptr;    // open between BeginPaint and EndPaint
};

// --- Look-up (lifetime.cpp, classes.cpp) ------------------------------------------------------------------
// Null for an invalid handle; Require also sets ERROR_INVALID_WINDOW_HANDLE.
Window* FindWindow(HWND handle);
Window* RequireWindow(HWND handle);
// By name or atom: a class of the instance, else one for all instances, else one of the layer. Null if there
// is none.
WindowClass* FindClass(LPCWSTR name, HINSTANCE instance);
void ResetClasses();
// Destroys all windows and resets the window manager.
void ResetWindows();
void CountWindowHandles(LiveHandles& counts);

// --- The tree (tree.cpp) ----------------------------------------------------------------------------------
std::vector<Window*>& TopLevelWindows();  // topmost first
std::vector<Window*>& Siblings(const Window& window);
// Puts a new window into the tree: a child below its siblings, so that the first control of a dialog is the
// topmost, a top-level window above all others.
void LinkNew(Window& window);
// Puts a window above its siblings, or takes it out of the tree.
void LinkOnTop(Window& window);
void Unlink(Window& window);
bool IsInside(const Window& window, HWND ancestor);  // the window itself counts
const Window& TopLevelOf(const Window& window);      // its topmost ancestor, or itself
bool HasStyle(const Window& window, DWORD style);
bool IsShown(const Window& window);  // it and all its ancestors
POINT ScreenOrigin(const Window& window);
RECT ScreenBounds(const Window& window);
RECT ClientBounds(const Window& window);
// This place and size, limited to the 16-bit halves of WM_MOVE and WM_SIZE. Their sums never overflow.
RECT MessageBounds(int x, int y, int width, int height);
// The screen area over the windows that are above all others: dialogs and lists open there.
RECT FreeScreenArea();
// Clears WS_VISIBLE without a message; invalidates what was below.
void HideQuietly(Window& window);

// --- Visibility (visibility.cpp) --------------------------------------------------------------------------
enum class Children { Included, Excluded };
// Reduces a screen area to the part where the window is visible: inside its ancestors and the screen, and not
// under others. A hidden window is visible nowhere.
void ClipToVisible(const Window& window, Children children, Region& area);
// Where the window and its children are visible on the screen.
Region VisibleArea(const Window& window);
// Invalidates the visible part of the window and its children in a screen area, to be erased and painted.
void InvalidateArea(Window& window, Region area);
// Invalidates what becomes visible where this window no longer is: siblings below, then the parent or the
// bare screen, which is painted black at once.
void ExposeBelow(const Window& window, Region area);

// --- Painting (paint.cpp) ---------------------------------------------------------------------------------
enum class Erase { No, Yes };
void AddToUpdate(Window& window, const RECT& clientArea, Erase erase);
void Validate(Window& window);
void ValidateTree(Window& window);
// The next window to get WM_PAINT: topmost first, parents before their children; null if there is none.
// Validates windows whose update region is not visible, and those that left their last WM_PAINT unanswered,
// which it reports.
Window* TakeWindowToPaint();
// Closes the contexts that a removed window left open; for null, those of the whole screen.
void CloseContexts(HWND window);

// --- Messages ---------------------------------------------------------------------------------------------
// Handles WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH for DefWindowProcW (text.cpp).
LRESULT AnswerTextMessage(Window& window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CallProcedure(const Window& window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace host
