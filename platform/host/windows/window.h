// SPDX-License-Identifier: MIT
// The window manager's model: classes, the tree of windows, and what its files do for each other. All of it
// belongs to one thread. A window procedure may destroy any window, so a Window pointer is good only until
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

// Destruction goes through these in order; each is entered once, whatever the window's handlers call.
enum class Life {
    Alive,
    Closing,   // DestroyWindow has begun; no child can be created any more
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
    std::shared_ptr<SystemWindow> object;  // of the layer's own classes alone
    RECT bounds{};  // in the parent's client coordinates; for a top-level window on the screen
    Life life = Life::Alive;

    Region update;  // client coordinates
    bool eraseWanted = false;
    bool paintUnanswered = false;  // WM_PAINT was delivered and BeginPaint has not followed
    HDC paintContext = nullptr;    // open between BeginPaint and EndPaint
};

// --- Look-up (lifetime.cpp, classes.cpp) ------------------------------------------------------------------
// Null for a handle of no live window; Require also sets ERROR_INVALID_WINDOW_HANDLE.
Window* FindWindow(HWND handle);
Window* RequireWindow(HWND handle);
// By name or atom: the instance's own class, else one for every instance, else one of the layer's own. Null
// when there is none.
WindowClass* FindClass(LPCWSTR name, HINSTANCE instance);
bool Matches(const WindowClass& windowClass, LPCWSTR name, HINSTANCE instance);
void ResetClasses();
// Destroys every window and forgets everything else of the window manager.
void ResetWindows();
void CountWindowHandles(LiveHandles& counts);

// --- The tree (tree.cpp) ----------------------------------------------------------------------------------
std::vector<Window*>& TopLevelWindows();  // topmost first
std::vector<Window*>& Siblings(const Window& window);
// Puts a new window into the tree: a child below its siblings, so that the first control of a dialog lies
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
// This place and size, cut to what the 16-bit halves of WM_MOVE and WM_SIZE can carry. Sums of them never
// overflow.
RECT MessageBounds(int x, int y, int width, int height);
// What windows that lie above all others leave of the screen over them: dialogs and lists open there.
RECT FreeScreenArea();
// Clears WS_VISIBLE without a message; what lay below is to be painted.
void HideQuietly(Window& window);

// --- What shows (visibility.cpp) --------------------------------------------------------------------------
enum class Children { Included, Excluded };
// Takes out of a screen area what does not show of the window: outside its ancestors or the screen, or under
// others. A hidden window shows nowhere.
void ClipToVisible(const Window& window, Children children, Region& area);
// Where the window and its children show on the screen.
Region VisibleArea(const Window& window);
// Marks what shows of the window and its children in a screen area as to be erased and painted.
void InvalidateArea(Window& window, Region area);
// Marks what shows where this window no longer does: siblings below, then the parent or the bare screen,
// which is made black at once.
void ExposeBelow(const Window& window, Region area);

// --- Painting (paint.cpp) ---------------------------------------------------------------------------------
void InvalidateAllWindows();
enum class Erase { No, Yes };
void AddToUpdate(Window& window, const RECT& clientArea, Erase erase);
void Validate(Window& window);
void ValidateTree(Window& window);
// The next window to get WM_PAINT, inside the filter window if there is one: topmost first, parents before
// their children. A window that shows nothing of what is to be painted is validated on the way; one that left
// its last WM_PAINT unanswered is validated and reported. Null when there is none.
Window* TakeWindowToPaint(HWND filter);
// Closes what a window that goes left open; for null, contexts of the whole screen.
void CloseContexts(HWND window);

// --- Messages ---------------------------------------------------------------------------------------------
// What DefWindowProcW does with WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH (text.cpp).
LRESULT AnswerTextMessage(Window& window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CallProcedure(const Window& window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace host
