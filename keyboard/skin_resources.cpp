// SPDX-License-Identifier: MIT
#include "keyboard/skin_resources.h"

#include "framework/memory.h"

namespace {

constexpr std::size_t kRecordBytes = 16;

}  // namespace

DataResource FindDataResource(HMODULE module, LPCWSTR name) {
    if (!module) return {};  // a null module would mean the running program
    const HRSRC resource = FindResourceW(module, name, TEXT("RC_DATA"));
    if (!resource) return {};
    const auto* bytes = static_cast<const BYTE*>(LoadResource(module, resource));
    if (!bytes) return {};
    return {bytes, SizeofResource(module, resource)};
}

WORD ReadBigEndian16(const BYTE* bytes) { return static_cast<WORD>(bytes[0] << 8 | bytes[1]); }

WORD ReadLittleEndian16(const BYTE* bytes) { return static_cast<WORD>(bytes[1] << 8 | bytes[0]); }

LONG ReadLittleEndian32(const BYTE* bytes) {
    return static_cast<LONG>(static_cast<DWORD>(ReadLittleEndian16(bytes)) |
                             static_cast<DWORD>(ReadLittleEndian16(bytes + 2)) << 16);
}

void ReadLayout(const DataResource& resource, KeyLayout& layout) {
    const bool complete = EnoughMemory([&] {
        for (std::size_t i = 0; i < resource.size / kRecordBytes; ++i) {
            const BYTE* const record = resource.bytes + i * kRecordBytes;
            KeyEntry& entry = layout[ReadBigEndian16(record)];
            entry.m_nBitmap = ReadBigEndian16(record + 2);
            entry.m_Rects.push_back({ReadBigEndian16(record + 4), ReadBigEndian16(record + 6),
                                     ReadBigEndian16(record + 8), ReadBigEndian16(record + 10)});
        }
    });
    if (!complete) layout.clear();
}

bool GetBitmapSize(HBITMAP bitmap, SIZE& size) {
    BITMAP description{};
    if (!GetObjectW(bitmap, sizeof description, &description)) return false;
    size = {description.bmWidth, description.bmHeight};
    return true;
}

void ReleaseBitmap(HBITMAP& field) {
    if (field && DeleteObject(field)) field = nullptr;
}

void ReleaseContext(HDC& field) {
    if (field && DeleteDC(field)) field = nullptr;
}

void ReplaceBitmap(HBITMAP& field, HBITMAP bitmap) {
    if (field && field != bitmap) DeleteObject(field);
    field = bitmap;
}
