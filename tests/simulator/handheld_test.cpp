// SPDX-License-Identifier: MIT
// The handheld around the keyboard: menu bar and menus, the pen on the application, skins.
#include <fstream>

#include "desktop.h"
#include "simulator_run.h"

namespace fs = std::filesystem;

namespace {

// Upright, 240 x 320.
std::string PenTap(int x, int y) {
    const std::string place = ' ' + std::to_string(x) + ' ' + std::to_string(y) + '\n';
    return "pen down" + place + "pen up" + place;
}
const std::string kTapNew = PenTap(15, 308);
const std::string kTapEdit = PenTap(60, 308);
const std::string kTapButton = PenTap(212, 308);
const std::string kTapArrow = PenTap(232, 308);
// Items of a menu are counted from the bottom, without lines.
std::string Item(int x, int fromBelow, int linesBelow = 0) {
    return PenTap(x, 294 - 10 - 19 * fromBelow - 5 * linesBelow);
}
const std::string kSelectAll = kTapEdit + Item(60, 0);
const std::string kPaste = kTapEdit + Item(60, 1, 1);
const std::string kCopy = kTapEdit + Item(60, 2, 1);
const std::string kCut = kTapEdit + Item(60, 3, 1);
const std::string kUndo = kTapEdit + Item(60, 4, 2);
const std::string kOptions = kTapArrow + Item(220, 0);
// With another input method registered as well.
const std::string kChooseTolka = kTapArrow + Item(220, 1, 1);
const std::string kChooseOther = kTapArrow + Item(220, 2, 1);
const std::string kOtherKey = "HKCR\\CLSID\\{00000000-1111-2222-3333-444444444444}";
const std::string kRegisterOther = "reg set " + kOtherKey + " \"\" sz Other\nreg set " + kOtherKey +
                                   "\\IsSIPInputMethod \"\" sz 1\nreg set " + kOtherKey +
                                   "\\InprocServer32 \"\" sz \\Windows\\other.dll\n";

class HandheldTest : public SimulatorTest {
protected:
    HandheldTest() { InstallSkin(); }
    std::string Typed(const std::string& script) {
        return LastLine(Trace("select\n" + script + "text\n"), "Text").substr(5);
    }
};

TEST_F(HandheldTest, TheButtonShowsAndHidesTheKeyboard) {
    const std::string trace = Trace("select\n" + kTapButton + "windows\n" + kTapButton + "windows\n");
    EXPECT_TRUE(Has(trace, "Hiding 0x0\nWindow sip 0 214 240 80 shown=0\n"));
    EXPECT_EQ(LastLine(trace, "Window sip"), "Window sip 0 214 240 80 shown=1");
    // If the pen is lifted elsewhere, or taps in the panel's coordinates, the button does nothing.
    const std::string other =
        Trace("select\npen down 212 308\npen move 100 100\npen up 100 100\ntap 212 94\nwindows\n");
    EXPECT_EQ(LastLine(other, "Window sip"), "Window sip 0 214 240 80 shown=1");
    EXPECT_FALSE(Has(other, "Hiding"));
}

TEST_F(HandheldTest, APanelOverTheMenuBarGetsThePen) {
    EXPECT_EQ(Typed("sip 0 240 240 320\n" + TapKey("z")), "\"z\"");
}

TEST_F(HandheldTest, TheEditMenuEdits) {
    EXPECT_EQ(Typed(TapKey("ab") + kSelectAll + kCut + TapKey("c") + kPaste + kPaste), "\"cabab\"");
    EXPECT_EQ(Typed(TapKey("ab") + kSelectAll + kCopy + kTapRight + kPaste + kUndo), "\"ab\"");
    EXPECT_EQ(Typed(TapKey("ab") + kTapNew), "\"\"");
    EXPECT_EQ(Typed(TapKey("ab") + kTapNew + kUndo + TapKey("c")), "\"abc\"");
    EXPECT_EQ(Typed(TapKey("ab") + kPaste + TapKey("c")), "\"abc\"") << "a grey item does nothing";
}

TEST_F(HandheldTest, APenDownElsewhereOnlyClosesTheMenu) {
    const std::string trace = Trace("select\n" + kTapEdit + PenTap(27, 237) + PenTap(44, 237) + "text\n");
    EXPECT_EQ(LastLine(trace, "Text"), "Text \"w\"");
    EXPECT_FALSE(Has(trace, "char=0x71"));
    // From the word to the item in one stroke.
    EXPECT_EQ(Typed(TapKey("ab") + "pen down 60 308\npen move 60 284\npen up 60 284\n" + TapKey("c")),
              "\"c\"");
}

TEST_F(HandheldTest, ThePenPlacesTheCaretAndSelects) {
    EXPECT_EQ(Typed(TapKey("ab") + PenTap(2, 34) + TapKey("x")), "\"xab\"");
    // The field keeps the stroke over the keyboard.
    EXPECT_EQ(Typed(TapKey("ab") + "pen down 2 34\npen move 100 240\npen up 100 240\n" + TapKey("x")),
              "\"x\"");
}

TEST_F(HandheldTest, TheMenuOpensTheOptions) {
    const std::string trace = Trace("select\n" + kOptions + "dialog\nclick 2\n");
    EXPECT_TRUE(Has(trace, "Dialog 0 0 240 320"));
    EXPECT_EQ(LastLine(trace, "UserOptionsDlg"), "UserOptionsDlg 0x0");
}

TEST_F(HandheldTest, AFailingInputMethodLeavesThePresentOne) {
    const SimulatorResult result =
        Run("select\n" + kRegisterOther + kChooseOther + "click 1\n" + TapKey("a") + "text\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(Has(result.trace, "\nMessageBox type=0x10 caption=\"Input method\""));
    EXPECT_FALSE(Has(result.trace, "Deselect"));
    EXPECT_EQ(LastLine(result.trace, "Text"), "Text \"a\"");
}

