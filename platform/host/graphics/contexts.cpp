// SPDX-License-Identifier: MIT
#include "graphics/contexts.h"

#include "device/faults.h"
#include "graphics/fonts.h"
#include "graphics/graphics.h"

namespace host {
namespace {

// Makes an empty context draw on the bitmap with the stock objects.
void Prepare(Context& context, Bitmap* bitmap) {
    const Graphics& graphics = GetGraphics();
    context.bitmap = bitmap;
    context.brush = graphics.whiteBrush;
    context.font = graphics.systemFont;
    context.attributes = {};
    for (GdiObject* held : {static_cast<GdiObject*>(bitmap), static_cast<GdiObject*>(context.brush),
                            static_cast<GdiObject*>(context.font)})
        ++held->holders;
}

template <typename Object>
void* Exchange(Object*& held, GdiObject* object) {
    void* previous = held->handle;
    --held->holders;
    held = static_cast<Object*>(object);
    ++held->holders;
    return previous;
}

bool MaySelectBitmap(const Context& context, const GdiObject* bitmap) {
    if (context.onScreen) return false;
    return bitmap->holders == 0 || bitmap == context.bitmap || bitmap == GetGraphics().unitBitmap;
}

}  // namespace

void CloseContext(Context& context) {
    --context.bitmap->holders;
    --context.brush->holders;
    --context.font->holders;
    Graphics& graphics = GetGraphics();
    std::unique_ptr<GdiObject> closed = graphics.objects.Close(context.handle);
    if (context.onScreen) graphics.spareContexts.push_back(std::move(closed));
}

void ResizeScreen(SIZE size) {
    Graphics& graphics = GetGraphics();
    std::unique_ptr<Bitmap> sized = MakeBitmap(size.cx, size.cy, PixelFormat::Rgb32);
    if (!sized) return;
    graphics.screen->memory = std::move(sized->memory);
    graphics.screen->surface = sized->surface;
    graphics.screenChanges = graphics.screen->surface.Bounds();
    graphics.systemFont->logical = SystemLogFont();
    graphics.systemFont->glyphs.reset();
}

LONG ScaleToScreen(LONG pixels) {
    constexpr LONG kSmallestSide = 240;
    const Surface& screen = GetGraphics().screen->surface;
    return pixels * std::max<LONG>(std::min(screen.width, screen.height), kSmallestSide) / kSmallestSide;
}

ScreenView Screen() {
    const Surface& surface = GetGraphics().screen->surface;
    return {surface.width, surface.height, surface.top ? surface.Words(0, 0) : nullptr};
}

RECT TakeScreenChanges() { return std::exchange(GetGraphics().screenChanges, RECT{}); }

HDC OpenScreenDC(POINT origin, const Region& clip) {
    Graphics& graphics = GetGraphics();
    std::unique_ptr<GdiObject> spare;
    if (graphics.spareContexts.empty()) {
        spare = std::make_unique<Context>();
    } else {
        spare = std::move(graphics.spareContexts.back());
        graphics.spareContexts.pop_back();
    }
    GdiObject* added = AddObject(std::move(spare));
    if (!added) return nullptr;
    Context& context = static_cast<Context&>(*added);
    Prepare(context, graphics.screen);
    context.onScreen = true;
    context.origin = origin;
    context.clip = clip;
    return HandleOf<HDC>(&context);
}

bool CloseScreenDC(HDC dc) {
    Context* context = FindObject<Context>(dc);
    if (!context || !context->onScreen) return false;
    CloseContext(*context);
    return true;
}

}  // namespace host

using namespace host;

HDC WINAPI CreateCompatibleDC(HDC compatible) {
    if (CallFails(Call::CreateDC, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    if (compatible && !FindObject<Context>(compatible)) return nullptr;
    Context* context = AddObject(std::make_unique<Context>());
    if (context) Prepare(*context, GetGraphics().unitBitmap);
    return HandleOf<HDC>(context);
}

BOOL WINAPI DeleteDC(HDC dc) {
    Context* context = FindObject<Context>(dc);
    if (!context) return FALSE;
    if (context->onScreen) return Fail(ERROR_INVALID_HANDLE, FALSE);
    CloseContext(*context);
    return TRUE;
}

HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ handle) {
    if (CallFails(Call::SelectObject, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    Context* context = FindObject<Context>(dc);
    GdiObject* object = context ? GetGraphics().objects.Find(handle) : nullptr;
    if (object && object->type == ObjectType::Brush) return Exchange(context->brush, object);
    if (object && object->type == ObjectType::Font) return Exchange(context->font, object);
    if (object && object->type == ObjectType::Bitmap && MaySelectBitmap(*context, object))
        return Exchange(context->bitmap, object);
    return Fail(ERROR_INVALID_HANDLE, nullptr);
}

HGDIOBJ WINAPI GetCurrentObject(HDC dc, UINT type) {
    const Context* context = FindObject<Context>(dc);
    if (!context) return nullptr;
    switch (type) {
        case OBJ_BITMAP:
            return context->bitmap->handle;
        case OBJ_BRUSH:
            return context->brush->handle;
        case OBJ_FONT:
            return context->font->handle;
        default:
            return Fail(ERROR_INVALID_PARAMETER, nullptr);
    }
}

COLORREF WINAPI SetTextColor(HDC dc, COLORREF color) {
    Context* context = FindObject<Context>(dc);
    return context ? std::exchange(context->attributes.textColor, color) : CLR_INVALID;
}

COLORREF WINAPI SetBkColor(HDC dc, COLORREF color) {
    Context* context = FindObject<Context>(dc);
    return context ? std::exchange(context->attributes.backColor, color) : CLR_INVALID;
}

int WINAPI SetBkMode(HDC dc, int mode) {
    Context* context = FindObject<Context>(dc);
    if (!context) return 0;
    if (mode != OPAQUE && mode != TRANSPARENT) return Fail(ERROR_INVALID_PARAMETER, 0);
    return std::exchange(context->attributes.backMode, mode);
}

UINT WINAPI SetTextAlign(HDC dc, UINT align) {
    constexpr UINT gdiError = 0xFFFFFFFF;
    Context* context = FindObject<Context>(dc);
    if (!context) return gdiError;
    // The bits of TA_CENTER and of TA_BASELINE belong together.
    const UINT known =
        (align & TA_CENTER ? UINT{TA_CENTER} : 0u) | (align & TA_BASELINE ? UINT{TA_BASELINE} : 0u);
    if (align != known) return Fail(ERROR_INVALID_PARAMETER, gdiError);
    return std::exchange(context->attributes.align, align);
}
