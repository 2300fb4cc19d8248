// SPDX-License-Identifier: MIT
#include "graphics/brushes.h"

#include "device/faults.h"
#include "graphics/objects.h"

namespace host {
namespace {

// Null for an unknown index.
Brush* SystemBrush(UINT_PTR index) {
    index &= ~static_cast<UINT_PTR>(SYS_COLOR_INDEX_FLAG);
    const auto& brushes = GetGraphics().systemBrushes;
    return index < brushes.size() ? brushes[index] : nullptr;
}

}  // namespace

const Brush* FindBrush(const void* handle) {
    GdiObject* object = GetGraphics().objects.Find(handle);
    if (object && object->type == ObjectType::Brush) return static_cast<Brush*>(object);
    const Brush* brush = handle ? SystemBrush(reinterpret_cast<UINT_PTR>(handle) - 1) : nullptr;
    if (!brush) SetLastError(ERROR_INVALID_HANDLE);
    return brush;
}

bool SetSystemColor(int index, COLORREF color) {
    Brush* brush = SystemBrush(static_cast<UINT>(index));
    if (brush) brush->color = color;
    return brush != nullptr;
}

void ResetSystemColors() {
    for (UINT index = 0; index < kColorScheme.size(); ++index)
        SystemBrush(index)->color = kColorScheme[index];
}

}  // namespace host

using namespace host;

HBRUSH WINAPI CreateSolidBrush(COLORREF color) {
    if (CallFails(Call::CreateBrush, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    return HandleOf<HBRUSH>(AddObject(std::make_unique<Brush>(color)));
}

DWORD WINAPI GetSysColor(int index) {
    const Brush* brush = SystemBrush(static_cast<UINT>(index));
    return brush ? brush->color : 0;
}

HBRUSH WINAPI GetSysColorBrush(int index) {
    const Brush* brush = SystemBrush(static_cast<UINT>(index));
    if (!brush) SetLastError(ERROR_INVALID_PARAMETER);
    return HandleOf<HBRUSH>(brush);
}
