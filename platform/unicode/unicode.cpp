// SPDX-License-Identifier: MIT
#include "unicode.h"

#include <utf8.h>

#include <iterator>

namespace unicode {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }
bool IsFirstHalf(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsSecondHalf(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

void Append(std::string& bytes, char32_t character) {
    utf8::append(IsSurrogate(character) ? kReplacement : character, std::back_inserter(bytes));
}

}  // namespace

std::optional<std::u16string> FromUtf8(std::string_view bytes) {
    if (!utf8::is_valid(bytes.begin(), bytes.end())) return std::nullopt;
    std::u16string text;
    text.reserve(bytes.size());
    utf8::utf8to16(bytes.begin(), bytes.end(), std::back_inserter(text));
    return text;
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    while (!text.empty())
        Append(bytes, TakeCharacter(text));
    return bytes;
}

std::string ToUtf8(char32_t character) {
    std::string bytes;
    Append(bytes, character);
    return bytes;
}

bool IsWellFormed(std::u16string_view text) {
    while (!text.empty())
        if (IsSurrogate(TakeCharacter(text))) return false;
    return true;
}

std::u16string_view CharacterAt(std::u16string_view text, std::size_t position) {
    const bool isPair =
        IsFirstHalf(text[position]) && position + 1 < text.size() && IsSecondHalf(text[position + 1]);
    return text.substr(position, isPair ? 2 : 1);
}

char32_t TakeCharacter(std::u16string_view& text) {
    const std::u16string_view units = CharacterAt(text, 0);
    text.remove_prefix(units.size());
    if (units.size() == 1) return units[0];
    return 0x10000 + ((char32_t{units[0]} & 0x3FF) << 10) + (units[1] & 0x3FF);
}

char32_t TakeCharacter(std::string_view& bytes) {
    const char* next = bytes.data();
    const char32_t character = utf8::next(next, bytes.data() + bytes.size());
    bytes.remove_prefix(static_cast<std::size_t>(next - bytes.data()));
    return character;
}

}  // namespace unicode
