// SPDX-License-Identifier: MIT
// The parts of the check, each of which adds its remarks to the list.
#pragma once

#include <array>
#include <set>

#include "check.h"
#include "moves.h"

namespace tlk {

using PlaneSet = std::set<std::size_t>;

class RemarkList {
public:
    RemarkList(const SkinModule& skin, const SourcePlaces* places) : m_skin(skin), m_places(places) {}

    void Add(std::string text);
    void Add(BoardKind board, std::string text);
    void Add(BoardKind board, std::uint16_t key, std::string text);
    void Add(BoardKind board, const PlaneSet& planes, std::string text);
    void Add(BoardKind board, const PlaneSet& planes, std::uint16_t key, std::string text);

    // The name of a resource, appended to its description; empty for a skin with a source, whose author does
    // not know it.
    std::string Called(std::string_view resource) const {
        return m_places ? "" : " (" + std::string(resource) + ")";
    }

    std::vector<Remark> Take();

private:
    // More than anybody reads; a damaged skin could give any number.
    static constexpr std::size_t kMost = 500;

    bool HasRoom() const { return m_remarks.size() < kMost; }
    Remark& Append(std::string text);

    const SkinModule& m_skin;
    const SourcePlaces* m_places;
    std::vector<Remark> m_remarks;
};

// The sizes of the screen in both orientations.
struct Screen {
    Size upright;

    bool IsSquare() const { return upright.width == upright.height; }
    Size Turned() const { return {upright.height, upright.width}; }
    Size Panel(BoardKind board) const { return PanelSize(board, upright); }
    // Can the engine show this board, if the skin has it?
    bool Uses(BoardKind board) const { return board != BoardKind::Landscape || !IsSquare(); }
};

// A skin and its keyboards' answers.
struct CheckedSkin {
    const Module& module;
    const SkinModule& skin;
    Screen screen;
    // By BoardKind: which key a tap hits, in the area where keys can be both seen and hit.
    std::array<HitMap, 3> hits;

    const HitMap& Hits(BoardKind kind) const { return hits[static_cast<std::size_t>(kind)]; }
};

// By their bounds, which determine the cost of reading their ink. True only for damaged layouts.
[[nodiscard]] bool KeysCoverTooMuch(const SkinBoard& board);
// Is the mask one bit deep and as large as the board's picture?
[[nodiscard]] bool IsMaskOf(const SkinBitmap& mask, const SkinBoard& board);

[[nodiscard]] std::string Text(const Rect& rect);

// The planes that the pen can bring up on each board, by BoardKind.
struct Reach {
    std::array<PlaneSet, 3> planes;

    const PlaneSet& Planes(BoardKind board) const { return planes[static_cast<std::size_t>(board)]; }
};

// Does it load: pictures, masks and data.
void CheckLoading(const CheckedSkin& checked, RemarkList& remarks);
// Which keys there are, and where.
void CheckLayout(const CheckedSkin& checked, RemarkList& remarks);
void CheckCapsRect(const CheckedSkin& checked, RemarkList& remarks);
// What the pen can reach, and the way back.
Reach CheckStatus(const CheckedSkin& checked, RemarkList& remarks);
// The signs on keys in the planes that can be reached.
void CheckPlanes(const CheckedSkin& checked, const Reach& reach, RemarkList& remarks);
void CheckContrast(const CheckedSkin& checked, const Reach& reach, RemarkList& remarks);

// The glyph of a key, in each of its places: the difference from its face, without frames, lines and rounded
// corners.
struct KeyInk {
    bool isThere = false;
    // It touches an edge of the key.
    bool isCut = false;
    // The face shows the picture; otherwise it is black.
    bool faceShowsPicture = true;
    // All its pixels, in the mask's coordinates.
    std::vector<Point> pixels;
};
// The bounds of the rectangles inside the mask; without area if there are none.
[[nodiscard]] Rect BoundsOf(const std::vector<Rect>& rects, Size mask);
[[nodiscard]] KeyInk FindInk(const Picture& mask, const std::vector<Rect>& rects);

}  // namespace tlk
