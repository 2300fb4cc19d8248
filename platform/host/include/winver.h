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

// Bytes of the version block of the file as it is now, loaded or not; 0 when the file or the resource is
// missing.
DWORD WINAPI GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD ignored);
// Copies as much of the block as fits.
BOOL WINAPI GetFileVersionInfoW(LPCWSTR path, DWORD ignored, DWORD size, LPVOID block);
// Finds "\", "\VarFileInfo\Translation" or "\StringFileInfo\<table>\<name>", ignoring case, in a block that
// GetFileVersionInfoW filled. The value belongs to the block; its size is in characters for texts, which end
// with a null character within the block, and in bytes for anything else.
BOOL WINAPI VerQueryValueW(LPCVOID block, LPCWSTR path, LPVOID* value, UINT* size);
