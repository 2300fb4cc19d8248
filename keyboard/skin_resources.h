// SPDX-License-Identifier: MIT
// Reading a skin's resources, and the release of the handle fields that they fill.
#pragma once

#include <windows.h>

#include "keyboard/keyboard.h"

// Bytes of a raw data resource (type "RC_DATA"), valid while the module is loaded. Null when there is none.
struct DataResource {
    const BYTE* bytes = nullptr;
    DWORD size = 0;
};
DataResource FindDataResource(HMODULE module, LPCWSTR name);

WORD ReadBigEndian16(const BYTE* bytes);
WORD ReadLittleEndian16(const BYTE* bytes);
LONG ReadLittleEndian32(const BYTE* bytes);

// Adds the layout's records (16 bytes each, big-endian 16-bit fields) to an empty layout. A remainder that
// does not fill a record is ignored. Without memory for all of them the layout stays empty.
void ReadLayout(const DataResource& resource, KeyLayout& layout);

// Width and height in pixels; false when the handle is not a bitmap.
bool GetBitmapSize(HBITMAP bitmap, SIZE& size);

// A field becomes null when its handle could be deleted. A bitmap that is still selected cannot; it stays in
// its field, to be tried again.
void ReleaseBitmap(HBITMAP& field);
void ReleaseContext(HDC& field);
// Stores the new handle, null included; an old one that differs is deleted first.
void ReplaceBitmap(HBITMAP& field, HBITMAP bitmap);
