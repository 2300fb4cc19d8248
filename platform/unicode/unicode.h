// SPDX-License-Identifier: MIT
// Text in UTF-8 and UTF-16. Files of the host may hold any bytes, texts of the device lone surrogates.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace unicode {

// None when the bytes are no valid UTF-8.
std::optional<std::u16string> FromUtf8(std::string_view bytes);
// A lone surrogate, which UTF-8 cannot hold, becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
std::string ToUtf8(char32_t character);
// Has the text no lone surrogate, so that it comes back from UTF-8 as it was?
bool IsWellFormed(std::u16string_view text);

// The character that begins at this position: a surrogate pair, or one unit.
std::u16string_view CharacterAt(std::u16string_view text, std::size_t position);
// Takes one character off the front; a lone surrogate counts as itself.
char32_t TakeCharacter(std::u16string_view& text);
// The same of bytes that are valid UTF-8.
char32_t TakeCharacter(std::string_view& bytes);

}  // namespace unicode
