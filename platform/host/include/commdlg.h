// SPDX-License-Identifier: MIT
// The open-file dialog.
#pragma once

#include <windef.h>

#define OFN_ENABLEHOOK 0x00000020
#define OFN_EXPLORER 0x00080000

using LPOFNHOOKPROC = UINT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

struct OPENFILENAMEW {
    DWORD lStructSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCWSTR lpstrFilter;  // pairs of display text and pattern, each null-terminated; then a null
    LPWSTR lpstrCustomFilter;
    DWORD nMaxCustFilter;
    DWORD nFilterIndex;     // of the pair, from 1; 0 also means the first
    LPWSTR lpstrFile;       // receives the full path
    DWORD nMaxFile;         // characters, with the null
    LPWSTR lpstrFileTitle;  // receives the name with its extension; may be null
    DWORD nMaxFileTitle;
    LPCWSTR lpstrInitialDir;
    LPCWSTR lpstrTitle;
    DWORD Flags;
    WORD nFileOffset;     // of the name in the path
    WORD nFileExtension;  // of the extension in the path, 0 when there is none
    LPCWSTR lpstrDefExt;  // added to a name without an extension
    LPARAM lCustData;
    LPOFNHOOKPROC
    lpfnHook;  // sees each message of the dialog first; a result other than 0 ends its handling
    LPCWSTR lpTemplateName;
    void* pvReserved;
    DWORD dwReserved;
    DWORD FlagsEx;
};

// FALSE if the user cancels. Refuses custom filters, templates and flags other than those above. If a buffer
// is too small the call fails, and the first character of lpstrFile, if it has room for one, is the number of
// characters needed.
BOOL WINAPI GetOpenFileNameW(OPENFILENAMEW* request);
