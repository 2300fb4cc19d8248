// SPDX-License-Identifier: MIT
// The handheld in its window, used from outside with the pointer and the keys of a desktop.
#include <chrono>
#include <csignal>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <thread>

#include "desktop.h"
#include "simulator_run.h"

namespace fs = std::filesystem;

namespace {

class WindowTest : public SimulatorTest {
protected:
    WindowTest() : m_desktop(Folder()) { m_desktop.Enter(); }
    void SetUp() override { ASSERT_TRUE(m_desktop.IsReady()) << "Xvfb: " << ReadText(Folder() / "server"); }

    // Starts the window on the test's device, with a trace and all skins; the first one is in use.
    void Start(const std::string& more = {}) {
        std::vector<std::string> words = {SIMULATOR, "--device", "device", "--skins", SKINS, "--trace"};
        std::istringstream rest(more);
        for (std::string word; rest >> word;)
            words.push_back(word);
        fs::remove(Folder() / "out");  // from the last run
        m_simulator = std::make_unique<Process>(words, Folder(), Folder() / "out", Folder() / "err");
        ASSERT_TRUE(AwaitTrace("Showing 0x0\n")) << ReadText(Folder() / "err");
        // The title is complete once the window has its place.
        ASSERT_TRUE(Await([this] { return m_desktop.WindowPlace("Tolka[ :]").width > 0; }));
        m_desktop.Run("search --onlyvisible --name '^Tolka' windowfocus --sync");
    }

    std::string Out() const { return ReadText(Folder() / "out"); }
    bool AwaitTrace(const std::string& text) const {
        return Await([&] { return Out().find(text) != std::string::npos; });
    }
    Desktop::Place Place() const { return m_desktop.WindowPlace("Tolka"); }
    void Key(const std::string& name) { m_desktop.Run("key " + name); }

    // xdotool's words to move the pointer to this pixel of an upright screen of 240 pixels.
    std::string PointerAt(int x, int y) const {
        const Desktop::Place place = Place();
        const int scale = place.width / 240;
        return "mousemove " + std::to_string(place.x + x * scale + scale / 2) + ' ' +
               std::to_string(place.y + y * scale + scale / 2) + ' ';
    }
    void Tap(int x, int y) { m_desktop.Run(PointerAt(x, y) + "mousedown 1 mouseup 1"); }
    void Stroke(int x, int y, int right, int down) {
        m_desktop.Run(PointerAt(x, y) + "mousedown 1 " + PointerAt(x + right, y + down) + "mouseup 1");
    }
    // Taps keys of full skins, upright: the panel begins at row 214 on a screen 240 pixels wide; on others it
    // is scaled.
    void TapKeys(const std::string& keys) {
        std::istringstream commands(KeyTaps(keys));
        std::string tap;
        for (int x = 0, y = 0; commands >> tap >> x >> y;)
            Tap(x, 214 + y);
    }

    // Takes a screenshot by its key and compares it with the desktop. The time in the title bar may change in
    // between.
    bool ShowsItsScreen() {
        for (int number = 1; number <= 3; ++number) {
            const fs::path file = Folder() / ("tolka-" + std::to_string(number) + ".png");
            Key("F5");
            Pixels screen;
            if (!Await([&] { return !(screen = ReadPng(file)).values.empty(); })) return false;
            for (int attempt = 0; attempt < 20; ++attempt) {
                const Desktop::Place place = Place();
                const Pixels expected = Enlarge(screen, place.width / screen.width);
                if (expected.height == place.height &&
                    ShowsAt(m_desktop.Picture(), place.x, place.y, expected))
                    return true;
            }
        }
        return false;
    }