TEST_F(HandheldTest, TheMenuChangesTheInputMethodAndBack) {
    fs::copy_file(LIBRARY, Device() / "Windows" / "other.dll");
    fs::copy_file(OTHER_INPUT_METHOD, Device() / "Windows" / "other.dll.so");
    const std::string trace = Trace("select\n" + TapKey("a") + kRegisterOther + kChooseOther + TapKey("b") +
                                    kChooseOther + kChooseTolka + TapKey("c") + "text\n");
    EXPECT_TRUE(Has(trace, "Create 0x0\nDeselect 0x0\nSelect 0x0\n"));
    EXPECT_EQ(LastLine(trace, "Text"), "Text \"aoc\"") << trace;
}

TEST_F(HandheldTest, TheNextSkinSuitsTheScreen) {
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

TEST_F(HandheldTest, OptionsNameTheSkinWithoutItsSize) {
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

TEST_F(HandheldTest, AStandInPickedInTheOptionsBecomesTheChoice) {
    const std::string show = "reg get HKCU\\Software\\Simulator ChosenSkin\n";
    const std::string trace = Run("select\nskin keep other\nskin next\noptions\nclick 1\n" + show +
                                  "options\nchoose 202 standard\nclick 1\n" + show)
                                  .trace;
    EXPECT_TRUE(Has(trace, "ChosenSkin sz \"other\"\n"));
    EXPECT_TRUE(trace.ends_with("ChosenSkin absent\n")) << trace;
}

TEST_F(HandheldTest, SkinsForTheScreenReplaceOthers) {
    for (const char* name : {"240x320/a.tlk", "240x320/both.tlk", "480x640/b.tlk", "480x640/both.tlk"}) {
        fs::create_directories((Folder() / "skins" / name).parent_path());
        fs::copy_file(STANDARD_SKIN, Folder() / "skins" / name);
    }
    const auto has = [this](const char* name) { return fs::exists(Device() / "Windows" / name); };
    Trace("skins skins\n", "--screen 320x240");
    EXPECT_TRUE(has("a.tlk") && has("both.tlk") && !has("b.tlk") && has("standard.tlk"));
    Trace("skins skins\n", "--screen 480x640");
    EXPECT_TRUE(!has("a.tlk") && has("both.tlk") && has("b.tlk") && has("standard.tlk"));
    const SimulatorResult other = Run("skins skins\n", "--screen 300x300");
    EXPECT_EQ(other.status, 2);
    EXPECT_EQ(other.errors, "s:1: there are no skins in skins/300x300\n");
}

}  // namespace
