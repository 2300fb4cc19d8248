// SPDX-License-Identifier: MIT
// Can the glyphs be read on their keys? Measures what the engine paints, at rest and pressed, so that an
// author's pictures and masks are judged like drawn ones. Does not recognise glyphs in the picture itself.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "check_parts.h"
#include "name_list.h"

namespace tlk {
namespace {

// The minimum of the web's accessibility guidelines for text of normal size.
constexpr double kLeastContrast = 4.5;

// This many keys of a board are reported one by one; a palette spoils many at once.
constexpr std::size_t kMostKeys = 4;

double Linear(std::uint8_t value) {
    const double share = value / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(const Color& color) {
    return 0.2126 * Linear(color.red) + 0.7152 * Linear(color.green) + 0.0722 * Linear(color.blue);
}

struct Contrast {
    double ratio = 0;
    Color ink;
    Color face;
};

Contrast Measure(const Color& ink, const Color& face) {
    const auto [dark, light] = std::minmax({Luminance(ink), Luminance(face)});
    return {(light + 0.05) / (dark + 0.05), ink, face};
}

enum class Look { AtRest, Pressed };

// The engine's picture of one plane, and its mask, which shows where the ink is.
struct PlaneLooks {
    std::size_t plane;
    const Picture& mask;
    Picture atRest;
    Picture pressed;

    const Picture& In(Look look) const { return look == Look::AtRest ? atRest : pressed; }
};

PlaneLooks PaintLooks(Keyboard& keyboard, const SkinBoard& board, std::size_t plane) {
    PlaneLooks looks{plane, board.masks[plane].pixels, {}, {}};
    keyboard.Latch(LatchesFor(plane));
    keyboard.ReleaseAll();
    looks.atRest = keyboard.Paint(board.picture.GetSize());
    for (const auto& [key, rects] : board.layout)
        keyboard.Press(key);
    looks.pressed = keyboard.Paint(board.picture.GetSize());
    return looks;
}

std::string Text(const Color& color) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", color.red, color.green, color.blue);
    return text;
}

// Truncated, so that a contrast just below the minimum never reads as the minimum.
std::string Text(const Contrast& contrast) {
    char ratio[16];
    std::snprintf(ratio, sizeof ratio, "%.1f", std::floor(contrast.ratio * 10) / 10);
    return Text(contrast.ink) + " on " + Text(contrast.face) + " has " + ratio;
}

// A key that is hard to read, with the worst contrast in any of its planes.
struct FaintKey {
    std::uint16_t key = 0;
    PlaneSet planes;
    Look look = Look::AtRest;
    Contrast worst;
};

class ContrastCheck {
public:
    ContrastCheck(const SkinModule& skin, const SkinBoard& board, const PlaneSet& planes, RemarkList& remarks)
        : m_skin(skin), m_board(board), m_planes(planes), m_remarks(remarks) {
        for (std::size_t plane : planes)
            if (IsMaskOf(board.masks[plane], board))
                m_looks.push_back(PaintLooks(skin.KeyboardOf(board.kind), board, plane));
    }

    void Run() {
        for (const auto& [key, rects] : m_board.layout)
            if (FaintKey faint = Read(key, rects); !faint.planes.empty()) m_faint.push_back(std::move(faint));
        std::ranges::stable_sort(m_faint, {}, [](const FaintKey& key) { return key.worst.ratio; });
        for (std::size_t i = 0; i < std::min(m_faint.size(), kMostKeys); ++i)
            Report(m_faint[i]);
        ReportOthers();
    }

private:
    FaintKey Read(std::uint16_t key, const std::vector<Rect>& rects) const {
        FaintKey faint{key, {}, Look::AtRest, {kLeastContrast, {}, {}}};
        for (const PlaneLooks& looks : m_looks) {
            const std::vector<Point> ink = FindInk(looks.mask, rects).pixels;
            for (Look look : {Look::AtRest, Look::Pressed}) {
                const auto contrast = MeasureOutline(looks.mask, ink, looks.In(look));
                if (!contrast || contrast->ratio >= kLeastContrast) continue;
                faint.planes.insert(looks.plane);
                if (contrast->ratio >= faint.worst.ratio) continue;
                faint.worst = *contrast;
                faint.look = look;
            }
        }
        return faint;
    }

    // The contrast where ink and face meet. A quarter of the outline may be worse: faces are shaded, and an
    // author's pictures can be anything.
    static std::optional<Contrast> MeasureOutline(const Picture& mask, const std::vector<Point>& ink,
                                                  const Picture& painted) {
        std::vector<Contrast> outline;
        for (const auto& [x, y] : ink)
            for (const auto& [nextX, nextY] : {Point{x - 1, y}, {x + 1, y}, {x, y - 1}, {x, y + 1}})
                if (mask.Contains(nextX, nextY) && mask.At(nextX, nextY) != mask.At(x, y))
                    outline.push_back(Measure(painted.At(x, y), painted.At(nextX, nextY)));
        if (outline.empty()) return std::nullopt;
        const auto quarter = outline.begin() + static_cast<std::ptrdiff_t>(outline.size() / 4);
        std::ranges::nth_element(outline, quarter, {}, &Contrast::ratio);
        return *quarter;
    }

    void Report(const FaintKey& faint) {
        m_remarks.Add(m_board.kind, faint.planes == m_planes ? PlaneSet{} : faint.planes, faint.key,
                      std::string("hard to read") + (faint.look == Look::Pressed ? " when pressed" : "") +
                          ": " + Text(faint.worst) + " to 1, and 4.5 to 1 is the least; change its colours");
    }

    void ReportOthers() {
        std::string names;
        for (std::size_t i = kMostKeys; i < m_faint.size(); ++i)
            AppendName(names, m_skin.NameOf(m_faint[i].key), " ");
        if (!names.empty()) m_remarks.Add(m_board.kind, "also hard to read: the keys " + names);
    }

    const SkinModule& m_skin;
    const SkinBoard& m_board;
    const PlaneSet& m_planes;
    RemarkList& m_remarks;
    std::vector<PlaneLooks> m_looks;
    std::vector<FaintKey> m_faint;
};

}  // namespace

void CheckContrast(const CheckedSkin& checked, const Reach& reach, RemarkList& remarks) {
    for (const SkinBoard& board : checked.skin.boards)
        if (checked.screen.Uses(board.kind) && board.picture.IsReadable() && !KeysCoverTooMuch(board))
            ContrastCheck(checked.skin, board, reach.Planes(board.kind), remarks).Run();
}

}  // namespace tlk
