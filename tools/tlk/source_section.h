// SPDX-License-Identifier: MIT
// Reading of a source's TOML with messages that say where a fault is and what to do. For the source readers
// only: everything else sees a Skin.
#pragma once

#include <toml++/toml.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "errors.h"
#include "palette.h"

namespace tlk {

[[nodiscard]] SourcePlace PlaceOf(const toml::node& node);
[[noreturn]] void Fail(const toml::node& node, const std::string& text);
[[nodiscard]] std::string Quote(std::string_view text);

// Takes the first character off. The text is valid UTF-8: the TOML reader refuses anything else.
char32_t TakeCharacter(std::string_view& text);
[[nodiscard]] std::u16string ToUtf16(std::string_view text, const toml::node& node);

// A table and where it stands; the file's own has no name.
struct Section {
    std::string name;
    const toml::table* table = nullptr;

    std::string Child(std::string_view key) const {
        return name.empty() ? std::string(key) : name + "." + std::string(key);
    }
    std::string Describe(std::string_view key) const { return Quote(Child(key)); }
    const toml::node* Find(std::string_view key) const { return table->get(key); }
};

void AllowKeys(const Section& section, std::initializer_list<std::string_view> known);

// The readers below answer nothing or null for an absent key; they throw SourceError for a value of another
// kind.
[[nodiscard]] std::optional<Section> FindTable(const Section& parent, std::string_view key);
// Of any size but none when `size` is 0.
[[nodiscard]] const toml::array* FindArray(const Section& section, std::string_view key,
                                           std::size_t size = 0);
[[nodiscard]] bool FindBoolean(const Section& section, std::string_view key, bool usual);

[[nodiscard]] std::string_view ReadString(const toml::node& node, const std::string& what);
[[nodiscard]] int ReadInteger(const toml::node& node, const std::string& what, int least, int most);
[[nodiscard]] Color ReadColor(const toml::node& node, const std::string& what);
// A pair of colours, or one for both.
[[nodiscard]] Shade ReadShade(const toml::node& node, const std::string& what);

// A path of a source is relative to the file that names it.
[[nodiscard]] std::string ResolvePath(const toml::node& node, std::string_view path);

}  // namespace tlk
