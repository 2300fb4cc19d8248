// SPDX-License-Identifier: MIT
// Reads a source's TOML, with messages that say where a fault is and what to do. For the source readers only:
// the rest uses Skin.
#pragma once

#include <toml++/toml.h>

#include <optional>
#include <string>
#include <string_view>

#include "errors.h"
#include "palette.h"

namespace tlk {

[[nodiscard]] SourcePlace PlaceOf(const toml::node& node);
[[noreturn]] void Fail(const toml::node& node, const std::string& text);
[[nodiscard]] std::string Quote(std::string_view text);

// The text is valid UTF-8, as the TOML reader accepts nothing else.
[[nodiscard]] std::u16string ToUtf16(std::string_view text, const toml::node& node);

// A table and its name; the file's own table has none.
struct Section {
    std::string name;
    const toml::table* table = nullptr;

    std::string Child(std::string_view key) const {
        return name.empty() ? std::string(key) : name + "." + std::string(key);
    }
    std::string Describe(std::string_view key) const { return Quote(Child(key)); }
    const toml::node* Find(std::string_view key) const { return table->get(key); }
};

// `known` is a list of names, separated by commas.
void AllowKeys(const Section& section, std::string_view known);

// The functions below return nothing or null for an absent key, and throw SourceError for a value of another
// kind.
[[nodiscard]] std::optional<Section> FindTable(const Section& parent, std::string_view key);
// If `size` is 0, of any size but 0.
[[nodiscard]] const toml::array* FindArray(const Section& section, std::string_view key,
                                           std::size_t size = 0);
[[nodiscard]] bool FindBoolean(const Section& section, std::string_view key, bool usual);

[[nodiscard]] std::string_view ReadString(const toml::node& node, const std::string& what);
[[nodiscard]] int ReadInteger(const toml::node& node, const std::string& what, int least, int most);
[[nodiscard]] Color ReadColor(const toml::node& node, const std::string& what);
// A pair of colours, or one for both.
[[nodiscard]] Shade ReadShade(const toml::node& node, const std::string& what);

// Paths in a source are relative to the file that names them.
[[nodiscard]] std::string ResolvePath(const toml::node& node, std::string_view path);

}  // namespace tlk
