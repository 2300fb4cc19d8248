// SPDX-License-Identifier: MIT
#include "source_files.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "file.h"
#include "name_list.h"
#include "suggestion.h"

namespace tlk {
namespace {

// More than any skin needs; bounds the recursion.
constexpr std::size_t kMostSources = 100;

// Explains the TOML reader's reasons to an author. The place that it reports is often after the mistake.
std::string Explain(std::string_view reason) {
    constexpr std::pair<std::string_view, const char*> kAdvice[] = {
        {"expected", ": look for a missing quote, comma or bracket, here or in the line above"},
        {"cannot redefine", ": write it once"},
        {"utf-8", ": save the file as UTF-8"}};
    for (const auto& [part, advice] : kAdvice)
        if (reason.find(part) != std::string_view::npos) return std::string(reason) + advice;
    return std::string(reason);
}

toml::table Parse(std::string_view text, const std::string& path) {
    if (text.starts_with("MZ"))
        throw SourceError({path, 0}, "this is a skin file: name the source that it was built from");
    try {
        return toml::parse(text, path);
    } catch (const toml::parse_error& error) {
        throw SourceError({path, error.source().begin.line}, Explain(error.description()));
    }
}

toml::table ReadNamedFile(const toml::node& node, const std::string& path) {
    Bytes bytes;
    try {
        bytes = ReadFile(path);
    } catch (const FileError& error) {
        Fail(node, error.what());
    }
    return Parse(AsText(bytes), path);
}

// Appends entries of arrays of tables, and replaces all other values. Moves nodes, as copies lose their
// source positions.
void OverrideTable(toml::table& base, toml::table&& over) {
    for (auto&& [key, node] : over) {
        toml::node* known = base.get(key);
        if (known && known->is_table() && node.is_table())
            OverrideTable(*known->as_table(), std::move(*node.as_table()));
        else if (known && known->is_array_of_tables() && node.is_array_of_tables())
            for (toml::node& entry : *node.as_array())
                known->as_array()->push_back(std::move(entry));
        else
            base.insert_or_assign(key, std::move(node));
    }
}

// One source, or several, of which each overrides those before it.
std::vector<const toml::node*> BasesOf(const toml::node& value) {
    const toml::array* list = value.as_array();
    if (!list) return {&value};
    std::vector<const toml::node*> bases;
    for (const toml::node& base : *list)
        bases.push_back(&base);
    return bases;
}

// The screens with [screen.*] settings in one source, and their places.
using Screens = std::vector<std::pair<std::string, SourcePlace>>;

Screens DifferingScreens(const toml::table& source) {
    Screens screens;
    if (const auto* tables = source.get_as<toml::table>("screen"))
        for (const auto& [name, node] : *tables)
            screens.emplace_back(name.str(), PlaceOf(node));
    return screens;
}

// Settings for a screen that the source does not list are a mistake in it. A source based on it may list
// fewer screens.
void RequireListed(const Screens& differing, const toml::table& source) {
    const auto* screens = source.get_as<toml::array>("screens");
    if (!screens) return;
    std::string list;
    for (const toml::node& screen : *screens)
        if (const auto name = screen.value<std::string_view>()) AppendName(list, *name);
    TryEach(differing, [&list](const auto& screen) {
        if (!HasName(list, screen.first))
            throw SourceError(screen.second, "'screens' does not list " + Quote(screen.first) + ": " +
                                                 Advise(screen.first, list));
    });
}

class SourceChain {
public:
    SourceChain(const std::string& path, FaultList& faults)
        : m_open{std::filesystem::path(path).lexically_normal().string()}, m_faults(faults) {}

    // The source merged with its bases.
    toml::table Read(toml::table own) {
        const Screens differing = DifferingScreens(own);
        toml::table whole = own.contains("based_on") ? MergeBases(std::move(own)) : std::move(own);
        m_faults.Try([&] { RequireListed(differing, whole); });
        return whole;
    }

private:
    toml::table MergeBases(toml::table own) {
        toml::table whole;
        for (const toml::node* base : BasesOf(*own.get("based_on")))
            OverrideTable(whole, ReadBase(*base));
        own.erase("based_on");
        OverrideTable(whole, std::move(own));
        return whole;
    }

    toml::table ReadBase(const toml::node& node) {
        const std::string path = ResolvePath(node, ReadString(node, "'based_on'"));
        if (std::ranges::find(m_open, path) != m_open.end())
            Fail(node, "'based_on' leads back to " + path + ": a source cannot be based on itself");
        if (++m_count == kMostSources)
            Fail(node,
                 "'based_on' leads to more than " + std::to_string(kMostSources) + " sources: use fewer");
        m_open.push_back(path);
        toml::table base = Read(ReadNamedFile(node, path));
        m_open.pop_back();
        return base;
    }

    // The chain of sources being read.
    std::vector<std::string> m_open;
    std::size_t m_count = 1;
    FaultList& m_faults;
};

}  // namespace

toml::table ReadSourceFiles(std::string_view text, const std::string& path, FaultList& faults) {
    return SourceChain(path, faults).Read(Parse(text, path));
}

void ApplyScreen(toml::table& root, std::string_view screen) {
    toml::table* screens = root.get_as<toml::table>("screen");
    if (!screens) return;
    toml::table* own = screens->get_as<toml::table>(screen);
    if (!own) return;
    toml::table taken = std::move(*own);
    OverrideTable(root, std::move(taken));
}

toml::table ReadPaletteFile(const toml::node& node, std::string_view path) {
    return ReadNamedFile(node, ResolvePath(node, path));
}

}  // namespace tlk
