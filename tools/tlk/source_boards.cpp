// SPDX-License-Identifier: MIT
#include "source_boards.h"

#include <unicode.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "suggestion.h"

namespace tlk {
namespace {

constexpr int kLargestSide = 2048;
constexpr double kLargestWeight = 10000;

double ReadWeight(std::string_view text, const toml::node& node, std::string_view key) {
    double weight = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, weight);
    // Negated, so that "nan" is refused, too.
    if (error != std::errc{} || stop != end || !(weight > 0 && weight <= kLargestWeight))
        Fail(node, "key " + Quote(key) + " needs a weight above 0 after its ':', 10000 at most");
    return weight;
}

class BoardReader {
public:
    BoardReader(const Section& file, Skin& skin) : m_file(file), m_skin(skin) {}

    void Run() {
        FaultList faults;
        m_isWhole = faults.Try([this] { ReadPortrait(); });
        m_isWhole = faults.Try([this] { ReadLandscape(); }) && m_isWhole;
        m_isWhole = faults.Try([this] { ReadDigits(); }) && m_isWhole;
        faults.Try([this] {
            if (const toml::array* changes = FindArray(m_file, "key"))
                TryEach(*changes, [this](const toml::node& change) { ReadChange(change); });
        });
        faults.Throw();
        SettlePlaces();
    }

private:
    const Arrangement& ArrangementOf(BoardKind kind) const {
        return kind == BoardKind::Digits ? kDigitArrangement : *m_skin.arrangement;
    }

    void ReadPortrait() {
        const auto portrait = FindTable(m_file, "portrait");
        if (!portrait)
            throw SourceError(PlaceOf(*m_file.table),
                              "the keyboard is missing: add [portrait] with its rows");
        m_skin.portrait = ReadBoard(BoardKind::Portrait, *portrait, nullptr);
    }

    // A known screen that can be turned always gets a landscape keyboard, without which the engine would
    // refuse the skin there. If it has no rows of its own, those of the portrait keyboard must be correct.
    void ReadLandscape() {
        if (m_skin.HasSquareScreen()) return;
        const auto landscape = FindTable(m_file, "landscape");
        if (!m_isWhole && !(landscape && landscape->Find("rows"))) return;
        if (landscape)
            m_skin.landscape = ReadBoard(BoardKind::Landscape, *landscape, &m_skin.portrait);
        else if (m_skin.screen)
            m_skin.landscape =
                ReadBoard(BoardKind::Landscape, Section{"landscape", &m_nothing}, &m_skin.portrait);
    }

    void ReadDigits() {
        const auto digits = FindTable(m_file, "digits");
        if (!digits) return;
        m_skin.digits = ReadBoard(BoardKind::Digits, *digits, nullptr);
        RequireWayBack(*digits);
    }

    void RequireWayBack(const Section& digits) const {
        if (Holds(m_skin.digits->rows, function_key::kDigits)) return;
        Fail(*digits.table, "the digit keyboard has no key that leads back: add 'digits' to its rows");
    }

    // Rows missing in the section are taken from `usual`.
    Board ReadBoard(BoardKind kind, const Section& section, const Board* usual) const {
        Board board;
        FaultList faults;
        const bool isKnown = faults.Try([&] {
            AllowKeys(section, kind == BoardKind::Digits ? "size, unit, rows, wide" : "size, unit, rows");
        });
        faults.Try([&] { board.size = board.filled = ReadSize(kind, section); });
        faults.Try([&] { board.rows = ReadRows(kind, section, "rows"); });
        if (board.rows.empty() && usual) board.rows = usual->rows;
        // They may exist under a misspelt name.
        if (isKnown && board.rows.empty() && !section.Find("rows"))
            faults.Try([&] {
                Fail(*section.table, "[" + section.name + "] needs its keys: add rows = [\"...\", ...]");
            });
        if (kind == BoardKind::Digits) faults.Try([&] { FitOrientations(section, board); });
        faults.Throw();
        return board;
    }

