// SPDX-License-Identifier: MIT
#include "text.h"

#include <cstdio>

namespace {

// The length of the sequence that this byte begins, 0 when none does.
std::size_t SequenceLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

// Takes one character off the front; none when it is malformed, overlong, a surrogate or out of range.
std::optional<char32_t> TakeCharacter(std::string_view& bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    const std::size_t length = SequenceLength(first);
    if (length == 0 || length > bytes.size()) return std::nullopt;
    char32_t character = length == 1 ? first : first & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        character = (character << 6) | (next & 0x3Fu);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < smallest[length] || character > 0x10FFFF) return std::nullopt;
    if (character >= 0xD800 && character <= 0xDFFF) return std::nullopt;
    bytes.remove_prefix(length);
    return character;
}

void AppendUtf16(std::u16string& text, char32_t character) {
    if (character < 0x10000) {
        text += static_cast<char16_t>(character);
        return;
    }
    character -= 0x10000;
    text += static_cast<char16_t>(0xD800 + (character >> 10));
    text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

void AppendUtf8(std::string& bytes, char32_t character) {
    const auto append = [&bytes](char32_t value) { bytes += static_cast<char>(value); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | (character >> 6));
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | (character >> 12));
        append(0x80 | ((character >> 6) & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | (character >> 18));
        append(0x80 | ((character >> 12) & 0x3F));
        append(0x80 | ((character >> 6) & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

void AppendCode(std::string& bytes, char16_t unit) {
    char code[8];
    std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(unit));
    bytes += code;
}

bool IsControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); }

void AppendEscaped(std::string& bytes, char16_t unit) {
    if (unit == u'"' || unit == u'\\') {
        bytes += '\\';
        bytes += static_cast<char>(unit);
    } else if (unit == u'\n') {
        bytes += "\\n";
    } else if (IsControl(unit) || IsLeadSurrogate(unit) || IsTrailSurrogate(unit)) {
        AppendCode(bytes, unit);
    } else {
        AppendUtf8(bytes, unit);
    }
}

// The handler appends what is no pair.
template <typename AppendUnit>
std::string Encode(std::u16string_view text, AppendUnit appendUnit) {
    std::string bytes;
    while (!text.empty()) {
        const std::u16string_view character = CharacterAt(text, 0);
        if (character.size() == 2) {
            const char32_t lead = character[0] - 0xD800u;
            AppendUtf8(bytes, 0x10000 + (lead << 10) + (character[1] - 0xDC00u));
        } else {
            appendUnit(bytes, character[0]);
        }
        text.remove_prefix(character.size());
    }
    return bytes;
}

}  // namespace

std::optional<std::u16string> FromUtf8(std::string_view bytes) {
    std::u16string text;
    while (!bytes.empty()) {
        const std::optional<char32_t> character = TakeCharacter(bytes);
        if (!character) return std::nullopt;
        AppendUtf16(text, *character);
    }
    return text;
}

std::string ToUtf8(std::u16string_view text) {
    return Encode(text, [](std::string& bytes, char16_t unit) {
        const bool lone = IsLeadSurrogate(unit) || IsTrailSurrogate(unit);
        AppendUtf8(bytes, lone ? U'\uFFFD' : unit);
    });
}

std::string Escaped(std::u16string_view text) { return Encode(text, AppendEscaped); }

std::string Quoted(std::u16string_view text) { return '"' + Escaped(text) + '"'; }

std::u16string_view CharacterAt(std::u16string_view text, std::size_t position) {
    const bool pair =
        IsLeadSurrogate(text[position]) && position + 1 < text.size() && IsTrailSurrogate(text[position + 1]);
    return text.substr(position, pair ? 2 : 1);
}
