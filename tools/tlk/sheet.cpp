// SPDX-License-Identifier: MIT
#include "sheet.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "errors.h"
#include "name_list.h"
#include "preview.h"

namespace tlk {
namespace {

constexpr Color kPaper{0xFA, 0xFA, 0xF7};
constexpr Color kInk{0x22, 0x22, 0x22};
constexpr int kMargin = 12;
// In pixels, between a caption and its picture.
constexpr int kGap = 4;
constexpr int kCaptionSize = 11;
constexpr int kCaptionHeight = 14;
constexpr std::size_t kColumns = 2;

struct Tile {
    std::string caption;
    Picture picture;
};

void Stamp(Picture& page, const Picture& picture, int left, int top) {
    for (int y = 0; y < picture.GetSize().height; ++y)
        for (int x = 0; x < picture.GetSize().width; ++x)
            if (page.Contains(left + x, top + y)) page.At(left + x, top + y) = picture.At(x, y);
}

// Captions are ASCII. Clips a caption at the width of its picture.
void Write(Picture& page, std::string_view text, int left, int baseline, int width, const Font& font) {
    const Glyph glyph = font.Draw(std::u16string(text.begin(), text.end()), {kCaptionSize});
    for (int y = 0; y < glyph.ink.GetSize().height; ++y)
        for (int x = 0; x < std::min(glyph.ink.GetSize().width, width); ++x)
            if (glyph.ink.At(x, y) && page.Contains(left + x, baseline - glyph.ascent + y))
                page.At(left + x, baseline - glyph.ascent + y) = kInk;
}

// The pictures of one keyboard.
class Section {
public:
    Section(const SkinModule& skin, BoardKind kind, int zoom, const Font& font)
        : m_skin(skin), m_board(skin.Board(kind)), m_zoom(zoom), m_font(font) {
        if (!m_board.picture.IsReadable()) return;
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
            if (m_board.masks[plane].IsReadable()) AddPlane(plane);
        if (m_tiles.empty()) return;
        AddLatched();
        const std::size_t first = m_board.masks[0].IsReadable() ? 0 : kDigitPlane;
        AddPressed(first);
        AddHitAreas(first);
    }

    Size GetSize() const {
        const Size cell = Cell();
        const auto rows = static_cast<int>((m_tiles.size() + kColumns - 1) / kColumns);
        return {static_cast<int>(kColumns) * (cell.width + kMargin), rows * (cell.height + kMargin)};
    }

    void Draw(Picture& page, int top) const {
        const Size cell = Cell();
        for (std::size_t i = 0; i < m_tiles.size(); ++i) {
            const int left = kMargin + static_cast<int>(i % kColumns) * (cell.width + kMargin);
            const int y = top + static_cast<int>(i / kColumns) * (cell.height + kMargin);
            Write(page, m_tiles[i].caption, left, y + kCaptionHeight - kGap, cell.width, m_font);
            Stamp(page, m_tiles[i].picture, left, y + kCaptionHeight);
        }
    }

private:
    Size Cell() const {
        const Size picture = m_board.picture.GetSize();
        return {picture.width * m_zoom, picture.height * m_zoom + kCaptionHeight};
    }

    View ViewOf(Latches latches) const { return {latches, m_board.kind == BoardKind::Landscape, {}}; }

    void Add(std::string_view what, const View& view) {
        m_tiles.push_back({std::string(BoardName(m_board.kind)) + ", " + std::string(what),
                           Enlarge(Paint(m_skin, view), m_zoom)});
    }

    bool Has(std::uint16_t key) const { return m_board.layout.contains(key); }

    // The caption names the keys that select the plane, which look pressed.
    void AddPlane(std::size_t plane) {
        const Latches latches = LatchesFor(plane);
        std::string keys;
        for (const auto& [latch, key] : {std::pair{latch::kShift, function_key::kShift},
                                         {latch::kUmlauts, function_key::kUmlaut},
                                         {latch::kLanguage2, function_key::kLanguage}})
            if (latches & latch && Has(key)) AppendName(keys, m_skin.NameOf(key), " + ");
        Add(std::string(PlaneName(plane)) + (keys.empty() ? "" : ": ") + keys, ViewOf(latches));
    }

    // Statuses without a plane of their own.
    void AddLatched() {
        if (Has(function_key::kControl) && m_board.masks[0].IsReadable())
            Add("ctrl", ViewOf(latch::kControl));
        if (m_board.kind != BoardKind::Digits) {
            if (m_board.masks[1].IsReadable()) Add("caps lock", ViewOf(latch::kCaps));
        } else if (m_skin.Board(BoardKind::Landscape).picture.IsReadable()) {
            // The same picture; the turned screen shows more of it.
            Add("on the turned screen", {latch::kDigits, true, {}});
        }
    }

    void AddPressed(std::size_t plane) {
        View view = ViewOf(LatchesFor(plane));
        for (const auto& [key, rects] : m_board.layout)
            view.pressed.push_back(key);
        Add("every key pressed", view);
    }

    void AddHitAreas(std::size_t plane) {
        Add("where taps hit", ViewOf(LatchesFor(plane)));
        DrawHitAreas(m_tiles.back().picture, m_zoom, m_skin, m_board.kind, m_font);
    }

    const SkinModule& m_skin;
    const SkinBoard& m_board;
    const int m_zoom;
    const Font& m_font;
    std::vector<Tile> m_tiles;
};

}  // namespace

Picture DrawSheet(const SkinModule& skin, int zoom, const Font& font) {
    std::vector<Section> sections;
    Size size{0, 0};
    for (BoardKind kind : kBoards) {
        const Section& section = sections.emplace_back(skin, kind, zoom, font);
        size = {std::max(size.width, section.GetSize().width), size.height + section.GetSize().height};
    }
    if (size.height == 0) throw FileError("the skin has no keyboard that can be shown");
    Picture page({size.width + kMargin, size.height + kMargin}, kPaper);
    int top = kMargin;
    for (const Section& section : sections) {
        section.Draw(page, top);
        top += section.GetSize().height;
    }
    return page;
}

}  // namespace tlk
