// SPDX-License-Identifier: MIT
// Task memory, identifiers as text.
#include "com/activation.h"

#include "device/faults.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace host {
namespace {

constexpr std::size_t kGuidLength = 38;

// The positions of each byte's digits in the text, in the order of the GUID's fields; the high digit of each.
constexpr int kDigitPlaces[16] = {1, 3, 5, 7, 10, 12, 15, 17, 20, 22, 25, 27, 29, 31, 33, 35};

int HexDigit(WCHAR c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    return -1;
}

bool HasPunctuation(std::u16string_view text) {
    return text.size() == kGuidLength && text.front() == u'{' && text.back() == u'}' && text[9] == u'-' &&
           text[14] == u'-' && text[19] == u'-' && text[24] == u'-';
}

bool ParseGuid(std::u16string_view text, GUID& guid) {
    if (!HasPunctuation(text)) return false;
    BYTE bytes[16];
    for (int i = 0; i < 16; ++i) {
        const auto place = static_cast<std::size_t>(kDigitPlaces[i]);
        const int high = HexDigit(text[place]);
        const int low = HexDigit(text[place + 1]);
        if (high < 0 || low < 0) return false;
        bytes[i] = static_cast<BYTE>(high << 4 | low);
    }
    guid.Data1 = static_cast<DWORD>(bytes[0]) << 24 | static_cast<DWORD>(bytes[1]) << 16 |
                 static_cast<DWORD>(bytes[2]) << 8 | bytes[3];
    guid.Data2 = static_cast<WORD>(bytes[4] << 8 | bytes[5]);
    guid.Data3 = static_cast<WORD>(bytes[6] << 8 | bytes[7]);
    std::copy(bytes + 8, bytes + 16, guid.Data4);
    return true;
}

}  // namespace

std::u16string FormatGuid(const GUID& guid) {
    char text[kGuidLength + 1];
    const BYTE* last = guid.Data4;
    std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1,
                  guid.Data2, guid.Data3, last[0], last[1], last[2], last[3], last[4], last[5], last[6],
                  last[7]);
    return {text, text + kGuidLength};
}

}  // namespace host

using namespace host;

void* WINAPI CoTaskMemAlloc(SIZE_T bytes) {
    if (CallFails(Call::AllocateMemory)) return nullptr;
    // Not null for 0 bytes either: null means failure.
    return std::malloc(std::max<SIZE_T>(bytes, 1));
}

void WINAPI CoTaskMemFree(void* memory) { std::free(memory); }

HRESULT WINAPI StringFromCLSID(REFCLSID clsid, LPWSTR* text) {
    if (!text) return E_INVALIDARG;
    *text = static_cast<LPWSTR>(CoTaskMemAlloc((kGuidLength + 1) * sizeof(WCHAR)));
    if (!*text) return E_OUTOFMEMORY;
    const std::u16string formatted = FormatGuid(clsid);
    std::copy_n(formatted.c_str(), kGuidLength + 1, *text);
    return S_OK;
}

// The identifier is null if the text is invalid.
HRESULT WINAPI CLSIDFromString(LPCWSTR text, CLSID* clsid) {
    if (!clsid) return E_INVALIDARG;
    *clsid = {};
    return text && ParseGuid(text, *clsid) ? S_OK : CO_E_CLASSSTRING;
}
