// SPDX-License-Identifier: MIT
// The dialog in which a person chooses a file.
#pragma once

#include <windef.h>

#define OFN_ENABLEHOOK 0x00000020
#define OFN_EXPLORER 0x00080000

#define CDERR_DIALOGFAILURE 0xFFFF
#define CDERR_STRUCTSIZE 0x0001
#define CDERR_INITIALIZATION 0x0002
#define FNERR_BUFFERTOOSMALL 0x3003

using LPOFNHOOKPROC = UINT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

struct OPENFILENAMEW {
    DWORD lStructSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCWSTR lpstrFilter;  // pairs of a text to show and a pattern, each with its null; a null ends them
    LPWSTR lpstrCustomFilter;
    DWORD nMaxCustFilter;
    DWORD nFilterIndex;     // of the pair, from 1; 0 is the first as well
    LPWSTR lpstrFile;       // gets the full path
    DWORD nMaxFile;         // characters, with the null
    LPWSTR lpstrFileTitle;  // gets the name with its extension; may be null
    DWORD nMaxFileTitle;
    LPCWSTR lpstrInitialDir;
    LPCWSTR lpstrTitle;
    DWORD Flags;
    WORD nFileOffset;     // of the name in the path
    WORD nFileExtension;  // of the extension in the path, 0 when there is none
    LPCWSTR lpstrDefExt;  // added to a name that is given without an extension
    LPARAM lCustData;
    LPOFNHOOKPROC
    lpfnHook;  // sees each message of the dialog first; what it answers with other than 0 is done
    LPCWSTR lpTemplateName;
    void* pvReserved;
    DWORD dwReserved;
    DWORD FlagsEx;
};

// Custom filters, templates and flags other than those above are refused (CDERR_INITIALIZATION). When the
// buffers are too small for the choice the call fails with FNERR_BUFFERTOOSMALL, and the first character of
// lpstrFile, if it has one, tells how many the path needs.
BOOL WINAPI GetOpenFileNameW(OPENFILENAMEW* request);
// Why the last call failed; 0 when it was cancelled.
DWORD WINAPI CommDlgExtendedError();
