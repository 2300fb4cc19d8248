// SPDX-License-Identifier: MIT
// Windows, messages, painting cycles, the pen's capture, the focus, and resources of the user interface.
#pragma once

#include <windef.h>
#include <wingdi.h>

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

// --- Messages ---------------------------------------------------------------------------------------------
#define WM_NULL 0x0000
#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_MOVE 0x0003
#define WM_SIZE 0x0005
#define WM_SETFOCUS 0x0007
#define WM_KILLFOCUS 0x0008
#define WM_ENABLE 0x000A
#define WM_SETTEXT 0x000C
#define WM_GETTEXT 0x000D
#define WM_GETTEXTLENGTH 0x000E
#define WM_PAINT 0x000F
#define WM_QUIT 0x0012
#define WM_ERASEBKGND 0x0014
#define WM_SHOWWINDOW 0x0018
#define WM_SETFONT 0x0030
#define WM_GETFONT 0x0031
#define WM_KEYDOWN 0x0100
#define WM_KEYUP 0x0101
#define WM_CHAR 0x0102
#define WM_INITDIALOG 0x0110
#define WM_COMMAND 0x0111
#define WM_MOUSEMOVE 0x0200
#define WM_LBUTTONDOWN 0x0201
#define WM_LBUTTONUP 0x0202
#define WM_LBUTTONDBLCLK 0x0203
#define WM_CAPTURECHANGED 0x0215
#define WM_USER 0x0400
#define MK_LBUTTON 0x0001

// --- Window styles ----------------------------------------------------------------------------------------
#define CS_VREDRAW 0x0001u
#define CS_HREDRAW 0x0002u
#define CS_DBLCLKS 0x0008u
#define WS_POPUP 0x80000000u
#define WS_CHILD 0x40000000u
#define WS_VISIBLE 0x10000000u
#define WS_DISABLED 0x08000000u
#define WS_CLIPSIBLINGS 0x04000000u
#define WS_CLIPCHILDREN 0x02000000u
#define WS_BORDER 0x00800000u
#define WS_VSCROLL 0x00200000u
#define WS_GROUP 0x00020000u
#define WS_TABSTOP 0x00010000u
#define WS_EX_TOPMOST 0x00000008u

#define SW_HIDE 0
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5

#define GW_HWNDNEXT 2
#define GW_CHILD 5

#define GWL_STYLE (-16)
#define GWLP_WNDPROC (-4)
#define GWLP_USERDATA (-21)
// Of dialogs alone.
#define DWLP_MSGRESULT 0
#define DWLP_DLGPROC (DWLP_MSGRESULT + static_cast<int>(sizeof(LRESULT)))
#define DWLP_USER (DWLP_DLGPROC + static_cast<int>(sizeof(DLGPROC)))

#define PM_REMOVE 1

// --- System metrics, colours, virtual keys ----------------------------------------------------------------
#define SM_CXSCREEN 0
#define SM_CYSCREEN 1

// The handheld's colour indices have this flag; an index without it means the same colour.
#define SYS_COLOR_INDEX_FLAG 0x40000000
#define COLOR_ACTIVECAPTION (2 | SYS_COLOR_INDEX_FLAG)
#define COLOR_INACTIVECAPTION (3 | SYS_COLOR_INDEX_FLAG)
#define COLOR_WINDOW (5 | SYS_COLOR_INDEX_FLAG)
#define COLOR_WINDOWFRAME (6 | SYS_COLOR_INDEX_FLAG)
#define COLOR_WINDOWTEXT (8 | SYS_COLOR_INDEX_FLAG)
#define COLOR_CAPTIONTEXT (9 | SYS_COLOR_INDEX_FLAG)
#define COLOR_HIGHLIGHT (13 | SYS_COLOR_INDEX_FLAG)
#define COLOR_HIGHLIGHTTEXT (14 | SYS_COLOR_INDEX_FLAG)
#define COLOR_BTNFACE (15 | SYS_COLOR_INDEX_FLAG)
#define COLOR_GRAYTEXT (17 | SYS_COLOR_INDEX_FLAG)

