// SPDX-License-Identifier: MIT
// Checks a finished skin, by the rules of the engine.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "grid.h"
#include "module_reader.h"
#include "places.h"

namespace tlk {

struct Remark {
    // None for the whole skin.
    std::optional<BoardKind> board;
    // The names of the planes; empty for the whole board.
    std::vector<std::string> planes;
    // `key "q"` or `key 87`; empty if it is no single key.
    std::string key;
    // The fault and its effect.
    std::string text;
    // The key's place in the source, if known.
    std::optional<SourcePlace> place;
};

// One line: `standard.tlk: portrait, lng2-small, key "q": ...`; it begins with the place in the source
// instead, if known.
[[nodiscard]] std::string FormatRemark(const Remark& remark, const std::string& file,
                                       const std::string& label = {});

// `screen` is the size in pixels in either orientation; checks both. No remarks mean that the skin is good.
[[nodiscard]] std::vector<Remark> Check(const Module& module, Size screen,
                                        const SourcePlaces* places = nullptr);

// Checks the name of the skin's file, which the keyboard must be able to tell from other skins in the same
// folder.
[[nodiscard]] std::vector<Remark> CheckName(const std::string& path);

}  // namespace tlk
