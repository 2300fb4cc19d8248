// SPDX-License-Identifier: MIT
#include "moves.h"

#include <algorithm>
#include <bit>
#include <set>

namespace tlk {
namespace {

// A point on each status key and on one other key, as all others change the state in the same way.
std::vector<Point> FindPoints(const Keyboard& keyboard, const HitMap& hits) {
    std::map<int, Point> found;
    for (int y = 0; y < hits.GetSize().height; ++y)
        for (int x = 0; x < hits.GetSize().width; ++x) {
            const int key = hits.At(x, y);
            if (key < 0) continue;
            const bool isStatusKey = keyboard.IsStatusKey(static_cast<std::uint16_t>(key));
            found.try_emplace(isStatusKey ? key : kNobody, Point{x, y});
        }
    std::vector<Point> points;
    for (const auto& [key, point] : found)
        points.push_back(point);
    return points;
}

void Make(Keyboard& keyboard, Gesture gesture, Point point) {
    switch (gesture) {
        case Gesture::Tap:
            return keyboard.Tap(point);
        case Gesture::DoubleTap:
            return keyboard.DoubleTap(point);
        case Gesture::StrokeUp:
            return keyboard.StrokeUp(point);
    }
}

}  // namespace

HitMap MapHits(const SkinModule& skin, BoardKind board, Size area) {
    Keyboard& keyboard = skin.KeyboardOf(board);
    keyboard.Latch(board == BoardKind::Digits ? latch::kDigits : 0);
    // Rows between the beginnings and ends of rectangles are equal.
    std::set<int> changes{0};
    for (const auto& [key, rects] : skin.Board(board).layout)
        for (const Rect& rect : rects)
            changes.insert({rect.top, rect.bottom + 1});
    HitMap hits(area, kNobody);
    for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x)
            hits.At(x, y) = changes.contains(y) ? keyboard.KeyAt({x, y}) : hits.At(x, y - 1);
    return hits;
}

Moves::Moves(Keyboard& keyboard, const HitMap& characters, const HitMap& digits)
    : m_keyboard(keyboard),
      m_characters(FindPoints(keyboard, characters)),
      m_digits(FindPoints(keyboard, digits)) {}

const std::vector<Move>& Moves::From(Latches state) const {
    const auto [found, isNew] = m_known.try_emplace(state);
    if (!isNew) return found->second;
    for (const Point& point : state& latch::kDigits ? m_digits : m_characters)
        for (const Gesture gesture : {Gesture::Tap, Gesture::DoubleTap, Gesture::StrokeUp}) {
            m_keyboard.Latch(state);
            Make(m_keyboard, gesture, point);
            found->second.push_back({gesture, point, m_keyboard.Latched(), m_keyboard.HasSent()});
        }
    return found->second;
}

LatchStates Moves::Reach(LatchStates states) const {
    for (LatchStates before; before != states;) {
        before = states;
        for (Latches state = 0; state < kLatchStates; ++state)
            if (before.test(state))
                for (const Move& move : From(state))
                    states.set(move.after);
    }
    return states;
}

std::vector<Move> Moves::PathTowards(Latches from, Latches to) const {
    std::map<Latches, std::vector<Move>> paths{{from, {}}};
    for (std::vector<Latches> open{from}; !open.empty();) {
        std::vector<Latches> next;
        for (const Latches state : open)
            for (const Move& move : From(state)) {
                if (move.sends) continue;
                const auto [found, isNew] = paths.try_emplace(move.after, paths.at(state));
                if (!isNew) continue;
                found->second.push_back(move);
                next.push_back(move.after);
            }
        open = next;
    }
    return std::ranges::min_element(paths, {},
                                    [to](const auto& path) { return std::popcount(path.first ^ to); })
        ->second;
}

}  // namespace tlk
