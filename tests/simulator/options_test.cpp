// SPDX-License-Identifier: MIT
// The options dialog in whole sessions: what it shows, what it writes and when, and its lasting effects.
#include <fstream>
#include <sstream>
#include <vector>

#include "desktop.h"
#include "simulator_run.h"

namespace {

namespace fs = std::filesystem;

const std::string kOwn = "{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}";
const std::string kOther = "{42429667-AE04-11D0-A4F8-00AA00A749B9}";
// The panel is hidden and shown again: at opening, and with another skin.
const std::string kShownAgain = "SipShowIM flags=0x0\nHiding 0x0\nSipShowIM flags=0x1\nShowing 0x0\n";
const std::string kLeftByOk =
    "SipSetCurrentIM " + kOwn + "\nSipShowIM flags=0x0\nHiding 0x0\nUserOptionsDlg 0x0\n";
const std::string kLeftByCancel = "UserOptionsDlg 0x0\n";
const std::string kWrongSkin =
    "MessageBox type=0x10 caption=\"Tolka 7\" text=\"This skin is not for current resolution\"\n";
const std::string kOpenFile = "OpenFile ext=\"tlk\" filter=\"Tolka 7 Skin (*.tlk)|*.tlk\"\n";

const std::string kSettings = R"(HKLM\Software\Tolka\7.0 )";
const std::string kSip = R"(HKCU\ControlPanel\Sip )";

std::string Get(const std::string& place) { return "reg get " + place + '\n'; }
std::string GetSettings(std::initializer_list<const char*> names) {
    std::string script;
    for (const char* name : names) {
        script += Get(kSettings + name);
    }
    return script;
}
std::string Set(const std::string& place, const std::string& value) {
    return "reg set " + place + ' ' + value + '\n';
}
// The output of `reg get` for a setting.
std::string Setting(const std::string& name, const std::string& value) {
    return "Reg " + kSettings + name + ' ' + value + '\n';
}
std::string Question(const std::string& skin) {
    return "MessageBox type=0x1 caption=\"Tolka 7\" text=\"Skin " + skin +
           " will be deleted. Are you sure?\"\n";
}

// The first line that `dialog` prints for a control.
std::string Control(const std::string& trace, int id) {
    const std::size_t begin = trace.find("Control " + std::to_string(id) + ' ');
    return begin == std::string::npos ? "" : trace.substr(begin, trace.find('\n', begin) - begin);
}

// The position and size of the control.
std::string Place(const std::string& trace, int id) {
    std::istringstream words(Control(trace, id));
    std::string skipped, x, y, width, height;
    words >> skipped >> skipped >> skipped >> x >> y >> width >> height;
    return x + ' ' + y + ' ' + width + ' ' + height;
}

// With the skin "A".
class OptionsTest : public SimulatorTest {
protected:
    OptionsTest() { InstallSkins({"A"}); }
    // Copies the standard skin under these names to the folder.
    void InstallSkins(const std::vector<std::string>& names, const std::string& folder = "Windows") {
        fs::create_directories(Device() / folder);
        for (const std::string& name : names)
            fs::copy_file(STANDARD_SKIN, Device() / folder / (name + ".tlk"));
    }
    void InstallJunk(const std::string& name) {
        fs::create_directories(Device() / "Windows");
        std::ofstream(Device() / "Windows" / (name + ".tlk")) << "no skin";
    }
    bool HasFile(const std::string& path) const { return fs::exists(Device() / path); }

