// SPDX-License-Identifier: MIT
// Base types of the platform. WCHAR is char16_t here, where wchar_t has 32 bits; LONG and DWORD keep 32 bits.
#pragma once

#include <cstddef>
#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using INT = int;
using UINT = unsigned int;
using SHORT = std::int16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using BOOL = int;
using WCHAR = char16_t;
using ATOM = WORD;
using COLORREF = DWORD;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = ULONG_PTR;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using HRESULT = LONG;
using SIZE_T = std::size_t;

using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPCSTR = const char*;

#define TRUE 1
#define FALSE 0
#define WINAPI
#define CALLBACK
#define TOLKA_WIDE_LITERAL(text) u##text
#define TEXT(text) TOLKA_WIDE_LITERAL(text)
#define MAX_PATH 260

// Every handle is a pointer to its own type, so that the compiler can tell them apart.
#define DECLARE_HANDLE(name) \
    struct name##__ {        \
        int unused;          \
    };                       \
    using name = name##__*

using HANDLE = void*;
using HGLOBAL = void*;
using HGDIOBJ = void*;
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HKEY);
DECLARE_HANDLE(HRSRC);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HMENU);
using HMODULE = HINSTANCE;
using HCURSOR = HICON;

struct POINT {
    LONG x;
    LONG y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

#define LOWORD(value) (static_cast<WORD>(static_cast<DWORD_PTR>(value) & 0xFFFF))
#define HIWORD(value) (static_cast<WORD>((static_cast<DWORD_PTR>(value) >> 16) & 0xFFFF))
#define MAKELONG(low, high) \
    (static_cast<LONG>((static_cast<DWORD>(static_cast<WORD>(high)) << 16) | static_cast<WORD>(low)))
#define MAKEWPARAM(low, high) (static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKELPARAM(low, high) (static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
