// SPDX-License-Identifier: MIT
#include "framework/registrar.h"

#include "framework/handles.h"

namespace {

constexpr WCHAR kModulePlaceholder[] = TEXT("%MODULE%");

HRESULT ToResult(LONG error) { return HRESULT_FROM_WIN32(static_cast<DWORD>(error)); }

bool IsAbsent(LONG error) { return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND; }

bool IsBlank(WCHAR c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsBrace(const WideString& token, WCHAR brace) { return token.size() == 1 && token[0] == brace; }

// An empty name would mean the parent, and removing that would remove the keys of all others, too.
bool IsKeyName(const WideString& token) {
    return !token.empty() && token[0] != '\'' && !IsBrace(token, '{') && !IsBrace(token, '}');
}

// Deletes a key with everything under it, subkeys first: only the handheld's RegDeleteKeyW deletes them as
// well. A missing key is no error.
LONG DeleteTree(HKEY parent, const WideString& name) {
    CRegistryKeyOwner key;
    const LONG opened = RegOpenKeyExW(parent, name.c_str(), 0, KEY_ALL_ACCESS, key.Receive());
    if (opened != ERROR_SUCCESS) return IsAbsent(opened) ? ERROR_SUCCESS : opened;
    for (;;) {
        WCHAR subkey[256];
        DWORD length = 256;
        const LONG found = RegEnumKeyExW(key.Get(), 0, subkey, &length, nullptr, nullptr, nullptr, nullptr);
        if (found == ERROR_NO_MORE_ITEMS) break;
        if (found != ERROR_SUCCESS) return found;
        const LONG deleted = DeleteTree(key.Get(), WideString(subkey, length));
        if (deleted != ERROR_SUCCESS) return deleted;
    }
    key.Reset();
    return RegDeleteKeyW(parent, name.c_str());
}

LONG SetValue(HKEY key, LPCWSTR name, DWORD type, const WideString& text) {
    if (type == REG_DWORD) {
        DWORD number = 0;
        for (const WCHAR digit : text)
            number = number * 10 + static_cast<DWORD>(digit - '0');
        return RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
    }
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR));
    return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
}

}  // namespace

enum class KeyRule { Ordinary, NeverRemoved, RemovedBeforeWriting };

struct CRegistrar::Entry {
    WideString name;
    KeyRule rule = KeyRule::Ordinary;
    bool hasValue = false;
    DWORD type = REG_SZ;
    WideString text;
};

HRESULT CRegistrar::Run(const WideString& script, RegistryAction action) {
    m_script = &script;
    m_position = 0;
    m_action = action;
    if (NextToken() != TEXT("HKCR")) return E_FAIL;
    return RunBlock(HKEY_CLASSES_ROOT);
}

// "{" entry... "}"
HRESULT CRegistrar::RunBlock(HKEY parent) {
    if (!IsBrace(NextToken(), '{')) return E_FAIL;
    while (!IsBrace(PeekToken(), '}')) {
        if (PeekToken().empty()) return E_FAIL;
        const HRESULT result = RunEntry(parent);
        if (FAILED(result)) return result;
    }
    NextToken();
    return S_OK;
}

HRESULT CRegistrar::RunEntry(HKEY parent) {
    Entry entry;
    entry.name = NextToken();
    if (entry.name == TEXT("val")) return RunValue(parent);
    if (entry.name == TEXT("NoRemove")) entry.rule = KeyRule::NeverRemoved;
    if (entry.name == TEXT("ForceRemove")) entry.rule = KeyRule::RemovedBeforeWriting;
    if (entry.rule != KeyRule::Ordinary) entry.name = NextToken();
    if (!IsKeyName(entry.name)) return E_FAIL;
    if (PeekToken() == TEXT("=")) {
        const HRESULT result = ReadData(entry.type, entry.text);
        if (FAILED(result)) return result;
        entry.hasValue = true;
    }
    return m_action == RegistryAction::Register ? RegisterKey(parent, entry) : UnregisterKey(parent, entry);
}

