// SPDX-License-Identifier: MIT
#include "registry_value.h"

#include <host_control.h>

#include <algorithm>
#include <cstring>

#include "script.h"
#include "text.h"

namespace {

// An open key, counted as one of the platform.
class OpenKey {
public:
    enum class Mode { Open, Create };
    OpenKey(const KeyPath& path, Mode mode) {
        const host::PlatformScope scope;
        if (mode == Mode::Open) {
            m_error = RegOpenKeyExW(path.root, path.subkey.c_str(), 0, KEY_ALL_ACCESS, &m_key);
        } else {
            m_error = RegCreateKeyExW(path.root, path.subkey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                      KEY_ALL_ACCESS, nullptr, &m_key, nullptr);
        }
    }
    ~OpenKey() {
        if (m_error == ERROR_SUCCESS) RegCloseKey(m_key);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    LSTATUS Error() const { return m_error; }
    HKEY Get() const { return m_key; }

private:
    HKEY m_key = nullptr;
    LSTATUS m_error;
};

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
    for (const std::u16string& text : texts) {
        AppendText(value.data, text);
    }
    AppendText(value.data, u"");
    return value;
}

std::u16string RegistryValue::Text() const {
    std::u16string text(data.size() / 2, u'\0');
    std::memcpy(text.data(), data.data(), text.size() * 2);
    if (text.ends_with(u'\0')) text.pop_back();
    return text;
}

std::vector<std::u16string> RegistryValue::Texts() const {
    std::u16string rest(data.size() / 2, u'\0');
    std::memcpy(rest.data(), data.data(), rest.size() * 2);
    std::vector<std::u16string> texts;
    while (!rest.empty() && rest[0] != u'\0') {
        const std::size_t end = std::min(rest.find(u'\0'), rest.size());
        texts.push_back(rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    return texts;
}

KeyPath ParseKeyPath(const std::string& text) {
    const std::optional<std::u16string> wide = FromUtf8(text);
    if (wide && wide->starts_with(u"HKLM\\")) return {HKEY_LOCAL_MACHINE, wide->substr(5)};
    if (wide && wide->starts_with(u"HKCU\\")) return {HKEY_CURRENT_USER, wide->substr(5)};
    if (wide && wide->starts_with(u"HKCR\\")) return {HKEY_CLASSES_ROOT, wide->substr(5)};
    throw ScriptError("the key \"" + text + R"(" does not begin with HKLM\, HKCU\ or HKCR\)");
}

std::optional<RegistryValue> ReadRegistryValue(const KeyPath& path, const std::u16string& name) {
    const OpenKey key(path, OpenKey::Mode::Open);
    if (key.Error() != ERROR_SUCCESS) return std::nullopt;
    RegistryValue value;
    DWORD size = 0;
    if (RegQueryValueExW(key.Get(), name.c_str(), nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.data.resize(size);
    if (size == 0) return value;
    const LSTATUS error =
        RegQueryValueExW(key.Get(), name.c_str(), nullptr, &value.type, value.data.data(), &size);
    if (error != ERROR_SUCCESS) return std::nullopt;
    return value;
}

LSTATUS WriteRegistryValue(const KeyPath& path, const std::u16string& name, const RegistryValue& value) {
    const OpenKey key(path, OpenKey::Mode::Create);
    if (key.Error() != ERROR_SUCCESS) return key.Error();
    return RegSetValueExW(key.Get(), name.c_str(), 0, value.type, value.data.data(),
                          static_cast<DWORD>(value.data.size()));
}

LSTATUS DeleteRegistryValue(const KeyPath& path, const std::u16string& name) {
    const OpenKey key(path, OpenKey::Mode::Open);
    if (key.Error() != ERROR_SUCCESS) return key.Error();
    return RegDeleteValueW(key.Get(), name.c_str());
}

LSTATUS DeleteRegistryKey(const KeyPath& path) { return RegDeleteKeyW(path.root, path.subkey.c_str()); }

std::vector<std::u16string> ListSubkeys(const KeyPath& path) {
    const OpenKey key(path, OpenKey::Mode::Open);
    std::vector<std::u16string> names;
    if (key.Error() != ERROR_SUCCESS) return names;
    WCHAR name[256];
    for (DWORD index = 0;; ++index) {
        auto characters = static_cast<DWORD>(std::size(name));
        const LSTATUS error =
            RegEnumKeyExW(key.Get(), index, name, &characters, nullptr, nullptr, nullptr, nullptr);
        if (error != ERROR_SUCCESS) return names;
        names.emplace_back(name, characters);
    }
}
