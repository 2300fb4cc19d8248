// SPDX-License-Identifier: MIT
// What a skin's source says for one screen, read and checked, with everything that it leaves out filled in.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "characters.h"
#include "icons.h"
#include "palette.h"
#include "places.h"

namespace tlk {

// Pixels per em.
struct FontSizes {
    int characters = 11;
    int words = 9;
};

// A path, or the name of a file beside the tool's own font.
struct FontFile {
    SourcePlace place;
    std::string path;
};

// What a key shows instead of its character or of its function's usual icon or word.
struct Label {
    std::u16string word;
    std::optional<Icon> icon;
    SourcePlace place;
};

struct RowKey {
    std::uint16_t key = 0;
    double weight = 1;
};

struct Row {
    SourcePlace place;
    std::vector<RowKey> keys;
};

// What one key of a board has different from what the rows give it.
struct KeyChange {
    SourcePlace place;
    Point move;
    std::optional<Size> size;
    std::vector<Rect> rects;
    std::optional<Label> label;
    std::optional<Shade> face;
};

// One keyboard: its rows share the height that they are given, the keys of a row the width by their weights.
struct Board {
    // Of the picture.
    Size size;
    // What the rows fill, from the top left; the background shows beside and below.
    Size filled;
    // A height at which a row ends where the turned screen cuts the rows off; 0 where it shows all of them.
    int seam = 0;
    std::vector<Row> rows;
    // Right of the rows, as high as the turned screen shows them.
    std::vector<Row> wide;
    std::map<std::uint16_t, KeyChange> changes;

    // The seam parts the rows where that changes their heights least.
    std::size_t RowsAboveSeam() const {
        const double share = static_cast<double>(seam) / filled.height;
        const long count = std::lround(static_cast<double>(rows.size()) * share);
        return std::clamp<std::size_t>(static_cast<std::size_t>(count), 1, rows.size());
    }
    Rect WideArea() const { return {filled.width, 0, size.width - 1, (seam > 0 ? seam : size.height) - 1}; }
};

// A picture or a mask of the author's own.
struct ArtFile {
    SourcePlace place;
    std::string path;
};

struct Skin {
    const Arrangement* arrangement = nullptr;
    CharacterTable characters;
    // Where the source gives a key of language 2, for messages about its characters.
    std::map<std::uint16_t, SourcePlace> characterPlaces;
    std::array<std::u16string, 2> languageNames{u"1", u"2"};
    Palette palette;
    FontSizes font;
    // A font file of the source's own; without, the tool's.
    std::optional<FontFile> fontFile;
    // Lines of the drawing are this many pixels thick.
    int scale = 1;
    // The upright screen that it is built for; nothing when the source lists none and sizes its boards
    // itself.
    std::optional<Size> screen;
    // All that the source lists, as it names them.
    std::vector<std::string> screens;
    bool capsRect = true;
    bool swipeOnly = false;
    std::map<std::uint16_t, Label> labels;
    // In the planes of one language only.
    std::array<std::map<std::uint16_t, Label>, 2> languageLabels;
    Board portrait;
    std::optional<Board> landscape;
    std::optional<Board> digits;
    // By the name of the resource that it replaces.
    std::map<std::string, ArtFile> art;
    // The table of language 2, when the source has one.
    std::optional<SourcePlace> language2;
    SourcePlaces places;

    // Such a screen has no turned side: the engine never splits the picture at the CAPS rectangle there.
    bool HasSquareScreen() const { return screen && screen->width == screen->height; }
    // On one of the two character keyboards.
    bool HasKey(std::uint16_t key) const {
        return places.contains({BoardKind::Portrait, key}) || places.contains({BoardKind::Landscape, key});
    }
};

}  // namespace tlk
