// SPDX-License-Identifier: MIT
// What is latched on a keyboard that is running, known by how it looks: it tells nobody.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "skin_module.h"

namespace tlk {

struct KeyboardState {
    bool hasShift = false;
    bool hasCapsLock = false;
    bool hasControl = false;
    bool isLanguage2 = false;
    bool showsDigits = false;
    bool hasUmlauts = false;
    bool isLandscape = false;
};

// Nothing when the picture is none of this skin, as while a key is pressed. `panel` may be larger than the
// keyboard or cut it off.
[[nodiscard]] std::optional<KeyboardState> FindState(const SkinModule& skin, const Picture& panel);

// Commands of the simulator that bring the state up on a keyboard with nothing latched. What the skin has no
// key for is left out.
[[nodiscard]] std::vector<std::string> CommandsFor(const SkinModule& skin, const KeyboardState& state);
// A tap on the key, of the board that is shown; no command when it is not there.
[[nodiscard]] std::vector<std::string> TapOn(const SkinModule& skin, const KeyboardState& shown,
                                             std::uint16_t key);

}  // namespace tlk
