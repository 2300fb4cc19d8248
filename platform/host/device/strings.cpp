// SPDX-License-Identifier: MIT
// Case, and the string calls.
#include "device/strings.h"

#include "device/faults.h"

#include <array>
#include <cstring>
#include <cwctype>

#include <locale.h>
#include <wctype.h>

namespace host {

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
    for (WCHAR& unit : folded)
        unit = FoldCase(unit);
    return folded;
}

bool EqualIgnoringCase(std::u16string_view first, std::u16string_view second) {
    if (first.size() != second.size()) return false;
    for (std::size_t i = 0; i < first.size(); ++i)
        if (first[i] != second[i] && FoldCase(first[i]) != FoldCase(second[i])) return false;
    return true;
}

std::vector<std::u16string_view> Split(std::u16string_view text, std::u16string_view separators) {
    std::vector<std::u16string_view> parts;
    for (std::size_t begin; (begin = text.find_first_not_of(separators)) != text.npos;) {
        text.remove_prefix(begin);
        parts.push_back(text.substr(0, text.find_first_of(separators)));
        text.remove_prefix(parts.back().size());
    }
    return parts;
}

}  // namespace host

namespace {

constexpr UINT kWesternCodePage = 1252;

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
int WINAPI lstrcmpW(LPCWSTR first, LPCWSTR second) {
    return Sign(host::View(first).compare(host::View(second)));
}

int WINAPI lstrcmpiW(LPCWSTR first, LPCWSTR second) {
    return Sign(host::FoldCase(host::View(first)).compare(host::FoldCase(host::View(second))));
}

int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR bytes, int byteCount, LPWSTR text,
                               int characters) {
    const bool knownPage = codePage == CP_ACP || codePage == kWesternCodePage;
    if (!knownPage || flags != 0 || !bytes || byteCount == 0 || byteCount < -1 || characters < 0 ||
        (characters > 0 && !text))
        return host::Fail(ERROR_INVALID_PARAMETER, 0);
    const int needed = byteCount == -1 ? static_cast<int>(std::strlen(bytes)) + 1 : byteCount;
    if (characters == 0) return needed;
    if (characters < needed) return host::Fail(ERROR_INSUFFICIENT_BUFFER, 0);
    for (int i = 0; i < needed; ++i)
        text[i] = FromWestern(bytes[i]);
    return needed;
}
