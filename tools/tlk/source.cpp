// SPDX-License-Identifier: MIT
#include "source.h"

#include <toml++/toml.h>

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <utility>

#include "errors.h"

namespace tlk {
namespace {

constexpr int kLargestSide = 2048;
constexpr double kLargestWeight = 10000;

[[noreturn]] void Fail(const toml::node& node, const std::string& text) {
    throw SourceError(node.source().begin.line, text);
}

std::string Quote(std::string_view text) { return "'" + std::string(text) + "'"; }

// Takes the first character off. The text is valid UTF-8: the TOML reader refuses anything else.
char32_t TakeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    text.remove_prefix(length);
    return character;
}

std::u16string ToUtf16(std::string_view text, const toml::node& node) {
    std::u16string result;
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text);
        if (character < 0x20 || character > 0xFFFF)
            Fail(node, Quote(ToUtf8(character)) + " cannot be a key's character: use one up to U+FFFF");
        result += static_cast<char16_t>(character);
    }
    return result;
}

// A table and where it stands; the file's own has no name.
struct Section {
    std::string name;
    const toml::table* table = nullptr;

    std::string Child(std::string_view key) const {
        return name.empty() ? std::string(key) : name + "." + std::string(key);
    }
};

std::string Describe(const Section& section, std::string_view key) { return Quote(section.Child(key)); }

void AllowKeys(const Section& section, std::initializer_list<std::string_view> known) {
    std::string list;
    for (std::string_view name : known)
        list += (list.empty() ? "" : ", ") + std::string(name);
    for (const auto& [key, value] : *section.table)
        if (std::ranges::find(known, key.str()) == known.end())
            throw SourceError(key.source().begin.line,
                              "there is no setting " + Describe(section, key.str()) + ": use " + list);
}

// The readers below answer nothing or null for an absent key and fail for a value of another kind.
std::optional<Section> FindTable(const Section& parent, std::string_view key) {
    const toml::node* node = parent.table->get(key);
    if (!node) return std::nullopt;
    if (!node->is_table())
        Fail(*node, Describe(parent, key) + " must be a table: write [" + parent.Child(key) + "]");
    return Section{parent.Child(key), node->as_table()};
}

const toml::array* FindArray(const Section& section, std::string_view key, std::size_t size = 0) {
    const toml::node* node = section.table->get(key);
    if (!node) return nullptr;
    const toml::array* array = node->as_array();
    if (!array || array->empty() || (size != 0 && array->size() != size))
        Fail(*node, Describe(section, key) + " must be a list of " +
                        (size == 0 ? "at least one value" : std::to_string(size) + " values"));
    return array;
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

Color ReadColor(const toml::node& node, const std::string& what) {
    const std::string_view text = ReadString(node, what);
    std::uint32_t value = 0;
    const bool hasForm = text.size() == 7 && text[0] == '#';
    const char* end = text.data() + text.size();
    if (!hasForm || std::from_chars(text.data() + 1, end, value, 16).ptr != end)
        Fail(node, what + " must be a colour such as \"#C0D0E0\"");
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value)};
}

class SourceReader {
public:
    Skin Read(const toml::table& root) {
        const Section file{"", &root};
        AllowKeys(file, {"arrangement", "caps_rect", "font", "colors", "portrait", "landscape", "digits",
                         "language1", "language2"});
        m_Skin.characters = BuiltInCharacters();
        ReadGeneral(file);
        ReadFont(file);
        ReadColors(file);
        ReadBoards(file);
        ReadLanguages(file);
        return std::move(m_Skin);
    }

private:
    void ReadGeneral(const Section& file) {
        m_Skin.arrangement = FindArrangement("full");
        if (const toml::node* node = file.table->get("arrangement")) {
            m_Skin.arrangement = FindArrangement(ReadString(*node, "'arrangement'"));
            if (!m_Skin.arrangement) Fail(*node, "'arrangement' must be one of " + ArrangementNames());
        }
        if (const toml::node* node = file.table->get("caps_rect")) {
            if (!node->is_boolean()) Fail(*node, "'caps_rect' must be true or false");
            m_Skin.capsRect = node->as_boolean()->get();
        }
    }

