// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <utility>
#include <vector>

#include "file.h"

namespace tlk {
namespace {

class TlkCommand : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return m_folder.Path(name); }

    // Returns the exit status; messages go to Path("messages"). The same shell first runs `before`.
    int Run(const std::string& arguments, const std::string& before = {}) const {
        const std::string command =
            before + "'" TLK_COMMAND "' " + arguments + " >" + Path("messages") + " 2>&1";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string Messages() const { return std::string(AsText(ReadFile(Path("messages")))); }
    bool Says(const std::string& text) const { return Messages().find(text) != std::string::npos; }

    TemporaryFolder m_folder;
};

TEST_F(TlkCommand, BuildsTheSameBytesAgainAndShowsThem) {
    // From another folder, as a skin must not depend on where or when it was built.
    std::filesystem::copy(SKIN_SOURCES, Path(""), std::filesystem::copy_options::recursive);
    EXPECT_EQ(Run("build " + Path("german.toml") + " --screen 240x320 -o " + Path("a.tlk")), 0);
    EXPECT_TRUE(Says("a.tlk: for a screen of 240x320 and ARM")) << Messages();
    EXPECT_EQ(ReadFile(Path("a.tlk")), ReadFile(STANDARD_SKIN));
    EXPECT_EQ(Run("show " + Path("a.tlk") +
                  " --plane uml2-large --landscape --pressed shift,q --hit-areas -o " + Path("a.png")),
              0);
    EXPECT_GT(ReadFile(Path("a.png")).size(), 1000u);
    EXPECT_EQ(Run("show " + Path("a.tlk") + " --sheet -o " + Path("a.png")), 0);
    EXPECT_GT(ReadFile(Path("a.png")).size(), 10000u) << Messages();
}

TEST_F(TlkCommand, BuildsAllScreensOfAllValidSources) {
    EXPECT_EQ(Run("build --all " + Path("none.toml") + " '" STANDARD_SOURCE "' -o " + Path("new/skins")), 2);
    EXPECT_EQ(Messages().find(Path("none.toml") + ": "), 0u);
    EXPECT_TRUE(Says("480x800 and ARM, in " + Path("new/skins"))) << Messages();
    std::size_t count = 0;
    for (const auto& built : std::filesystem::recursive_directory_iterator(SKINS_FOLDER)) {
        const std::string file = built.path().lexically_relative(SKINS_FOLDER).string();
        if (!std::regex_match(file, std::regex("(\\d+x\\d+)/german-\\1.tlk"))) continue;
        EXPECT_EQ(ReadFile(Path("new/skins/" + file)), ReadFile(built.path().string())) << file;
        ++count;
    }
    EXPECT_EQ(count, 5u);
}

TEST_F(TlkCommand, UnpaintedArtGivesTheSameSkinAndPaintedArtIsKept) {
    const std::string art = Path("art/art.toml");
    for (const char* skin : {STANDARD_SOURCE, STANDARD_SKIN}) {
        ASSERT_EQ(Run("art '" + std::string(skin) + "' -o " + Path("art")), 0) << Messages();
        std::ofstream(Path("a.toml")) << "based_on = [\"" STANDARD_SOURCE "\", \"art/art.toml\"]\n";
        EXPECT_EQ(Run("build " + Path("a.toml") + " --screen 240x320 -o " + Path("a.tlk")), 0);
        EXPECT_EQ(ReadFile(Path("a.tlk")), ReadFile(STANDARD_SKIN)) << skin;
        std::ofstream(Path("art/digit.png"), std::ios::app) << "paint";
        EXPECT_EQ(Run("art '" + std::string(skin) + "' -o " + Path("art")), 2);
        EXPECT_TRUE(Says("digit.png: exists already")) << Messages();
        EXPECT_NE(AsText(ReadFile(art)).find("uml2_large_ls = \"uml2_large_ls.png\"\n"), std::string::npos);
        std::filesystem::remove_all(Path("art"));
    }
}

TEST_F(TlkCommand, SourcesOfTheDocumentationAreGood) {
    const std::string page(AsText(ReadFile(SKIN_SOURCES "/../docs/SKINS.md")));
    const std::string fence = "```toml\n";
    std::size_t end = 0;
    for (const char* name : {"first", "second", "changed"}) {
        const std::size_t start = page.find(fence, end) + fence.size();
        end = page.find("```", start);
        std::ofstream source(Path(name) + ".toml");
        if (name != std::string("first")) source << "based_on = \"first.toml\"\n";
        source << page.substr(start, end - start);
        source.close();
        EXPECT_EQ(Run("build " + Path(name) + ".toml -o " + Path("a.tlk")), 0) << name;
        // The page describes in words where the key "lang" of the second example goes.
        const bool isTold = Messages().find("no key leads to it") != std::string::npos;
        EXPECT_EQ(isTold, name == std::string("second")) << Messages();
        EXPECT_EQ(Run("check " + Path("a.tlk")), 0) << Messages();
    }
}

TEST_F(TlkCommand, ReplacesOnlyAFileOfTheSameKindAndOnlyCompletely) {
    const std::string source = "screens = [\"240x320\"]\n[portrait]\nrows = [\"q space back enter\"]\n";
    std::ofstream(Path("a.toml")) << source;
    ASSERT_EQ(Run("build " + Path("a.toml") + " -o " + Path("a.tlk")), 0);
    const Bytes skin = ReadFile(Path("a.tlk"));
    EXPECT_EQ(Run("build " + Path("a.toml") + " -o " + Path("a.toml")), 2);
    EXPECT_EQ(AsText(ReadFile(Path("a.toml"))), source);
    EXPECT_EQ(Run("show " + Path("a.tlk") + " -o " + Path("a.tlk")), 2);
    std::filesystem::permissions(Path("a.tlk"), std::filesystem::perms::owner_read);
    EXPECT_EQ(Run("build '" STANDARD_SOURCE "' -o " + Path("a.tlk")), 2);
    EXPECT_EQ(ReadFile(Path("a.tlk")), skin);
    std::filesystem::permissions(Path("a.tlk"), std::filesystem::perms::owner_all);
    // A disk with enough room for the engine's device, but not for a skin.
    const std::string full = "trap '' XFSZ; ulimit -f 30; ";
    EXPECT_EQ(Run("build '" STANDARD_SOURCE "' -o " + Path("a.tlk"), full), 2);
    EXPECT_EQ(Run("show '" STANDARD_SKIN "' --zoom 8 -o " + Path("a.png"), full), 2);
    EXPECT_FALSE(std::filesystem::exists(Path("a.png")));
    EXPECT_EQ(Run("dump '" STANDARD_SKIN "' >/dev/full #"), 2);
    EXPECT_EQ(ReadFile(Path("a.tlk")), skin);
    for (const auto& entry : std::filesystem::directory_iterator(Path("")))
        EXPECT_NE(entry.path().extension(), ".part");
}

TEST_F(TlkCommand, ChecksAndExitsByItsRemarks) {
    EXPECT_EQ(Run("check '" STANDARD_SKIN "'"), 0);
    EXPECT_TRUE(Says("good for a screen of 240x320, taken from its pictures, and ARM")) << Messages();
    EXPECT_EQ(Run("check '" STANDARD_SKIN "' --screen 480x640 --source '" STANDARD_SOURCE "'"), 1);
    EXPECT_EQ(Run("dump '" STANDARD_SKIN "'"), 0);
    EXPECT_TRUE(Says("\n     87 y: z Z ")) << Messages();
}

TEST_F(TlkCommand, WarnsOfNamesThatTheKeyboardConfuses) {
    const std::map<std::string, std::string> warnings = {
        {"mine", "\"mine\" is a part of \"mine-vga\""},
        {"mine-vga-2", "\"mine-vga\" is a part of \"mine-vga-2\""},
        {"Win", "\"Win\" is a part of the path of every skin"},
        {"theirs", ""}};
    std::filesystem::copy_file(STANDARD_SKIN, Path("mine-vga.tlk"));
    for (const auto& [name, warning] : warnings) {
        EXPECT_EQ(Run("build '" STANDARD_SOURCE "' -o " + Path(name + ".tlk")), 0);
        const std::string built = Messages();
        EXPECT_EQ(Run("check " + Path(name + ".tlk")), warning.empty() ? 0 : 1);
        for (const std::string& text : {built, Messages()})
            EXPECT_NE(text.find(warning), std::string::npos) << text;
        EXPECT_EQ(built.find("warning") == std::string::npos, warning.empty()) << built;
        std::filesystem::remove(Path(name + ".tlk"));
    }
}

TEST_F(TlkCommand, FailsWithTheFileTheLineAndStatusTwo) {
    std::ofstream(Path("bad.toml")) << "[portrait]\nsize = 7\nrows = [\"q\"]\n";
    const std::string toBad = " -o " + Path("bad.tlk");
    for (const auto& [arguments, says] : std::vector<std::pair<std::string, std::string>>{
             {"build " + Path("bad.toml") + toBad, Path("bad.toml") + ":2: "},
             {"build '" STANDARD_SOURCE "' --screen 640x480" + toBad, "full.toml:3: "},
             {"build " + Path("none.toml") + toBad, "none.toml"},
             {"build '" STANDARD_SOURCE "' -o " + Path("no/folder.tlk"), "folder.tlk"},
             {"build '" STANDARD_SOURCE "' --font " + Path("bad.toml") + toBad, "bad.toml"},
             {"build '" STANDARD_SOURCE "' '" STANDARD_SOURCE "'" + toBad, "name one source"},
             {"build '" STANDARD_SKIN "'" + toBad, "name the source"},
             {"build a.toml --sceen=240x320 -o a.tlk", "did you mean '--screen'?"},
             {"show " + Path("bad.toml") + " -o " + Path("a.png"), "bad.toml"},
             {"show '" STANDARD_SKIN "' --plane klingon -o " + Path("a.png"), "klingon"},
             {"show '" STANDARD_SKIN "' --pressed shift,q,63 -o " + Path("a.png"), "'63'"},
             {"show '" STANDARD_SKIN "' --sheet --plane digit -o " + Path("a.png"), "--plane"},
             {"check '" STANDARD_SKIN "' --screen 480", "480"},
             {"check '" STANDARD_SOURCE "'",
              STANDARD_SOURCE ": not a library file, as skins are: 'tlk build' "},
             {"chekc", "did you mean 'check'?"}}) {
        EXPECT_EQ(Run(arguments), 2) << arguments;
        EXPECT_TRUE(Says(says)) << arguments << ": " << Messages();
    }
    EXPECT_FALSE(std::filesystem::exists(Path("bad.tlk")));
}

}  // namespace
}  // namespace tlk