    // The trace after the selection of the input method.
    std::string AfterSelect(const std::string& script, const std::string& screen = "240x320") {
        const std::string trace = Trace("select\n" + script, "--screen " + screen);
        const std::string last = "Showing 0x0\n";
        return trace.substr(trace.find(last) + last.size());
    }
    // The same inside the open dialog.
    std::string InDialog(const std::string& script, const std::string& screen = "240x320") {
        const std::string trace = AfterSelect("options\n" + script, screen);
        EXPECT_TRUE(trace.starts_with(kShownAgain)) << trace;
        return trace.substr(kShownAgain.size());
    }
};

TEST_F(OptionsTest, OkHidesThePanelAndCancelLeavesIt) {
    EXPECT_EQ(AfterSelect("options\nclick 1\nwindows\n"),
              kShownAgain + kLeftByOk + "Window sip 0 214 240 80 shown=0\nWindow panel 0 0 240 80 shown=1\n");
    EXPECT_EQ(
        AfterSelect("options\nclick 2\nwindows\n"),
        kShownAgain + kLeftByCancel + "Window sip 0 214 240 80 shown=1\nWindow panel 0 0 240 80 shown=1\n");
}

TEST_F(OptionsTest, AnotherInputMethodIsReplacedAndOnlyOkRestoresIt) {
    const std::string opened =
        "Create 0x0\nSipShowIM flags=0x0\nSipSetCurrentIM " + kOwn + "\nSipShowIM flags=0x1\nShowing 0x0\n";
    EXPECT_EQ(Trace("create\noptions\nclick 1\n"),
              opened + "SipSetCurrentIM " + kOther + "\nSipShowIM flags=0x0\nUserOptionsDlg 0x0\n");
    EXPECT_EQ(Trace("create\noptions\nclick 2\n"), opened + kLeftByCancel);
}

TEST_F(OptionsTest, LineAndAboutTextFollowTheScreen) {
    const std::string portrait = InDialog("dialog\n", "240x320");
    EXPECT_EQ(LastLine(portrait, "Dialog"), "Dialog 0 0 240 320 \"\"");
    EXPECT_EQ(Place(portrait, 213), "0 24 240 1");
    EXPECT_EQ(Place(portrait, 212), "8 59 92 17");
    EXPECT_EQ(Place(portrait, 217), "21 160 198 37");

    // Just below "Use gestures": 59 + 5 * 17 / 4; the bottom stays. "Set as default" is above the text.
    for (const std::string& landscape :
         {InDialog("dialog\n", "320x240"), InDialog("screen 320 240\ndialog\n")}) {
        EXPECT_EQ(LastLine(landscape, "Dialog"), "Dialog 0 0 320 240 \"\"");
        EXPECT_EQ(Place(landscape, 213), "0 24 320 1");
        EXPECT_EQ(Place(landscape, 217), "21 80 278 117");
        EXPECT_LT(landscape.find("Control 214 "), landscape.find("Control 217 "));
    }

    const std::string large = InDialog("dialog\n", "480x640");
    EXPECT_EQ(LastLine(large, "Dialog"), "Dialog 0 0 480 640 \"\"");
    EXPECT_EQ(Place(large, 213), "0 49 480 1");
    EXPECT_EQ(Place(large, 217), "42 320 396 60");
}

TEST_F(OptionsTest, TheFocusLeavesTheTextOfASmallButtonReadable) {
    InDialog("screenshot before.png\nclick 219\nfile cancel\nscreenshot after.png\n");
    const Pixels before = ReadPng(Folder() / "before.png");
    const Pixels after = ReadPng(Folder() / "after.png");
    EXPECT_NE(before.values, after.values);
    // "+" is 15 x 15 pixels, from 194 x 35 on.
    for (int pixel = 0; pixel < 11 * 11; ++pixel) {
        const int x = 196 + pixel % 11;
        const int y = 37 + pixel / 11;
        EXPECT_EQ(before.At(x, y), after.At(x, y)) << x << ' ' << y;
    }
}

TEST_F(OptionsTest, OnlyOkWritesTheBoxesToTheRegistry) {
    const std::string values = GetSettings({"Swipe", "ExtSym", "UserSkins"});
    const std::string first = InDialog("dialog\nclick 212\nclick 211\nclick 2\n" + values);
    EXPECT_TRUE(HasParts(
        first, {"", "\"Use gestures\" enabled=1 checked=1\n", "\"Extended symbols\" enabled=1 checked=0\n",
                kLeftByCancel + Setting("Swipe", "dword 1") + Setting("ExtSym", "absent") +
                    Setting("UserSkins", "absent")}));
    EXPECT_EQ(InDialog("click 212\nclick 1\n" + values), kLeftByOk + Setting("Swipe", "dword 0") +
                                                             Setting("ExtSym", "dword 0") +
                                                             Setting("UserSkins", "multi"));
    const std::string last = InDialog("dialog\nclick 211\nclick 1\n" + values);
    EXPECT_TRUE(HasParts(
        last, {"", "\"Use gestures\" enabled=1 checked=0\n",
               Setting("Swipe", "dword 0") + Setting("ExtSym", "dword 1") + Setting("UserSkins", "multi")}));
}

TEST_F(OptionsTest, OkKeepsTheAccentedLettersAfterSetup) {
    const std::string trace =
        Trace("setup\nselect\noptions\ndialog\nclick 1\nshow\n" + kTapUmlaut + TapKey("[") + "text\n");
    EXPECT_TRUE(Control(trace, 211).ends_with("checked=1")) << trace;
    EXPECT_EQ(LastLine(trace, "Text"), "Text \"é\"");
    // Existing settings are not overwritten.
    EXPECT_EQ(Trace(Set(kSettings + "ExtSym", "dword 0") + "setup\n" + Get(kSettings + "ExtSym")),
              Setting("ExtSym", "dword 0"));
}

TEST_F(OptionsTest, ASkinForStrokesOnlyLocksTheBoxUntilAnotherSkinIsChosen) {
    InstallSkins({"B"});
    const std::string prepared =
        Set(kSettings + "Swipe", "dword 0") + Set(kSettings + "SwipeOnlySkin", "dword 0x3000");
    const std::string locked =
        AfterSelect(prepared + "options\nclick 212\ndialog\nclick 1\n" + Get(kSettings + "Swipe"));
    EXPECT_TRUE(Control(locked, 212).ends_with("enabled=0 checked=1")) << locked;
    EXPECT_EQ(LastLine(locked, "Reg"), "Reg " + kSettings + "Swipe dword 1");
    const std::string freed = AfterSelect(prepared + "options\nchoose 202 B\ndialog\n");
    EXPECT_TRUE(Control(freed, 212).ends_with("enabled=1 checked=1")) << freed;
}

TEST_F(OptionsTest, AChosenSkinIsSavedAndShownAtOnceAndStaysAfterCancel) {
    InstallSkins({"B"});
    const std::string values = GetSettings({"Skin", "ExtSym", "UserSkins"});
    const std::string saved = Setting("Skin", "sz \"\\\\windows\\\\B.tlk\"") + Setting("ExtSym", "dword 1") +
                              Setting("UserSkins", "multi");
    EXPECT_EQ(InDialog("click 211\nchoose 202 B\n" + values + "click 2\n" + values),
              kShownAgain + saved + kLeftByCancel + saved);
    EXPECT_TRUE(Has(InDialog("dialog\n"), "items=\"A|B\" selected=\"B\" index=1"));
}

TEST_F(OptionsTest, OfSkinsWhosePathsContainTheNameTheLastIsSaved) {
    InstallSkins({"Blue", "Blue2"});
    const std::string trace =
        InDialog("choose 202 Blue\n" + Get(kSettings + "Skin") + "click 2\noptions\ndialog\n");
    EXPECT_TRUE(HasParts(
        trace, {"", Setting("Skin", "sz \"\\\\windows\\\\Blue2.tlk\""), "selected=\"Blue2\" index=2", ""}));
}

TEST_F(OptionsTest, OfSkinsWithTheSameNameTheLastIsSelectedAndTheFirstDeleted) {
    InstallSkins({"B"});
    InstallSkins({"A"}, "More");
    const std::string trace = AfterSelect(Set(kSettings + "UserSkins", R"(multi \More\A.tlk)") +
                                          "options\ndialog\nclick 221\nclick 1\nclick 2\n");
    EXPECT_TRUE(Has(trace, "items=\"A|A|B\" selected=\"A\" index=1"));
    EXPECT_FALSE(HasFile("Windows/A.tlk"));
    EXPECT_TRUE(HasFile("More/A.tlk"));
}

TEST_F(OptionsTest, AnUnlistedSkinSelectsNothingAndOkSavesTheLastOne) {
    InstallSkins({"B"});
    const std::string trace = AfterSelect(Set(kSettings + "Skin", R"(sz \gone\C.tlk)") +
                                          "options\ndialog\nclick 221\nclick 1\n" + Get(kSettings + "Skin"));
    EXPECT_TRUE(Has(trace, "selected=\"\" index=-1"));
    EXPECT_FALSE(Has(trace, "MessageBox"));
    EXPECT_EQ(LastLine(trace, "Reg"), "Reg " + kSettings + R"(Skin sz "\\windows\\B.tlk")");
}

TEST_F(OptionsTest, ARejectedSkinWritesTheBoxesAndNotTheSkins) {
    InstallJunk("Junk");
    const std::string trace =
        InDialog("click 212\nclick 211\nchoose 202 Junk\nclick 1\n" +
                 GetSettings({"Skin", "Swipe", "ExtSym", "UserSkins"}) + "dialog\nclick 1\n");
    EXPECT_TRUE(HasParts(
        trace, {kWrongSkin + Setting("Skin", "sz \"\\\\windows\\\\A.tlk\"") + Setting("Swipe", "dword 0") +
                    Setting("ExtSym", "dword 1") + Setting("UserSkins", "absent"),
                "selected=\"Junk\"", kLeftByOk}));
}

TEST_F(OptionsTest, AScreenWithoutASkinRejectsAllAndStillDeletes) {
    InstallSkins({"B"});
    const std::string values = GetSettings({"Skin", "Swipe", "UserSkins"});
    const std::string trace = InDialog(
        "choose 202 B\nclick 1\n" + values + "click 221\nclick 1\ndialog\nclick 1\n" + values, "480x640");
    const std::string unsaved =
        Setting("Skin", "absent") + Setting("Swipe", "dword 1") + Setting("UserSkins", "absent");
    EXPECT_TRUE(HasParts(trace, {kWrongSkin + unsaved + Question("B") + "Dialog ",
                                 "items=\"A\" selected=\"A\" index=0", kLeftByOk + unsaved}));
    EXPECT_FALSE(HasFile("Windows/B.tlk"));
}

TEST_F(OptionsTest, AnAddedSkinIsListedAndStoredIfItIsOutsideTheFolder) {
    InstallSkins({"B"});
    InstallSkins({"Own"}, "My Skins");
    const std::string add = R"(click 219
file "\\My Skins\\Own.tlk"
click 1
click 219
file \WINDOWS\B.tlk
click 1
)";
    const std::string added = kOpenFile +
                              "MessageBox type=0x0 caption=\"\" text=\"\\\\My Skins\\\\Own.tlk\"\n" +
                              kOpenFile + "MessageBox type=0x0 caption=\"\" text=\"\\\\WINDOWS\\\\B.tlk\"\n";
    const std::string skins = Get(kSettings + "UserSkins");
    EXPECT_EQ(InDialog(add + skins + "click 2\n"), added + Setting("UserSkins", "absent") + kLeftByCancel);
    EXPECT_TRUE(HasParts(InDialog(add + "dialog\nclick 1\n" + skins + "options\ndialog\n"),
                         {"", "items=\"A|B|B|Own\" selected=\"A\" index=0",
                          kLeftByOk + Setting("UserSkins", "multi \"\\\\My Skins\\\\Own.tlk\""),
                          "items=\"A|B|Own\" selected=\"A\" index=0", ""}));
}

