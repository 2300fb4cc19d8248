// SPDX-License-Identifier: MIT
// Windows, messages, painting cycles, the pen's capture, the focus, and resources of the user interface.
#pragma once

#include <windef.h>
#include <wingdi.h>

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

// --- Messages ---------------------------------------------------------------------------------------------
#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_MOVE 0x0003
#define WM_SIZE 0x0005
#define WM_SETFOCUS 0x0007
#define WM_KILLFOCUS 0x0008
#define WM_PAINT 0x000F
#define WM_QUIT 0x0012
#define WM_ERASEBKGND 0x0014
#define WM_SHOWWINDOW 0x0018
#define WM_NCCREATE 0x0081
#define WM_NCDESTROY 0x0082
#define WM_KEYDOWN 0x0100
#define WM_KEYUP 0x0101
#define WM_CHAR 0x0102
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
#define WS_SYSMENU 0x00080000u
#define WS_EX_TOPMOST 0x00000008u

#define SW_HIDE 0
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5

#define GW_CHILD 5

#define GWL_STYLE (-16)
#define GWLP_WNDPROC (-4)
#define GWLP_USERDATA (-21)

#define PM_REMOVE 1

// --- System metrics, colours, virtual keys ----------------------------------------------------------------
#define SM_CXSCREEN 0
#define SM_CYSCREEN 1

// The handheld's colour indices carry a flag; the plain index means the same colour.
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
ATOM WINAPI RegisterClassW(const WNDCLASSW* windowClass);
BOOL WINAPI UnregisterClassW(LPCWSTR name, HINSTANCE instance);
HWND WINAPI CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter);
BOOL WINAPI DestroyWindow(HWND window);
BOOL WINAPI IsWindow(HWND window);
BOOL WINAPI IsWindowVisible(HWND window);
HWND WINAPI GetParent(HWND window);
// The topmost child; null when there is none. GW_CHILD is the one relation.
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
LRESULT WINAPI DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// --- Messages ---------------------------------------------------------------------------------------------
LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// With an empty queue it lets the driver of the device act (see the control header) until a message is there.
BOOL WINAPI GetMessageW(MSG* message, HWND window, UINT first, UINT last);
BOOL WINAPI PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove);
LRESULT WINAPI DispatchMessageW(const MSG* message);
void WINAPI PostQuitMessage(int exitCode);

// --- Painting ---------------------------------------------------------------------------------------------
BOOL WINAPI InvalidateRect(HWND window, const RECT* rectangle, BOOL erase);
BOOL WINAPI UpdateWindow(HWND window);
BOOL WINAPI GetUpdateRect(HWND window, RECT* rectangle, BOOL erase);
HDC WINAPI BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT* paint);
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
#define DT_CALCRECT 0x0400
#define DT_NOPREFIX 0x0800
// Returns the height of the text in pixels, 0 on failure. Lines break at "\n"; long lines are not wrapped.
int WINAPI DrawTextW(HDC dc, LPCWSTR text, int length, RECT* rectangle, UINT format);

// --- Pen and focus ----------------------------------------------------------------------------------------
HWND WINAPI SetCapture(HWND window);
BOOL WINAPI ReleaseCapture();
HWND WINAPI GetCapture();
HWND WINAPI SetFocus(HWND window);
HWND WINAPI GetFocus();
SHORT WINAPI GetKeyState(int virtualKey);

// --- Resources and metrics --------------------------------------------------------------------------------
int WINAPI GetSystemMetrics(int index);
// A device-dependent bitmap in the screen's format; a 1-bit one with the palette black, white stays 1-bit.
// It outlives the module and is deleted with DeleteObject.
HBITMAP WINAPI LoadBitmapW(HINSTANCE instance, LPCWSTR name);
int WINAPI LoadStringW(HINSTANCE instance, UINT id, LPWSTR text, int characters);
HCURSOR WINAPI LoadCursorW(HINSTANCE instance, LPCWSTR name);

// --- Rectangles -------------------------------------------------------------------------------------------
BOOL WINAPI EqualRect(const RECT* first, const RECT* second);