#define VK_BACK 0x08
#define VK_TAB 0x09
#define VK_RETURN 0x0D
#define VK_SHIFT 0x10
#define VK_CONTROL 0x11
#define VK_ESCAPE 0x1B
#define VK_SPACE 0x20
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28
#define VK_DELETE 0x2E
#define VK_OEM_1 0xBA
#define VK_OEM_PLUS 0xBB
#define VK_OEM_COMMA 0xBC
#define VK_OEM_MINUS 0xBD
#define VK_OEM_PERIOD 0xBE
#define VK_OEM_2 0xBF
#define VK_OEM_3 0xC0
#define VK_OEM_4 0xDB
#define VK_OEM_5 0xDC
#define VK_OEM_6 0xDD
#define VK_OEM_7 0xDE
#define KEYEVENTF_KEYUP 0x0002

#define IDC_ARROW MAKEINTRESOURCEW(32512)

struct WNDCLASSW {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
};

struct CREATESTRUCTW {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
};

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};

// --- Classes and windows ----------------------------------------------------------------------------------
// All of this belongs to one thread. A null or stale handle fails with ERROR_INVALID_WINDOW_HANDLE. Windows
// have no frame, only a client area, and never draw over their children and siblings.
ATOM WINAPI RegisterClassW(const WNDCLASSW* windowClass);
BOOL WINAPI UnregisterClassW(LPCWSTR name, HINSTANCE instance);
// Finds the class by name or atom: of this instance, of the null instance, or of a control. A new child is
// below its siblings, a new top-level window above all others except those with WS_EX_TOPMOST. The caller
// destroys the window, or it goes with its parent or owner.
HWND WINAPI CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                            LPVOID parameter);
BOOL WINAPI DestroyWindow(HWND window);
BOOL WINAPI IsWindow(HWND window);
BOOL WINAPI IsWindowVisible(HWND window);
HWND WINAPI GetParent(HWND window);
// The topmost child (GW_CHILD) or the next sibling below (GW_HWNDNEXT); null when there is none.
HWND WINAPI GetWindow(HWND window, UINT relation);
BOOL WINAPI ShowWindow(HWND window, int command);
BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL WINAPI BringWindowToTop(HWND window);
BOOL WINAPI GetWindowRect(HWND window, RECT* rectangle);
BOOL WINAPI GetClientRect(HWND window, RECT* rectangle);
BOOL WINAPI ScreenToClient(HWND window, POINT* point);
BOOL WINAPI ClientToScreen(HWND window, POINT* point);
LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index);
LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
// The number of characters copied, without the null.
int WINAPI GetClassNameW(HWND window, LPWSTR name, int characters);
// When the window with the focus is disabled, its top-level window gets the focus. TRUE: it was disabled
// before.
BOOL WINAPI EnableWindow(HWND window, BOOL enable);
BOOL WINAPI IsWindowEnabled(HWND window);
// These send WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH; lengths are in characters without the null.
BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text);
int WINAPI GetWindowTextW(HWND window, LPWSTR text, int characters);
int WINAPI GetWindowTextLengthW(HWND window);
LRESULT WINAPI DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// --- Messages ---------------------------------------------------------------------------------------------
LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// No filters: both take messages of every window and number. While the queue is empty, GetMessageW calls the
// driver's idle handler (see host_control.h) until there is a message.
BOOL WINAPI GetMessageW(MSG* message, HWND window, UINT first, UINT last);
BOOL WINAPI PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove);
LRESULT WINAPI DispatchMessageW(const MSG* message);
void WINAPI PostQuitMessage(int exitCode);

// --- Painting ---------------------------------------------------------------------------------------------
BOOL WINAPI InvalidateRect(HWND window, const RECT* rectangle, BOOL erase);
BOOL WINAPI UpdateWindow(HWND window);
BOOL WINAPI GetUpdateRect(HWND window, RECT* rectangle, BOOL erase);
// Does not nest: a second BeginPaint for the window fails until EndPaint.
HDC WINAPI BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT* paint);
// Null means the whole screen. Release it with ReleaseDC for the same window.
HDC WINAPI GetDC(HWND window);
int WINAPI ReleaseDC(HWND window, HDC dc);
int WINAPI FillRect(HDC dc, const RECT* rectangle, HBRUSH brush);
DWORD WINAPI GetSysColor(int index);
HBRUSH WINAPI GetSysColorBrush(int index);

#define DT_LEFT 0x0000
#define DT_CENTER 0x0001
#define DT_RIGHT 0x0002
#define DT_VCENTER 0x0004
#define DT_SINGLELINE 0x0020
#define DT_NOCLIP 0x0100
#define DT_NOPREFIX 0x0800
// Returns the height of the text in pixels, 0 on failure. Lines break at "\n"; long lines are not wrapped.
int WINAPI DrawTextW(HDC dc, LPCWSTR text, int length, RECT* rectangle, UINT format);

