// SPDX-License-Identifier: MIT
// The SIP's calls, the pen and the windows, in whole sessions.
#include <fstream>
#include <iterator>
#include <regex>

#include "simulator_run.h"

namespace {

class SessionTest : public SimulatorTest {
protected:
    SessionTest() { InstallSkin(); }
};

// The trace without the button images.
std::string WithoutImages(const std::string& trace) {
    return std::regex_replace(trace, std::regex(" (narrow|wide|lists)=-?[0-9]+"), "");
}

TEST_F(SessionTest, FromCreateToUnload) {
    const std::string trace =
        Trace("create\nwindows\nselect\nwindows\n" + TapKey("q") +
              "text\ninfo\nhide\nhide\nshow\nwindows\ndeselect\nwindows\nunload\nobjects\n");
    EXPECT_EQ(WithoutImages(trace),
              "Create 0x0\n"
              "Window sip 0 214 240 80 shown=0\n"
              "Window panel none\n"
              "Select 0x0\n"
              "GetInfo 0x0 size=40 flags=0x2\n"
              "ReceiveSipInfo 0x0 rect=0,214,240,294\n"
              "Showing 0x0\n"
              "Window sip 0 214 240 80 shown=1\n"
              "Window panel 0 0 240 80 shown=1\n"
              "Capture on\n"
              "SendCharEvents vk=0x51 flags=0x80 count=1 shift=0x80 char=0x71\n"
              "SendCharEvents vk=0x51 flags=0x10000 count=1 shift=0x10000 char=0x71\n"
              "Capture off\n"
              "Text \"q\"\n"
              "ReceiveSipInfo 0x0 rect=0,214,240,294\n"
              "Hiding 0x0\n"
              "Hiding 0x0\n"
              "Showing 0x0\n"
              "Window sip 0 214 240 80 shown=1\n"
              "Window panel 0 0 240 80 shown=1\n"
              "Deselect 0x0\n"
              "Window sip 0 214 240 80 shown=1\n"
              "Window panel none\n"
              "Unload 0x0\n"
              "Objects bitmaps=0 dcs=0 fonts=0 windows=0 modules=0 keys=0 finds=0\n");
}

TEST_F(SessionTest, UnloadWhileSelectedLeavesNothingOpen) {
    const std::string none =
        "Unload 0x0\nObjects bitmaps=0 dcs=0 fonts=0 windows=0 modules=0 keys=0 finds=0 ";
    EXPECT_TRUE(
        HasParts(Trace("select\ndown 27 23\nobjects\nunload\nobjects\nselect\ndeselect\nunload\nobjects\n"),
                 {"", "windows=1 modules=1", "Capture off\n" + none, "Deselect 0x0\n" + none, ""}));
}

TEST_F(SessionTest, TheCaptureKeepsThePenOutsideThePanel) {
    const std::string trace =
        Trace("select\ndown 27 23\nmove 27 -100\nup 27 -100\ndown 27 -100\nup 27 -100\ntext\n");
    const std::string calls = trace.substr(trace.find("Showing 0x0\n") + 12);
    // An upward stroke types the other case; the second pen-down is in the edit field.
    EXPECT_EQ(calls,
              "Capture on\n"
              "SendCharEvents vk=0x51 flags=0x20000080 count=1 shift=0x20000080 char=0x51\n"
              "SendCharEvents vk=0x51 flags=0x20010000 count=1 shift=0x20010000 char=0x51\n"
              "Capture off\n"
              "Text \"Q\"\n");
}

TEST_F(SessionTest, DeselectAndSelectCanBeRepeatedAndWithoutACallbackNoKeyArrives) {
    const std::string trace =
        Trace("select\n" + TapKey("a") + "deselect\n" + TapKey("b") + "select\n" + TapKey("c") +
              "callback off\n" + TapKey("d") + "callback on\n" + TapKey("e") + "text\n");
    EXPECT_TRUE(trace.ends_with("Text \"ace\"\n")) << trace;
    EXPECT_FALSE(Has(trace.substr(1), "Create"));
    EXPECT_FALSE(Has(trace, "char=0x64"));
}

TEST_F(SessionTest, TheSipKeepsItsHeightWhenTheScreenTurns) {
    EXPECT_TRUE(HasParts(Trace("select\nscreen 320 240\nwindows\ndeselect\nscreen 240 320\nwindows\n"),
                         {"",
                          "ReceiveSipInfo 0x0 rect=0,134,320,214\nWindow sip 0 134 320 80 shown=1\n"
                          "Window panel 0 0 320 80 shown=1\nDeselect 0x0\nWindow sip 0 214 240 80 shown=1\n",
                          ""}));
}

TEST_F(SessionTest, TheFirstRectangleFollowsTheScreen) {
    for (const auto& [screen, rectangle] : std::initializer_list<std::pair<std::string, std::string>>{
             {"480x640", "0 428 480 160"}, {"640x480", "0 268 640 160"}, {"241x241", "0 162 241 60"}}) {
        EXPECT_EQ(Trace("windows\n", "--screen " + screen),
                  "Window sip " + rectangle + " shown=0\nWindow panel none\n");
    }
}

TEST_F(SessionTest, ShowingCorrectsTheHeightOfAMovedSip) {
    const std::string trace = Trace("select\nsip 10 150 200 250\nwindows\nshow\nwindows\ninfo\n");
    EXPECT_TRUE(Has(trace, "Window sip 10 150 190 100 shown=1"));
    EXPECT_EQ(LastLine(trace, "Window sip"), "Window sip 0 150 240 80 shown=1");
    EXPECT_EQ(LastLine(trace, "ReceiveSipInfo"), "ReceiveSipInfo 0x0 rect=0,150,240,230");
}

TEST_F(SessionTest, PicturesShowTheVisiblePanel) {
    Trace("select\nscreenshot all.png\nscreenshot panel panel.png\nhide\nscreenshot panel hidden.png\n");
    const auto bytes = [this](const char* name) {
        std::ifstream file(Folder() / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    // Width and height are at byte 16, followed by bit depth and colour type (2: RGB).
    EXPECT_EQ(bytes("all.png").substr(16, 10), std::string("\0\0\0\xF0\0\0\x01\x40\x08\x02", 10));
    EXPECT_EQ(bytes("panel.png").substr(16, 10), std::string("\0\0\0\xF0\0\0\0\x50\x08\x02", 10));
    EXPECT_GT(bytes("panel.png").size(), bytes("hidden.png").size());
}

TEST_F(SessionTest, TheDemonstrationTypesItsSentence) {
    std::ifstream script(DEMONSTRATION);
    const std::string trace =
        Trace(std::string(std::istreambuf_iterator<char>(script), {}), "--skin '" STANDARD_SKIN "'");
    EXPECT_EQ(LastLine(trace, "Text"), "Text \"Hello, TOLKA 2024 café 12.50€\\nSchöne Grüße, ok!\"");
    EXPECT_TRUE(std::filesystem::exists(Folder() / "portrait.png"));
    EXPECT_TRUE(std::filesystem::exists(Folder() / "landscape.png"));
}

}  // namespace
