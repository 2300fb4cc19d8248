// SPDX-License-Identifier: MIT
// What a skin's source says, read and checked, with everything that it leaves out filled in.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "characters.h"
#include "grid.h"

namespace tlk {

// Top and bottom colour of a key's face.
struct Shade {
    Color top;
    Color bottom;
};

struct Palette {
    Color background{0x6E, 0x7F, 0x99};
    Shade letter{{0xFF, 0xFF, 0xFF}, {0xDE, 0xE5, 0xEF}};
    Shade number = letter;
    Shade symbol = letter;
    Shade function{{0xC6, 0xD3, 0xE6}, {0x9F, 0xB2, 0xCE}};
};

// Pixels per em.
struct FontSizes {
    int characters = 11;
    int words = 9;
};

struct RowKey {
    std::uint16_t key = 0;
    double weight = 1;
};

struct Row {
    unsigned line = 0;
    std::vector<RowKey> keys;
};

// One keyboard: its rows share the picture's height, the keys of a row its width by their weights.
struct Board {
    Size size;
    std::vector<Row> rows;
};

struct Skin {
    const Arrangement* arrangement = nullptr;
    CharacterTable characters;
    // Where the source gives a key of language 2, for messages about its characters.
    std::map<std::uint16_t, unsigned> lines;
    std::array<std::u16string, 2> languageNames{u"1", u"2"};
    Palette palette;
    FontSizes font;
    bool capsRect = true;
    Board portrait;
    std::optional<Board> landscape;
    std::optional<Board> digits;
};

}  // namespace tlk
