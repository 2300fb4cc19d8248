// SPDX-License-Identifier: MIT
// Says what is wrong with a finished skin, by the rules of the engine that will read it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "grid.h"
#include "module_reader.h"
#include "places.h"

namespace tlk {

struct Remark {
    // None: the skin as a whole.
    std::optional<BoardKind> board;
    // Names of the planes concerned; empty when it is the whole board.
    std::vector<std::string> planes;
    // `key "q"` or `key 87`; empty when it is no single key.
    std::string key;
    // What is wrong and what it leads to.
    std::string text;
    // Of the key in the source, when it is known.
    std::optional<SourcePlace> place;
};

// One line: `standard.tlk: portrait, lng2-small, key "q": ...`, or with the place in the source in front
// where it is known.
[[nodiscard]] std::string FormatRemark(const Remark& remark, const std::string& file,
                                       const std::string& label = {});

// `screen` is the size in pixels, of either orientation; both are checked. No remark: the skin is good.
[[nodiscard]] std::vector<Remark> Check(const Module& module, Size screen,
                                        const SourcePlaces* pPlaces = nullptr);

// The same for the name of the skin's file, which the keyboard must be able to tell from those of the skins
// in the same folder.
[[nodiscard]] std::vector<Remark> CheckName(const std::string& path);

}  // namespace tlk
