// SPDX-License-Identifier: MIT
// The simulator program.
#include <CLI/CLI.hpp>

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "actions.h"
#include "commands.h"
#include "device_lock.h"
#include "script.h"
#include "script_runner.h"
#include "session.h"
#include "window_mode.h"

namespace {

namespace fs = std::filesystem;

// Exit statuses.
constexpr int kSucceeded = 0;
constexpr int kCallFailed = 1;
constexpr int kNotSaved = 1;
constexpr int kNotUnderstood = 2;

struct CommandLine {
    std::string device;
    std::string screen = "240x320";
    std::string script;
    std::string library;
    SkinOptions skins;
    // For the window.
    std::string record;
    int scale = 0;
    bool trace = false;
    bool commands = false;
};

SIZE ParseScreen(const std::string& text) {
    const std::size_t separator = text.find('x', 1);
    if (separator == std::string::npos) throw ScriptError("--screen: \"" + text + "\" is not WxH");
    const auto parse = [](const std::string& number) {
        return static_cast<LONG>(ParseNumber(number, 1, 4096));
    };
    try {
        return {parse(text.substr(0, separator)), parse(text.substr(separator + 1))};
    } catch (const ScriptError& error) {
        throw ScriptError(std::string("--screen: ") + error.what());
    }
}

// The library from the build of this program.
fs::path BuiltLibrary() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path().parent_path() / "server" / "Tolka.DLL";
}

Session::Options SessionOptions(const CommandLine& line) {
    Session::Options options;
    options.screen = ParseScreen(line.screen);
    options.device = line.device;
    options.library = line.library.empty() ? BuiltLibrary() : fs::path(line.library);
    return options;
}

int RunScript(const CommandLine& line) {
    std::ifstream file;
    const bool standardInput = line.script == "-";
    if (!standardInput) {
        file.open(line.script);
        if (!file || fs::is_directory(line.script))
            throw ScriptError("cannot read the script " + line.script);
    }
    Session::Options options = SessionOptions(line);
    const DeviceLock lock(line.device, DeviceLock::Kind::Script);
    Session session(options);
    for (const Words& action : SkinActions(line.skins))
        RunCommand(session, action);
    ScriptRunner runner(session, standardInput ? std::cin : file, line.script);
    if (runner.Run() == ScriptRunner::Outcome::NotUnderstood) return kNotUnderstood;
    return session.GetTrace().CallFailed() ? kCallFailed : kSucceeded;
}

int RunWindow(const CommandLine& line) {
    WindowOptions options;
    options.session = SessionOptions(line);
    options.skins = line.skins;
    if (options.skins.choice.empty()) options.skins.choice = fs::path(line.skins.file).stem().string();
    if (!line.record.empty()) options.record = line.record;
    options.scale = line.scale;
    if (line.trace) options.trace = WindowOptions::Trace::Shown;
    if (line.commands) options.commands = WindowOptions::Commands::FromStandardInput;
    return RunInWindow(options) ? kSucceeded : kNotSaved;
}

void Describe(CLI::App& app, CommandLine& line) {
    app.footer(DescribeKeys());
    app.option_defaults()->take_last();  // so that users can override the options of ./run
    app.add_option("--device", line.device, "root of the device's file system; created if missing")
        ->required();
    app.add_option("--screen", line.screen, "screen size, WxH")->capture_default_str();
    app.add_option("--library", line.library,
                   "the library to install; its code is beside it, with .so appended to the name");
    app.add_option("--skin", line.skins.file, R"(a skin to put into \Windows; a window uses it)");
    app.add_option("--skins", line.skins.folder, "folder with skins for each screen size (240x320/*.tlk)")
        ->check(CLI::ExistingDirectory);
    app.add_option("--choose", line.skins.choice, "the skin to use, by its name without size and .tlk");
    app.add_option("--prefer", line.skins.preferred,
                   "the skin to use if none has been chosen or the screen lacks it");
    CLI::Option* script =
        app.add_option("--script", line.script, "commands to run, without a window; - is standard input");
    const auto ofWindow = [script](CLI::Option* option) {
        option->group("Options of the window")->excludes(script);
    };
    ofWindow(app.add_option("--scale", line.scale, "enlargement; default: the greatest that fits the monitor")
                 ->check(CLI::Range(1, 20)));
    ofWindow(app.add_flag("--trace", line.trace, "print every call and key as it happens"));
    ofWindow(app.add_flag("--commands", line.commands,
                          "run commands from standard input as they arrive; its end closes the window"));
    ofWindow(app.add_option("--record", line.record, "record everything you do as a script"));
}

}  // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("Runs the keyboard on a simulated handheld, in a window or by a script.", "simulator");
        CommandLine line;
        Describe(app, line);
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return app.exit(error) == 0 ? kSucceeded : kNotUnderstood;
        }
        return line.script.empty() ? RunWindow(line) : RunScript(line);
    } catch (const std::exception& error) {
        std::cerr << "simulator: " << error.what() << '\n';
    }
    return kNotUnderstood;
}