    std::vector<Row> ReadRows(BoardKind kind, const Section& section, std::string_view name) const {
        double unit = 1;
        if (const toml::node* node = section.Find("unit"))
            unit = ReadInteger(*node, section.Describe("unit"), 1, kLargestSide);
        std::vector<Row> rows;
        if (const toml::array* texts = FindArray(section, name))
            TryEach(*texts, [&](const toml::node& text) {
                rows.push_back(ReadRow(text, ArrangementOf(kind), unit));
            });
        return rows;
    }

    // Each orientation shows its part of the picture. The rows stay in the part that both panels show, unless
    // the wide part repeats the keys that the turned screen would cut off.
    void FitOrientations(const Section& digits, Board& board) const {
        board.wide = ReadRows(BoardKind::Digits, digits, "wide");
        if (m_skin.HasSquareScreen()) board.wide.clear();
        if (m_skin.screen) {
            const Size upright = PanelSize(BoardKind::Portrait, *m_skin.screen);
            board.filled = {std::min(board.size.width, upright.width),
                            std::min(board.size.height, upright.height)};
            board.seam =
                std::min(board.filled.height, PanelSize(BoardKind::Landscape, *m_skin.screen).height);
            if (!RepeatsCutRows(board)) board.filled.height = board.seam;
            if (board.seam == board.filled.height) board.seam = 0;
        }
        if (!board.wide.empty() && board.filled.width == board.size.width)
            Fail(*digits.Find("wide"),
                 "'digits.wide' has no room: list the 'screens' of this skin, and leave digits.size out");
    }

    static bool RepeatsCutRows(const Board& board) {
        for (std::size_t row = board.RowsAboveSeam(); row < board.rows.size(); ++row)
            for (const RowKey& key : board.rows[row].keys)
                if (!Holds(board.wide, key.key)) return false;
        return true;
    }

    Size ReadSize(BoardKind kind, const Section& section) const {
        if (const toml::array* size = FindArray(section, "size", 2)) {
            const std::string what = "each of " + section.Describe("size");
            return {ReadInteger(*size->get(0), what, 16, kLargestSide),
                    ReadInteger(*size->get(1), what, 16, kLargestSide)};
        }
        if (m_skin.screen) return PanelSize(kind, *m_skin.screen);
        if (kind == BoardKind::Digits) return m_skin.portrait.size;
        Fail(*section.table, "[" + section.name +
                                 "] needs its size: list the 'screens' of this skin, or add size = [width, "
                                 "height]");
    }

    Row ReadRow(const toml::node& node, const Arrangement& arrangement, double unit) const {
        const std::vector<std::string_view> words = SplitWords(ReadString(node, "a row"));
        if (words.empty()) Fail(node, "a row without keys: name some, or remove it");
        Row row{PlaceOf(node), {}};
        TryEach(words, [&](std::string_view word) {
            row.keys.push_back(ReadRowKey(word, node, arrangement, unit));
        });
        return row;
    }

    static std::vector<std::string_view> SplitWords(std::string_view text) {
        constexpr std::string_view kBlanks = " \t\r\n";
        std::vector<std::string_view> words;
        for (std::size_t start; (start = text.find_first_not_of(kBlanks)) != std::string_view::npos;) {
            text.remove_prefix(start);
            words.push_back(text.substr(0, text.find_first_of(kBlanks)));
            text.remove_prefix(words.back().size());
        }
        return words;
    }

    // A character or a function's name, optionally followed by ":" and a weight.
    RowKey ReadRowKey(std::string_view word, const toml::node& node, const Arrangement& arrangement,
                      double unit) const {
        std::string_view rest = word;
        unicode::TakeCharacter(rest);
        const std::string_view name = rest.empty() || rest[0] == ':'
                                          ? word.substr(0, word.size() - rest.size())
                                          : word.substr(0, word.find(':'));
        const std::uint16_t key = RequireKey(name, node, arrangement);
        rest = word.substr(name.size());
        return {key, rest.empty() ? unit : ReadWeight(rest.substr(1), node, name)};
    }

