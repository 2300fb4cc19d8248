// SPDX-License-Identifier: MIT
// Draws the keys without their glyphs.
#include <algorithm>

#include "drawing.h"

namespace tlk {
namespace {

constexpr Color kWhite{0xFF, 0xFF, 0xFF};
constexpr Color kBlack{0, 0, 0};

Color Mix(Color from, Color to, int part, int whole) {
    const auto channel = [part, whole](int a, int b) {
        return static_cast<std::uint8_t>(a + (b - a) * part / std::max(whole, 1));
    };
    return {channel(from.red, to.red), channel(from.green, to.green), channel(from.blue, to.blue)};
}

const Shade& ShadeOf(const Skin& skin, const Key& key) {
    if (key.face) return *key.face;
    if (IsFunction(key.key)) return skin.palette.function;
    const char16_t small = skin.characters[key.key][0];
    if (small >= u'0' && small <= u'9') return skin.palette.number;
    return small >= u'a' && small <= u'z' ? skin.palette.letter : skin.palette.symbol;
}

// The face of a key in one place: its touching rectangles as one shape.
class Shape {
public:
    Shape(const Key& key, const Rect& first) : m_bounds(FaceOf(first)), m_faces{FaceOf(first)} {
        for (bool isGrowing = true; isGrowing;) {
            isGrowing = false;
            for (const Rect& rect : key.rects)
                if (!Holds(rect) && rect.Touches(m_bounds)) isGrowing = true, Add(FaceOf(rect));
        }
    }

    const Rect& Bounds() const { return m_bounds; }
    // The caller skips rectangles that belong to an earlier shape.
    bool Holds(const Rect& rect) const { return std::ranges::find(m_faces, FaceOf(rect)) != m_faces.end(); }
    bool Contains(int x, int y) const {
        return std::ranges::any_of(
            m_faces, [x, y](const Rect& face) { return face.Contains(x, y); });
    }

    // The distances in pixels to the shape's edge in each direction, at most `most`.
    struct Distances {
        int left, top, right, bottom;
    };
    Distances Measure(int x, int y, int most) const {
        const auto count = [&](int stepX, int stepY) {
            int distance = 0;
            while (distance < most && Contains(x + (distance + 1) * stepX, y + (distance + 1) * stepY))
                ++distance;
            return distance;
        };
        return {count(-1, 0), count(0, -1), count(1, 0), count(0, 1)};
    }

private:
    void Add(const Rect& face) {
        m_faces.push_back(face);
        m_bounds = Unite(m_bounds, face);
    }

    Rect m_bounds;
    std::vector<Rect> m_faces;
};

// Corners are cut by one pixel, or rounded a little more where lines are thicker.
bool IsCutOff(const Shape::Distances& edges, int scale) {
    return std::min(edges.left, edges.right) + std::min(edges.top, edges.bottom) < scale;
}

// Calls back for every pixel of every face, with the key, the shape, x, y and the distances to its edges.
template <class Callback>
void ForEachPixel(const Layout& layout, int scale, const Callback& callback) {
    for (const Key& key : layout.keys) {
        std::vector<Shape> shapes;
        for (const Rect& rect : key.rects) {
            if (std::ranges::any_of(shapes, [&rect](const Shape& shape) { return shape.Holds(rect); }))
                continue;
            const Shape& shape = shapes.emplace_back(key, rect);
            const Rect& bounds = shape.Bounds();
            for (int y = bounds.top; y <= bounds.bottom; ++y)
                for (int x = bounds.left; x <= bounds.right; ++x)
                    if (shape.Contains(x, y)) callback(key, shape, x, y, shape.Measure(x, y, scale));
        }
    }
}

class FaceColors {
public:
    // A black face would hide lines.
    explicit FaceColors(const Skin& skin)
        : m_palette(skin.palette),
          m_hasLines(m_palette.style == FaceStyle::Bevel && m_palette.glyphs == GlyphTone::Dark),
          m_scale(skin.scale) {}

    // Light comes from the top left: a lit and a shaded edge.
    Color Pick(const Shade& shade, const Rect& bounds, int y, const Shape::Distances& edges) const {
        const Color shaded = Mix(shade.bottom, kBlack, 1, 5);
        if (IsCutOff(edges, m_scale))
            return m_hasLines ? Mix(shaded, m_palette.background, 3, 4) : m_palette.background;
        const int fromLight = std::min(edges.left, edges.top);
        const int fromShade = std::min(edges.right, edges.bottom);
        if (m_hasLines && std::min(fromLight, fromShade) < m_scale)
            return fromShade <= fromLight ? shaded : Mix(shade.top, kWhite, 3, 4);
        if (m_palette.style == FaceStyle::Flat) return shade.top;
        return Mix(shade.top, shade.bottom, y - bounds.top, bounds.Height() - 1);
    }

private:
    const Palette& m_palette;
    bool m_hasLines;
    int m_scale;
};

}  // namespace

Rect InnerOf(const Skin& skin, const Rect& rect) {
    const Rect face = FaceOf(rect);
    return {face.left + skin.scale, face.top + skin.scale, face.right - skin.scale, face.bottom - skin.scale};
}

Picture DrawPicture(const Skin& skin, const Layout& layout) {
    Picture picture(layout.size, skin.palette.background);
    const FaceColors colors(skin);
    ForEachPixel(layout, skin.scale,
                 [&](const Key& key, const Shape& shape, int x, int y, const Shape::Distances& edges) {
                     picture.At(x, y) = colors.Pick(ShadeOf(skin, key), shape.Bounds(), y, edges);
                 });
    return picture;
}

Mask DrawFaces(const Skin& skin, const Layout& layout) {
    Mask mask(layout.size, 1);
    if (skin.palette.glyphs == GlyphTone::Dark) return mask;
    ForEachPixel(layout, skin.scale,
                 [&](const Key&, const Shape&, int x, int y, const Shape::Distances& edges) {
                     mask.At(x, y) = IsCutOff(edges, skin.scale);
                 });
    return mask;
}

}  // namespace tlk