TEST_F(OptionsTest, NothingIsAddedWithoutAFile) {
    EXPECT_TRUE(HasParts(InDialog("click 219\nfile cancel\ndialog\nclick 1\n"),
                         {kOpenFile + "Dialog", "items=\"A\" selected=\"A\" index=0", kLeftByOk}));
}

TEST_F(OptionsTest, AnAddedSkinWhoseFileIsGoneLeavesTheListAtTheNextSave) {
    const std::string values = Get(kSettings + "UserSkins");
    const std::string trace =
        AfterSelect(Set(kSettings + "UserSkins", R"(multi \gone\C.tlk)") + "options\ndialog\nclick 2\n" +
                    values + "options\nclick 1\n" + values);
    EXPECT_TRUE(HasParts(trace, {"", "items=\"A\"", Setting("UserSkins", "multi \"\\\\gone\\\\C.tlk\""),
                                 Setting("UserSkins", "multi")}));
}

TEST_F(OptionsTest, DeletingAsksAndSelectsAnotherSkin) {
    InstallSkins({"B", "C"});
    // After deleting the first item the next one is selected, otherwise the first.
    const std::string first = InDialog("click 221\nclick 1\ndialog\n" + Get(kSettings + "Skin"));
    EXPECT_TRUE(
        HasParts(first, {Question("A") + kShownAgain + "Dialog ", "items=\"B|C\" selected=\"B\" index=0",
                         Setting("Skin", R"(sz "\\windows\\B.tlk")"), ""}));
    EXPECT_TRUE(HasParts(
        InDialog("choose 202 C\nclick 221\nclick 1\ndialog\n"),
        {kShownAgain + Question("C") + kShownAgain + "Dialog ", "items=\"B\" selected=\"B\" index=0", ""}));
    EXPECT_EQ(
        InDialog("click 221\nclick 1\nclick 2\n"),
        "MessageBox type=0x10 caption=\"Tolka 7\" text=\"Last skin can't be deleted\"\n" + kLeftByCancel);
    EXPECT_TRUE(!HasFile("Windows/A.tlk") && HasFile("Windows/B.tlk") && !HasFile("Windows/C.tlk"));
}

