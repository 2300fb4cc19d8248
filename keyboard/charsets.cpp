// SPDX-License-Identifier: MIT
// The character table: the library's digit, function and English tables and the skin's second language.
#include <algorithm>

#include "framework/memory.h"
#include "framework/module.h"
#include "keyboard/keyboard.h"
#include "keyboard/skin_resources.h"

namespace {

constexpr DWORD kGroupUnits = 4;  // small, large, umlaut small, umlaut large
constexpr DWORD kGroupBytes = kGroupUnits * sizeof(WCHAR);
constexpr DWORD kLocaleHeaderBytes = 2;
constexpr std::size_t kLanguage1Slot = 0;
constexpr std::size_t kLanguage2Slot = 4;

CharsetEntry SameInAllPlanes(WCHAR code) {
    CharsetEntry entry;
    std::fill(std::begin(entry.m_Slots), std::end(entry.m_Slots), code);
    return entry;
}

// Copies groups of four code units into the entries from `first` on, adding entries that are missing.
void CopyGroups(const BYTE* bytes, DWORD size, std::vector<CharsetEntry>& entries, std::size_t first,
                std::size_t slot) {
    const std::size_t groups = size / kGroupBytes;
    entries.resize(std::max(entries.size(), first + groups));
    for (std::size_t i = 0; i < groups * kGroupUnits; ++i) {
        entries[first + i / kGroupUnits].m_Slots[slot + i % kGroupUnits] =
            static_cast<WCHAR>(ReadLittleEndian16(bytes + i * sizeof(WCHAR)));
    }
}

}  // namespace

bool CKeyboard::LoadCharsets() {
    m_Charset.clear();
    if (EnoughMemory([&] { BuildCharset(); })) return true;
    m_Charset.clear();
    return false;
}

void CKeyboard::BuildCharset() {
    const HMODULE own = _Module.GetModuleInstance();
    if (const DataResource digits = FindDataResource(own, TEXT("digitalset")); digits.bytes) {
        for (std::size_t i = 0; i < digits.size / 2; ++i) {
            m_Charset.push_back(
                SameInAllPlanes(static_cast<WCHAR>(ReadLittleEndian16(digits.bytes + 2 * i))));
        }
        m_nDigitFirst = 0;
        m_nDigitLast = static_cast<DWORD>(m_Charset.size()) - 1;
    }
    // Unlike the other tables, function codes are stored most significant byte first.
    if (const DataResource functions = FindDataResource(own, TEXT("funcset")); functions.bytes) {
        m_nFuncFirst = m_nDigitLast + 1;
        for (std::size_t i = 0; i < functions.size / 2; ++i) {
            m_Charset.push_back(
                SameInAllPlanes(static_cast<WCHAR>(ReadBigEndian16(functions.bytes + 2 * i))));
        }
        m_nFuncLast = static_cast<DWORD>(m_Charset.size()) - 1;
    }
    m_nCharFirst = m_nFuncLast + 1;
    if (const DataResource english = FindDataResource(own, TEXT("charset_en")); english.bytes)
        CopyGroups(english.bytes, english.size, m_Charset, m_nCharFirst, kLanguage1Slot);
    const DataResource locale = FindDataResource(m_hSkinLib, TEXT("LOCALE_CHARSET"));
    if (locale.bytes && locale.size >= kLocaleHeaderBytes) {
        CopyGroups(locale.bytes + kLocaleHeaderBytes, locale.size - kLocaleHeaderBytes, m_Charset,
                   m_nCharFirst, kLanguage2Slot);
    }
    m_nCharLast = static_cast<DWORD>(m_Charset.size()) - 1;
}
