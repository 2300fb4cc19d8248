// SPDX-License-Identifier: MIT
// The parts of the check. Each adds its remarks to the list.
#pragma once

#include <array>
#include <set>

#include "check.h"
#include "moves.h"

namespace tlk {

using PlaneSet = std::set<std::size_t>;

class RemarkList {
public:
    RemarkList(const SkinModule& skin, const SourcePlaces* pPlaces) : m_Skin(skin), m_pPlaces(pPlaces) {}

    void Add(std::string text);
    void Add(BoardKind board, std::string text);
    void Add(BoardKind board, std::uint16_t key, std::string text);
    void Add(BoardKind board, const PlaneSet& planes, std::string text);
    void Add(BoardKind board, const PlaneSet& planes, std::uint16_t key, std::string text);

    // The name of a resource behind what it is: whoever wrote the skin as a source never meets it.
    std::string Called(std::string_view resource) const {
        return m_pPlaces ? "" : " (" + std::string(resource) + ")";
    }

    std::vector<Remark> Take();

private:
    // More than anybody reads; a damaged skin may be worth any number.
    static constexpr std::size_t kMost = 500;

    bool HasRoom() const { return m_Remarks.size() < kMost; }
    Remark& Append(std::string text);

    const SkinModule& m_Skin;
    const SourcePlaces* m_pPlaces;
    std::vector<Remark> m_Remarks;
};

// The two sizes that the screen has when it is turned.
struct Screen {
    Size upright;

    bool IsSquare() const { return upright.width == upright.height; }
    Size Turned() const { return {upright.height, upright.width}; }
    Size Panel(BoardKind board) const { return PanelSize(board, upright); }
    // Can the engine come to show this board, if the skin has it?
    bool Uses(BoardKind board) const { return board != BoardKind::Landscape || !IsSquare(); }
};

// A skin and what its keyboards have answered.
struct CheckedSkin {
    const Module& module;
    const SkinModule& skin;
    Screen screen;
    // By BoardKind: which key a tap hits, where keys can be both seen and hit.
    std::array<HitMap, 3> hits;

    const HitMap& Hits(BoardKind kind) const { return hits[static_cast<std::size_t>(kind)]; }
};

// By the bounds of each, which is what reading their ink costs. Only a damaged layout's do.
[[nodiscard]] bool KeysCoverTooMuch(const SkinBoard& board);
// One bit deep and as large as the board's picture.
[[nodiscard]] bool IsMaskOf(const SkinBitmap& mask, const SkinBoard& board);

[[nodiscard]] std::string Text(const Rect& rect);

// The planes that the pen can bring up on each board, by BoardKind.
struct Reach {
    std::array<PlaneSet, 3> planes;

    const PlaneSet& Planes(BoardKind board) const { return planes[static_cast<std::size_t>(board)]; }
};

// Would it load: pictures, masks and data as such.
void CheckLoading(const CheckedSkin& checked, RemarkList& remarks);
// Where the keys lie and which there are.
void CheckLayout(const CheckedSkin& checked, RemarkList& remarks);
void CheckCapsRect(const CheckedSkin& checked, RemarkList& remarks);
// What can be reached by the pen, and the way back.
Reach CheckStatus(const CheckedSkin& checked, RemarkList& remarks);
// What keys show in the planes that can be reached.
void CheckPlanes(const CheckedSkin& checked, const Reach& reach, RemarkList& remarks);
void CheckContrast(const CheckedSkin& checked, const Reach& reach, RemarkList& remarks);

// The glyph of a key, in each place where it stands: what differs from the key's face, without frames, lines
// and rounded corners.
struct KeyInk {
    bool isThere = false;
    // It reaches an edge of the key.
    bool isCut = false;
    // The face is where the mask lets the picture through; else it is black.
    bool faceShowsPicture = true;
    // All of it, in pixels of the mask.
    std::vector<Point> pixels;
};
// What of the mask's area the rectangles reach over; without area when that is nothing.
[[nodiscard]] Rect BoundsOf(const std::vector<Rect>& rects, Size mask);
[[nodiscard]] KeyInk FindInk(const Picture& mask, const std::vector<Rect>& rects);

}  // namespace tlk
