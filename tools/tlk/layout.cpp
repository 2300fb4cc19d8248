// SPDX-License-Identifier: MIT
#include "layout.h"

#include <algorithm>
#include <cmath>

#include "errors.h"

namespace tlk {
namespace {

// Bevel and the smallest distinguishable glyph.
constexpr int kSmallestCell = 8;

// The edges of neighbours that share `length` pixels by their weights.
std::vector<int> Divide(int length, const std::vector<double>& weights) {
    double total = 0;
    for (double weight : weights)
        total += weight;
    std::vector<int> edges{0};
    double sum = 0;
    for (double weight : weights) {
        sum += weight;
        edges.push_back(static_cast<int>(std::lround(sum / total * length)));
    }
    return edges;
}

// The last column and row of a rectangle show the background and are not inverted. So where a part of a bent
// key is above a wider one, it overlaps it by a row; otherwise there would be a gap.
void JoinBentKey(std::vector<Rect>& parts) {
    Rect& upper = parts[parts.size() - 2];
    Rect& lower = parts.back();
    if (upper.bottom + 1 != lower.top) return;
    if (upper.left >= lower.left && upper.right <= lower.right)
        ++upper.bottom;
    else if (lower.left >= upper.left && lower.right <= upper.right)
        --lower.top;
}

void AddRect(const Skin& skin, Layout& layout, std::uint16_t index, const Rect& rect,
             const SourcePlace& place) {
    const auto known = std::ranges::find(layout.keys, index, &Key::key);
    if (known == layout.keys.end()) {
        layout.keys.push_back({index, {rect}, std::nullopt, std::nullopt});
        return;
    }
    for (Rect& part : known->rects) {
        if (part.left == rect.left && part.right == rect.right && part.bottom + 1 == rect.top) {
            part.bottom = rect.bottom;
            return;
        }
    }
    const bool touches =
        std::ranges::any_of(known->rects, [&rect](const Rect& part) { return part.Touches(rect); });
    if (!touches && !IsFunction(index))
        throw SourceError(place, "key '" + KeyName(skin.characters, index) +
                                     "' already stands elsewhere on this keyboard: remove one of them");
    known->rects.push_back(rect);
    if (touches) JoinBentKey(known->rects);
}

std::vector<double> Weights(const Row& row) {
    std::vector<double> weights;
    for (const RowKey& key : row.keys)
        weights.push_back(key.weight);
    return weights;
}

// If rows differ, the upper ones are higher: their characters may need the room for accents.
std::vector<int> DivideEvenly(int length, std::size_t count) {
    const int parts = static_cast<int>(count);
    std::vector<int> edges;
    for (int part = 0; part <= parts; ++part)
        edges.push_back((length * part + parts - 1) / parts);
    return edges;
}

// The edges of the board's rows below the margin. One of them is at the seam.
std::vector<int> RowEdges(const Board& board) {
    const int height = board.filled.height - kMargin;
    const std::size_t above = board.RowsAboveSeam();
    if (board.seam == 0 || above == board.rows.size()) return DivideEvenly(height, board.rows.size());
    const int seam = board.seam - kMargin;
    std::vector<int> edges = DivideEvenly(seam, above);
    edges.pop_back();
    for (int edge : DivideEvenly(height - seam, board.rows.size() - above))
        edges.push_back(seam + edge);
    return edges;
}

void RequireRoom(const Skin& skin, std::uint16_t key, const Rect& rect, const SourcePlace& place) {
    if (rect.Width() < kSmallestCell || rect.Height() < kSmallestCell)
        throw SourceError(place, "key '" + KeyName(skin.characters, key) + "' would be smaller than " +
                                     std::to_string(kSmallestCell) +
                                     " pixels: use fewer keys or rows, or other weights");
}

void PlaceRows(const Skin& skin, Layout& layout, const std::vector<Row>& rows, const Rect& area,
               const std::vector<int>& lines) {
    FaultList faults;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const Row& row = rows[r];
        const std::vector<int> columns = Divide(area.Width(), Weights(row));
        for (std::size_t c = 0; c < row.keys.size(); ++c) {
            const Rect rect{area.left + columns[c], area.top + lines[r], area.left + columns[c + 1] - 1,
                            area.top + lines[r + 1] - 1};
            faults.Try([&] {
                RequireRoom(skin, row.keys[c].key, rect, row.place);
                AddRect(skin, layout, row.keys[c].key, rect, row.place);
            });
        }
    }
    faults.Throw();
}

bool IsDigitLineKey(const Skin& skin, const Key& key) {
    return !IsFunction(key.key) && IsDigitLineCharacter(skin.characters[key.key][0]);
}

// The part of the source that has placed the key.
SourcePlace PlaceOf(const Skin& skin, std::uint16_t key) {
    const auto found = skin.places.find({BoardKind::Portrait, key});
    return found == skin.places.end() ? SourcePlace{} : found->second;
}

void RequireInside(const Skin& skin, const Layout& layout, const Key& key, const SourcePlace& place) {
    for (const Rect& rect : key.rects)
        if (!Rect{0, 0, layout.size.width - 1, layout.size.height - 1}.Contains(rect) ||
            rect.Width() < kSmallestCell || rect.Height() < kSmallestCell)
            throw SourceError(place, "key '" + KeyName(skin.characters, key.key) +
                                         "' would lie outside of the picture or be smaller than " +
                                         std::to_string(kSmallestCell) +
                                         " pixels: change its move, size or "
                                         "rects");
}

void ChangeKey(const Skin& skin, Layout& layout, std::uint16_t index, const KeyChange& change) {
    auto key = std::ranges::find(layout.keys, index, &Key::key);
    if (key == layout.keys.end()) key = layout.keys.insert(layout.keys.end(), Key{index, {}, {}, {}});
    if (!change.rects.empty()) key->rects = change.rects;
    for (Rect& rect : key->rects) {
        const Size size = change.size.value_or(Size{rect.Width(), rect.Height()});
        const int left = rect.left + change.move.x;
        const int top = rect.top + change.move.y;
        rect = {left, top, left + size.width - 1, top + size.height - 1};
    }
    key->label = change.label;
    key->face = change.face;
    RequireInside(skin, layout, *key, change.place);
}

}  // namespace

