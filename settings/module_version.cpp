// SPDX-License-Identifier: MIT
#include "settings/module_version.h"

#include <cstring>
#include <new>

#include "framework/memory.h"

namespace {

constexpr DWORD kSignature = 0xFEEF04BD;
constexpr WORD kDefaultCodePage = 1252;
constexpr std::size_t kGuardBytes = 2 * sizeof(WCHAR);

void AppendHex(WideString& text, WORD value) {
    for (int shift = 12; shift >= 0; shift -= 4)
        text += TEXT("0123456789abcdef")[(value >> shift) & 0xF];
}

}  // namespace

CModuleVersion::CModuleVersion() : tagVS_FIXEDFILEINFO{} {}

bool CModuleVersion::Load(LPCWSTR path) {
    m_Translation.codePage = kDefaultCodePage;
    static_cast<tagVS_FIXEDFILEINFO&>(*this) = {};
    if (!ReadBlock(path) || !ReadFixedPart()) return false;
    ReadTranslation();
    return dwSignature == kSignature;
}

bool CModuleVersion::ReadBlock(LPCWSTR path) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path, &ignored);
    if (size == 0) return false;
    // The zero bytes behind the block terminate the text of a damaged block that lacks its null.
    m_pVersionData.reset(new (std::nothrow) BYTE[size + kGuardBytes]());
    return m_pVersionData && GetFileVersionInfoW(path, 0, size, m_pVersionData.get());
}

bool CModuleVersion::ReadFixedPart() {
    void* fixed = nullptr;
    UINT size = 0;
    if (!VerQueryValueW(m_pVersionData.get(), TEXT("\\"), &fixed, &size)) return false;
    if (size < sizeof(tagVS_FIXEDFILEINFO)) return false;
    std::memcpy(static_cast<tagVS_FIXEDFILEINFO*>(this), fixed, sizeof(tagVS_FIXEDFILEINFO));
    return true;
}

// The language is the lower, the code page the upper half of a little-endian word.
void CModuleVersion::ReadTranslation() {
    void* translation = nullptr;
    UINT size = 0;
    if (!VerQueryValueW(m_pVersionData.get(), TEXT("\\VarFileInfo\\Translation"), &translation, &size))
        return;
    if (size < sizeof m_Translation) return;
    std::memcpy(&m_Translation, translation, sizeof m_Translation);
}

WideString CModuleVersion::PathOf(LPCWSTR name) const {
    WideString path = TEXT("\\StringFileInfo\\");
    AppendHex(path, m_Translation.language);
    AppendHex(path, m_Translation.codePage);
    return path.append(TEXT("\\")).append(name);
}

WideString CModuleVersion::QueryString(LPCWSTR name) const {
    WideString found;
    if (!m_pVersionData) return found;
    EnoughMemory([&] {
        void* text = nullptr;
        UINT length = 0;
        if (VerQueryValueW(m_pVersionData.get(), PathOf(name).c_str(), &text, &length))
            found = static_cast<const WCHAR*>(text);
    });
    return found;
}
