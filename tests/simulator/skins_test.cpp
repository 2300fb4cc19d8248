// SPDX-License-Identifier: MIT
// Skins from a folder and of the options of the command line: what comes onto the device, and which one is
// chosen.
#include <fstream>

#include "desktop.h"
#include "simulator_run.h"

namespace fs = std::filesystem;

namespace {

class SkinsTest : public SimulatorTest {
protected:
    SkinsTest() { InstallSkin(); }
    bool HasSkin(const std::string& file) const { return fs::exists(Device() / "Windows" / file); }
};

TEST_F(SkinsTest, TheNextSkinSuitsTheScreen) {
    fs::copy_file(SKINS "/240x320/german-thumbs-240x320.tlk", Device() / "Windows" / "c.tlk");
    std::ofstream(Device() / "Windows" / "d.tlk") << "no skin";
    const std::string show = "reg get HKLM\\Software\\Tolka\\7.0 Skin\n";
    const std::string trace = Trace("select\n" + show + "screenshot c.png\nskin next\nscreenshot s.png\n" +
                                    show + "skin next\n" + show);
    std::string skins;
    for (std::size_t at = 0; (at = trace.find("windows\\\\", at)) != std::string::npos;) {
        at += 9;
        skins += trace[at];
    }
    EXPECT_EQ(skins, "csc") << trace;
    EXPECT_NE(ReadText(Folder() / "c.png"), ReadText(Folder() / "s.png"));
}

TEST_F(SkinsTest, OptionsNameTheSkinWithoutItsSize) {
    MakeFewSkins();
    fs::copy_file(STANDARD_SKIN, Folder() / "X.TLK");
    const std::string show = "select\nreg get HKLM\\Software\\Tolka\\7.0 Skin\n";
    for (const auto& [named, skin] : std::initializer_list<std::pair<std::string, std::string>>{
             {"--prefer german", "german-240x320"},
             {"--prefer greek", "german-240x320"},  // a skin has been chosen already
             {"--choose german-thumbs", "german-thumbs-240x320"},
             {"--screen 240x240 --prefer greek", "greek-240x240"},  // there is no thumbs skin
             {"--choose greek-240x320", "greek-240x320"},
             {"--choose GERMAN", "german-240x320"},
             {"--skin X.TLK --choose x", "X"},
             {"--screen 480x640 --prefer greek", "greek-480x640"}}) {  // "X" suits another screen only
        const std::string trace = Trace(show, "--skins skins " + named);
        EXPECT_TRUE(Has(LastLine(trace, "Reg"), "\\\\" + skin + '.'));
    }
}

TEST_F(SkinsTest, SkinsForTheScreenReplaceOthers) {
    for (const char* name : {"240x320/a.tlk", "240x320/both.tlk", "480x640/b.tlk", "480x640/both.tlk"}) {
        fs::create_directories((Folder() / "skins" / name).parent_path());
        fs::copy_file(STANDARD_SKIN, Folder() / "skins" / name);
    }
    Trace("skins skins\n", "--screen 320x240");
    EXPECT_TRUE(HasSkin("a.tlk") && HasSkin("both.tlk") && !HasSkin("b.tlk") && HasSkin("standard.tlk"));
    Trace("skins skins\n", "--screen 480x640");
    EXPECT_TRUE(!HasSkin("a.tlk") && HasSkin("both.tlk") && HasSkin("b.tlk") && HasSkin("standard.tlk"));
    const SimulatorResult other = Run("skins skins\n", "--screen 300x300");
    EXPECT_EQ(other.status, 2);
    EXPECT_EQ(other.errors, "s:1: there are no skins in skins/300x300\n");
}

TEST_F(SkinsTest, SkinsThatShipAreChosenAndDeletedByTheirNames) {
    std::string chosen, expected;
    for (const auto& entry : fs::directory_iterator(SKINS "/240x320")) {
        const std::string name = entry.path().stem().string();
        chosen += "choose 202 " + name + "\nreg get HKLM\\Software\\Tolka\\7.0 Skin\n";
        expected +=
            "SipShowIM flags=0x0\nHiding 0x0\nSipShowIM flags=0x1\nShowing 0x0\n"
            "Reg HKLM\\Software\\Tolka\\7.0 Skin sz \"\\\\windows\\\\" +
            name + ".tlk\"\n";
    }
    const std::string select = "skins \"" SKINS "\"\nselect\n";
    EXPECT_TRUE(Has(Trace(select + "options\n" + chosen), expected));
    Trace(select + "options\nchoose 202 german-240x320\nclick 221\nclick 1\n");
    for (const auto& entry : fs::directory_iterator(SKINS "/240x320")) {
        const std::string file = entry.path().filename().string();
        EXPECT_EQ(HasSkin(file), file != "german-240x320.tlk") << file;
    }
}

}  // namespace
