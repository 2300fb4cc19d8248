// SPDX-License-Identifier: MIT
#include "text.h"

#include <unicode.h>

#include <cstdio>

namespace {

bool IsControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); }

std::string Code(char16_t unit) {
    char code[8];
    std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(unit));
    return code;
}

std::string EscapedCharacter(std::u16string_view character) {
    const char16_t unit = character[0];
    if (unit == u'\n') return "\\n";
    if (unit == u'"' || unit == u'\\') return {'\\', static_cast<char>(unit)};
    if (IsControl(unit) || !unicode::IsWellFormed(character)) return Code(unit);
    return unicode::ToUtf8(character);
}

}  // namespace

std::string Escaped(std::u16string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const std::u16string_view character = unicode::CharacterAt(text, 0);
        bytes += EscapedCharacter(character);
        text.remove_prefix(character.size());
    }
    return bytes;
}

std::string Quoted(std::u16string_view text) { return '"' + Escaped(text) + '"'; }
