// SPDX-License-Identifier: MIT
// The shell's help for dialogs. Desktop Windows has no such header, so this one serves every build.
#pragma once

#include <windows.h>

#define SHIDIM_FLAGS 0x0001
#define SHIDIF_DONEBUTTON 0x0001
#define SHIDIF_SIZEDLGFULLSCREEN 0x0004

struct SHINITDLGINFO {
    DWORD dwMask;  // SHIDIM_FLAGS: dwFlags holds something
    HWND hDlg;
    DWORD dwFlags;
};

// Called from WM_INITDIALOG (ordinal 56 of the shell library). SHIDIF_DONEBUTTON gives the dialog an OK
// button (IDOK) at its top right, SHIDIF_SIZEDLGFULLSCREEN the size of the whole screen, which it then hears
// of by WM_SIZE and keeps when the screen changes. FALSE, with the last error, when something of it cannot be
// done.
extern "C" BOOL WINAPI SHInitDialog(SHINITDLGINFO* info);