TEST_F(OptionsTest, SkinsThatShipAreChosenAndDeletedByTheirNames) {
    std::string chosen, expected;
    for (const auto& entry : fs::directory_iterator(SKINS "/240x320")) {
        const std::string name = entry.path().stem().string();
        chosen += "choose 202 " + name + '\n' + Get(kSettings + "Skin");
        expected += kShownAgain + Setting("Skin", "sz \"\\\\windows\\\\" + name + ".tlk\"");
    }
    const std::string select = "skins \"" SKINS "\"\nselect\n";
    EXPECT_TRUE(Has(Trace(select + "options\n" + chosen), expected));
    Trace(select + "options\nchoose 202 german-240x320\nclick 221\nclick 1\n");
    for (const auto& entry : fs::directory_iterator(SKINS "/240x320")) {
        const std::string file = entry.path().filename().string();
        EXPECT_EQ(HasFile("Windows/" + file), file != "german-240x320.tlk") << file;
    }
}

TEST_F(OptionsTest, ARefusedQuestionChangesNothing) {
    InstallSkins({"B"});
    const std::string trace =
        InDialog("objects\nclick 221\nclick 2\nobjects\ndialog\nclick 2\n" + Get(kSettings + "UserSkins"));
    const std::string counts = LastLine(trace, "Objects") + '\n';
    EXPECT_TRUE(HasParts(trace, {counts + Question("A") + counts + "Dialog ",
                                 "items=\"A|B\" selected=\"A\" index=0", Setting("UserSkins", "absent")}));
    EXPECT_TRUE(HasFile("Windows/A.tlk"));
}