    std::optional<std::uint16_t> FindKey(std::string_view name, const Arrangement& arrangement) const {
        std::string_view rest = name;
        const char32_t character = name.empty() ? 0 : unicode::TakeCharacter(rest);
        if (!rest.empty() || character > 0xFFFF) return FindFunction(name);
        return FindCharacter(m_skin.characters, arrangement, static_cast<char16_t>(character));
    }

    std::uint16_t RequireKey(std::string_view name, const toml::node& node,
                             const Arrangement& arrangement) const {
        if (const auto key = FindKey(name, arrangement)) return *key;
        const auto near = FindNearest(name, FunctionNames());
        Fail(node, "there is no key " + Quote(name) + " here: " +
                       (near ? "did you mean " + Quote(*near) + "?"
                             : "use a small character of the arrangement " + Quote(arrangement.name) +
                                   " or one of " + FunctionNames()));
    }

    void ReadChange(const toml::node& node) {
        if (!node.is_table()) Fail(node, "'key' must be a table: write [[key]]");
        const Section section{"key", node.as_table()};
        const toml::node* key = section.Find("key");
        KeyChange change;
        TryAll([&] { AllowKeys(section, "key, board, move, size, rects, label, face"); },
               [&] {
                   if (!key) Fail(node, "[[key]] must name its key: add key = \"...\"");
               },
               [&] { change = ReadChangeOf(section); }, [&] { (void)IsMeant(section, BoardKind::Portrait); });
        Apply(section, *key, change);
    }

    void Apply(const Section& section, const toml::node& key, const KeyChange& change) {
        const std::string_view name = ReadString(key, "'key.key'");
        bool isKnown = false;
        for (BoardKind kind : kBoards) {
            Board* board = FindBoard(kind);
            if (!board || !IsMeant(section, kind)) continue;
            const auto index = FindKey(name, ArrangementOf(kind));
            if (!index || (change.rects.empty() && !Holds(*board, *index))) continue;
            isKnown = true;
            Merge(board->changes[*index], change);
        }
        // In a keyboard with faults, a key of its rows may be missing.
        if (isKnown || !m_isWhole) return;
        const auto near = FindNearest(name, FunctionNames());
        Fail(key, "there is no key " + Quote(name) + " on the keyboards meant: " +
                      (near && *near != name ? "did you mean " + Quote(*near) + "?"
                                             : "use a name from their rows, or give it its own rects"));
    }

    // A later entry for the same key extends an earlier one.
    static void Merge(KeyChange& known, const KeyChange& change) {
        known.place = change.place;
        known.move = {known.move.x + change.move.x, known.move.y + change.move.y};
        if (change.size) known.size = change.size;
        if (!change.rects.empty()) known.rects = change.rects;
        if (change.label) known.label = change.label;
        if (change.face) known.face = change.face;
    }

    KeyChange ReadChangeOf(const Section& section) const {
        KeyChange change;
        change.place = PlaceOf(*section.table);
        TryAll([&] { ReadPlacing(section, change); },
               [&] {
                   if (const toml::node* node = section.Find("label"))
                       change.label = ReadLabel(*node, "'key.label'");
               },
               [&] {
                   if (const toml::node* node = section.Find("face"))
                       change.face = ReadFace(*node, "'key.face'", m_skin.palette);
               });
        return change;
    }

    static void ReadPlacing(const Section& section, KeyChange& change) {
        if (const toml::array* move = FindArray(section, "move", 2))
            change.move = {ReadInteger(*move->get(0), "each of 'key.move'", -kLargestSide, kLargestSide),
                           ReadInteger(*move->get(1), "each of 'key.move'", -kLargestSide, kLargestSide)};
        if (const toml::array* size = FindArray(section, "size", 2))
            change.size = {ReadInteger(*size->get(0), "each of 'key.size'", 1, kLargestSide),
                           ReadInteger(*size->get(1), "each of 'key.size'", 1, kLargestSide)};
        if (const toml::array* rects = FindArray(section, "rects"))
            for (const toml::node& rect : *rects)
                change.rects.push_back(ReadRect(rect));
    }