    void ReadFont(const Section& file) {
        const auto font = FindTable(file, "font");
        if (!font) return;
        AllowKeys(*font, {"size", "words"});
        for (auto [key, size] : {std::pair{"size", &m_Skin.font.characters}, {"words", &m_Skin.font.words}})
            if (const toml::node* node = font->table->get(key))
                *size = ReadInteger(*node, Describe(*font, key), 7, 64);
    }

    void ReadColors(const Section& file) {
        const auto colors = FindTable(file, "colors");
        if (!colors) return;
        AllowKeys(*colors, {"background", "letter", "number", "symbol", "function"});
        Palette& palette = m_Skin.palette;
        if (const toml::node* node = colors->table->get("background"))
            palette.background = ReadColor(*node, Describe(*colors, "background"));
        ReadShade(*colors, "letter", palette.letter);
        palette.number = palette.symbol = palette.letter;
        ReadShade(*colors, "number", palette.number);
        ReadShade(*colors, "symbol", palette.symbol);
        ReadShade(*colors, "function", palette.function);
    }

    static void ReadShade(const Section& colors, std::string_view key, Shade& shade) {
        const toml::array* pair = FindArray(colors, key, 2);
        if (!pair) return;
        const std::string what = "each of " + Describe(colors, key);
        shade = {ReadColor(*pair->get(0), what), ReadColor(*pair->get(1), what)};
    }

    void ReadBoards(const Section& file) {
        const auto portrait = FindTable(file, "portrait");
        if (!portrait) throw SourceError(0, "the keyboard is missing: add [portrait] with size and rows");
        m_Skin.portrait = ReadBoard(*portrait, *m_Skin.arrangement, nullptr);
        if (const auto landscape = FindTable(file, "landscape"))
            m_Skin.landscape = ReadBoard(*landscape, *m_Skin.arrangement, &m_Skin.portrait);
        if (const auto digits = FindTable(file, "digits")) {
            // Only the size is taken over: the digit keyboard has rows of its own.
            const Board usual{m_Skin.portrait.size, {}};
            m_Skin.digits = ReadBoard(*digits, kDigitArrangement, &usual);
            RequireWayBack(*digits);
        }
    }

    void RequireWayBack(const Section& digits) const {
        for (const Row& row : m_Skin.digits->rows)
            if (std::ranges::find(row.keys, function_key::kDigits, &RowKey::key) != row.keys.end()) return;
        Fail(*digits.table, "the digit keyboard has no key that leads back: add 'digits' to its rows");
    }

    // What the section leaves out is as in `usual`.
    Board ReadBoard(const Section& section, const Arrangement& arrangement, const Board* usual) const {
        AllowKeys(section, {"size", "unit", "rows"});
        Board board = usual ? *usual : Board{};
        if (const toml::array* size = FindArray(section, "size", 2)) {
            const std::string what = "each of " + Describe(section, "size");
            board.size = {ReadInteger(*size->get(0), what, 16, kLargestSide),
                          ReadInteger(*size->get(1), what, 16, kLargestSide)};
        }
        if (board.size == Size{})
            Fail(*section.table, "[" + section.name + "] needs its size: add size = [width, height]");
        double unit = 1;
        if (const toml::node* node = section.table->get("unit"))
            unit = ReadInteger(*node, Describe(section, "unit"), 1, kLargestSide);
        if (const toml::array* rows = FindArray(section, "rows")) {
            board.rows.clear();
            for (const toml::node& row : *rows)
                board.rows.push_back(ReadRow(row, arrangement, unit));
        }
        if (board.rows.empty())
            Fail(*section.table, "[" + section.name + "] needs its keys: add rows = [\"...\", ...]");
        return board;
    }

