// SPDX-License-Identifier: MIT
#include "graphics/objects.h"

#include "graphics/brushes.h"
#include "graphics/contexts.h"
#include "graphics/fonts.h"
#include "graphics/graphics.h"

namespace host {

Graphics::Graphics() {
    screen = AddStockObject<Bitmap>(*this);
    screen->holders = 1;  // no memory context may hold the screen
    unitBitmap = AddStockObject<Bitmap>(*this);
    unitBitmap->memory = std::make_unique<BYTE[]>(sizeof(DWORD));
    unitBitmap->surface = {.width = 1,
                           .height = 1,
                           .format = PixelFormat::Mono,
                           .top = unitBitmap->memory.get(),
                           .stride = sizeof(WORD)};
    whiteBrush = AddStockObject<Brush>(*this, RGB(255, 255, 255));
    blackBrush = AddStockObject<Brush>(*this, RGB(0, 0, 0));
    systemFont = AddStockObject<Font>(*this, LOGFONTW{});
    for (const COLORREF color : kColorScheme)
        systemBrushes.push_back(AddStockObject<Brush>(*this, color));
}

Graphics& MakeGraphics() {
    g_graphics = new Graphics;
    g_graphics->systemFont->logical = SystemLogFont();  // depends on the size of the screen, which exists now
    return *g_graphics;
}

// Contexts first, as they hold the others.
void ResetGraphics() {
    Graphics& graphics = GetGraphics();
    std::vector<GdiObject*> contexts;
    std::vector<void*> others;
    graphics.objects.ForEach([&](std::uint32_t, GdiObject& object, HandleOwner) {
        if (object.type == ObjectType::Context)
            contexts.push_back(&object);
        else if (!object.stock)
            others.push_back(object.handle);
    });
    for (GdiObject* context : contexts)
        CloseContext(static_cast<Context&>(*context));
    for (const void* object : others)
        graphics.objects.Close(object);
    ResetSystemColors();
    graphics.screenChanges = {};
}

void CountGraphicsHandles(LiveHandles& counts) {
    GetGraphics().objects.ForEach([&](std::uint32_t, const GdiObject& object, HandleOwner owner) {
        if (object.stock || owner != HandleOwner::Product) return;
        switch (object.type) {
            case ObjectType::Bitmap:
                ++counts.bitmaps;
                break;
            case ObjectType::Brush:
                ++counts.brushes;
                break;
            case ObjectType::Font:
                ++counts.fonts;
                break;
            case ObjectType::Context:
                ++counts.dcs;
                break;
        }
    });
}

}  // namespace host

using namespace host;

BOOL WINAPI DeleteObject(HGDIOBJ handle) {
    GdiObject* object = GetGraphics().objects.Find(handle);
    if (!object || object->type == ObjectType::Context) return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (object->stock) return TRUE;
    if (object->holders != 0) return Fail(ERROR_ACCESS_DENIED, FALSE);
    GetGraphics().objects.Close(handle);
    return TRUE;
}

HGDIOBJ WINAPI GetStockObject(int index) {
    const Graphics& graphics = GetGraphics();
    switch (index) {
        case WHITE_BRUSH:
            return graphics.whiteBrush->handle;
        case BLACK_BRUSH:
            return graphics.blackBrush->handle;
        case SYSTEM_FONT:
            return graphics.systemFont->handle;
        default:
            return Fail(ERROR_INVALID_PARAMETER, nullptr);
    }
}
