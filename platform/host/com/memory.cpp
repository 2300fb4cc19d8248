// SPDX-License-Identifier: MIT
// Task memory, identifiers as text.
#include "com/activation.h"

#include "device/faults.h"
#include "device/strings.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace host {
namespace {

constexpr std::size_t kGuidLength = 38;

// sscanf accepts more than identifiers, so what it read must give the text again.
bool ParseGuid(std::u16string_view text, GUID& guid) {
    BYTE* last = guid.Data4;
    std::sscanf(std::string(text.begin(), text.end()).c_str(),
                "{%8x-%4hx-%4hx-%2hhx%2hhx-%2hhx%2hhx%2hhx%2hhx%2hhx%2hhx}", &guid.Data1, &guid.Data2,
                &guid.Data3, &last[0], &last[1], &last[2], &last[3], &last[4], &last[5], &last[6], &last[7]);
    return EqualIgnoringCase(FormatGuid(guid), text);
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
    if (text && ParseGuid(text, *clsid)) return S_OK;
    *clsid = {};
    return CO_E_CLASSSTRING;
}