TEST_F(OptionsTest, ASkinThatCannotBeDeletedIsListedAgainAtTheNextOpening) {
    InstallSkins({"B"});
    const std::string trace = InDialog(
        "readonly \\Windows\\A.tlk\nclick 221\nclick 1\nclick 2\ndialog\nclick 2\noptions\ndialog\n");
    EXPECT_TRUE(
        HasParts(trace, {Question("A") + kShownAgain +
                             "MessageBox type=0x1 caption=\"Tolka 7\" text=\"LastError: 5 \"\nDialog ",
                         "items=\"B\" selected=\"B\" index=0", "items=\"A|B\" selected=\"B\" index=1", ""}));
    EXPECT_TRUE(HasFile("Windows/A.tlk"));
}

TEST_F(OptionsTest, SetAsDefaultSavesAndRestoresThePreviousDefault) {
    const std::string values = Get(kSip + "DefaultIm") + Get(kSip + "PrevIMClsid");
    const auto pair = [](const std::string& now, const std::string& before) {
        return "Reg " + kSip + "DefaultIm sz \"" + now + "\"\nReg " + kSip + "PrevIMClsid " + before + '\n';
    };
    // Without a default none is saved or restored.
    EXPECT_EQ(InDialog("click 214\n" + values + "click 214\n" + values + "click 2\n"),
              pair(kOwn, "absent") + pair(kOwn, "absent") + kLeftByCancel);
    const std::string checked = InDialog("dialog\n");
    EXPECT_TRUE(Control(checked, 214).ends_with("enabled=1 checked=1")) << checked;

    const std::string kept =
        AfterSelect(Set(kSip + "DefaultIm", "sz " + kOther) + "options\ndialog\nclick 214\n" + values +
                    "click 214\n" + values + "click 2\n");
    EXPECT_TRUE(Control(kept, 214).ends_with("enabled=1 checked=0")) << kept;
    const std::string before = "sz \"" + kOther + '"';
    EXPECT_TRUE(kept.ends_with(pair(kOwn, before) + pair(kOther, before) + kLeftByCancel)) << kept;
}

