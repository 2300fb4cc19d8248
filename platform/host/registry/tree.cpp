// SPDX-License-Identifier: MIT
#include "registry/tree.h"

#include "device/strings.h"

#include <unicode.h>

#include <algorithm>
#include <utility>

namespace host {
namespace {

bool IsLine(std::u16string_view text) {
    const bool hasControl = std::any_of(text.begin(), text.end(), [](WCHAR unit) { return unit < 0x20; });
    return !hasControl && unicode::IsWellFormed(text);
}

void MarkDeleted(RegistryKey& key) {
    key.deleted = true;
    for (auto& [name, subkey] : key.subkeys)
        MarkDeleted(*subkey);
}

}  // namespace

std::vector<BYTE> TextBytes(const std::u16string& text) {
    const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
    return {bytes, bytes + (text.size() + 1) * sizeof(WCHAR)};
}

bool IsKeyName(std::u16string_view name) {
    return !name.empty() && name.size() <= kMaxKeyNameLength &&
           name.find(u'\\') == std::u16string_view::npos && IsLine(name);
}

bool IsValueName(std::u16string_view name) { return name.size() <= kMaxValueNameLength && IsLine(name); }

std::vector<std::u16string_view> SplitKeyPath(std::u16string_view path) { return Split(path, u"\\"); }

RegistryTree::RegistryTree() {
    for (std::size_t i = 0; i < m_roots.size(); ++i) {
        m_roots[i] = std::make_shared<RegistryKey>();
        m_roots[i]->name = kRegistryRootNames[i];
    }
}

std::shared_ptr<RegistryKey> FindKey(const std::shared_ptr<RegistryKey>& key, std::u16string_view path) {
    std::shared_ptr<RegistryKey> current = key;
    for (const std::u16string_view name : SplitKeyPath(path)) {
        const auto found = current->subkeys.find(FoldCase(name));
        if (found == current->subkeys.end()) return nullptr;
        current = found->second;
    }
    return current;
}

std::shared_ptr<RegistryKey> MakeKey(const std::shared_ptr<RegistryKey>& key, std::u16string_view path,
                                     bool& created) {
    created = false;
    const std::vector<std::u16string_view> names = SplitKeyPath(path);
    if (key->depth + names.size() > kMaxKeyDepth || !std::all_of(names.begin(), names.end(), IsKeyName))
        return nullptr;
    std::shared_ptr<RegistryKey> current = key;
    for (const std::u16string_view name : names) {
        std::shared_ptr<RegistryKey>& subkey = current->subkeys[FoldCase(name)];
        if (!subkey) {
            subkey = std::make_shared<RegistryKey>();
            subkey->name = name;
            subkey->depth = current->depth + 1;
            created = true;
        }
        current = subkey;
    }
    return current;
}

bool DeleteKey(RegistryKey& key, std::u16string_view path) {
    const std::vector<std::u16string_view> names = SplitKeyPath(path);
    RegistryKey* parent = &key;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto found = parent->subkeys.find(FoldCase(names[i]));
        if (found == parent->subkeys.end()) return false;
        if (i + 1 == names.size()) {
            MarkDeleted(*found->second);
            parent->subkeys.erase(found);
            return true;
        }
        parent = found->second.get();
    }
    return false;
}

const RegistryValue* FindValue(const RegistryKey& key, std::u16string_view name) {
    const auto found = key.values.find(FoldCase(name));
    return found != key.values.end() ? &found->second : nullptr;
}

bool SetValue(RegistryKey& key, RegistryValue value) {
    const auto [place, added] = key.values.try_emplace(FoldCase(value.name), value);
    if (added) return true;
    value.name = place->second.name;
    if (place->second == value) return false;
    place->second = std::move(value);
    return true;
}

}  // namespace host
