// SPDX-License-Identifier: MIT
// Grids of pixels, with the origin at the top left.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tlk {

struct Size {
    int width = 0;
    int height = 0;

    bool operator==(const Size&) const = default;
};

struct Point {
    int x = 0;
    int y = 0;
};

// All four edges belong to the rectangle, as in hit testing.
struct Rect {
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;

    int Width() const { return right - left + 1; }
    int Height() const { return bottom - top + 1; }
    // Without area, a rectangle is hit but never drawn pressed, as that excludes the last column and row.
    bool HasArea() const { return right > left && bottom > top; }
    // True for rectangles that overlap or are adjacent, even at a corner.
    bool Touches(const Rect& other) const {
        return left <= other.right + 1 && other.left <= right + 1 && top <= other.bottom + 1 &&
               other.top <= bottom + 1;
    }
    bool Contains(int x, int y) const { return left <= x && x <= right && top <= y && y <= bottom; }
    bool Contains(const Rect& other) const {
        return Contains(other.left, other.top) && Contains(other.right, other.bottom);
    }
    bool operator==(const Rect&) const = default;
};

// The bounds of both.
inline Rect Unite(const Rect& a, const Rect& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

// The intersection; without width or height if there is none.
inline Rect Intersect(const Rect& a, const Rect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    auto operator<=>(const Color&) const = default;
};

template <class Pixel>
class Grid {
public:
    Grid() = default;
    Grid(Size size, Pixel fill)
        : m_size(size),
          m_pixels(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height), fill) {}

    Size GetSize() const { return m_size; }
    bool Contains(int x, int y) const { return x >= 0 && y >= 0 && x < m_size.width && y < m_size.height; }

    // (x, y) must be inside.
    Pixel& At(int x, int y) { return m_pixels[Offset(x, y)]; }
    const Pixel& At(int x, int y) const { return m_pixels[Offset(x, y)]; }

    const std::vector<Pixel>& Pixels() const { return m_pixels; }
    bool operator==(const Grid&) const = default;

private:
    std::size_t Offset(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width) +
               static_cast<std::size_t>(x);
    }

    Size m_size;
    std::vector<Pixel> m_pixels;
};

enum class Neighbours { Four, Eight };

// The connected pixels with the value of this one; sets them to `taken`.
template <class Pixel>
std::vector<Point> TakeConnected(Grid<Pixel>& grid, Point start, Pixel taken, Neighbours neighbours) {
    const Pixel wanted = grid.At(start.x, start.y);
    std::vector<Point> found{start};
    grid.At(start.x, start.y) = taken;
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto [x, y] = found[i];
        for (int nextY = y - 1; nextY <= y + 1; ++nextY)
            for (int nextX = x - 1; nextX <= x + 1; ++nextX) {
                if (neighbours == Neighbours::Four && nextX != x && nextY != y) continue;
                if (!grid.Contains(nextX, nextY) || grid.At(nextX, nextY) != wanted) continue;
                grid.At(nextX, nextY) = taken;
                found.push_back({nextX, nextY});
            }
    }
    return found;
}

using Picture = Grid<Color>;
// 1 shows the picture, 0 paints black: glyphs are the zeros of a mask.
using Mask = Grid<std::uint8_t>;

}  // namespace tlk
