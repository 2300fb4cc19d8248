// SPDX-License-Identifier: MIT
#include "source_section.h"

#include <unicode.h>

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "name_list.h"
#include "suggestion.h"

namespace tlk {

SourcePlace PlaceOf(const toml::node& node) {
    const toml::source_region& source = node.source();
    return {source.path ? *source.path : std::string(), source.begin.line};
}

void Fail(const toml::node& node, const std::string& text) { throw SourceError(PlaceOf(node), text); }

std::string Quote(std::string_view text) { return "'" + std::string(text) + "'"; }

std::u16string ToUtf16(std::string_view text, const toml::node& node) {
    std::u16string result;
    while (!text.empty()) {
        const char32_t character = unicode::TakeCharacter(text);
        if (character < 0x20 || character > 0xFFFF)
            Fail(node,
                 Quote(unicode::ToUtf8(character)) + " cannot be a key's character: use one up to U+FFFF");
        result += static_cast<char16_t>(character);
    }
    return result;
}

void AllowKeys(const Section& section, std::string_view known) {
    TryEach(
        *section.table,
        [&](const auto& entry) {
            const auto& [key, value] = entry;
            if (!HasName(known, key.str()))
                Fail(value, "there is no " + std::string(value.is_table() ? "table " : "setting ") +
                                section.Describe(key.str()) + ": " + Advise(key.str(), known));
        });
}

std::optional<Section> FindTable(const Section& parent, std::string_view key) {
    const toml::node* node = parent.Find(key);
    if (!node) return std::nullopt;
    if (!node->is_table())
        Fail(*node, parent.Describe(key) + " must be a table: write [" + parent.Child(key) + "]");
    return Section{parent.Child(key), node->as_table()};
}

const toml::array* FindArray(const Section& section, std::string_view key, std::size_t size) {
    const toml::node* node = section.Find(key);
    if (!node) return nullptr;
    const toml::array* array = node->as_array();
    if (!array || array->empty() || (size != 0 && array->size() != size))
        Fail(*node, section.Describe(key) + " must be a list of " +
                        (size == 0 ? "at least one value" : std::to_string(size) + " values") +
                        ": write it in [ ] with commas between them");
    return array;
}

bool FindBoolean(const Section& section, std::string_view key, bool usual) {
    const toml::node* node = section.Find(key);
    if (!node) return usual;
    if (!node->is_boolean()) Fail(*node, section.Describe(key) + " must be true or false");
    return node->as_boolean()->get();
}

std::string_view ReadString(const toml::node& node, const std::string& what) {
    if (!node.is_string()) Fail(node, what + " must be a text in quotes");
    return node.as_string()->get();
}

int ReadInteger(const toml::node& node, const std::string& what, int least, int most) {
    const auto* value = node.as_integer();
    if (!value || value->get() < least || value->get() > most)
        Fail(node,
             what + " must be a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    return static_cast<int>(value->get());
}

namespace {

// Completes a colour without its "#", or with three digits; empty for anything else.
std::string CompleteColor(std::string_view text) {
    if (text.starts_with('#')) text.remove_prefix(1);
    const bool isShort = text.size() == 3;
    if ((!isShort && text.size() != 6) ||
        text.find_first_not_of("0123456789abcdefABCDEF") != std::string_view::npos)
        return {};
    std::string color = "#";
    for (char digit : text)
        color.append(isShort ? 2 : 1, digit);
    return color;
}

}  // namespace

Color ReadColor(const toml::node& node, const std::string& what) {
    const std::string_view text = ReadString(node, what);
    std::uint32_t value = 0;
    const bool hasForm = text.size() == 7 && text[0] == '#';
    const char* end = text.data() + text.size();
    if (!hasForm || std::from_chars(text.data() + 1, end, value, 16).ptr != end) {
        const std::string meant = CompleteColor(text);
        Fail(node, what + " must be a colour such as \"#C0D0E0\"" +
                       (meant.empty() ? "" : ": did you mean '" + meant + "'?"));
    }
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value)};
}

Shade ReadShade(const toml::node& node, const std::string& what) {
    if (node.is_string()) {
        const Color color = ReadColor(node, what);
        return {color, color};
    }
    const toml::array* pair = node.as_array();
    if (!pair || pair->size() != 2)
        Fail(node, what + " must be one colour such as \"#C0D0E0\", or a list of 2: top and bottom");
    return {ReadColor(*pair->get(0), "each of " + what), ReadColor(*pair->get(1), "each of " + what)};
}

std::string ResolvePath(const toml::node& node, std::string_view path) {
    if (path.empty()) Fail(node, "the name of a file must not be empty");
    return (std::filesystem::path(PlaceOf(node).file).parent_path() / path).lexically_normal().string();
}

}  // namespace tlk
