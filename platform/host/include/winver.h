// SPDX-License-Identifier: MIT
// The version resource of a file.
#pragma once

#include <windef.h>

#define RT_VERSION (reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(16)))
#define VS_VERSION_INFO 1

struct tagVS_FIXEDFILEINFO {
    DWORD dwSignature;  // 0xFEEF04BD
    DWORD dwStrucVersion;
    DWORD dwFileVersionMS;
    DWORD dwFileVersionLS;
    DWORD dwProductVersionMS;
    DWORD dwProductVersionLS;
    DWORD dwFileFlagsMask;
    DWORD dwFileFlags;
    DWORD dwFileOS;
    DWORD dwFileType;
    DWORD dwFileSubtype;
    DWORD dwFileDateMS;
    DWORD dwFileDateLS;
};
using VS_FIXEDFILEINFO = tagVS_FIXEDFILEINFO;

// The size in bytes of the file's version block, whether the file is loaded or not; 0 if it has none.
DWORD WINAPI GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD ignored);
// Copies as much of the block as fits.
BOOL WINAPI GetFileVersionInfoW(LPCWSTR path, DWORD ignored, DWORD size, LPVOID block);
// Finds "\", "\VarFileInfo\Translation" or "\StringFileInfo\<table>\<name>", ignoring case, in a block from
// GetFileVersionInfoW. The value belongs to the block. Its size is in characters for texts, which end with a
// null inside the block, and in bytes for anything else.
BOOL WINAPI VerQueryValueW(LPCVOID block, LPCWSTR path, LPVOID* value, UINT* size);
