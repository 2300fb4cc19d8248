// SPDX-License-Identifier: MIT
// The state changes that the pen can cause: tries every gesture on the engine, in every state reached.
#pragma once

#include <bitset>
#include <map>
#include <vector>

#include "skin_module.h"

namespace tlk {

// The key that a tap on each pixel hits, or kNobody.
inline constexpr int kNobody = -1;
using HitMap = Grid<int>;
[[nodiscard]] HitMap MapHits(const SkinModule& skin, BoardKind board, Size area);

enum class Gesture { Tap, DoubleTap, StrokeUp };

struct Move {
    Gesture gesture;
    Point point;
    // The state after the move.
    Latches after = 0;
    // True if the move also types something.
    bool sends = false;
};

using LatchStates = std::bitset<kLatchStates>;

class Moves {
public:
    // `characters` and `digits` are the hit maps of the two boards, as far as the panel shows them.
    Moves(Keyboard& keyboard, const HitMap& characters, const HitMap& digits);

    // All states that can be reached from these, including them.
    [[nodiscard]] LatchStates Reach(LatchStates states) const;
    // The shortest path of moves that type nothing, from one state to another, or to the most similar one.
    [[nodiscard]] std::vector<Move> PathTowards(Latches from, Latches to) const;

private:
    const std::vector<Move>& From(Latches state) const;

    Keyboard& m_keyboard;
    // The points of each board to try: its status keys, and one of the other keys.
    std::vector<Point> m_characters;
    std::vector<Point> m_digits;
    // The states tried so far.
    mutable std::map<Latches, std::vector<Move>> m_known;
};

}  // namespace tlk