    // In the source left, top, width and height; here all edges are inside.
    static Rect ReadRect(const toml::node& node) {
        const toml::array* edges = node.as_array();
        if (!edges || edges->size() != 4)
            Fail(node, "each of 'key.rects' must be a list of 4 values: left, top, width, height");
        int values[4];
        for (std::size_t i = 0; i < 4; ++i)
            values[i] = ReadInteger(*edges->get(i), "each value of 'key.rects'", i < 2 ? 0 : 1, kLargestSide);
        return {values[0], values[1], values[0] + values[2] - 1, values[1] + values[3] - 1};
    }

    static bool IsMeant(const Section& section, BoardKind kind) {
        const toml::node* node = section.Find("board");
        if (!node) return true;
        const std::string_view name = ReadString(*node, "'key.board'");
        if (std::ranges::find(kBoards, name, BoardName) == std::end(kBoards))
            Fail(*node,
                 "there is no keyboard " + Quote(name) + ": " + Advise(name, "portrait, landscape, digits"));
        return name == BoardName(kind);
    }

    Board* FindBoard(BoardKind kind) { return const_cast<Board*>(m_skin.Find(kind)); }

    static bool Holds(const std::vector<Row>& rows, std::uint16_t key) {
        return std::ranges::any_of(
            rows,
            [key](const Row& row) {
                return std::ranges::find(row.keys, key, &RowKey::key) != row.keys.end();
            });
    }
    static bool Holds(const Board& board, std::uint16_t key) {
        return board.changes.contains(key) || Holds(board.rows, key) || Holds(board.wide, key);
    }

    void SettlePlaces() {
        for (BoardKind kind : kBoards) {
            const Board* board = FindBoard(kind);
            if (!board) continue;
            for (const std::vector<Row>* rows : {&board->rows, &board->wide})
                for (const Row& row : *rows)
                    for (const RowKey& key : row.keys)
                        m_skin.places.emplace(std::pair{kind, key.key}, row.place);
            for (const auto& [key, change] : board->changes)
                m_skin.places[{kind, key}] = change.place;
        }
    }

    const Section& m_file;
    Skin& m_skin;
    // No keyboard has had a fault so far.
    bool m_isWhole = true;
    toml::table m_nothing;
};

}  // namespace

void ReadBoards(const Section& file, Skin& skin) { BoardReader(file, skin).Run(); }

Label ReadLabel(const toml::node& node, const std::string& what) {
    Label label{{}, std::nullopt, PlaceOf(node)};
    if (const toml::table* table = node.as_table()) {
        const toml::node* icon = table->get("icon");
        const std::string_view name = icon ? ReadString(*icon, what) : std::string_view();
        if (table->size() == 1) label.icon = FindIcon(name);
        if (icon && table->size() == 1 && !label.icon)
            Fail(*icon, "there is no icon " + Quote(name) + ": " + Advise(name, IconNames()));
        if (!label.icon) Fail(node, what + " must be a word or {icon = \"...\"}, one of " + IconNames());
        return label;
    }
    label.word = ToUtf16(ReadString(node, what), node);
    if (label.word.empty()) Fail(node, what + " must not be empty");
    return label;
}

Shade ReadFace(const toml::node& node, const std::string& what, const Palette& palette) {
    if (node.is_string()) {
        const std::string_view name = node.as_string()->get();
        for (const auto& [known, shade] : {std::pair{"letter", &palette.letter},
                                           {"number", &palette.number},
                                           {"symbol", &palette.symbol},
                                           {"function", &palette.function}})
            if (name == known) return *shade;
        if (const auto near = FindNearest(name, "letter, number, symbol, function"))
            Fail(node, "there is no face " + Quote(name) + ": did you mean " + Quote(*near) + "?");
    }
    return ReadShade(node, what);
}

}  // namespace tlk
