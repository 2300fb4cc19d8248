// SPDX-License-Identifier: MIT
// Taps all status keys in every order, as the engine would answer them: which planes come up, and is there a
// way back from each?
#include <bitset>

#include "check_parts.h"

namespace tlk {
namespace {

// A state of the keyboard in one orientation, a bit for each flag.
enum Flag : unsigned {
    kShift = 1,
    kCaps = 2,
    kControl = 4,
    kLanguage2 = 8,
    kDigits = 16,
    kUmlaut = 32,
    kStateCount = 64,
    kOneShot = kShift | kControl | kUmlaut
};

using States = std::bitset<kStateCount>;

// One orientation's boards, as far as their keys can be hit.
class Machine {
public:
    Machine(const SkinModule& skin, const SkinBoard& characters, const Screen& screen)
        : m_Characters(KeysOf(skin, characters, screen.Panel(characters.kind))),
          m_Digits(KeysOf(skin, skin.digits, screen.Panel(characters.kind))),
          m_HasCapsKey(characters.layout.contains(function_key::kCaps)) {}

    // All states that taps and strokes lead to from these, with them.
    States Reach(States states) const {
        for (States before; before != states;) {
            before = states;
            for (unsigned state = 0; state < kStateCount; ++state)
                if (before.test(state)) states |= Next(state);
        }
        return states;
    }

private:
    static std::set<std::uint16_t> KeysOf(const SkinModule& skin, const SkinBoard& board, Size panel) {
        std::set<std::uint16_t> keys;
        const HitMap hits = MapHits(skin, board, UsableArea(board, panel));
        int last = kNobody;
        for (int key : hits.Pixels()) {
            if (key == last || key == kNobody) continue;
            keys.insert(static_cast<std::uint16_t>(key));
            last = key;
        }
        return keys;
    }

    States Next(unsigned state) const {
        States next;
        for (std::uint16_t key : state& kDigits ? m_Digits : m_Characters) {
            if (key < function_key::kShift || key > function_key::kUmlaut) {
                next.set(state & ~unsigned{kOneShot});
                continue;
            }
            const unsigned tapped = Tap(state, key);
            next.set(tapped);
            if (key == function_key::kShift && !m_HasCapsKey)
                next.set(Tap(tapped, key) ^ kCaps);                         // the second tap of a double tap
            if (key == function_key::kLanguage) next.set(state ^ kUmlaut);  // an upward stroke
        }
        return next;
    }

    unsigned Tap(unsigned state, std::uint16_t key) const {
        switch (key) {
            case function_key::kShift:
                return !m_HasCapsKey && (state & kCaps) ? state & ~unsigned{kCaps} : state ^ kShift;
            case function_key::kControl:
                return state ^ kControl;
            case function_key::kCaps:
                return state ^ kCaps;
            case function_key::kLanguage:
                return state ^ kLanguage2;
            case function_key::kDigits:
                return (state ^ kDigits) & (state & kDigits ? ~0U : ~unsigned{kControl});
            default:
                return state ^ kUmlaut;
        }
    }

    std::set<std::uint16_t> m_Characters;
    std::set<std::uint16_t> m_Digits;
    bool m_HasCapsKey;
};

// The plane of the mask that the engine selects.
std::size_t PlaneOf(unsigned state) {
    if (state & kControl) return 0;
    if (state & kDigits) return kDigitPlane;
    const bool isLarge = ((state & kShift) != 0) != ((state & kCaps) != 0);
    return (state & kLanguage2 ? 4U : 0U) + (state & kUmlaut ? 2U : 0U) + (isLarge ? 1U : 0U);
}

States Only(unsigned state) { return States{}.set(state); }

bool HasFlag(const States& states, unsigned flag) {
    for (unsigned state = 0; state < kStateCount; ++state)
        if (states.test(state) && (state & flag)) return true;
    return false;
}

struct Orientations {
    States upright;
    States turned;
};

// The language is what of a state outlasts the turning of the screen.
Orientations FindStates(const Machine& upright, const Machine* pTurned) {
    Orientations found{upright.Reach(Only(0)), {}};
    if (!pTurned) return found;
    const auto start = [](const States& other) {
        return HasFlag(other, kLanguage2) ? Only(0) | Only(kLanguage2) : Only(0);
    };
    found.turned = pTurned->Reach(start(found.upright));
    found.upright = upright.Reach(start(found.turned));
    return found;
}

// Is there a state with this flag, and without the other one, from which no tap leads to one without it?
bool IsTrapped(const Machine& machine, const States& states, unsigned flag, unsigned without = 0) {
    for (unsigned state = 0; state < kStateCount; ++state) {
        if (!states.test(state) || !(state & flag) || (state & without)) continue;
        const States later = machine.Reach(Only(state));
        bool isFree = false;
        for (unsigned next = 0; next < kStateCount; ++next)
            isFree = isFree || (later.test(next) && !(next & flag));
        if (!isFree) return true;
    }
    return false;
}

void TellTraps(const Machine& machine, const States& states, BoardKind board, RemarkList& remarks) {
    if (IsTrapped(machine, states, kLanguage2, kDigits))
        remarks.Add(board,
                    "no way back from language 2: add the key \"lang\" here as well, as the language "
                    "stays when the screen is turned");
    if (IsTrapped(machine, states, kCaps, kDigits)) remarks.Add(board, "no way to release caps lock");
}

void AddPlanes(const States& states, PlaneSet& planes, bool& digits) {
    for (unsigned state = 0; state < kStateCount; ++state) {
        if (!states.test(state)) continue;
        const std::size_t plane = PlaneOf(state);
        if (plane == kDigitPlane)
            digits = true;
        else
            planes.insert(plane);
    }
}

}  // namespace

PlaneSet Reach::Planes(BoardKind board) const {
    switch (board) {
        case BoardKind::Portrait:
            return portrait;
        case BoardKind::Landscape:
            return landscape;
        case BoardKind::Digits:
            break;
    }
    return digits ? PlaneSet{kDigitPlane} : PlaneSet{};
}

Reach FindReach(const SkinModule& skin, const Screen& screen) {
    const Machine upright(skin, skin.portrait, screen);
    const Machine turned(skin, skin.landscape, screen);
    const Orientations states = FindStates(upright, screen.IsSquare() ? nullptr : &turned);
    Reach reach;
    AddPlanes(states.upright, reach.portrait, reach.digits);
    AddPlanes(states.turned, reach.landscape, reach.digits);
    return reach;
}

void CheckStatus(const SkinModule& skin, const Screen& screen, RemarkList& remarks) {
    if (!skin.portrait.picture.isPresent) return;
    const Machine upright(skin, skin.portrait, screen);
    const Machine turned(skin, skin.landscape, screen);
    const bool isTurned = !screen.IsSquare() && skin.landscape.picture.isPresent;
    const Orientations states = FindStates(upright, isTurned ? &turned : nullptr);
    if (IsTrapped(upright, states.upright, kDigits) || IsTrapped(turned, states.turned, kDigits))
        remarks.Add(BoardKind::Digits, "no way back: add the key \"digits\" to it");
    TellTraps(upright, states.upright, BoardKind::Portrait, remarks);
    if (isTurned) TellTraps(turned, states.turned, BoardKind::Landscape, remarks);
    if (skin.digits.layout.contains(function_key::kControl))
        remarks.Add(BoardKind::Digits, function_key::kControl,
                    "Control shows the character keyboard while the keys of this one are hit: leave it out");
}

}  // namespace tlk
