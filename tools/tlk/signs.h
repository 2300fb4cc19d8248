// SPDX-License-Identifier: MIT
// What a key shows in a plane.
#pragma once

#include <optional>
#include <string>

#include "layout.h"

namespace tlk {

// Which mask is drawn. The slot names two languages, small and large, and their umlaut planes in the order of
// the character table; digit keys are the same in all of them.
struct Plane {
    std::size_t slot = 0;
    // The digit keyboard's way back is not its way in.
    bool digits = false;
    // The engine draws and treats Backspace by Shift alone here, so that the large planes can say Delete.
    bool backspaceFollowsShift = false;

    bool IsLarge() const { return slot % 2 == 1; }
    bool IsUmlaut() const { return slot % 4 >= 2; }
    std::size_t Language() const { return slot / 4; }
};

// An icon or a text; neither where the key is blank.
struct Sign {
    std::u16string text;
    std::optional<Icon> icon;
    // Words have a size of their own, and letters with accents among them are larger by so many pixels.
    bool isWord = false;
    int enlarged = 0;
};

[[nodiscard]] Sign SignOf(const Skin& skin, const Key& key, const Plane& plane);

}  // namespace tlk
