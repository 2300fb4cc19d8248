// SPDX-License-Identifier: MIT
// Text in UTF-8 and UTF-16. Host files may contain any bytes, texts of the device lone surrogates.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace unicode {

// None if the bytes are not valid UTF-8.
std::optional<std::u16string> FromUtf8(std::string_view bytes);
// A lone surrogate, which UTF-8 cannot encode, becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
std::string ToUtf8(char32_t character);
// Is the text free of lone surrogates, so that UTF-8 can encode it?
bool IsWellFormed(std::u16string_view text);

// The character that begins at this position: a surrogate pair, or one unit.
std::u16string_view CharacterAt(std::u16string_view text, std::size_t position);
// Takes one character off the front; a lone surrogate counts as itself.
char32_t TakeCharacter(std::u16string_view& text);
// The same for valid UTF-8.
char32_t TakeCharacter(std::string_view& bytes);

}  // namespace unicode
