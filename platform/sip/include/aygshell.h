// SPDX-License-Identifier: MIT
// The shell's functions for dialogs. Desktop Windows has no such header; this one is for all builds.
#pragma once

#include <windows.h>

#define SHIDIM_FLAGS 0x0001
#define SHIDIF_DONEBUTTON 0x0001
#define SHIDIF_SIZEDLGFULLSCREEN 0x0004

struct SHINITDLGINFO {
    DWORD dwMask;  // SHIDIM_FLAGS: dwFlags is valid
    HWND hDlg;
    DWORD dwFlags;
};

// Called from WM_INITDIALOG (ordinal 56 of the shell library). SHIDIF_DONEBUTTON gives the dialog an OK
// button (IDOK) at its top right, SHIDIF_SIZEDLGFULLSCREEN the size of the screen, now by WM_SIZE and
// whenever the screen changes. FALSE, with the last error, if a part of it fails.
extern "C" BOOL WINAPI SHInitDialog(SHINITDLGINFO* info);
