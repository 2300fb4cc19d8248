// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "device/faults.h"
#include "graphics/graphics.h"
#include "graphics/objects.h"

namespace host {
namespace {

// Larger than any screen or skin, and small enough for a handheld.
constexpr std::size_t kMaxBytes = std::size_t{64} << 20;

// Null and the last error if this layer does not make such sections.
std::unique_ptr<Bitmap> MakeSection(const BITMAPINFOHEADER& header) {
    const bool known = header.biBitCount == 24 || header.biBitCount == 32;
    if (header.biSize < sizeof(BITMAPINFOHEADER) || header.biPlanes != 1 || !known ||
        header.biCompression != BI_RGB || header.biHeight < -kMaxSide)
        return Fail(ERROR_INVALID_PARAMETER, nullptr);
    const PixelFormat format = header.biBitCount == 24 ? PixelFormat::Rgb24 : PixelFormat::Rgb32;
    auto bitmap = MakeBitmap(header.biWidth, std::abs(header.biHeight), format,
                             header.biHeight < 0 ? RowOrder::TopDown : RowOrder::BottomUp);
    if (!bitmap) return nullptr;
    bitmap->surface.shared = true;
    bitmap->header = header;
    bitmap->header.biSize = sizeof(BITMAPINFOHEADER);
    bitmap->header.biSizeImage =
        static_cast<DWORD>(std::abs(bitmap->surface.stride)) * static_cast<DWORD>(bitmap->surface.height);
    return bitmap;
}

int DescribeBitmap(const Bitmap& bitmap, int size, void* record) {
    if (!record) return sizeof(BITMAP);
    if (size < static_cast<int>(sizeof(BITMAP))) return Fail(ERROR_INVALID_PARAMETER, 0);
    const Surface& surface = bitmap.surface;
    const bool isSection = bitmap.header.biSize != 0;
    DIBSECTION section{};
    section.dsBm = {.bmType = 0,
                    .bmWidth = surface.width,
                    .bmHeight = surface.height,
                    .bmWidthBytes = static_cast<LONG>(std::abs(surface.stride)),
                    .bmPlanes = 1,
                    .bmBitsPixel = static_cast<WORD>(BitsPerPixel(surface.format)),
                    .bmBits = isSection ? bitmap.memory.get() : nullptr};
    section.dsBmih = bitmap.header;
    const bool wantsSection = isSection && size >= static_cast<int>(sizeof(DIBSECTION));
    const std::size_t written = wantsSection ? sizeof(DIBSECTION) : sizeof(BITMAP);
    std::memcpy(record, &section, written);
    return static_cast<int>(written);
}

// Callers may ask for only the first part of a font's record.
int DescribeFont(const Font& font, int size, void* record) {
    if (!record) return sizeof(LOGFONTW);
    if (size <= 0) return Fail(ERROR_INVALID_PARAMETER, 0);
    const int written = std::min(size, static_cast<int>(sizeof(LOGFONTW)));
    std::memcpy(record, &font.logical, static_cast<std::size_t>(written));
    return written;
}

}  // namespace

std::unique_ptr<Bitmap> MakeBitmap(int width, int height, PixelFormat format, RowOrder order,
                                   int rowAlignment) {
    if (width <= 0 || height <= 0) return Fail(ERROR_INVALID_PARAMETER, nullptr);
    const auto alignment = static_cast<std::size_t>(rowAlignment);
    const auto rowBits = static_cast<std::size_t>(width) * static_cast<std::size_t>(BitsPerPixel(format));
    const std::size_t rowBytes = (rowBits + 8 * alignment - 1) / (8 * alignment) * alignment;
    const std::size_t bytes = rowBytes * static_cast<std::size_t>(height);
    auto bitmap = std::make_unique<Bitmap>();
    if (width <= kMaxSide && height <= kMaxSide && bytes <= kMaxBytes)
        bitmap->memory.reset(new (std::nothrow) BYTE[bytes]());
    if (!bitmap->memory) return Fail(ERROR_NOT_ENOUGH_MEMORY, nullptr);
    Surface& surface = bitmap->surface;
    surface.width = width;
    surface.height = height;
    surface.format = format;
    surface.stride = static_cast<std::ptrdiff_t>(rowBytes);
    surface.top = bitmap->memory.get();
    if (order == RowOrder::BottomUp) {
        surface.top += bytes - rowBytes;
        surface.stride = -surface.stride;
    }
    return bitmap;
}

}  // namespace host

using namespace host;

HBITMAP WINAPI CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
    if (CallFails(Call::CreateBitmap, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    if (planes != 1 || (bitsPerPixel != 1 && bitsPerPixel != 32))
        return Fail(ERROR_INVALID_PARAMETER, nullptr);
    const PixelFormat format = bitsPerPixel == 1 ? PixelFormat::Mono : PixelFormat::Rgb32;
    auto bitmap = MakeBitmap(width, height, format, RowOrder::TopDown, sizeof(WORD));
    if (!bitmap) return nullptr;
    const Surface& surface = bitmap->surface;
    if (bits) std::memcpy(surface.top, bits, static_cast<std::size_t>(surface.stride * height));
    if (bits && format == PixelFormat::Rgb32)
        for (int y = 0; y < height; ++y)
            ReadWords(surface, 0, y, width, kBitsAsWords, surface.Words(0, y));
    return HandleOf<HBITMAP>(AddObject(std::move(bitmap)));
}

// Makes sections of 24 and 32 bits in their own memory.
HBITMAP WINAPI CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                                DWORD) {
    if (bits) *bits = nullptr;
    if (CallFails(Call::CreateDIBSection, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    if (dc && !FindObject<Context>(dc)) return nullptr;
    if (!info || usage != DIB_RGB_COLORS || section) return Fail(ERROR_INVALID_PARAMETER, nullptr);
    auto made = MakeSection(info->bmiHeader);
    Bitmap* bitmap = made ? AddObject(std::move(made)) : nullptr;
    if (bitmap && bits) *bits = bitmap->memory.get();
    return HandleOf<HBITMAP>(bitmap);
}

int WINAPI GetObjectW(HANDLE handle, int size, LPVOID record) {
    if (CallFails(Call::GetObject, ERROR_INVALID_HANDLE)) return 0;
    const GdiObject* object = GetGraphics().objects.Find(handle);
    if (object && object->type == ObjectType::Bitmap)
        return DescribeBitmap(static_cast<const Bitmap&>(*object), size, record);
    if (object && object->type == ObjectType::Font)
        return DescribeFont(static_cast<const Font&>(*object), size, record);
    return Fail(ERROR_INVALID_HANDLE, 0);
}

HBITMAP WINAPI LoadBitmapW(HINSTANCE instance, LPCWSTR name) {
    if (CallFails(Call::LoadBitmap, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    const HRSRC resource = FindResourceW(instance, name, RT_BITMAP);
    if (!resource) return nullptr;
    const HGLOBAL bytes = LoadResource(instance, resource);
    if (!bytes) return nullptr;
    return CreateBitmapFromDib(static_cast<const BYTE*>(bytes), SizeofResource(instance, resource));
}
