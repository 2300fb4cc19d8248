// SPDX-License-Identifier: MIT
// The visible parts of windows. Windows always clip their children and siblings, as on the handheld, whatever
// WS_CLIPCHILDREN and WS_CLIPSIBLINGS say.
#include <algorithm>

#include "graphics/graphics.h"
#include "windows/window.h"

namespace host {

namespace {

RECT ScreenBox() {
    const ScreenView screen = Screen();
    return {0, 0, screen.width, screen.height};
}

void SubtractVisible(const std::vector<Window*>& windows, const Window* upTo, POINT origin, Region& area) {
    for (const Window* other : windows) {
        if (other == upTo) return;
        if (HasStyle(*other, WS_VISIBLE)) area.Subtract(Offset(other->bounds, origin.x, origin.y));
    }
}

// Gives each of these windows, topmost first, its share of the area; leaves the part that none of them
// covers.
void ShareOut(const std::vector<Window*>& windows, std::size_t first, Region& area) {
    for (std::size_t i = first; i < windows.size() && !area.Empty(); ++i) {
        if (!HasStyle(*windows[i], WS_VISIBLE)) continue;
        const RECT bounds = ScreenBounds(*windows[i]);
        InvalidateArea(*windows[i], area);
        area.Subtract(bounds);
    }
}

void Blacken(const Region& area) {
    if (area.Empty()) return;
    const PlatformScope scope;
    const HDC dc = OpenScreenDC({0, 0}, area);
    if (!dc) return;
    const RECT box = area.BoundingBox();
    FillRect(dc, &box, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    CloseScreenDC(dc);
}

}  // namespace

RECT FreeScreenArea() {
    RECT area = ScreenBox();
    for (const Window* window : TopLevelWindows()) {
        if (!HasStyle(*window, WS_VISIBLE) || !(window->extendedStyle & WS_EX_TOPMOST)) continue;
        if (window->bounds.top > 0) area.bottom = std::min(area.bottom, window->bounds.top);
    }
    return area;
}

void ClipToVisible(const Window& window, Children children, Region& area) {
    if (!IsShown(window)) return area.Clear();
    if (children == Children::Excluded) SubtractVisible(window.children, nullptr, ScreenOrigin(window), area);
    for (const Window* level = &window; level; level = level->parent) {
        const POINT origin = level->parent ? ScreenOrigin(*level->parent) : POINT{};
        area.IntersectWith(Offset(level->bounds, origin.x, origin.y));
        SubtractVisible(Siblings(*level), level, origin, area);
    }
    area.IntersectWith(ScreenBox());
}

Region VisibleArea(const Window& window) {
    Region area;
    area.Set(ScreenBounds(window));
    ClipToVisible(window, Children::Included, area);
    return area;
}

void InvalidateArea(Window& window, Region area) {
    area.IntersectWith(ScreenBounds(window));
    ShareOut(window.children, 0, area);
    const POINT origin = ScreenOrigin(window);
    area.Move(-origin.x, -origin.y);
    for (const RECT& part : area.Rectangles())
        AddToUpdate(window, part, Erase::Yes);
}

void ExposeBelow(const Window& window, Region area) {
    if (area.Empty()) return;
    const std::vector<Window*>& siblings = Siblings(window);
    const auto self = std::find(siblings.begin(), siblings.end(), &window);
    ShareOut(siblings, static_cast<std::size_t>(std::distance(siblings.begin(), self)) + 1, area);
    if (!window.parent) return Blacken(area);
    // The area belonged to the window, so no sibling above it and no other child covers the rest.
    const POINT origin = ScreenOrigin(*window.parent);
    area.Move(-origin.x, -origin.y);
    for (const RECT& part : area.Rectangles())
        AddToUpdate(*window.parent, part, Erase::Yes);
}

}  // namespace host
