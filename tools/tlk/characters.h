// SPDX-License-Identifier: MIT
// The numbering of keys, which all skins share: their characters and names.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlk {

// One row of the engine's character table: small and large of language 1, its umlaut plane, language 2 and
// its umlaut plane.
inline constexpr std::size_t kSlotCount = 8;
using CharacterEntry = std::array<char16_t, kSlotCount>;
using CharacterTable = std::vector<CharacterEntry>;

inline constexpr std::uint16_t kFirstFunction = 48;
inline constexpr std::uint16_t kFirstCharacter = 70;

namespace function_key {
inline constexpr std::uint16_t kShift = 48;
inline constexpr std::uint16_t kControl = 49;
inline constexpr std::uint16_t kCaps = 50;
inline constexpr std::uint16_t kLanguage = 51;
inline constexpr std::uint16_t kDigits = 52;
inline constexpr std::uint16_t kUmlaut = 53;
inline constexpr std::uint16_t kEscape = 54;
inline constexpr std::uint16_t kBackspace = 55;
inline constexpr std::uint16_t kEnter = 56;
inline constexpr std::uint16_t kSpace = 57;
inline constexpr std::uint16_t kTab = 58;
inline constexpr std::uint16_t kLeft = 59;
inline constexpr std::uint16_t kUp = 60;
inline constexpr std::uint16_t kRight = 61;
inline constexpr std::uint16_t kDown = 62;
}  // namespace function_key

// A range of key indices in which every small character occurs once, so that a character names a key.
struct Arrangement {
    std::string_view name;
    std::uint16_t first;
    std::uint16_t last;
};

// The keys of the digit keyboard. Excludes later entries, which repeat the digits: index 46, the second '9',
// counts as one key with the umlaut key.
inline constexpr Arrangement kDigitArrangement{"digits", 0, 37};

// Null if there is no such arrangement.
const Arrangement* FindArrangement(std::string_view name);
std::string ArrangementNames();

std::optional<std::uint16_t> FindCharacter(const CharacterTable& table, const Arrangement& arrangement,
                                           char16_t character);
std::optional<std::uint16_t> FindFunction(std::string_view name);
std::string FunctionNames();

inline bool IsFunction(std::uint16_t key) { return key >= kFirstFunction && key < kFirstCharacter; }
// The keys, besides Backspace, that caps lock leaves alone inside the CAPS rectangle.
bool IsDigitLineCharacter(char16_t small);

// Does the key have a character in language 1, or a function with an action?
bool HasName(const CharacterTable& table, std::uint16_t key);
// The key's name, or its index if it has none.
std::string KeyName(const CharacterTable& table, std::uint16_t key);

}  // namespace tlk
