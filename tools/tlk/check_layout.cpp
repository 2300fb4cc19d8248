// SPDX-License-Identifier: MIT
// Checks the places of keys: each can be hit, none hides another, and there are no gaps between them.
#include <algorithm>

#include "check_parts.h"
#include "name_list.h"

namespace tlk {
namespace {

// A pen hits a point within about a millimetre, so a key should be 2.2 millimetres wide and high. The narrow
// side of these screens is about 54 millimetres, whatever its pixels.
constexpr int kSmallestShare = 24;

// This many gaps are reported one by one.
constexpr std::size_t kMostGaps = 12;

// Pixels that no panel shows.
constexpr int kUnseen = -2;

// These two count as one key when the pen slides between them.
constexpr std::uint16_t kDigitNine = 46;

struct Gap {
    Rect bounds;
    int pixels = 0;
};

bool IsEmpty(const Rect& rect) { return !rect.HasArea(); }

class BoardCheck {
public:
    BoardCheck(const CheckedSkin& checked, const SkinBoard& board, RemarkList& remarks)
        : m_skin(checked.skin),
          m_board(board),
          m_panels(PanelsOf(board.kind, checked.screen)),
          m_smallestSide((checked.screen.upright.width + kSmallestShare - 1) / kSmallestShare),
          m_remarks(remarks),
          m_hits(checked.Hits(board.kind)),
          m_area(m_hits.GetSize()) {
        for (int y = 0; y < m_area.height; ++y)
            for (int x = 0; x < m_area.width; ++x)
                if (!IsSeen(x, y)) m_hits.At(x, y) = kUnseen;
    }

    void Run() {
        for (const auto& [key, rects] : m_board.layout) {
            CheckIndex(key);
            CheckHit(key, rects);
            for (const Rect& rect : rects)
                CheckRect(key, rects, rect);
            CheckSize(key, rects);
            if (m_board.kind == BoardKind::Digits) CheckPanels(key, rects);
        }
        CheckOverlaps();
        CheckGaps();
        CheckFunctions();
    }

private:
    // Two panels show the digit keyboard's picture.
    static std::vector<Size> PanelsOf(BoardKind board, const Screen& screen) {
        if (board != BoardKind::Digits) return {screen.Panel(board)};
        return {screen.Panel(BoardKind::Portrait), screen.Panel(BoardKind::Landscape)};
    }
    static bool IsSeen(const Size& panel, int x, int y) { return x < panel.width && y < panel.height; }
    bool IsSeen(int x, int y) const {
        return std::ranges::any_of(
            m_panels, [=](const Size& panel) { return IsSeen(panel, x, y); });
    }

    void Add(std::uint16_t key, std::string text) { m_remarks.Add(m_board.kind, key, std::move(text)); }

    void CheckIndex(std::uint16_t key) {
        if (key >= m_skin.characters.size())
            Add(key, "the character table ends with " + std::to_string(m_skin.characters.size() - 1) +
                         ": the key is never hit");
        else if (IsFunction(key) && key > function_key::kDown)
            Add(key, "a function key without an action: it types nothing");
    }

    void CheckRect(std::uint16_t key, const std::vector<Rect>& rects, const Rect& rect) {
        if (IsEmpty(rect)) {
            const auto extends = [&rect](const Rect& other) {
                return other.HasArea() && other.Touches(rect);
            };
            if (std::ranges::any_of(rects, extends)) return;
            Add(key, "the rectangle " + Text(rect) + " has no area: it never looks pressed");
            return;
        }
        // Keys that the panel cuts off are reported with the picture.
        const Size picture = m_board.picture.GetSize();
        if (!m_lost.contains(key) && (rect.right >= picture.width || rect.bottom >= picture.height))
            Add(key, "the rectangle " + Text(rect) + " reaches out of the picture of " + Text(picture));
        if (std::ranges::count(rects, rect) > 1 && &rect == &*std::ranges::find(rects, rect))
            Add(key, "the rectangle " + Text(rect) + " is there more than once: it never looks pressed");
    }

    void CheckSize(std::uint16_t key, const std::vector<Rect>& rects) {
        const auto isLarge = [this](const Rect& rect) {
            return rect.Width() >= m_smallestSide && rect.Height() >= m_smallestSide;
        };
        if (std::ranges::any_of(rects, isLarge) || std::ranges::all_of(rects, IsEmpty)) return;
        Add(key, "at " + Text(Size{rects[0].Width(), rects[0].Height()}) +
                     " pixels too small for a pen: make both sides " + std::to_string(m_smallestSide) +
                     " or more");
    }

    // Keys completely outside the upright panel are additions for the wider one, which also shows the others.
    void CheckPanels(std::uint16_t key, const std::vector<Rect>& rects) {
        for (const Size& panel : m_panels)
            for (const Rect& rect : rects)
                if (IsSeen(panel, rect.left, rect.top) && !IsSeen(panel, rect.right - 1, rect.bottom - 1))
                    Add(key,
                        "is cut at the end of the panel of " + Text(panel) + ": let no key cross that edge");
        const auto isBelow = [this](const Rect& rect) { return rect.top >= m_panels.back().height; };
        if (std::ranges::all_of(rects, isBelow))
            Add(key, "lies below the panel of " + Text(m_panels.back()) +
                         ": give it a second place that this panel shows");
    }

