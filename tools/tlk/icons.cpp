// SPDX-License-Identifier: MIT
#include "icons.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "icons_text.h"
#include "ink.h"
#include "name_list.h"

namespace tlk {
namespace {

// By name and size, such as "shift thin".
using Drawings = std::map<std::string_view, Mask>;

// Reads icons.txt, which describes its format. A blank line ends a drawing.
Drawings ReadDrawings(std::string_view text) {
    Drawings drawings;
    std::string_view name;
    InkRows rows;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(line.size() + 1);
        if (line.starts_with("//")) continue;
        if (line.find_first_not_of(".#") != std::string_view::npos)
            name = line;
        else if (!line.empty())
            rows.push_back(line);
        else if (!rows.empty())
            drawings.emplace(name, ToInk(std::exchange(rows, {})));
    }
    return drawings;
}

// Null if there is none.
const Mask* FindDrawing(std::string_view name, std::string_view size) {
    static const Drawings kDrawings = ReadDrawings(kIconsText);
    const auto found = kDrawings.find(std::string(name) + ' ' + std::string(size));
    return found == kDrawings.end() ? nullptr : &found->second;
}

// The heights of capitals from which each size is used, and from which all are doubled.
constexpr int kThinFrom = 8;
constexpr int kThickFrom = 11;
constexpr int kLargeFrom = 15;
constexpr int kDoubledFrom = 20;

using NamedIcon = std::pair<std::string_view, Icon>;
constexpr NamedIcon kNames[] = {{"shift", Icon::Shift},   {"caps", Icon::Caps},   {"back", Icon::Backspace},
                                {"delete", Icon::Delete}, {"enter", Icon::Enter}, {"space", Icon::Space},
                                {"tab", Icon::Tab},       {"left", Icon::Left},   {"up", Icon::Up},
                                {"right", Icon::Right},   {"down", Icon::Down}};

Mask Mirror(const Mask& ink) {
    const Size size = ink.GetSize();
    Mask mirrored(size, 0);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            mirrored.At(size.width - 1 - x, y) = ink.At(x, y);
    return mirrored;
}

// Turns what points left into what points up.
Mask Transpose(const Mask& ink) {
    const Size size = ink.GetSize();
    Mask transposed({size.height, size.width}, 0);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            transposed.At(y, x) = ink.At(x, y);
    return transposed;
}

bool IsInk(const Mask& ink, int x, int y) { return ink.Contains(x, y) && ink.At(x, y); }

// Doubles the size and fills half of the steps in slanting lines, so that they stay smooth and sharp: a
// corner takes the value that its two outer neighbours share, unless a line passes there.
Mask Double(const Mask& ink) {
    const Size size = ink.GetSize();
    Mask doubled({size.width * 2, size.height * 2}, 0);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const bool up = IsInk(ink, x, y - 1);
            const bool down = IsInk(ink, x, y + 1);
            const bool left = IsInk(ink, x - 1, y);
            const bool right = IsInk(ink, x + 1, y);
            const bool middle = IsInk(ink, x, y);
            const bool isCorner = up != down && left != right;
            const auto pick = [&](bool beside, bool above) {
                return isCorner && beside == above ? beside : middle;
            };
            doubled.At(x * 2, y * 2) = pick(left, up);
            doubled.At(x * 2 + 1, y * 2) = pick(right, up);
            doubled.At(x * 2, y * 2 + 1) = pick(left, down);
            doubled.At(x * 2 + 1, y * 2 + 1) = pick(right, down);
        }
    }
    return doubled;
}

Mask DrawStored(std::string_view name, int capHeight) {
    if (capHeight >= kDoubledFrom) return Double(DrawStored(name, std::max(capHeight / 2, kThickFrom)));
    const Mask& thin = *FindDrawing(name, "thin");
    if (capHeight >= kLargeFrom) {
        const Mask* large = FindDrawing(name, "large");
        return large ? *large : Double(thin);
    }
    if (capHeight >= kThickFrom) return *FindDrawing(name, "thick");
    const Mask* tiny = capHeight < kThinFrom ? FindDrawing(name, "tiny") : nullptr;
    return tiny ? *tiny : thin;
}

}  // namespace

Mask DrawIcon(Icon icon, int capHeight) {
    switch (icon) {
        case Icon::CapsFilled:
            return DrawStored("caps-filled", capHeight);
        case Icon::Delete:
            return Mirror(DrawStored("back", capHeight));
        case Icon::Right:
            return Mirror(DrawStored("left", capHeight));
        case Icon::Up:
            return Transpose(DrawStored("left", capHeight));
        case Icon::Down:
            return Transpose(Mirror(DrawStored("left", capHeight)));
        default:
            return DrawStored(std::ranges::find(kNames, icon, &NamedIcon::second)->first, capHeight);
    }
}

std::optional<Icon> FindIcon(std::string_view name) {
    for (const auto& [known, icon] : kNames)
        if (known == name) return icon;
    return std::nullopt;
}

std::string IconNames() {
    std::string names;
    for (const auto& [name, icon] : kNames)
        AppendName(names, name);
    return names;
}

}  // namespace tlk