// --- Pen and focus ----------------------------------------------------------------------------------------
HWND WINAPI SetCapture(HWND window);
BOOL WINAPI ReleaseCapture();
HWND WINAPI GetCapture();
HWND WINAPI SetFocus(HWND window);
HWND WINAPI GetFocus();
// The top-level window that has the focus or contains it; without a focus, the topmost modal window.
HWND WINAPI GetActiveWindow();
SHORT WINAPI GetKeyState(int virtualKey);

// --- Dialogs ----------------------------------------------------------------------------------------------
#define DS_SETFONT 0x0040u
#define DS_CENTER 0x0800u
#define IDOK 1
#define IDCANCEL 2
#define MB_OK 0x0000u
#define MB_OKCANCEL 0x0001u
#define MB_ICONHAND 0x0010u

// Runs the dialog of a template (RT_DIALOG, the standard form) until EndDialog; returns its result. The
// owner, which may be null, is disabled meanwhile. Returns 0 if the owner is no window, -1 if the dialog
// cannot be created, and IDCANCEL if its message loop gets WM_QUIT.
INT_PTR WINAPI DialogBoxParamW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC procedure,
                               LPARAM parameter);
// Hides the dialog and enables its owner at once; DialogBoxParamW returns after the present message.
BOOL WINAPI EndDialog(HWND dialog, INT_PTR result);
HWND WINAPI GetDlgItem(HWND dialog, int id);
int WINAPI GetDlgCtrlID(HWND control);
// MB_OK or MB_OKCANCEL, with or without MB_ICONHAND. IDOK, IDCANCEL, or 0 if the box cannot be created.
int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

// --- Controls ---------------------------------------------------------------------------------------------
// "Static": wraps its text; WS_BORDER draws a frame, or a line when the control is one pixel high.
#define SS_LEFT 0x00u
#define SS_CENTER 0x01u
#define SS_RIGHT 0x02u

// "Button".
#define BS_PUSHBUTTON 0x00u
#define BS_DEFPUSHBUTTON 0x01u
#define BS_AUTOCHECKBOX 0x03u
#define BS_CENTER 0x0300u
#define BS_VCENTER 0x0C00u
#define BM_GETCHECK 0x00F0
#define BM_SETCHECK 0x00F1
#define BM_CLICK 0x00F5
#define BN_CLICKED 0
#define BST_UNCHECKED 0
#define BST_CHECKED 1

// "ComboBox": always a drop-down list. The height given includes the list; the window is only as high as the
// closed field, which depends on its font.
#define CBS_DROPDOWNLIST 0x0003u
#define CBS_SORT 0x0100u
#define CBS_NOINTEGRALHEIGHT 0x0400u
#define CB_ERR (-1)
#define CB_ADDSTRING 0x0143
#define CB_DELETESTRING 0x0144
#define CB_GETCOUNT 0x0146
#define CB_GETCURSEL 0x0147
#define CB_GETLBTEXT 0x0148
#define CB_GETLBTEXTLEN 0x0149
#define CB_SETCURSEL 0x014E
#define CB_SHOWDROPDOWN 0x014F
#define CB_GETDROPPEDCONTROLRECT 0x0152
#define CB_GETDROPPEDSTATE 0x0157
#define CBN_SELCHANGE 1
#define CBN_DROPDOWN 7
#define CBN_CLOSEUP 8
#define CBN_SELENDOK 9
#define CBN_SELENDCANCEL 10

// --- Resources and metrics --------------------------------------------------------------------------------
int WINAPI GetSystemMetrics(int index);
// A device-dependent bitmap in the screen's format; a 1-bit one with the palette black, white stays 1-bit. It
// outlives the module; delete it with DeleteObject.
HBITMAP WINAPI LoadBitmapW(HINSTANCE instance, LPCWSTR name);
int WINAPI LoadStringW(HINSTANCE instance, UINT id, LPWSTR text, int characters);
HCURSOR WINAPI LoadCursorW(HINSTANCE instance, LPCWSTR name);

// --- Rectangles -------------------------------------------------------------------------------------------
BOOL WINAPI EqualRect(const RECT* first, const RECT* second);
// The right and the bottom edge are outside.
BOOL WINAPI PtInRect(const RECT* rectangle, POINT point);