    // Reports a completely hidden key with those above it; others are reported with the overlaps.
    void CheckHit(std::uint16_t key, const std::vector<Rect>& rects) {
        std::set<int> owners;
        int last = kNobody;
        for (const Rect& rect : rects)
            for (int y = rect.top; y <= std::min(rect.bottom, m_area.height - 1); ++y)
                for (int x = rect.left; x <= std::min(rect.right, m_area.width - 1); ++x)
                    if (m_hits.At(x, y) != last) owners.insert(last = m_hits.At(x, y));
        if (owners.contains(key) || key >= m_skin.characters.size()) return;
        m_lost.insert(key);
        std::string over;
        for (int owner : owners)
            if (owner != kUnseen) AppendName(over, m_skin.Describe(AsKey(owner)));
        Add(key, over.empty() ? "cannot be hit" : "cannot be hit: covered by " + over);
    }

    // All edges belong to a rectangle, and neighbours may share one, which is hit for the lower index. More
    // than one common column and row is an overlap.
    void CheckOverlaps() {
        for (auto a = m_board.layout.begin(); a != m_board.layout.end(); ++a)
            for (auto b = std::next(a); b != m_board.layout.end(); ++b) {
                if (m_lost.contains(b->first)) continue;
                for (const Rect& first : a->second)
                    for (const Rect& second : b->second) {
                        const Rect common = Intersect(first, second);
                        if (common.Width() > 1 && common.Height() > 1)
                            Add(b->first, m_skin.Describe(a->first) + " covers it from " + Text(common) +
                                              " and gets the taps there");
                    }
            }
    }

    void CheckGaps() {
        Rect keyboard;
        for (const auto& [key, rects] : m_board.layout)
            for (const Rect& rect : rects)
                if (!IsEmpty(rect)) keyboard = keyboard.right < 0 ? rect : Unite(keyboard, rect);
        keyboard = Intersect(keyboard, {0, 0, m_area.width - 1, m_area.height - 1});
        const std::vector<Gap> gaps = FindGaps(keyboard);
        for (std::size_t i = 0; i < std::min(gaps.size(), kMostGaps); ++i)
            ReportGap(keyboard, gaps[i]);
        if (gaps.size() > kMostGaps)
            m_remarks.Add(m_board.kind, std::to_string(gaps.size() - kMostGaps) + " more gaps between keys");
    }

    std::vector<Gap> FindGaps(const Rect& keyboard) const {
        std::vector<Gap> gaps;
        // Pixels outside the keyboard belong to no gap.
        HitMap hits(m_hits.GetSize(), kUnseen);
        for (int y = keyboard.top; y <= keyboard.bottom; ++y)
            for (int x = keyboard.left; x <= keyboard.right; ++x)
                hits.At(x, y) = m_hits.At(x, y);
        for (int y = keyboard.top; y <= keyboard.bottom; ++y)
            for (int x = keyboard.left; x <= keyboard.right; ++x) {
                if (hits.At(x, y) != kNobody) continue;
                Gap& gap = gaps.emplace_back(Gap{{x, y, x, y}});
                for (const Point& pixel : TakeConnected(hits, {x, y}, kUnseen, Neighbours::Four)) {
                    ++gap.pixels;
                    gap.bounds = Unite(gap.bounds, {pixel.x, pixel.y, pixel.x, pixel.y});
                }
            }
        return gaps;
    }

    // Reports the gap with the key to the left of its first pixel, or above it.
    void ReportGap(const Rect& keyboard, const Gap& gap) {
        const std::string text =
            "taps are lost in a gap of " + std::to_string(gap.pixels) + " pixels within " + Text(gap.bounds);
        int x = gap.bounds.left;
        const int y = gap.bounds.top;
        while (x <= gap.bounds.right && m_hits.At(x, y) != kNobody)
            ++x;
        int neighbour = kNobody;
        if (x > keyboard.left) neighbour = m_hits.At(x - 1, y);
        if (neighbour < 0 && y > keyboard.top) neighbour = m_hits.At(x, y - 1);
        if (neighbour < 0)
            m_remarks.Add(m_board.kind, text);
        else
            Add(AsKey(neighbour), "beside it " + text);
    }

    void CheckFunctions() {
        const auto has = [this](std::uint16_t key) { return m_board.layout.contains(key); };
        if (has(kDigitNine) && has(function_key::kUmlaut))
            Add(function_key::kUmlaut,
                "counts as one key with key 46, the second \"9\" of the digits: a pen "
                "that slides from one to the other taps it");
        if (m_board.kind == BoardKind::Digits || m_skin.isSwipeOnly || m_board.layout.empty()) return;
        for (std::uint16_t key : {function_key::kSpace, function_key::kBackspace, function_key::kEnter})
            if (!has(key))
                Add(key,
                    "is missing: only a stroke types it, and strokes can be switched off: add it, or make "
                    "the "
                    "skin one for strokes only (swipe_only = true)");
    }

    static std::uint16_t AsKey(int owner) { return static_cast<std::uint16_t>(owner); }

    const SkinModule& m_skin;
    const SkinBoard& m_board;
    std::vector<Size> m_panels;
    int m_smallestSide;
    RemarkList& m_remarks;
    HitMap m_hits;
    Size m_area;
    // Keys that no tap hits.
    std::set<std::uint16_t> m_lost;
};

}  // namespace

void CheckLayout(const CheckedSkin& checked, RemarkList& remarks) {
    for (const SkinBoard& board : checked.skin.boards)
        if (checked.screen.Uses(board.kind) && board.picture.IsReadable())
            BoardCheck(checked, board, remarks).Run();
}

}  // namespace tlk
