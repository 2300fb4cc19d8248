// SPDX-License-Identifier: MIT
// Text: UTF-8 and UTF-16, case, the string calls.
#include "device/strings.h"

#include <array>
#include <cstring>
#include <cwctype>

#include <locale.h>
#include <wctype.h>

namespace host {
namespace {

constexpr char32_t kMalformed = 0xFFFFFFFF;
constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Takes one character off the front.
char32_t TakeUtf16(std::u16string_view& text) {
    const char32_t unit = text[0];
    text.remove_prefix(1);
    if (!IsHighSurrogate(unit)) return IsLowSurrogate(unit) ? kMalformed : unit;
    if (text.empty() || !IsLowSurrogate(text[0])) return kMalformed;
    const char32_t low = text[0];
    text.remove_prefix(1);
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

// Takes one character off the front, or one byte that begins none.
char32_t TakeUtf8(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? lead : lead & (0x7Fu >> length);
    bool good = length != 0 && lead < 0xF5 && text.size() >= length;
    for (std::size_t i = 1; good && i < length; ++i) {
        good = (byte(i) & 0xC0) == 0x80;
        character = (character << 6) | (byte(i) & 0x3F);
    }
    // Overlong forms, surrogates and what lies beyond Unicode.
    if (good && length == 3) good = character >= 0x800 && (character < 0xD800 || character > 0xDFFF);
    if (good && length == 4) good = character >= 0x10000 && character <= 0x10FFFF;
    text.remove_prefix(good ? length : 1);
    return good ? character : kMalformed;
}

void AppendUtf8(std::string& text, char32_t character) {
    const auto trail = [&](int shift) { text += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        trail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | (character >> 12));
        trail(6);
        trail(0);
    } else {
        text += static_cast<char>(0xF0 | (character >> 18));
        trail(12);
        trail(6);
        trail(0);
    }
}

void AppendUtf16(std::u16string& text, char32_t character) {
    if (character < 0x10000) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
        text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    }
}

// False at the first malformed place when there is no stand-in for it.
bool Convert(std::u16string_view from, std::string& to, char32_t standIn) {
    while (!from.empty()) {
        const char32_t character = TakeUtf16(from);
        if (character == kMalformed && standIn == kMalformed) return false;
        AppendUtf8(to, character == kMalformed ? standIn : character);
    }
    return true;
}

bool Convert(std::string_view from, std::u16string& to, char32_t standIn) {
    while (!from.empty()) {
        const char32_t character = TakeUtf8(from);
        if (character == kMalformed && standIn == kMalformed) return false;
        AppendUtf16(to, character == kMalformed ? standIn : character);
    }
    return true;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
    std::string result;
    Convert(text, result, kReplacement);
    return result;
}

std::u16string FromUtf8(std::string_view text) {
    std::u16string result;
    Convert(text, result, kReplacement);
    return result;
}

std::optional<std::string> ToStrictUtf8(std::u16string_view text) {
    std::string result;
    if (!Convert(text, result, kMalformed)) return std::nullopt;
    return result;
}

std::optional<std::u16string> FromStrictUtf8(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    if (!Convert(text, result, kMalformed)) return std::nullopt;
    return result;
}

WCHAR FoldCase(WCHAR unit) {
    if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<WCHAR>(unit - 0x20) : unit;
    // The device's case does not depend on the locale of the process. Without this one only ASCII has case.
    static const locale_t kUnicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!kUnicode) return unit;
    const wint_t upper = towupper_l(unit, kUnicode);
    return upper <= 0xFFFF ? static_cast<WCHAR>(upper) : unit;
}

std::u16string FoldCase(std::u16string_view text) {
    std::u16string folded(text);
    for (WCHAR& unit : folded) {
        unit = FoldCase(unit);
    }
    return folded;
}

bool EqualIgnoringCase(std::u16string_view first, std::u16string_view second) {
    if (first.size() != second.size()) return false;
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (first[i] != second[i] && FoldCase(first[i]) != FoldCase(second[i])) return false;
    }
    return true;
}

}  // namespace host

namespace {

constexpr UINT kWesternCodePage = 1252;

// A null text counts as an empty one.
std::u16string_view View(LPCWSTR text) { return text ? std::u16string_view(text) : std::u16string_view(); }

int Sign(int order) { return (order > 0) - (order < 0); }

// Windows-1252 differs from the first 256 characters of Unicode here alone; its five holes stay themselves.
constexpr std::array<WCHAR, 32> kWesternHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

WCHAR FromWestern(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code >= 0x80 && code < 0xA0 ? kWesternHigh[code - 0x80u] : code;
}

}  // namespace

// Compares code units; callers rely on it telling texts apart, not on a dictionary's order.
int WINAPI lstrcmpW(LPCWSTR first, LPCWSTR second) { return Sign(View(first).compare(View(second))); }

int WINAPI lstrcmpiW(LPCWSTR first, LPCWSTR second) {
    return Sign(host::FoldCase(View(first)).compare(host::FoldCase(View(second))));
}

int WINAPI lstrlenW(LPCWSTR text) { return static_cast<int>(View(text).size()); }

int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR bytes, int byteCount, LPWSTR text,
                               int characters) {
    const bool knownPage = codePage == CP_ACP || codePage == kWesternCodePage;
    if (!knownPage || flags != 0 || !bytes || byteCount == 0 || byteCount < -1 || characters < 0 ||
        (characters > 0 && !text)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const int needed = byteCount == -1 ? static_cast<int>(std::strlen(bytes)) + 1 : byteCount;
    if (characters == 0) return needed;
    if (characters < needed) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    for (int i = 0; i < needed; ++i) {
        text[i] = FromWestern(bytes[i]);
    }
    return needed;
}