    Row ReadRow(const toml::node& node, const Arrangement& arrangement, double unit) const {
        std::string_view text = ReadString(node, "a row");
        Row row{node.source().begin.line, {}};
        while (true) {
            const std::size_t start = text.find_first_not_of(" \t\r\n");
            if (start == std::string_view::npos) break;
            text.remove_prefix(start);
            const std::string_view word = text.substr(0, text.find_first_of(" \t\r\n"));
            row.keys.push_back(ReadKey(word, node, arrangement, unit));
            text.remove_prefix(word.size());
        }
        if (row.keys.empty()) Fail(node, "a row without keys: name some, or remove it");
        return row;
    }

    // A character or a function's name, then perhaps ":" and a weight.
    RowKey ReadKey(std::string_view word, const toml::node& node, const Arrangement& arrangement,
                   double unit) const {
        std::string_view rest = word;
        const char32_t character = TakeCharacter(rest);
        const bool isCharacter = rest.empty() || rest[0] == ':';
        const std::string_view name =
            isCharacter ? word.substr(0, word.size() - rest.size()) : word.substr(0, word.find(':'));
        std::optional<std::uint16_t> key;
        if (!isCharacter)
            key = FindFunction(name);
        else if (character <= 0xFFFF)
            key = FindCharacter(m_Skin.characters, arrangement, static_cast<char16_t>(character));
        if (!key)
            Fail(node, "there is no key " + Quote(name) + " here: use a small character of the arrangement " +
                           Quote(arrangement.name) + " or one of " + FunctionNames());
        rest = word.substr(name.size());
        return {*key, rest.empty() ? unit : ReadWeight(rest.substr(1), node, name)};
    }

    static double ReadWeight(std::string_view text, const toml::node& node, std::string_view key) {
        double weight = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, weight);
        // Negated, so that "nan" is refused too.
        if (error != std::errc{} || stop != end || !(weight > 0 && weight <= kLargestWeight))
            Fail(node, "key " + Quote(key) + " needs a weight above 0 after its ':'");
        return weight;
    }

    void ReadLanguages(const Section& file) {
        if (const auto language = FindTable(file, "language1")) {
            AllowKeys(*language, {"name"});
            ReadLanguageName(*language, 0);
        }
        if (const auto language = FindTable(file, "language2")) {
            AllowKeys(*language, {"name", "keys", "umlaut"});
            ReadLanguageName(*language, 1);
            ReadCharacters(*language, "keys", 4);
            ReadCharacters(*language, "umlaut", 6);
        }
    }

    void ReadLanguageName(const Section& language, std::size_t index) {
        const toml::node* node = language.table->get("name");
        if (!node) return;
        m_Skin.languageNames[index] = ToUtf16(ReadString(*node, Describe(language, "name")), *node);
        if (m_Skin.languageNames[index].empty()) Fail(*node, "a language needs a name for its key");
    }

    // Differences from language 1: the key's small character there, then what it types here.
    void ReadCharacters(const Section& language, std::string_view name, std::size_t slot) {
        const auto section = FindTable(language, name);
        if (!section) return;
        for (const auto& [key, node] : *section->table) {
            const std::u16string label = ToUtf16(key.str(), node);
            const auto index = label.size() == 1
                                   ? FindCharacter(m_Skin.characters, *m_Skin.arrangement, label[0])
                                   : std::nullopt;
            if (!index)
                Fail(node, "there is no key " + Quote(key.str()) +
                               ": use a small character of the arrangement " +
                               Quote(m_Skin.arrangement->name));
            const std::u16string typed = ToUtf16(ReadString(node, "key " + Quote(key.str())), node);
            if (typed.empty() || typed.size() > 2)
                Fail(node, "key " + Quote(key.str()) +
                               " must type its small and its large character, or one for both");
            m_Skin.characters[*index][slot] = typed.front();
            m_Skin.characters[*index][slot + 1] = typed.back();
            m_Skin.lines[*index] = node.source().begin.line;
        }
    }

    Skin m_Skin;
};

}  // namespace

Skin ReadSource(std::string_view text) {
    try {
        return SourceReader().Read(toml::parse(text));
    } catch (const toml::parse_error& error) {
        throw SourceError(error.source().begin.line, std::string(error.description()));
    }
}

}  // namespace tlk
