// SPDX-License-Identifier: MIT
// Device contexts, for drawing calls.
#pragma once

#include <algorithm>
#include <cstdint>

#include "graphics/objects.h"

namespace host {

// Releases the selected objects and makes the handle stale. Keeps a context of the screen for the next paint.
void CloseContext(Context& context);

// A rectangle of surface pixels. Coordinates that do not fit saturate, far outside any surface.
inline RECT MakeArea(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height) {
    const auto fit = [](std::int64_t value) {
        return static_cast<LONG>(std::clamp<std::int64_t>(value, -0x40000000, 0x40000000));
    };
    return {fit(x), fit(y), fit(x + width), fit(y + height)};
}

// The same from the context's coordinates.
inline RECT PlaceArea(const Context& context, int x, int y, std::int64_t width, std::int64_t height) {
    return MakeArea(std::int64_t{x} + context.origin.x, std::int64_t{y} + context.origin.y, width, height);
}

inline RECT PlaceRectangle(const Context& context, const RECT& r) {
    return PlaceArea(context, r.left, r.top, std::int64_t{r.right} - r.left, std::int64_t{r.bottom} - r.top);
}

// Calls draw(rectangle) for each unclipped part of the area (surface pixels), and records changes of the
// screen.
template <typename Draw>
void ForEachVisible(const Context& context, const RECT& area, Draw draw) {
    const RECT onSurface = Intersect(area, context.bitmap->surface.Bounds());
    if (IsEmpty(onSurface)) return;
    if (!context.onScreen) {
        draw(onSurface);
        return;
    }
    RECT& changes = GetGraphics().screenChanges;
    for (const RECT& clip : context.clip.Rectangles()) {
        const RECT part = Intersect(clip, onSurface);
        if (IsEmpty(part)) continue;
        draw(part);
        changes = Bounds(changes, part);
    }
}

}  // namespace host
