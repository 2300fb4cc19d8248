// SPDX-License-Identifier: MIT
// Reads a skin's resources, and releases the handle fields that they fill.
#pragma once

#include <windows.h>

#include "keyboard/keyboard.h"

// The bytes of a data resource (type "RC_DATA"), valid while the module is loaded. Null when there is none.
struct DataResource {
    const BYTE* bytes = nullptr;
    DWORD size = 0;
};
DataResource FindDataResource(HMODULE module, LPCWSTR name);

WORD ReadBigEndian16(const BYTE* bytes);
WORD ReadLittleEndian16(const BYTE* bytes);
LONG ReadLittleEndian32(const BYTE* bytes);

// Adds the records of 16 bytes, with big-endian 16-bit fields, to an empty layout. Bytes that do not fill a
// record are ignored. If memory runs out, the layout stays empty.
void ReadLayout(const DataResource& resource, KeyLayout& layout);

// Width and height in pixels; false when the handle is not a bitmap.
bool GetBitmapSize(HBITMAP bitmap, SIZE& size);

// Set the field to null if the handle could be deleted. A bitmap that is still selected cannot; it stays in
// its field, to be deleted later.
void ReleaseBitmap(HBITMAP& field);
void ReleaseContext(HDC& field);
// Stores the new handle, even null, and deletes an old one that differs.
void ReplaceBitmap(HBITMAP& field, HBITMAP bitmap);