Layout LayOut(const Skin& skin, const Board& board) {
    Layout layout{board.size, {}};
    const Size filled = board.filled;
    Rect wide = board.WideArea();
    wide.top += kMargin;
    TryAll(
        [&] {
            PlaceRows(skin, layout, board.rows, {kMargin, kMargin, filled.width - 1, filled.height - 1},
                      RowEdges(board));
        },
        [&] {
            if (!board.wide.empty())
                PlaceRows(skin, layout, board.wide, wide, DivideEvenly(wide.Height(), board.wide.size()));
        },
        [&] {
            TryEach(board.changes,
                    [&](const auto& change) { ChangeKey(skin, layout, change.first, change.second); });
        });
    return layout;
}

std::optional<Rect> FindCapsRect(const Skin& skin, const Layout& layout) {
    std::optional<Rect> area;
    for (const Key& key : layout.keys) {
        if (!IsDigitLineKey(skin, key)) continue;
        for (const Rect& rect : key.rects)
            area = area ? Unite(*area, rect) : rect;
    }
    if (!area) return std::nullopt;
    for (const Key& key : layout.keys) {
        if (IsFunction(key.key) || IsDigitLineKey(skin, key)) continue;
        for (const Rect& rect : key.rects)
            if (const Rect common = Intersect(rect, *area); common.Width() > 0 && common.Height() > 0)
                throw SourceError(PlaceOf(skin, key.key),
                                  "key '" + KeyName(skin.characters, key.key) +
                                      "' stands among the keys that caps lock leaves alone (digits, - and "
                                      "=): keep these in one block, or set caps_rect = false");
    }
    // Backspace becomes Delete by Shift alone, like its row.
    for (const Key& key : layout.keys)
        if (key.key == function_key::kBackspace && key.rects.size() == 1)
            if (const Rect& rect = key.rects[0];
                rect.top == area->top && rect.bottom == area->bottom && rect.Touches(*area))
                area = Unite(*area, rect);
    return area;
}

}  // namespace tlk
