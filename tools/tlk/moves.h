// SPDX-License-Identifier: MIT
// Where the pen leads a keyboard: every gesture is tried on the engine, in every state that it comes to.
#pragma once

#include <bitset>
#include <map>
#include <vector>

#include "skin_module.h"

namespace tlk {

// Which key a tap on each pixel hits; nobody's pixels hold kNobody.
inline constexpr int kNobody = -1;
using HitMap = Grid<int>;
[[nodiscard]] HitMap MapHits(const SkinModule& skin, BoardKind board, Size area);

enum class Gesture { Tap, DoubleTap, StrokeUp };

struct Move {
    Gesture gesture;
    Point point;
    // The state that it leads to.
    Latches after = 0;
};

using LatchStates = std::bitset<kLatchStates>;

class Moves {
public:
    // Of the keyboard's board of characters and of its digits, as far as the panel shows them.
    Moves(Keyboard& keyboard, const HitMap& characters, const HitMap& digits);

    // All states that these lead to, with them.
    [[nodiscard]] LatchStates Reach(LatchStates states) const;
    // The fewest moves from one state to another, or to that with the most in common.
    [[nodiscard]] std::vector<Move> PathTowards(Latches from, Latches to) const;

private:
    const std::vector<Move>& From(Latches state) const;

    Keyboard& m_Keyboard;
    // Where the pen goes down on each board: on its status keys, and on one of all others.
    std::vector<Point> m_Characters;
    std::vector<Point> m_Digits;
    // Tried so far.
    mutable std::map<Latches, std::vector<Move>> m_Known;
};

}  // namespace tlk
