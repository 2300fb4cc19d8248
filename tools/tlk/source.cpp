// SPDX-License-Identifier: MIT
#include "source.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "art.h"
#include "engine.h"
#include "name_list.h"
#include "source_boards.h"
#include "source_files.h"
#include "suggestion.h"

namespace tlk {
namespace {

// The screen width for lines of one pixel.
constexpr double kPlainWidth = 240;

constexpr int kLargestHeight = 2048;
constexpr Size kUsualScreen{240, 320};

std::optional<Size> ParseUprightScreen(std::string_view text) {
    const auto size = ParseScreen(text);
    return size && size->width <= size->height && size->height <= kLargestHeight ? size : std::nullopt;
}

class SourceReader {
public:
    SourceReader(toml::table& root, std::string_view screen) : m_root(root), m_wantedScreen(screen) {}

    Skin Read(FaultList& faults) {
        const Section file{"", &m_root};
        faults.Try([&] { ChooseScreen(file); });
        const bool isKnown = faults.Try([&] {
            AllowKeys(file,
                      "screens, screen, arrangement, caps_rect, swipe_only, font, palette, colors, labels, "
                      "portrait, landscape, digits, key, art, language1, language2");
        });
        m_skin.characters = BuiltInCharacters();
        // The characters of language 2 unless the source changes them.
        for (CharacterEntry& entry : m_skin.characters)
            std::copy_n(entry.begin(), kSlotCount / 2, entry.begin() + kSlotCount / 2);
        faults.Try([&] { ReadGeneral(file); });
        faults.Try([&] { ReadFont(file); });
        faults.Try([&] { ReadPalette(file); });
        faults.Try([&] { ReadLabels(file, m_skin.labels); });
        // Does not report consequences of other faults: keys of a misspelt arrangement, or a missing
        // [portrait] after [portait].
        if (m_skin.arrangement) {
            if (isKnown || file.Find("portrait")) faults.Try([&] { ReadKeyboards(file); });
            faults.Try([&] { ReadLanguages(file); });
        }
        faults.Try([&] { ReadArt(file); });
        m_skin.scale = std::max(1, static_cast<int>(std::lround(m_skin.portrait.size.width / kPlainWidth)));
        return std::move(m_skin);
    }

private:
    // Chooses a screen even if it has a fault, so that the rest of the source can be read.
    void ChooseScreen(const Section& file) {
        m_skin.screen = ParseUprightScreen(m_wantedScreen);
        const toml::array* screens = FindArray(file, "screens");
        if (!screens) {
            if (!m_wantedScreen.empty())
                throw SourceError(PlaceOf(m_root), "this skin lists no screens: add screens = [\"" +
                                                       std::string(m_wantedScreen) + "\"]");
            return;
        }
        if (!m_skin.screen) m_skin.screen = kUsualScreen;
        std::string list;
        std::string chosen;
        TryEach(*screens, [&](const toml::node& node) {
            const std::string_view name = ReadString(node, "each of 'screens'");
            if (!ParseUprightScreen(name))
                Fail(node,
                     "each of 'screens' must be width and height of an upright screen, such as \"240x320\"");
            AppendName(list, name);
            m_skin.screens.emplace_back(name);
            if (chosen.empty() && (m_wantedScreen.empty() || m_wantedScreen == name)) chosen = name;
        });
        if (chosen.empty())
            Fail(*screens, "this skin is not for the screen " + std::string(m_wantedScreen) +
                               ": add it to 'screens', or " + Advise(m_wantedScreen, list));
        m_skin.screen = ParseUprightScreen(chosen);
        ApplyScreen(m_root, chosen);
    }

    // If any has a fault, there are none, as their gaps would cause further faults.
    void ReadKeyboards(const Section& file) {
        try {
            ReadBoards(file, m_skin);
        } catch (const SourceError&) {
            m_skin.portrait.rows.clear();
            throw;
        }
    }

    void ReadGeneral(const Section& file) {
        TryAll([&] { ReadArrangement(file); },
               [&] { m_skin.capsRect = FindBoolean(file, "caps_rect", true); },
               [&] { m_skin.swipeOnly = FindBoolean(file, "swipe_only", false); });
    }

