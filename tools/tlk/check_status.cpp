// SPDX-License-Identifier: MIT
// Latches everything that the pen can, in every order: which planes come up, and is there a way back from
// each?
#include "check_parts.h"
#include "moves.h"

namespace tlk {
namespace {

LatchStates Only(Latches state) { return LatchStates{}.set(state); }

template <class Callback>
void ForEach(const LatchStates& states, const Callback& callback) {
    for (Latches state = 0; state < kLatchStates; ++state)
        if (states.test(state)) callback(state);
}

// The states after turning the screen in any of these states.
LatchStates AfterTurning(const Keyboard& keyboard, const LatchStates& states) {
    LatchStates after = Only(0);
    ForEach(states, [&](Latches state) { after.set(state & keyboard.Lasting()); });
    return after;
}

HitMap Crop(const HitMap& hits, Size panel) {
    HitMap part(Clip(hits.GetSize(), panel), kNobody);
    for (int y = 0; y < part.GetSize().height; ++y)
        for (int x = 0; x < part.GetSize().width; ++x)
            part.At(x, y) = hits.At(x, y);
    return part;
}

// The keyboard of one orientation, and the states that the pen reaches.
struct Orientation {
    BoardKind board;
    Keyboard& keyboard;
    Moves moves;
    LatchStates states;

    Orientation(const CheckedSkin& checked, BoardKind kind)
        : board(kind),
          keyboard(checked.skin.KeyboardOf(kind)),
          moves(keyboard, checked.Hits(kind),
                Crop(checked.Hits(BoardKind::Digits), checked.screen.Panel(kind))) {}

    // Is there a state with `latched`, and without `without`, from which `latched` cannot be released?
    bool IsTrapped(Latches latched, Latches without = 0) const {
        bool isTrapped = false;
        ForEach(states, [&](Latches state) {
            if (!(state & latched) || (state & without)) return;
            bool isFree = false;
            ForEach(moves.Reach(Only(state)), [&](Latches next) { isFree = isFree || !(next & latched); });
            isTrapped = isTrapped || !isFree;
        });
        return isTrapped;
    }

    void AddPlanes(Reach& reach) const {
        ForEach(
            states,
            [&](Latches state) {
                keyboard.Latch(state);
                const std::size_t plane = keyboard.Plane();
                reach.planes[static_cast<std::size_t>(plane == kDigitPlane ? BoardKind::Digits : board)]
                    .insert(plane);
            });
    }
};

void ReportTraps(const Orientation& orientation, RemarkList& remarks) {
    if (orientation.IsTrapped(latch::kLanguage2, latch::kDigits))
        remarks.Add(orientation.board,
                    "no way back from language 2: add the key \"lang\" here as well, as the language "
                    "stays when the screen is turned");
    if (orientation.IsTrapped(latch::kCaps, latch::kDigits))
        remarks.Add(orientation.board, "no way to release caps lock");
}

}  // namespace

Reach CheckStatus(const CheckedSkin& checked, RemarkList& remarks) {
    std::vector<Orientation> orientations;
    orientations.emplace_back(checked, BoardKind::Portrait);
    orientations[0].states = orientations[0].moves.Reach(Only(0));
    if (checked.screen.Uses(BoardKind::Landscape) &&
        checked.skin.Board(BoardKind::Landscape).picture.isPresent) {
        Orientation& turned = orientations.emplace_back(checked, BoardKind::Landscape);
        Orientation& upright = orientations[0];
        turned.states = turned.moves.Reach(AfterTurning(turned.keyboard, upright.states));
        upright.states = upright.moves.Reach(AfterTurning(upright.keyboard, turned.states));
    }
    Reach reach;
    bool isTrapped = false;
    for (const Orientation& orientation : orientations) {
        orientation.AddPlanes(reach);
        isTrapped = isTrapped || orientation.IsTrapped(latch::kDigits);
    }
    if (isTrapped) remarks.Add(BoardKind::Digits, "no way back: add the key \"digits\" to it");
    for (const Orientation& orientation : orientations)
        ReportTraps(orientation, remarks);
    if (checked.skin.Board(BoardKind::Digits).layout.contains(function_key::kControl))
        remarks.Add(BoardKind::Digits, function_key::kControl,
                    "Control shows the character keyboard while the keys of this one are hit: leave it out");
    return reach;
}

}  // namespace tlk
