// SPDX-License-Identifier: MIT
#include <algorithm>

#include "check_parts.h"

namespace tlk {
namespace {

// A frame has at most this many lines, each mostly ink.
constexpr int kFrameLines = 3;
constexpr bool IsMost(int part, int whole) { return whole > 0 && part * 4 >= whole * 3; }

// A key's part of a mask; the origin is that of its rectangles' bounds.
class KeyFace {
public:
    KeyFace(const Picture& mask, const std::vector<Rect>& rects) : m_bounds(BoundsOf(rects, mask.GetSize())) {
        if (m_bounds.Width() <= 0 || m_bounds.Height() <= 0) return;
        m_pixels = Grid<Kind>({m_bounds.Width(), m_bounds.Height()}, Kind::Other);
        int ones = 0;
        int zeros = 0;
        for (const Rect& rect : rects)
            for (int y = rect.top; y <= std::min(rect.bottom, m_bounds.bottom); ++y)
                for (int x = rect.left; x <= std::min(rect.right, m_bounds.right); ++x) {
                    const bool one = mask.At(x, y) != Color{};
                    ++(one ? ones : zeros);
                    m_pixels.At(x - m_bounds.left, y - m_bounds.top) = one ? Kind::One : Kind::Zero;
                }
        // A glyph covers less than half of its key: this distinguishes light glyphs on black faces.
        m_ink.faceShowsPicture = ones >= zeros;
    }

    KeyInk Read() {
        const Size size = m_pixels.GetSize();
        m_face = {0, 0, size.width - 1, size.height - 1};
        TakeFrameOff();
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                if (IsInk(x, y)) ReadComponent(x, y);
        return m_ink;
    }

private:
    // Frame belongs to the key and is no ink.
    enum class Kind : std::uint8_t { Other, Zero, One, Frame };

    bool IsInk(int x, int y) const {
        return m_pixels.Contains(x, y) &&
               m_pixels.At(x, y) == (m_ink.faceShowsPicture ? Kind::Zero : Kind::One);
    }
    bool IsKey(int x, int y) const { return m_pixels.Contains(x, y) && m_pixels.At(x, y) != Kind::Other; }

    bool IsBorder(int x, int y) const {
        return IsKey(x, y) && (!IsKey(x - 1, y) || !IsKey(x + 1, y) || !IsKey(x, y - 1) || !IsKey(x, y + 1));
    }

    // Removes lines around the key, whatever its shape, and further lines along its sides.
    void TakeFrameOff() {
        const Size size = m_pixels.GetSize();
        std::vector<std::pair<int, int>> border;
        int ink = 0;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                if (IsBorder(x, y)) {
                    border.emplace_back(x, y);
                    ink += IsInk(x, y);
                }
        if (IsMost(ink, static_cast<int>(border.size())))
            for (const auto& [x, y] : border)
                m_pixels.At(x, y) = Kind::Frame;
        for (int i = 0; i < kFrameLines; ++i) {
            if (TakeLineOff({m_face.left, m_face.top, m_face.left, m_face.bottom})) ++m_face.left;
            if (TakeLineOff({m_face.right, m_face.top, m_face.right, m_face.bottom})) --m_face.right;
            if (TakeLineOff({m_face.left, m_face.top, m_face.right, m_face.top})) ++m_face.top;
            if (TakeLineOff({m_face.left, m_face.bottom, m_face.right, m_face.bottom})) --m_face.bottom;
        }
    }

    bool TakeLineOff(const Rect& line) {
        int ink = 0;
        int pixels = 0;
        for (int y = line.top; y <= line.bottom; ++y)
            for (int x = line.left; x <= line.right; ++x) {
                ink += IsInk(x, y) || m_pixels.At(x, y) == Kind::Frame;
                pixels += IsKey(x, y);
            }
        if (!IsMost(ink, pixels)) return false;
        for (int y = line.top; y <= line.bottom; ++y)
            for (int x = line.left; x <= line.right; ++x)
                if (IsKey(x, y)) m_pixels.At(x, y) = Kind::Frame;
        return true;
    }

    // Reads connected ink and removes its pixels.
    void ReadComponent(int startX, int startY) {
        std::vector<Point> pixels = TakeConnected(
            m_pixels, {startX, startY}, m_ink.faceShowsPicture ? Kind::One : Kind::Zero, Neighbours::Eight);
        Rect bounds{startX, startY, startX, startY};
        bool touchesEdge = false;
        for (auto& [x, y] : pixels) {
            bounds = Unite(bounds, {x, y, x, y});
            touchesEdge = touchesEdge || IsBorder(x, y);
            x += m_bounds.left;
            y += m_bounds.top;
        }
        if (IsCorner(bounds) || (touchesEdge && IsLine(bounds))) return;
        m_ink.isThere = true;
        m_ink.pixels.insert(m_ink.pixels.end(), pixels.begin(), pixels.end());
        m_ink.isCut = m_ink.isCut || touchesEdge;
    }

    // Is this ink a rounded corner?
    bool IsCorner(const Rect& bounds) const {
        return (bounds.left == m_face.left || bounds.right == m_face.right) &&
               (bounds.top == m_face.top || bounds.bottom == m_face.bottom) &&
               bounds.Width() * 4 <= m_face.Width() && bounds.Height() * 4 <= m_face.Height();
    }

    // Is this ink a line from one side to the other?
    bool IsLine(const Rect& bounds) const {
        return (bounds.left == m_face.left && bounds.right == m_face.right) ||
               (bounds.top == m_face.top && bounds.bottom == m_face.bottom);
    }

    Rect m_bounds;
    Grid<Kind> m_pixels;
    // The face inside the frame.
    Rect m_face;
    KeyInk m_ink;
};

}  // namespace

Rect BoundsOf(const std::vector<Rect>& rects, Size mask) {
    Rect bounds{mask.width, mask.height, -1, -1};
    for (const Rect& rect : rects)
        bounds = Unite(bounds, rect);
    bounds.right = std::min(bounds.right, mask.width - 1);
    bounds.bottom = std::min(bounds.bottom, mask.height - 1);
    return bounds;
}

// The touching rectangles, a list for each place of the key.
std::vector<std::vector<Rect>> PlacesOf(const std::vector<Rect>& rects) {
    std::vector<std::vector<Rect>> places;
    for (const Rect& rect : rects) {
        if (!rect.HasArea()) continue;
        std::vector<Rect> place{rect};
        std::erase_if(places, [&](const std::vector<Rect>& known) {
            const bool isSame =
                std::ranges::any_of(known, [&](const Rect& part) { return part.Touches(rect); });
            if (isSame) place.insert(place.begin(), known.begin(), known.end());
            return isSame;
        });
        places.push_back(std::move(place));
    }
    return places;
}

KeyInk FindInk(const Picture& mask, const std::vector<Rect>& rects) {
    const std::vector<std::vector<Rect>> places = PlacesOf(rects);
    KeyInk ink{!places.empty(), false, true, {}};
    for (const std::vector<Rect>& place : places) {
        const KeyInk found = KeyFace(mask, place).Read();
        ink.isThere = ink.isThere && found.isThere;
        ink.isCut = ink.isCut || found.isCut;
        ink.faceShowsPicture = found.faceShowsPicture;
        ink.pixels.insert(ink.pixels.end(), found.pixels.begin(), found.pixels.end());
    }
    return ink;
}

}  // namespace tlk
