// SPDX-License-Identifier: MIT
#include "characters.h"

#include <unicode.h>

#include <algorithm>

#include "name_list.h"

namespace tlk {
namespace {

constexpr std::array<Arrangement, 4> kArrangements{{
    {"full", 70, 116},
    {"keypad", 117, 129},
    {"letters", 143, 177},
    {"rows", 178, 221},
}};

// In the order of the function block, whose codes run from 0xF000 with a gap after the status keys.
constexpr std::array<std::string_view, 15> kFunctionNames{"shift",  "ctrl", "caps", "lang",  "digits",
                                                          "umlaut", "esc",  "back", "enter", "space",
                                                          "tab",    "left", "up",   "right", "down"};

}  // namespace

const Arrangement* FindArrangement(std::string_view name) {
    const auto found = std::ranges::find(kArrangements, name, &Arrangement::name);
    return found == kArrangements.end() ? nullptr : &*found;
}

std::string ArrangementNames() {
    std::string names;
    for (const Arrangement& arrangement : kArrangements)
        AppendName(names, arrangement.name);
    return names;
}

std::optional<std::uint16_t> FindCharacter(const CharacterTable& table, const Arrangement& arrangement,
                                           char16_t character) {
    for (std::uint16_t key = arrangement.first; key <= arrangement.last; ++key)
        if (table[key][0] == character) return key;
    return std::nullopt;
}

std::optional<std::uint16_t> FindFunction(std::string_view name) {
    const auto found = std::ranges::find(kFunctionNames, name);
    if (found == kFunctionNames.end()) return std::nullopt;
    return static_cast<std::uint16_t>(kFirstFunction + (found - kFunctionNames.begin()));
}

std::string FunctionNames() {
    std::string names;
    for (std::string_view name : kFunctionNames)
        AppendName(names, name);
    return names;
}

bool IsDigitLineCharacter(char16_t small) {
    return (small >= u'0' && small <= u'9') || small == u'-' || small == u'=';
}

bool HasName(const CharacterTable& table, std::uint16_t key) {
    if (IsFunction(key)) return key <= function_key::kDown;
    return key < table.size() && table[key][0] > u' ';
}

std::string KeyName(const CharacterTable& table, std::uint16_t key) {
    if (!HasName(table, key)) return std::to_string(key);
    return IsFunction(key) ? std::string(kFunctionNames[key - kFirstFunction])
                           : unicode::ToUtf8(table[key][0]);
}

}  // namespace tlk