TEST_F(OptionsTest, TheDefaultIsComparedAsAnIdentifier) {
    const auto box = [this](const std::string& text) {
        return Control(AfterSelect(Set(kSip + "DefaultIm", "sz " + text) + "options\ndialog\n"), 214);
    };
    EXPECT_TRUE(box("{5c1e0b7a-93d4-4f28-b6a1-2d7e4c9f8a30}").ends_with("checked=1"));
    EXPECT_TRUE(box("tolka").ends_with("checked=0"));
}

TEST_F(OptionsTest, TheAboutTextIsReadAtEachOpeningAndShowsOnce) {
    const std::string opening = "options\ndialog\nclick 2\n";
    const std::string trace = AfterSelect(opening + opening);
    const std::string about = Control(trace, 217);
    EXPECT_TRUE(Has(about, R"(, Tolka Project\nBuild: 0, 1, 0, 12" enabled=1)"));
    EXPECT_EQ(LastLine(trace, "Control 217"), about);
    // Without the file the code page is 1252 again, for which the previous block has no texts.
    const std::string later =
        AfterSelect(opening + "delete \\Windows\\tolka.dll\noptions\ndialog\nclick 221\n");
    EXPECT_TRUE(Has(LastLine(later, "Control 217"), R"( ", \nBuild: " enabled=1)"));
    EXPECT_EQ(LastLine(later, "MessageBox"),
              "MessageBox type=0x10 caption=\"\" text=\"Last skin can't be deleted\"");
}

TEST_F(OptionsTest, OpeningItFiftyTimesLeaksNothing) {
    InstallSkins({"B"});
    const std::string twice =
        "options\nchoose 202 B\nchoose 202 A\nclick 1\noptions\nclick 221\nclick 2\nclick 2\n";
    std::string script = twice + "objects\n";
    for (int count = 1; count < 25; ++count)
        script += twice;
    const std::string trace = AfterSelect(script + "objects\nunload\nobjects\n");
    const std::size_t first = trace.find("Objects");
    const std::string counts = trace.substr(first, trace.find('\n', first) + 1 - first);
    EXPECT_TRUE(Has(counts, " fonts=1 windows=1 modules=1 keys=0 finds=0 "));
    EXPECT_TRUE(Has(trace, counts + "Unload 0x0\nObjects bitmaps=0 dcs=0 fonts=0 windows=0 modules=0 keys=0 "
                                    "finds=0 "));
}

TEST_F(OptionsTest, ASecondDialogInsideTheFirstIsRefused) {
    InstallSkins({"B"});
    const SimulatorResult result = Run("select\noptions\nclick 221\noptions\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(Has(result.errors, "s:4: "));
}

}  // namespace
