// SPDX-License-Identifier: MIT
// The parts of the check. Each adds its remarks to the list.
#pragma once

#include <set>

#include "check.h"
#include "skin_module.h"

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

inline constexpr BoardKind kBoards[] = {BoardKind::Portrait, BoardKind::Landscape, BoardKind::Digits};

// Which key a tap on each pixel of the panel hits; nobody's pixels hold kNobody.
inline constexpr int kNobody = -1;
// Pixels that no panel shows.
inline constexpr int kUnseen = -2;
using HitMap = Grid<int>;
[[nodiscard]] HitMap MapHits(const SkinModule& skin, const SkinBoard& board, Size area);
// Where the keys of the board can be both seen and hit on such a panel.
[[nodiscard]] Size UsableArea(const SkinBoard& board, Size panel);

// By the bounds of each, which is what reading their ink costs. Only a damaged layout's do.
[[nodiscard]] bool KeysCoverTooMuch(const SkinBoard& board);
// One bit deep and as large as the board's picture.
[[nodiscard]] bool IsMaskOf(const SkinBitmap& mask, const SkinBoard& board);

[[nodiscard]] std::string Text(const Rect& rect);

// Would it load: pictures, masks and data as such.
void CheckLoading(const Module& module, const SkinModule& skin, const Screen& screen, RemarkList& remarks);
// Where the keys lie and which there are.
void CheckLayout(const SkinModule& skin, const Screen& screen, RemarkList& remarks);
void CheckCapsRect(const SkinModule& skin, const Screen& screen, RemarkList& remarks);
// What can be reached by taps, and the way back.
void CheckStatus(const SkinModule& skin, const Screen& screen, RemarkList& remarks);
// What keys show in the planes that can be reached.
void CheckPlanes(const SkinModule& skin, const Screen& screen, RemarkList& remarks);
void CheckContrast(const SkinModule& skin, const Screen& screen, RemarkList& remarks);

// The planes that taps can bring up on each board.
struct Reach {
    PlaneSet portrait;
    PlaneSet landscape;
    bool digits = false;

    PlaneSet Planes(BoardKind board) const;
};
[[nodiscard]] Reach FindReach(const SkinModule& skin, const Screen& screen);

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
