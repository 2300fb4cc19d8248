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
        : m_Skin(skin), m_Board(skin.Board(kind)), m_Zoom(zoom), m_Font(font) {
        if (!m_Board.picture.IsReadable()) return;
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
            if (m_Board.masks[plane].IsReadable()) AddPlane(plane);
        if (m_Tiles.empty()) return;
        AddLatched();
        const std::size_t first = m_Board.masks[0].IsReadable() ? 0 : kDigitPlane;
        AddPressed(first);
        AddHitAreas(first);
    }

    Size GetSize() const {
        const Size cell = Cell();
        const auto rows = static_cast<int>((m_Tiles.size() + kColumns - 1) / kColumns);
        return {static_cast<int>(kColumns) * (cell.width + kMargin), rows * (cell.height + kMargin)};
    }

    void Draw(Picture& page, int top) const {
        const Size cell = Cell();
        for (std::size_t i = 0; i < m_Tiles.size(); ++i) {
            const int left = kMargin + static_cast<int>(i % kColumns) * (cell.width + kMargin);
            const int y = top + static_cast<int>(i / kColumns) * (cell.height + kMargin);
            Write(page, m_Tiles[i].caption, left, y + kCaptionHeight - kGap, cell.width, m_Font);
            Stamp(page, m_Tiles[i].picture, left, y + kCaptionHeight);
        }
    }

private:
    Size Cell() const {
        const Size picture = m_Board.picture.GetSize();
        return {picture.width * m_Zoom, picture.height * m_Zoom + kCaptionHeight};
    }

    View ViewOf(Latches latches) const { return {latches, m_Board.kind == BoardKind::Landscape, {}}; }

    void Add(std::string_view what, const View& view) {
        m_Tiles.push_back({std::string(BoardName(m_Board.kind)) + ", " + std::string(what),
                           Enlarge(Paint(m_Skin, view), m_Zoom)});
    }

    bool Has(std::uint16_t key) const { return m_Board.layout.contains(key); }

    // The caption names the keys that select the plane, which look pressed.
    void AddPlane(std::size_t plane) {
        const Latches latches = LatchesFor(plane);
        std::string keys;
        for (const auto& [latch, key] : {std::pair{latch::kShift, function_key::kShift},
                                         {latch::kUmlauts, function_key::kUmlaut},
                                         {latch::kLanguage2, function_key::kLanguage}})
            if (latches & latch && Has(key)) AppendName(keys, m_Skin.NameOf(key), " + ");
        Add(std::string(PlaneName(plane)) + (keys.empty() ? "" : ": ") + keys, ViewOf(latches));
    }

    // Statuses without a plane of their own.
    void AddLatched() {
        if (Has(function_key::kControl) && m_Board.masks[0].IsReadable())
            Add("ctrl", ViewOf(latch::kControl));
        if (m_Board.kind != BoardKind::Digits) {
            if (m_Board.masks[1].IsReadable()) Add("caps lock", ViewOf(latch::kCaps));
        } else if (m_Skin.Board(BoardKind::Landscape).picture.IsReadable()) {
            // The same picture; the turned screen shows more of it.
            Add("on the turned screen", {latch::kDigits, true, {}});
        }
    }

    void AddPressed(std::size_t plane) {
        View view = ViewOf(LatchesFor(plane));
        for (const auto& [key, rects] : m_Board.layout)
            view.pressed.push_back(key);
        Add("every key pressed", view);
    }

    void AddHitAreas(std::size_t plane) {
        Add("where taps hit", ViewOf(LatchesFor(plane)));
        DrawHitAreas(m_Tiles.back().picture, m_Zoom, m_Skin, m_Board.kind, m_Font);
    }

    const SkinModule& m_Skin;
    const SkinBoard& m_Board;
    const int m_Zoom;
    const Font& m_Font;
    std::vector<Tile> m_Tiles;
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
