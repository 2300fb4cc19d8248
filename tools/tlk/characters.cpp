// SPDX-License-Identifier: MIT
#include "characters.h"

#include <algorithm>

#include "name_list.h"

namespace tlk {
namespace {

constexpr std::u16string_view kDigitCharacters =
    u"[]{}789#%=^,.<>456+-*/\u00B1\u00B0:\\|123$\u00A2\u20AC\u00A3\u00A5(0)1234567890";

// The character entries, four arrangements one after the other: the full keyboard with its keypad, 13
// unused entries, letters only, four rows of eleven.
constexpr std::array<std::u16string_view, 4> kLanguage1{
    // small
    u"1234567890-="
    u"qwertyuiop[]"
    u"asdfghjkl;'"
    u"zxcvbnm,./`\\"
    u"789456123(0)`"
    u"============="
    u"qwertyuiopasdfghjkl-"
    u"zxcvbnm;'@&,.!?"
    u"1234567890-"
    u"qwertyuiop/"
    u"asdfghjkl;'"
    u"zxcvbnm,.[]",
    // large
    u"!@#$%^&*()_+"
    u"QWERTYUIOP{}"
    u"ASDFGHJKL:\""
    u"ZXCVBNM<>?~|"
    u"+#=|%^$€₤[±]`"
    u"============="
    u"QWERTYUIOPASDFGHJKL_"
    u"ZXCVBNM:\"~*<>/\\"
    u"!@#$%^&*()_"
    u"QWERTYUIOP?"
    u"ASDFGHJKL:\""
    u"ZXCVBNM<>{}",
    // umlaut small
    u"¿¡¢€₤¥§¶±º«»"
    u"àáâãäåæçðèéê"
    u"ëìíîïñøœòóô"
    u"õöβþùúûüý\u00B5©®"
    u"¿¡¢€₤¥§¶±º«»™"
    u"============="
    u"àáâãäåæçèéêëìíîïðñòó"
    u"ôõöøùúûüœ©®ýþÿ\u00B5"
    u"`¿€₤«≈§±\u00B5[]"
    u"àáâãäåæçèéê"
    u"ëìíîïðñòóôõ"
    u"öøùúûüœýþÿ©",
    // umlaut large
    u"¿¡¢€₤¥§¶±º«»"
    u"ÀÁÂÃÄÅÆÇÐÈÉÊ"
    u"ËÌÍÎÏÑØŒÒÓÔ"
    u"ÕÖβþÙÚÛÜÝ\u03BC©®"
    u"¿¡¢€₤¥§¶±º«»™"
    u"============="
    u"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓ"
    u"ÔÕÖØÙÚÛÜŒ©®ÝþŸ\u03BC"
    u"~¡¢¥»≠¶º\u00B5{}"
    u"ÀÁÂÃÄÅÆÇÈÉÊ"
    u"ËÌÍÎÏÐÑÒÓÔÕ"
    u"ÖØÙÚÛÜŒÝþŸ®",
};

constexpr std::size_t kCharacterCount = 152;
static_assert(kDigitCharacters.size() == kFirstFunction);
static_assert(std::ranges::all_of(kLanguage1, [](auto slot) { return slot.size() == kCharacterCount; }));

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

CharacterTable BuiltInCharacters() {
    CharacterTable table;
    table.reserve(kFirstCharacter + kCharacterCount);
    for (char16_t digit : kDigitCharacters)
        table.emplace_back().fill(digit);
    // Function keys have no character: the engine's private codes never reach a mask.
    table.resize(kFirstCharacter, CharacterEntry{});
    for (std::size_t i = 0; i < kCharacterCount; ++i) {
        CharacterEntry& entry = table.emplace_back();
        for (std::size_t slot = 0; slot < kSlotCount; ++slot)
            entry[slot] = kLanguage1[slot % 4][i];
    }
    return table;
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

std::string NameKey(const CharacterTable& table, std::uint16_t key) {
    if (!IsFunction(key)) return key < table.size() ? ToUtf8(table[key][0]) : std::to_string(key);
    const std::size_t function = key - kFirstFunction;
    return function < kFunctionNames.size() ? std::string(kFunctionNames[function]) : std::to_string(key);
}

std::string ToUtf8(char32_t character) {
    const auto tail = [character](int shift) {
        return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) return {static_cast<char>(character)};
    if (character < 0x800) return {static_cast<char>(0xC0 | (character >> 6)), tail(0)};
    if (character < 0x10000) return {static_cast<char>(0xE0 | (character >> 12)), tail(6), tail(0)};
    return {static_cast<char>(0xF0 | (character >> 18)), tail(12), tail(6), tail(0)};
}

}  // namespace tlk
