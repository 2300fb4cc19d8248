// SPDX-License-Identifier: MIT
// The sign on a key in a plane.
#pragma once

#include <optional>
#include <string>

#include "layout.h"

namespace tlk {

// The plane whose mask is drawn. The slot is its place in the character table; digit keys are the same in all
// slots.
struct Plane {
    std::size_t slot = 0;
    // The digit keyboard: its `digits` key leads back and has another label.
    bool digits = false;
    // Backspace follows Shift alone here, so the large planes can show Delete.
    bool backspaceFollowsShift = false;

    bool IsLarge() const { return slot % 2 == 1; }
    bool IsUmlaut() const { return slot % 4 >= 2; }
    std::size_t Language() const { return slot / 4; }
};

// An icon or a text; neither if the key is blank.
struct Sign {
    std::u16string text;
    std::optional<Icon> icon;
    // Words have their own size; those with accents are larger by this many pixels.
    bool isWord = false;
    int enlarged = 0;
};

[[nodiscard]] Sign SignOf(const Skin& skin, const Key& key, const Plane& plane);

}  // namespace tlk