HRESULT CRegistrar::RunValue(HKEY key) {
    const WideString name = NextToken();
    DWORD type = REG_SZ;
    WideString text;
    const HRESULT result = ReadData(type, text);
    if (FAILED(result)) return result;
    if (m_action == RegistryAction::Register) return ToResult(SetValue(key, name.c_str(), type, text));
    const LONG deleted = RegDeleteValueW(key, name.c_str());
    return IsAbsent(deleted) ? S_OK : ToResult(deleted);
}

HRESULT CRegistrar::RegisterKey(HKEY parent, const Entry& entry) {
    if (entry.rule == KeyRule::RemovedBeforeWriting) {
        const LONG deleted = DeleteTree(parent, entry.name);
        if (deleted != ERROR_SUCCESS) return ToResult(deleted);
    }
    CRegistryKeyOwner key;
    LONG error = RegCreateKeyExW(parent, entry.name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                 KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr);
    if (error == ERROR_SUCCESS && entry.hasValue)
        error = SetValue(key.Get(), nullptr, entry.type, entry.text);
    if (error != ERROR_SUCCESS) return ToResult(error);
    return IsBrace(PeekToken(), '{') ? RunBlock(key.Get()) : S_OK;
}

// Removes the listed subkeys, then the key itself unless it has other subkeys; its values do not matter.
HRESULT CRegistrar::UnregisterKey(HKEY parent, const Entry& entry) {
    CRegistryKeyOwner key;
    LONG error = RegOpenKeyExW(parent, entry.name.c_str(), 0, KEY_ALL_ACCESS, key.Receive());
    if (IsAbsent(error)) return IsBrace(PeekToken(), '{') ? SkipBlock() : S_OK;
    if (error != ERROR_SUCCESS) return ToResult(error);
    const HRESULT result = IsBrace(PeekToken(), '{') ? RunBlock(key.Get()) : S_OK;
    if (FAILED(result) || entry.rule == KeyRule::NeverRemoved) return result;
    DWORD subkeys = 0;
    error = RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr);
    key.Reset();
    if (error == ERROR_SUCCESS && subkeys == 0) error = RegDeleteKeyW(parent, entry.name.c_str());
    return ToResult(error);
}

HRESULT CRegistrar::SkipBlock() {
    int depth = 0;
    do {
        const WideString token = NextToken();
        if (token.empty()) return E_FAIL;
        if (token[0] == '\'') NextQuoted();
        if (IsBrace(token, '{')) ++depth;
        if (IsBrace(token, '}')) --depth;
    } while (depth > 0);
    return S_OK;
}

// "=" s|d 'text'
HRESULT CRegistrar::ReadData(DWORD& type, WideString& text) {
    if (NextToken() != TEXT("=")) return E_FAIL;
    const WideString kind = NextToken();
    if (kind != TEXT("s") && kind != TEXT("d")) return E_FAIL;
    type = kind == TEXT("d") ? REG_DWORD : REG_SZ;
    text = NextToken();
    if (text.empty() || text[0] != '\'') return E_FAIL;
    text = NextQuoted();
    const std::size_t found = text.find(kModulePlaceholder);
    if (found != WideString::npos) text.replace(found, std::size(kModulePlaceholder) - 1, m_modulePath);
    return S_OK;
}

// A quote is a token of its own; NextQuoted reads the text that it opens.
WideString CRegistrar::NextToken() {
    const WideString& script = *m_script;
    while (m_position < script.size() && IsBlank(script[m_position]))
        ++m_position;
    const std::size_t begin = m_position;
    if (begin < script.size() && script[begin] == '\'') ++m_position;
    while (m_position < script.size() && !IsBlank(script[m_position]) && script[begin] != '\'')
        ++m_position;
    return script.substr(begin, m_position - begin);
}

WideString CRegistrar::PeekToken() {
    const std::size_t position = m_position;
    WideString token = NextToken();
    m_position = position;
    return token;
}

WideString CRegistrar::NextQuoted() {
    const WideString& script = *m_script;
    WideString text;
    while (m_position < script.size()) {
        const WCHAR c = script[m_position++];
        if (c == '\'') {
            if (m_position >= script.size() || script[m_position] != '\'') break;
            ++m_position;
        }
        text += c;
    }
    return text;
}
