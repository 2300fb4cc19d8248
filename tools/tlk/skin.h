// SPDX-License-Identifier: MIT
// The content of a skin's source for one screen, checked and with all defaults filled in.
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

// The label of a key, instead of its character or its function's default icon or word.
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

// The differences of one key of a board from the rows.
struct KeyChange {
    SourcePlace place;
    Point move;
    std::optional<Size> size;
    std::vector<Rect> rects;
    std::optional<Label> label;
    std::optional<Shade> face;
};

// One keyboard: its rows share the height, the keys of a row share the width by their weights.
struct Board {
    // Of the picture.
    Size size;
    // The part that the rows fill, from the top left; the rest is background.
    Size filled;
    // The height at which the turned screen cuts the picture, and a row must end; 0 if it shows all rows.
    int seam = 0;
    std::vector<Row> rows;
    // To the right of the rows, as high as the turned screen.
    std::vector<Row> wide;
    std::map<std::uint16_t, KeyChange> changes;

    // The seam is between the rows where it changes their heights least.
    std::size_t RowsAboveSeam() const {
        const double share = static_cast<double>(seam) / filled.height;
        const long count = std::lround(static_cast<double>(rows.size()) * share);
        return std::clamp<std::size_t>(static_cast<std::size_t>(count), 1, rows.size());
    }
    Rect WideArea() const { return {filled.width, 0, size.width - 1, (seam > 0 ? seam : size.height) - 1}; }
};

// A picture or a mask drawn by the author.
struct ArtFile {
    SourcePlace place;
    std::string path;
};

struct Skin {
    const Arrangement* arrangement = nullptr;
    CharacterTable characters;
    // The places of the keys of language 2, for messages about their characters.
    std::map<std::uint16_t, SourcePlace> characterPlaces;
    std::array<std::u16string, 2> languageNames{u"1", u"2"};
    Palette palette;
    FontSizes font;
    // The source's own font file; without one, the tool's font is used.
    std::optional<FontFile> fontFile;
    // Lines of the drawing are this many pixels thick.
    int scale = 1;
    // The upright screen that the skin is built for; nothing if the source lists none and sizes its boards
    // itself.
    std::optional<Size> screen;
    // All screens that the source lists.
    std::vector<std::string> screens;
    bool capsRect = true;
    bool swipeOnly = false;
    std::map<std::uint16_t, Label> labels;
    // In the planes of one language only.
    std::array<std::map<std::uint16_t, Label>, 2> languageLabels;
    Board portrait;
    std::optional<Board> landscape;
    std::optional<Board> digits;
    // By the name of the resource replaced.
    std::map<std::string, ArtFile> art;
    // The table of language 2, if any.
    std::optional<SourcePlace> language2;
    SourcePlaces places;

    // A square screen cannot be turned, and the engine does not use the CAPS rectangle there.
    bool HasSquareScreen() const { return screen && screen->width == screen->height; }
    // Null if the skin has no such board.
    const Board* Find(BoardKind kind) const {
        if (kind == BoardKind::Portrait) return &portrait;
        const std::optional<Board>& board = kind == BoardKind::Landscape ? landscape : digits;
        return board ? &*board : nullptr;
    }
    // On one of the two character keyboards.
    bool HasKey(std::uint16_t key) const {
        return places.contains({BoardKind::Portrait, key}) || places.contains({BoardKind::Landscape, key});
    }
};

}  // namespace tlk