    void ReadArrangement(const Section& file) {
        const toml::node* node = file.Find("arrangement");
        const std::string_view name = node ? ReadString(*node, "'arrangement'") : "full";
        m_skin.arrangement = FindArrangement(name);
        if (!m_skin.arrangement)
            Fail(*node, "there is no arrangement " + Quote(name) + ": " + Advise(name, ArrangementNames()));
    }

    void ReadFont(const Section& file) {
        const auto font = FindTable(file, "font");
        if (!font) return;
        const auto readSize = [&font](const char* key, int& size) {
            if (const toml::node* node = font->Find(key))
                size = ReadInteger(*node, font->Describe(key), 7, 64);
        };
        TryAll([&] { AllowKeys(*font, "file, size, words"); },
               [&] { readSize("size", m_skin.font.characters); },
               [&] { readSize("words", m_skin.font.words); }, [&] { ReadFontFile(*font); });
    }

    // A path relative to the source or, by its name only, a file beside the tool's own font.
    void ReadFontFile(const Section& font) {
        const toml::node* node = font.Find("file");
        if (!node) return;
        const std::string_view name = ReadString(*node, font.Describe("file"));
        const std::string path = ResolvePath(*node, name);
        m_skin.fontFile = FontFile{PlaceOf(*node), std::filesystem::exists(path) ? path : std::string(name)};
    }

    void ReadPalette(const Section& file) {
        m_skin.palette = DefaultPalette();
        TryAll([&] { ReadNamedPalette(file); },
               [&] {
                   if (const auto colors = FindTable(file, "colors")) ReadColors(*colors);
               });
    }

    void ReadNamedPalette(const Section& file) {
        const toml::node* node = file.Find("palette");
        if (!node) return;
        const std::string_view name = ReadString(*node, "'palette'");
        if (name.ends_with(".toml")) {
            const toml::table colors = ReadPaletteFile(*node, name);
            ReadColors(Section{"", &colors});
        } else if (const auto palette = FindPalette(name)) {
            m_skin.palette = *palette;
        } else {
            Fail(*node, "there is no palette " + Quote(name) + ": name a file such as \"mine.toml\", or " +
                            Advise(name, PaletteNames()));
        }
    }

    void ReadColors(const Section& colors) {
        Palette& palette = m_skin.palette;
        const auto read = [&colors](const char* key, Shade& shade) {
            if (const toml::node* node = colors.Find(key)) shade = ReadShade(*node, colors.Describe(key));
        };
        TryAll([&] { AllowKeys(colors, "style, glyphs, background, letter, number, symbol, function"); },
               [&] {
                   palette.style = ReadChoice(colors, "style", palette.style,
                                              {{"bevel", FaceStyle::Bevel},
                                               {"gradient", FaceStyle::Gradient},
                                               {"flat", FaceStyle::Flat}});
               },
               [&] {
                   palette.glyphs = ReadChoice(colors, "glyphs", palette.glyphs,
                                               {{"dark", GlyphTone::Dark}, {"light", GlyphTone::Light}});
               },
               [&] {
                   if (const toml::node* node = colors.Find("background"))
                       palette.background = ReadColor(*node, colors.Describe("background"));
               },
               [&] {
                   read("letter", palette.letter);
                   if (colors.Find("letter")) palette.number = palette.symbol = palette.letter;
               },
               [&] { read("number", palette.number); }, [&] { read("symbol", palette.symbol); },
               [&] { read("function", palette.function); });
    }

    template <class Value>
    static Value ReadChoice(const Section& section, std::string_view key, Value usual,
                            std::initializer_list<std::pair<std::string_view, Value>> choices) {
        const toml::node* node = section.Find(key);
        if (!node) return usual;
        const std::string_view text = ReadString(*node, section.Describe(key));
        std::string names;
        for (const auto& [name, value] : choices) {
            if (name == text) return value;
            AppendName(names, name);
        }
        Fail(*node, section.Describe(key) + " cannot be " + Quote(text) + ": " + Advise(text, names));
    }

