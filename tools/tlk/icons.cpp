// SPDX-License-Identifier: MIT
#include "icons.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ink.h"
#include "name_list.h"

namespace tlk {
namespace {

// Each drawn twice: with lines of one pixel beside capitals of about eight pixels, and with lines of two.
// The widest has a drawing for the keys of the smallest screens as well, and those with an arrow have one for
// larger screens, as an arrow's point does not stand being doubled.
struct Drawing {
    Icon icon;
    InkRows thin;
    InkRows thick;
    InkRows tiny = {};
    InkRows large = {};
};

const std::array<Drawing, 8>& Drawings() {
    static const std::array<Drawing, 8> drawings{{
        {Icon::Shift,
         {"....#....",  //
          "...#.#...",  //
          "..#...#..",  //
          ".#.....#.",  //
          "###...###",  //
          "..#...#..",  //
          "..#...#..",  //
          "..#####.."},
         {"......#......",  //
          ".....###.....",  //
          "....##.##....",  //
          "...##...##...",  //
          "..##.....##..",  //
          ".##.......##.",  //
          "#####...#####",  //
          "...##...##...",  //
          "...##...##...",  //
          "...##...##...",  //
          "...#######...",  //
          "...#######..."}},
        {Icon::Caps,
         {"....#....",  //
          "...#.#...",  //
          "..#...#..",  //
          ".#.....#.",  //
          "###...###",  //
          "..#...#..",  //
          "..#####..",  //
          ".........",  //
          "..#####..",  //
          "..#####.."},
         {"......#......",  //
          ".....###.....",  //
          "....##.##....",  //
          "...##...##...",  //
          "..##.....##..",  //
          ".##.......##.",  //
          "#####...#####",  //
          "...##...##...",  //
          "...#######...",  //
          "...#######...",  //
          ".............",  //
          "...#######...",  //
          "...#######..."},
         {"...#...",  //
          "..#.#..",  //
          ".#...#.",  //
          "##...##",  //
          ".#####.",  //
          ".......",  //
          ".#####."}},
        {Icon::CapsFilled,
         {"....#....",  //
          "...###...",  //
          "..#####..",  //
          ".#######.",  //
          "#########",  //
          "..#####..",  //
          "..#####..",  //
          ".........",  //
          "..#####..",  //
          "..#####.."},
         {"......#......",  //
          ".....###.....",  //
          "....#####....",  //
          "...#######...",  //
          "..#########..",  //
          ".###########.",  //
          "#############",  //
          "...#######...",  //
          "...#######...",  //
          "...#######...",  //
          ".............",  //
          "...#######...",  //
          "...#######..."},
         {"...#...",  //
          "..###..",  //
          ".#####.",  //
          "#######",  //
          ".#####.",  //
          ".......",  //
          ".#####."}},
        {Icon::Backspace,
         {"....#########",  //
          "...#........#",  //
          "..#..#...#..#",  //
          ".#....#.#...#",  //
          "#......#....#",  //
          ".#....#.#...#",  //
          "..#..#...#..#",  //
          "...#........#",  //
          "....#########"},
         {"....##############",  //
          "...###############",  //
          "..##............##",  //
          ".##...##..##....##",  //
          "##.....####.....##",  //
          "##......##......##",  //
          "##.....####.....##",  //
          ".##...##..##....##",  //
          "..##............##",  //
          "...###############",  //
          "....##############"},
         {"...########",  //
          "..#.......#",  //
          ".#..#.#...#",  //
          "#....#....#",  //
          ".#..#.#...#",  //
          "..#.......#",  //
          "...########"}},
        {Icon::Enter,
         {"..........#",  //
          "..........#",  //
          "..#.......#",  //
          ".##.......#",  //
          "###########",  //
          ".##........",  //
          "..#........"},
         {".............##",  //
          ".............##",  //
          "...#.........##",  //
          "..##.........##",  //
          ".###.........##",  //
          "###############",  //
          "###############",  //
          ".###...........",  //
          "..##...........",  //
          "...#..........."},
         {},
         {"..................##",  //
          "..................##",  //
          "..................##",  //
          ".....#............##",  //
          "....##............##",  //
          "...###............##",  //
          "..####............##",  //
          ".#####............##",  //
          "####################",  //
          "####################",  //
          ".#####..............",  //
          "..####..............",  //
          "...###..............",  //
          "....##..............",  //
          ".....#.............."}},
        {Icon::Space,
         {"#................#",  //
          "#................#",  //
          "##################"},
         {"##....................##",  //
          "##....................##",  //
          "##....................##",  //
          "########################",  //
          "########################"}},
        {Icon::Tab,
         {".....#...#",  //
          ".....##..#",  //
          ".....###.#",  //
          "########.#",  //
          ".....###.#",  //
          ".....##..#",  //
          ".....#...#"},
         {".....#.....##",  //
          ".....##....##",  //
          ".....###...##",  //
          ".....####..##",  //
          "##########.##",  //
          "##########.##",  //
          ".....####..##",  //
          ".....###...##",  //
          ".....##....##",  //
          ".....#.....##"},
         {},
         {"........#.......##",  //
          "........##......##",  //
          "........###.....##",  //
          "........####....##",  //
          "........#####...##",  //
          "##############..##",  //
          "##############..##",  //
          "........#####...##",  //
          "........####....##",  //
          "........###.....##",  //
          "........##......##",  //
          "........#.......##"}},
        {Icon::Left,
         {"...#...",  //
          "..##...",  //
          ".###...",  //
          "#######",  //
          ".###...",  //
          "..##...",  //
          "...#..."},
         {"....#.....",  //
          "...##.....",  //
          "..###.....",  //
          ".####.....",  //
          "##########",  //
          "##########",  //
          ".####.....",  //
          "..###.....",  //
          "...##.....",  //
          "....#....."},
         {},
         {".....#........",  //
          "....##........",  //
          "...###........",  //
          "..####........",  //
          ".#####........",  //
          "##############",  //
          "##############",  //
          ".#####........",  //
          "..####........",  //
          "...###........",  //
          "....##........",  //
          ".....#........"}},
    }};
    return drawings;
}

// The capitals from which on each drawing is used, and then all of them at twice their size.
constexpr int kThinFrom = 8;
constexpr int kThickFrom = 11;
constexpr int kLargeFrom = 15;
constexpr int kDoubledFrom = 20;

constexpr std::pair<std::string_view, Icon> kNames[] = {
    {"shift", Icon::Shift}, {"caps", Icon::Caps},   {"back", Icon::Backspace}, {"delete", Icon::Delete},
    {"enter", Icon::Enter}, {"space", Icon::Space}, {"tab", Icon::Tab},        {"left", Icon::Left},
    {"up", Icon::Up},       {"right", Icon::Right}, {"down", Icon::Down}};

Mask Mirror(const Mask& ink) {
    const Size size = ink.GetSize();
    Mask mirrored(size, 0);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            mirrored.At(size.width - 1 - x, y) = ink.At(x, y);
    return mirrored;
}

// What points to the left points upwards.
Mask Transpose(const Mask& ink) {
    const Size size = ink.GetSize();
    Mask transposed({size.height, size.width}, 0);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            transposed.At(y, x) = ink.At(x, y);
    return transposed;
}

bool IsInk(const Mask& ink, int x, int y) { return ink.Contains(x, y) && ink.At(x, y); }

// Twice the size with the steps of slanting lines filled in halfway, so that they stay as smooth and sharp as
// they were: a corner takes the value that its two outer neighbours share, unless a line passes there.
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

Mask DrawStored(Icon icon, int capHeight) {
    for (const Drawing& drawing : Drawings()) {
        if (drawing.icon != icon) continue;
        if (capHeight >= kDoubledFrom) return Double(DrawStored(icon, std::max(capHeight / 2, kThickFrom)));
        if (capHeight >= kLargeFrom)
            return drawing.large.empty() ? Double(ToInk(drawing.thin)) : ToInk(drawing.large);
        if (capHeight >= kThickFrom) return ToInk(drawing.thick);
        return ToInk(capHeight >= kThinFrom || drawing.tiny.empty() ? drawing.thin : drawing.tiny);
    }
    return {};
}

}  // namespace

Mask DrawIcon(Icon icon, int capHeight) {
    switch (icon) {
        case Icon::Delete:
            return Mirror(DrawStored(Icon::Backspace, capHeight));
        case Icon::Right:
            return Mirror(DrawStored(Icon::Left, capHeight));
        case Icon::Up:
            return Transpose(DrawStored(Icon::Left, capHeight));
        case Icon::Down:
            return Transpose(Mirror(DrawStored(Icon::Left, capHeight)));
        default:
            return DrawStored(icon, capHeight);
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
