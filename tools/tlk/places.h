// SPDX-License-Identifier: MIT
// The places where a skin's source names its keys, for messages about the finished skin.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "boards.h"

namespace tlk {

struct SourcePlace {
    std::string file;
    unsigned line = 0;
};

using SourcePlaces = std::map<std::pair<BoardKind, std::uint16_t>, SourcePlace>;

}  // namespace tlk
