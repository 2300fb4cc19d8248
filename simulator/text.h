// SPDX-License-Identifier: MIT
// Texts between the device (UTF-16, which may hold lone surrogates) and scripts and traces (UTF-8).
#pragma once

#include <optional>
#include <string>
#include <string_view>

// None when the bytes are no valid UTF-8.
std::optional<std::u16string> FromUtf8(std::string_view bytes);
// What UTF-8 cannot hold, a lone surrogate, becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
// UTF-8 for a trace line: `\"`, `\\`, `\n`, and `\uXXXX` for other control characters and lone surrogates.
std::string Escaped(std::u16string_view text);
// The same in double quotes.
std::string Quoted(std::u16string_view text);

inline bool IsLeadSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
inline bool IsTrailSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
// The character that begins at this position: one unit, or a surrogate pair.
std::u16string_view CharacterAt(std::u16string_view text, std::size_t position);