    static void ReadLabels(const Section& section, std::map<std::uint16_t, Label>& found) {
        const auto labels = FindTable(section, "labels");
        if (!labels) return;
        TryEach(*labels->table, [&](const auto& entry) {
            const auto& [name, node] = entry;
            const auto key = FindFunction(name.str());
            if (!key)
                Fail(node, "there is no function key " + Quote(name.str()) + ": " +
                               Advise(name.str(), FunctionNames()));
            found[*key] = ReadLabel(node, labels->Describe(name.str()));
        });
    }

    void ReadArt(const Section& file) {
        const auto art = FindTable(file, "art");
        if (!art) return;
        TryEach(*art->table, [&](const auto& entry) {
            const auto& [name, node] = entry;
            const std::string resource = FindArtResource(name.str());
            if (resource.empty())
                Fail(node, "there is no picture or mask " + Quote(name.str()) + ": " +
                               Advise(name.str(), ArtNames()));
            m_skin.art[resource] = {PlaceOf(node),
                                    ResolvePath(node, ReadString(node, art->Describe(name.str())))};
        });
    }

    void ReadLanguages(const Section& file) {
        TryAll([&] { ReadLanguage1(file); }, [&] { ReadLanguage2(file); });
    }

    void ReadLanguage1(const Section& file) {
        const auto language = FindTable(file, "language1");
        if (!language) return;
        TryAll([&] { AllowKeys(*language, "name, labels"); },
               [&] { ReadLabels(*language, m_skin.languageLabels[0]); },
               [&] { ReadLanguageName(*language, 0); });
    }

    void ReadLanguage2(const Section& file) {
        const auto language = FindTable(file, "language2");
        if (!language) return;
        m_skin.language2 = PlaceOf(*language->table);
        TryAll([&] { AllowKeys(*language, "name, labels, keys, umlaut"); },
               [&] { ReadLabels(*language, m_skin.languageLabels[1]); },
               [&] { ReadLanguageName(*language, 1); }, [&] { ReadCharacters(*language, "keys", 4); },
               [&] { ReadCharacters(*language, "umlaut", 6); });
    }

    void ReadLanguageName(const Section& language, std::size_t index) {
        const toml::node* node = language.Find("name");
        if (!node) return;
        m_skin.languageNames[index] = ToUtf16(ReadString(*node, language.Describe("name")), *node);
        if (m_skin.languageNames[index].empty()) Fail(*node, "a language needs a name for its key");
    }

    // Differences from language 1: the key's small character there, and the characters here.
    void ReadCharacters(const Section& language, std::string_view name, std::size_t slot) {
        const auto section = FindTable(language, name);
        if (!section) return;
        TryEach(*section->table, [&](const auto& entry) {
            const auto& [key, node] = entry;
            const std::u16string label = ToUtf16(key.str(), node);
            const auto index = label.size() == 1
                                   ? FindCharacter(m_skin.characters, *m_skin.arrangement, label[0])
                                   : std::nullopt;
            if (!index)
                Fail(node, "there is no key " + Quote(key.str()) +
                               ": use a small character of the arrangement " +
                               Quote(m_skin.arrangement->name));
            SetCharacters(*index, slot, ReadString(node, "key " + Quote(key.str())), node);
        });
    }

    // An empty text leaves the key blank in this plane.
    void SetCharacters(std::uint16_t key, std::size_t slot, std::string_view text, const toml::node& node) {
        const std::u16string typed = ToUtf16(text, node);
        if (typed.size() > 2)
            Fail(node, "a key must type its small and its large character, one for both, or nothing");
        CharacterEntry& entry = m_skin.characters[key];
        entry[slot] = typed.empty() ? u'\0' : typed.front();
        entry[slot + 1] = typed.empty() ? u'\0' : typed.back();
        m_skin.characterPlaces[key] = PlaceOf(node);
    }

    toml::table& m_root;
    std::string_view m_wantedScreen;
    Skin m_skin;
};

}  // namespace

Skin ReadSource(std::string_view text, const std::string& path, std::string_view screen, FaultList& faults) {
    toml::table root = ReadSourceFiles(text, path, faults);
    return SourceReader(root, screen).Read(faults);
}

Skin ReadSource(std::string_view text, const std::string& path, std::string_view screen) {
    FaultList faults;
    Skin skin = ReadSource(text, path, screen, faults);
    faults.Throw();
    return skin;
}

}  // namespace tlk
