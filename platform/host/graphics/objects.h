// SPDX-License-Identifier: MIT
// The graphics objects and their table. Used on the panel's thread only, without locks.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "device/faults.h"
#include "device/handles.h"
#include "graphics/region.h"
#include "graphics/surface.h"

namespace host {

struct Glyphs;

enum class ObjectType { Bitmap, Brush, Font, Context };

struct GdiObject {
    explicit GdiObject(ObjectType objectType) : type(objectType) {}
    virtual ~GdiObject() = default;

    const ObjectType type;
    bool stock = false;  // created by the layer: never deleted, never counted
    int holders = 0;     // contexts into which it is selected
    void* handle = nullptr;
};

struct Bitmap : GdiObject {
    static constexpr ObjectType kType = ObjectType::Bitmap;
    Bitmap() : GdiObject(kType) {}

    Surface surface;
    std::unique_ptr<BYTE[]> memory;
    BITMAPINFOHEADER header{};  // of a device-independent section; biSize is 0 for any other bitmap
};

struct Brush : GdiObject {
    static constexpr ObjectType kType = ObjectType::Brush;
    explicit Brush(COLORREF brushColor) : GdiObject(kType), color(brushColor) {}

    COLORREF color;
};

struct Font : GdiObject {
    static constexpr ObjectType kType = ObjectType::Font;
    explicit Font(const LOGFONTW& font);
    ~Font() override;

    LOGFONTW logical;
    std::unique_ptr<Glyphs> glyphs;  // made at the first text
};

struct Context : GdiObject {
    static constexpr ObjectType kType = ObjectType::Context;
    Context() : GdiObject(kType) {}

    Bitmap* bitmap = nullptr;
    Brush* brush = nullptr;
    Font* font = nullptr;
    bool onScreen = false;
    POINT origin{};  // the surface pixel of the context's (0, 0)
    Region clip;     // in surface pixels; only for contexts of the screen
    struct Attributes {
        COLORREF textColor = RGB(0, 0, 0);
        COLORREF backColor = RGB(255, 255, 255);
        int backMode = OPAQUE;
        UINT align = TA_LEFT | TA_TOP;
    } attributes;
};

struct Graphics {
    Graphics();

    HandleTable<GdiObject, HandleKind::Gdi> objects;
    Bitmap* screen = nullptr;
    Bitmap* unitBitmap = nullptr;  // 1 x 1, monochrome: the first bitmap of memory contexts
    Brush* whiteBrush = nullptr;
    Brush* blackBrush = nullptr;
    Font* systemFont = nullptr;
    std::vector<Brush*> systemBrushes;  // by system colour index
    RECT screenChanges{};
    std::vector<std::unique_ptr<GdiObject>>
        spareContexts;  // closed contexts of the screen, for the next paint
};

// Created at the first use and never freed, as windows of a program that is about to end may still use it.
Graphics& MakeGraphics();
inline Graphics* g_graphics = nullptr;
inline Graphics& GetGraphics() { return g_graphics ? *g_graphics : MakeGraphics(); }

// Puts the object into the table. Null and ERROR_NOT_ENOUGH_MEMORY if the table is full.
template <typename Object>
Object* AddObject(std::unique_ptr<Object> object) {
    Object* added = object.get();
    const std::uint32_t value = GetGraphics().objects.Open(std::move(object));
    if (value == 0) return nullptr;
    added->handle = ToHandle<void*>(value);
    return added;
}

template <typename Object, typename... Arguments>
Object* AddStockObject(Graphics& graphics, Arguments&&... arguments) {
    auto object = std::make_unique<Object>(std::forward<Arguments>(arguments)...);
    Object* added = object.get();
    added->stock = true;
    added->handle = ToHandle<void*>(graphics.objects.Open(std::move(object)));
    return added;
}

// Null and ERROR_INVALID_HANDLE if this is no valid handle of this type.
template <typename Object>
Object* FindObject(const void* handle) {
    GdiObject* object = GetGraphics().objects.Find(handle);
    if (!object || object->type != Object::kType) return Fail(ERROR_INVALID_HANDLE, nullptr);
    return static_cast<Object*>(object);
}

template <typename Handle, typename Object>
Handle HandleOf(const Object* object) {
    return object ? static_cast<Handle>(object->handle) : nullptr;
}

constexpr int kMaxSide = 32767;  // of a bitmap

// A bitmap of zeros, not yet in the table. Null and the last error for an impossible size.
std::unique_ptr<Bitmap> MakeBitmap(int width, int height, PixelFormat format,
                                   RowOrder order = RowOrder::TopDown, int rowAlignment = 4);

// The brush of a handle, which may also be a system colour plus one. Null if it is neither.
const Brush* FindBrush(const void* handle);

}  // namespace host