    Desktop m_desktop;
    std::unique_ptr<Process> m_simulator;
};

std::string Delivered(char16_t character) {
    std::ostringstream line;
    line << "count=1 shift=0x80 char=0x" << std::hex << static_cast<unsigned>(character) << '\n';
    return line.str();
}

TEST_F(WindowTest, TypedTextArrivesAndIsShownEnlarged) {
    Start();
    EXPECT_EQ(Place().width, 720);
    EXPECT_EQ(Place().height, 960);
    TapKeys("pen");
    EXPECT_TRUE(AwaitTrace(Delivered(u'n')));
    EXPECT_TRUE(ShowsItsScreen());
    const Desktop::Place upright = Place();
    Key("F2");
    EXPECT_TRUE(AwaitTrace("ReceiveSipInfo 0x0 rect=0,134,320,214\n"));
    EXPECT_TRUE(Await([&] { return Place().width > upright.width; }));
    EXPECT_TRUE(Await([this] { return Place().width * 3 == Place().height * 4; }));
    EXPECT_TRUE(ShowsItsScreen());
    EXPECT_EQ(m_simulator->End(SIGTERM), 0);
}

// A desktop of 1280 x 1024.
TEST_F(WindowTest, AScreenTallerThanTheMonitorIsShownSmaller) {
    Start("--record record --screen 600x1200");
    const Desktop::Place place = Place();
    EXPECT_LE(place.height, 1024);
    EXPECT_NEAR(place.width * 2, place.height, 2);
    m_desktop.Run("mousemove " + std::to_string(place.x) + ' ' + std::to_string(place.y + place.height - 1) +
                  " mousedown 1");
    EXPECT_TRUE(
        Await([&] { return ReadText(Folder() / "record").find("\npen down 0 119") != std::string::npos; }));
}

TEST_F(WindowTest, ATooGreatScaleIsReducedToTheMonitor) {
    Start("--scale 8");
    EXPECT_EQ(Place().height, 960);
    EXPECT_TRUE(Has(ReadText(Folder() / "err"), "no room for --scale 8"));
}

TEST_F(WindowTest, ASecondTapInTimeIsADoubleTap) {
    Start("--scale 1 --record record");
    m_desktop.Run(PointerAt(15, 269) + "mousedown 1 mouseup 1 mousedown 1 mouseup 1");
    TapKeys("ab");
    EXPECT_TRUE(AwaitTrace("char=0x42\n")) << "Shift twice locks the capitals\n" << Out();
    EXPECT_TRUE(Has(Out(), "char=0x41\n"));
    EXPECT_TRUE(Has(ReadText(Folder() / "record"), "\ndown 15 55\nup 15 55\ndblclk 15 55\nup 15 55\n"));
}

TEST_F(WindowTest, ARecordingReplaysTheSession) {
    MakeFewSkins();
    Start("--skins skins --prefer greek --record record --screen 320x240");
    Key("F2");
    ASSERT_TRUE(Await([this] { return Place().width < Place().height; }));
    Stroke(27, 237, 40, 0);  // a space
    Stroke(44, 237, 0, 85);  // leaves the window: Enter
    TapKeys("ab");
    Tap(60, 310);   // the Edit menu
    Tap(60, 286);   // Select all
    TapKeys("c");   // replaces the text
    Tap(215, 310);  // hides the keyboard
    ASSERT_TRUE(AwaitTrace("Hiding 0x0\n"));
    EXPECT_TRUE(Has(Out(), "SendVirtualKey vk=0xd "));
    Tap(215, 310);
    Key("F4");
    Key("F3");
    ASSERT_TRUE(AwaitTrace("rect=0,428,480,588\n"));
    ASSERT_TRUE(Await([this] { return m_desktop.WindowPlace("Tolka 480 x 640").width == 480; }));
    TapKeys("d");
    ASSERT_TRUE(AwaitTrace(Delivered(u'd')));
    m_simulator->End(SIGKILL);

    const std::string trace = Out();
    fs::rename(Device(), Folder() / "played");
    const SimulatorResult replay =
        Run(ReadText(Folder() / "record") + "text\nreg get HKLM\\Software\\Tolka\\7.0 Skin\n");
    EXPECT_EQ(replay.status, 0) << replay.errors;
    EXPECT_EQ(replay.trace, trace +
                                "Text \"cd\"\nReg HKLM\\Software\\Tolka\\7.0 Skin sz "
                                "\"\\\\windows\\\\german-480x640.tlk\"\n");
}

// The time in the title bar is updated once a minute.
TEST_F(WindowTest, AnIdleHandheldSleeps) {
    Start();
    ASSERT_TRUE(ShowsItsScreen());
    const fs::path process = fs::path("/proc") / std::to_string(m_simulator->Id());
    const auto wakeUps = [&] {
        std::smatch found;
        const std::string status = ReadText(process / "status");
        const bool known =
            std::regex_search(status, found, std::regex("\nvoluntary_ctxt_switches:\\s+(\\d+)"));
        return known ? std::stoi(found[1]) : -1;
    };
    // After it has settled, it uses no processor time for a second. The only test that depends on real time.
    bool slept = false;
    for (int second = 0; second < 30 && !slept; ++second) {
        const int before = wakeUps();
        ASSERT_GE(before, 0);
        std::this_thread::sleep_for(std::chrono::seconds(1));
        slept = wakeUps() == before;
    }
    EXPECT_TRUE(slept);
}

TEST_F(WindowTest, TheListOfKeysCoversTheScreenAndCloses) {
    Start();
    ASSERT_TRUE(ShowsItsScreen());
    const Desktop::Place place = Place();
    const auto corner = [&] { return m_desktop.Picture().At(place.x, place.y); };
    const std::uint32_t title = corner();
    Key("F1");
    EXPECT_TRUE(Await([&] { return corner() != title; }));
    Tap(27, 237);  // only closes the list
    EXPECT_TRUE(Await([&] { return corner() == title; }));
    TapKeys("a");
    EXPECT_TRUE(AwaitTrace(Delivered(u'a')));
    EXPECT_FALSE(Has(Out(), "char=0x71"));
}

TEST_F(WindowTest, OnlyOneWindowUsesADevice) {
    Start();
    const SimulatorResult script = Run("text\n");
    EXPECT_EQ(script.status, 2);
    EXPECT_TRUE(Has(script.errors, "another simulator is using the device"));
    EXPECT_EQ(m_simulator->End(SIGTERM), 0);
    EXPECT_EQ(Trace("text\n"), "Text \"\"\n");
}

TEST_F(WindowTest, AKeyHeldWhileTheWindowOpensDoesNotQuitIt) {
    Start();
    Process second({SIMULATOR, "--device", "second", "--screen", "480x640"}, Folder(), Folder() / "out2",
                   Folder() / "err2");
    ASSERT_TRUE(Await([this] { return m_desktop.WindowPlace("Tolka 480").width > 0; }));
    m_desktop.Run("search --onlyvisible --name '^Tolka 240' windowfocus --sync");
    Key("F2");
    ASSERT_TRUE(AwaitTrace("rect=0,134,320,214\n"));
    m_desktop.Run("keydown F10");
    m_desktop.Run("search --onlyvisible --name '^Tolka 480' windowfocus --sync");
    m_desktop.Run("keyup F10");
    EXPECT_TRUE(Await([this] { return m_desktop.WindowPlace("Tolka 320").width == 0; })) << "it saw the key";
    EXPECT_EQ(second.End(SIGTERM), 0);
}

TEST_F(WindowTest, TheChosenSkinIsKeptOnEveryScreenAndInTheNextRun) {
    MakeFewSkins();
    Start("--skins skins --screen 480x640 --choose german-thumbs --prefer greek");
    const auto shows = [this](const std::string& title) {
        return Await([&] { return m_desktop.WindowPlace("Tolka" + title).width > 0; });
    };
    EXPECT_TRUE(shows(" 480 x 640 german-thumbs "));
    Key("F3");
    EXPECT_TRUE(shows(": There is no skin .german-thumbs. for this screen; .greek. stands"));
    EXPECT_EQ(m_simulator->End(SIGTERM), 0);
    Start();
    EXPECT_TRUE(shows(" 240 x 320 german-thumbs "));
}

TEST_F(WindowTest, TheTextIsThereAgainInTheNextRun) {
    const fs::path notes = Device() / "My Documents" / "Notes.txt";
    Start();
    TapKeys("ab");
    ASSERT_TRUE(AwaitTrace(Delivered(u'b')));
    EXPECT_EQ(m_simulator->End(SIGTERM), 0);
    EXPECT_EQ(ReadText(notes), "ab");
    Start();
    TapKeys("cd");
    const auto hasSaved = [&] {
        m_desktop.Run("mousemove_relative 1 0");
        return ReadText(notes) == "abcd";
    };
    EXPECT_TRUE(Await(hasSaved)) << "without quitting or resting too";
    m_simulator->End(SIGKILL);
    EXPECT_EQ(Trace("text\nnotes\ntext\n"), "Text \"\"\nText \"abcd\"\n");

    std::ofstream(notes) << "\xFF";
    Start();
    EXPECT_TRUE(Has(ReadText(Folder() / "err"), "Notes.txt is not UTF-8"));
    TapKeys("d");
    ASSERT_TRUE(AwaitTrace(Delivered(u'd')));
    EXPECT_EQ(m_simulator->End(SIGTERM), 0);
    EXPECT_EQ(ReadText(notes), "\xFF");

    fs::remove_all(notes.parent_path());
    std::ofstream(notes.parent_path()) << "in its way";
    Start();
    TapKeys("e");
    ASSERT_TRUE(AwaitTrace(Delivered(u'e')));
    EXPECT_EQ(m_simulator->End(SIGTERM), 1);
    EXPECT_TRUE(Has(ReadText(Folder() / "err"), "cannot make the folder"));
}

TEST_F(WindowTest, ReasonsForNotStartingAreReportedAtOnce) {
    fs::create_directories(Folder() / "full");
    std::ofstream(Folder() / "full" / "Windows") << "in the way";
    std::ofstream(Folder() / "broken.tlk") << "no skin";
    for (const auto& [options, message] :
         std::initializer_list<std::pair<std::vector<std::string>, std::string>>{
             {{"--record", "nowhere/record"}, "cannot write the recording nowhere/record\n"},
             {{"--skins", SKINS, "--choose", "grek"},
              "there is no skin \"grek\" for a screen of 240x320; there are: "},
             {{"--skin", "broken.tlk"}, "broken.tlk is no skin"},
             {{"--skin", SKINS "/480x640/german-480x640.tlk"},
              "there is no skin \"german-480x640\" for a screen of 240x320; there are: "},
             {{"--device", "full"}, "cannot make the folder "}}) {
        std::vector<std::string> words = {SIMULATOR, "--device", "device"};
        words.insert(words.end(), options.begin(), options.end());
        Process simulator(words, Folder(), Folder() / "out", Folder() / "err");
        EXPECT_EQ(simulator.Wait(), 2) << message;
        EXPECT_TRUE(Has(ReadText(Folder() / "err"), message));
        EXPECT_EQ(ReadText(Folder() / "out"), "");
    }
}

TEST_F(SimulatorTest, WithoutADisplayTheWindowSaysWhatToDoInstead) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
        unsetenv(variable);
    Process simulator({SIMULATOR, "--device", "device"}, Folder(), Folder() / "out", Folder() / "err");
    EXPECT_EQ(simulator.Wait(), 2);
    EXPECT_TRUE(Has(ReadText(Folder() / "err"), "--script FILE"));
    EXPECT_EQ(Run("text\n", "--record r").status, 2);
}

}  // namespace
