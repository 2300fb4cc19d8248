// SPDX-License-Identifier: MIT
#include "registry_value.h"

#include <host_control.h>
#include <unicode.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "framework/handles.h"
#include "script.h"

namespace {

// Opens a key, which counts as one of the platform; null on failure.
CRegistryKeyOwner OpenKey(const KeyPath& path, LSTATUS& error) {
    const host::PlatformScope scope;
    CRegistryKeyOwner key;
    error = RegOpenKeyExW(path.root, path.subkey.c_str(), 0, KEY_ALL_ACCESS, key.Receive());
    return key;
}

void AppendText(std::vector<BYTE>& data, const std::u16string& text) {
    const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
    data.insert(data.end(), bytes, bytes + 2 * (text.size() + 1));
}

}  // namespace

RegistryValue RegistryValue::FromText(const std::u16string& text) {
    RegistryValue value{REG_SZ, {}};
    AppendText(value.data, text);
    return value;
}

RegistryValue RegistryValue::FromNumber(DWORD number) {
    RegistryValue value{REG_DWORD, std::vector<BYTE>(sizeof number)};
    std::memcpy(value.data.data(), &number, sizeof number);
    return value;
}

RegistryValue RegistryValue::FromTexts(const std::vector<std::u16string>& texts) {
    RegistryValue value{REG_MULTI_SZ, {}};
    for (const std::u16string& text : texts)
        AppendText(value.data, text);
    AppendText(value.data, u"");
    return value;
}

std::u16string RegistryValue::Characters() const {
    std::u16string text(data.size() / 2, u'\0');
    std::memcpy(text.data(), data.data(), text.size() * 2);
    if (text.ends_with(u'\0')) text.pop_back();
    return text;
}

std::vector<std::u16string> RegistryValue::Texts() const {
    std::u16string rest = Characters();
    std::vector<std::u16string> texts;
    while (!rest.empty() && rest[0] != u'\0') {
        const std::size_t end = std::min(rest.find(u'\0'), rest.size());
        texts.push_back(rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    return texts;
}

KeyPath ParseKeyPath(const std::string& text) {
    const std::optional<std::u16string> wide = unicode::FromUtf8(text);
    if (wide && wide->starts_with(u"HKLM\\")) return {HKEY_LOCAL_MACHINE, wide->substr(5)};
    if (wide && wide->starts_with(u"HKCU\\")) return {HKEY_CURRENT_USER, wide->substr(5)};
    if (wide && wide->starts_with(u"HKCR\\")) return {HKEY_CLASSES_ROOT, wide->substr(5)};
    throw ScriptError("the key \"" + text + R"(" does not begin with HKLM\, HKCU\ or HKCR\)");
}

std::optional<RegistryValue> ReadRegistryValue(const KeyPath& path, const std::u16string& name) {
    LSTATUS error = ERROR_SUCCESS;
    const CRegistryKeyOwner key = OpenKey(path, error);
    RegistryValue value;
    DWORD size = 0;
    if (!key || RegQueryValueExW(key.Get(), name.c_str(), nullptr, &value.type, nullptr, &size))
        return std::nullopt;
    value.data.resize(size);
    error = RegQueryValueExW(key.Get(), name.c_str(), nullptr, &value.type, value.data.data(), &size);
    return error == ERROR_SUCCESS ? std::optional(std::move(value)) : std::nullopt;
}

std::u16string ReadRegistryText(const KeyPath& path, const std::u16string& name) {
    const std::optional<RegistryValue> value = ReadRegistryValue(path, name);
    if (!value || value->type != REG_SZ) return {};
    const std::u16string text = value->Characters();
    return text.substr(0, text.find(u'\0'));
}

LSTATUS WriteRegistryValue(const KeyPath& path, const std::u16string& name, const RegistryValue& value) {
    const host::PlatformScope scope;
    CRegistryKeyOwner key;
    const LSTATUS error = RegCreateKeyExW(path.root, path.subkey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                          KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr);
    if (error != ERROR_SUCCESS) return error;
    return RegSetValueExW(key.Get(), name.c_str(), 0, value.type, value.data.data(),
                          static_cast<DWORD>(value.data.size()));
}

LSTATUS DeleteRegistryValue(const KeyPath& path, const std::u16string& name) {
    LSTATUS error = ERROR_SUCCESS;
    const CRegistryKeyOwner key = OpenKey(path, error);
    return key ? RegDeleteValueW(key.Get(), name.c_str()) : error;
}

LSTATUS DeleteRegistryKey(const KeyPath& path) { return RegDeleteKeyW(path.root, path.subkey.c_str()); }

std::vector<std::u16string> ListSubkeys(const KeyPath& path) {
    LSTATUS error = ERROR_SUCCESS;
    const CRegistryKeyOwner key = OpenKey(path, error);
    std::vector<std::u16string> names;
    WCHAR name[256];
    while (error == ERROR_SUCCESS) {
        auto characters = static_cast<DWORD>(std::size(name));
        error = RegEnumKeyExW(key.Get(), static_cast<DWORD>(names.size()), name, &characters, nullptr,
                              nullptr, nullptr, nullptr);
        if (error == ERROR_SUCCESS) names.emplace_back(name, characters);
    }
    return names;
}
