// SPDX-License-Identifier: MIT
#include <poll.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "command.h"
#include "compile_source.h"
#include "errors.h"
#include "file.h"
#include "file_watch.h"
#include "moves.h"
#include "png_file.h"
#include "preview.h"
#include "running_simulator.h"

namespace tlk {
namespace {

namespace fs = std::filesystem;

// Waits for quiet, as editors write a file in several steps.
constexpr int kMillisecondsOfQuiet = 60;
// Waits at most this long, as a signal may arrive just before a wait begins.
constexpr int kMillisecondsToLook = 1000;

struct Arguments {
    std::string source;
    std::string screen;
    std::string simulator;
    std::string font = TLK_FONT;
};

volatile std::sig_atomic_t g_isInterrupted = 0;

void Interrupt(int) { g_isInterrupted = 1; }

// Signals only make waiting calls return. The simulator's pipes may break at any time.
void HandleSignals() {
    struct sigaction action {};
    action.sa_handler = Interrupt;
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);
}

class Watcher {
public:
    explicit Watcher(const Arguments& arguments)
        : m_arguments(arguments),
          m_skinPath(m_folder.Path(fs::path(arguments.source).stem().string() + ".tlk")) {}

    Status Run() {
        Rebuild();
        while (!g_isInterrupted && !m_hasEnded)
            WaitForChange();
        return Done;
    }

private:
    void WaitForChange() {
        pollfd waits[] = {{m_watch.Descriptor(), POLLIN, 0},
                          {m_simulator ? m_simulator->Output() : -1, POLLIN, 0}};
        if (poll(waits, 2, kMillisecondsToLook) <= 0) return;
        if (waits[1].revents != 0) m_hasEnded = !m_simulator->IsRunning();
        if (waits[0].revents == 0 || !m_watch.TakeChange()) return;
        while (poll(waits, 1, kMillisecondsOfQuiet) > 0)
            static_cast<void>(m_watch.TakeChange());
        if (!g_isInterrupted) Rebuild();
    }

    CompiledSource Compile() {
        const ReadsWatched watched(m_watch);
        return CompileSource(m_arguments.source, m_arguments.screen, m_arguments.font);
    }

    // Prints mistakes and keeps the last good skin.
    void Rebuild() {
        try {
            const CompiledSource compiled = Compile();
            const Bytes file = WriteModule(compiled.resources);
            WriteFile(m_skinPath, file);
            const Module module = Module::Parse(file);
            const std::string screen = compiled.skin.screen ? Text(*compiled.skin.screen) : std::string();
            PrintRemarks({module, m_arguments.source, screen, &compiled.skin.places}, "warning: ", std::cout);
            Show(ReadSkin(module), screen);
            std::cout << m_arguments.source << ": built; waiting for changes, Ctrl-C ends" << std::endl;
        } catch (const FileError& error) {
            std::cout << error.what() << '\n'
                      << m_arguments.source << ": "
                      << (m_simulator ? "not built, the last good skin stays"
                                      : "not built; waiting for changes")
                      << std::endl;
        }
    }

    void Show(SkinModule skin, const std::string& screen) {
        // Another screen needs another handheld.
        if (screen != m_screen) m_simulator.reset();
        m_screen = screen;
        if (!m_simulator) {
            std::vector<std::string> options{
                "--device", m_folder.Path("device"), "--skin", m_skinPath, "--trace", "--commands"};
            if (!screen.empty()) options.insert(options.end(), {"--screen", screen});
            m_simulator = std::make_unique<RunningSimulator>(m_arguments.simulator, options);
            m_hasEnded = !m_simulator->Do({});
            // It has printed why.
            if (m_hasEnded && !g_isInterrupted)
                throw std::runtime_error(m_arguments.simulator + ": ended before it showed the skin");
        } else {
            const View view = TakeView();
            m_hasEnded = !m_simulator->Do({"deselect", "skin put " + m_skinPath, "select"}) ||
                         !Lead(skin, view.isLandscape, 0, view.latches);
        }
        m_skin = std::move(skin);
    }

    // Returns what is latched, and releases it: a language without a key in the next skin would stay.
    View TakeView() {
        std::optional<View> view = PresentView();
        if (!view) return {};
        // The digit keyboard does not show the other latched keys.
        const Latches digits = view->latches & latch::kDigits;
        if (digits) {
            Lead(m_skin, view->isLandscape, view->latches, view->latches & ~latch::kDigits);
            view = PresentView();
            if (!view) return {};
        }
        Lead(m_skin, view->isLandscape, view->latches, 0);
        view->latches |= digits;
        return *view;
    }

    // Selects as much of the state as the skin has keys for; false if the simulator has ended.
    bool Lead(const SkinModule& skin, bool isLandscape, Latches from, Latches to) {
        const BoardKind board = isLandscape ? BoardKind::Landscape : BoardKind::Portrait;
        const Size panel = skin.Board(board).picture.GetSize();
        const Moves moves(skin.KeyboardOf(board), MapHits(skin, board, panel),
                          MapHits(skin, BoardKind::Digits, panel));
        std::vector<std::string> commands;
        for (const Move& move : moves.PathTowards(from, to))
            std::ranges::move(CommandsOf(move), std::back_inserter(commands));
        return m_simulator->Do(commands);
    }

    static std::vector<std::string> CommandsOf(const Move& move) {
        const auto at = [](const Point& point) {
            return ' ' + std::to_string(point.x) + ' ' + std::to_string(point.y);
        };
        if (move.gesture == Gesture::Tap) return {"tap" + at(move.point)};
        if (move.gesture == Gesture::DoubleTap) return {"double" + at(move.point)};
        const Point end = StrokeEnd(move.point);
        return {"down" + at(move.point), "move" + at(end), "up" + at(end)};
    }

    std::optional<View> PresentView() {
        const std::string picture = m_folder.Path("panel.png");
        std::error_code ignored;
        fs::remove(picture, ignored);
        if (!m_simulator->Do({"screenshot panel " + picture}) || !fs::exists(picture)) return std::nullopt;
        return FindView(m_skin, DecodePng(ReadFile(picture)).picture);
    }

    const Arguments& m_arguments;
    const TemporaryFolder m_folder;
    const std::string m_skinPath;
    FileWatch m_watch;
    // The skin that the simulator shows.
    SkinModule m_skin;
    std::string m_screen;
    std::unique_ptr<RunningSimulator> m_simulator;
    bool m_hasEnded = false;
};

// The simulator from the build of this program.
std::string BuiltSimulator() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return (program.parent_path().parent_path().parent_path() / "simulator" / "simulator").string();
}

}  // namespace

Command DescribeWatch(CLI::App& app) {
    CLI::App* options = app.add_subcommand(
        "watch", "Show a source in a simulator, and rebuild it whenever one of its files is saved");
    auto arguments = std::make_shared<Arguments>();
    options->add_option("source", arguments->source, "The skin's TOML text")
        ->required()
        ->check(CLI::ExistingFile);
    options->add_option("--screen", arguments->screen,
                        "The upright screen, such as 240x320; default: the first one that the source lists");
    options->add_option("--simulator", arguments->simulator,
                        "The simulator's program; default: the one built with tlk");
    options->add_option("--font", arguments->font, "Font file for all glyphs, unless the source names one")
        ->capture_default_str();
    return {options, [arguments] {
                if (arguments->simulator.empty()) arguments->simulator = BuiltSimulator();
                HandleSignals();
                return Watcher(*arguments).Run();
            }};
}

}  // namespace tlk
