// SPDX-License-Identifier: MIT
// Image lists. They keep pixels, not bitmaps, so only the list itself counts as a handle.
#include <commctrl.h>

#include "device/faults.h"
#include "graphics/blit.h"

namespace host {
namespace {

constexpr DWORD kOpaque = 0xFF000000;
constexpr int kMaxImageSide = 1024;  // pixels
constexpr int kMaxImages = 32767;    // in a list

struct ImageList {
    int width = 0;
    int height = 0;
    bool masked = false;
    std::vector<DWORD> pixels;  // 0xAARRGGBB, alpha 0 or 255: image after image, rows from the top

    int Count() const { return static_cast<int>(pixels.size() / ImagePixels()); }
    std::size_t ImagePixels() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
    const DWORD* Row(int index, int y) const {
        return pixels.data() + static_cast<std::size_t>(index) * ImagePixels() +
               static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};
HandleTable<ImageList, HandleKind::ImageList> g_lists;

// Null and the last error if the list has no image of this index.
ImageList* FindImage(const void* handle, int index) {
    ImageList* list = g_lists.Require(handle);
    if (!list || (index >= 0 && index < list->Count())) return list;
    return Fail(ERROR_INVALID_PARAMETER, nullptr);
}

// Appends one row of an image, read from x on.
void AppendRow(ImageList& list, const Surface& surface, int x, int y, DWORD transparent) {
    const auto width = static_cast<std::size_t>(list.width);
    const std::size_t start = list.pixels.size();
    list.pixels.resize(start + width);  // transparent
    if (y >= surface.height) return;
    DWORD* row = list.pixels.data() + start;
    ReadWords(surface, x, y, list.width, kBitsAsWords, row);
    for (DWORD* pixel = row; pixel != row + width; ++pixel)
        *pixel = list.masked && *pixel == transparent ? 0 : *pixel | kOpaque;
}

int AddImages(ImageList& list, const Bitmap& bitmap, COLORREF transparent) {
    const int first = list.Count();
    const int added = bitmap.surface.width / list.width;
    if (bitmap.holders != 0 || added == 0 || added > kMaxImages - first)
        return Fail(bitmap.holders != 0 ? ERROR_ACCESS_DENIED : ERROR_INVALID_PARAMETER, -1);
    for (int image = 0; image < added; ++image)
        for (int y = 0; y < list.height; ++y)
            AppendRow(list, bitmap.surface, image * list.width, y, SwapRedAndBlue(transparent));
    return first;
}

// Draws one row of an image into [left, right) of the target's row; imageX is the position of the image's
// left edge.
void DrawRow(const Surface& target, const DWORD* image, int imageX, int y, int left, int right) {
    for (int x = left; x < right; ++x) {
        const DWORD pixel = image[x - imageX];
        if ((pixel & kOpaque) == 0) continue;
        const DWORD word = WordFor(target, SwapRedAndBlue(pixel));
        WriteWords(target, x, y, 1, &word);
    }
}

}  // namespace

Picture PictureOf(HANDLE handle, int index) {
    const ImageList* list = FindImage(handle, index);
    if (!list) return {};
    const DWORD* first = list->Row(index, 0);
    return {list->width, list->height, {first, first + list->ImagePixels()}};
}

void ResetImageLists() { g_lists.CloseAll(); }

void CountImageLists(LiveHandles& counts) { counts.lists = g_lists.Count(); }

}  // namespace host

using namespace host;

HIMAGELIST WINAPI ImageList_Create(int width, int height, UINT flags, int, int) {
    if (CallFails(Call::CreateImageList, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    if (width <= 0 || height <= 0 || width > kMaxImageSide || height > kMaxImageSide ||
        (flags & ~UINT{ILC_MASK}) != 0)
        return Fail(ERROR_INVALID_PARAMETER, nullptr);
    auto list = std::make_unique<ImageList>();
    list->width = width;
    list->height = height;
    list->masked = (flags & ILC_MASK) != 0;
    return ToHandle<HIMAGELIST>(g_lists.Open(std::move(list)));
}

BOOL WINAPI ImageList_Destroy(HIMAGELIST list) {
    if (g_lists.Close(list)) return TRUE;
    return Fail(ERROR_INVALID_HANDLE, FALSE);
}

int WINAPI ImageList_AddMasked(HIMAGELIST handle, HBITMAP bitmapHandle, COLORREF transparent) {
    if (CallFails(Call::AddImage, ERROR_NOT_ENOUGH_MEMORY)) return -1;
    ImageList* list = g_lists.Require(handle);
    const Bitmap* bitmap = list ? FindObject<Bitmap>(bitmapHandle) : nullptr;
    return bitmap ? AddImages(*list, *bitmap, transparent) : -1;
}

int WINAPI ImageList_GetImageCount(HIMAGELIST handle) {
    const ImageList* list = g_lists.Require(handle);
    return list ? list->Count() : 0;
}

BOOL WINAPI ImageList_Draw(HIMAGELIST handle, int index, HDC dc, int x, int y, UINT) {
    const ImageList* list = FindImage(handle, index);
    const Context* context = list ? FindObject<Context>(dc) : nullptr;
    if (!context) return FALSE;
    // The area's position saturates only far outside the surface, where nothing is visible.
    const RECT area = PlaceArea(*context, x, y, list->width, list->height);
    ForEachVisible(*context, area, [&](const RECT& part) {
        for (LONG row = part.top; row < part.bottom; ++row)
            DrawRow(context->bitmap->surface, list->Row(index, row - area.top), area.left, row, part.left,
                    part.right);
    });
    return TRUE;
}
