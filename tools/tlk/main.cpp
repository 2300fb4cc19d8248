// SPDX-License-Identifier: MIT
// tlk: builds skin files from their sources, shows and checks them.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "command.h"
#include "errors.h"
#include "name_list.h"
#include "suggestion.h"

namespace {

// The probable meaning of a misspelt command line; empty if nothing is similar.
std::string Suggest(const CLI::App& app, int argc, char** argv) {
    const std::string named = argc > 1 ? argv[1] : "";
    const CLI::App* command = nullptr;
    std::string commands;
    for (const CLI::App* known : app.get_subcommands({})) {
        tlk::AppendName(commands, known->get_name());
        if (known->get_name() == named) command = known;
    }
    std::string options;
    for (const CLI::Option* option : (command ? *command : app).get_options())
        for (const std::string& name : option->get_lnames())
            tlk::AppendName(options, "--" + name);
    for (int i = 1; i < argc; ++i) {
        const std::string_view word =
            std::string_view(argv[i]).substr(0, std::string_view(argv[i]).find('='));
        const bool isOption = word.starts_with("--");
        if (!isOption && (command || i > 1)) continue;
        const auto near = tlk::FindNearest(word, isOption ? options : commands);
        if (near && *near != word) return "did you mean '" + *near + "'?\n";
    }
    return {};
}

tlk::Status RunNamedCommand(CLI::App& app, int argc, char** argv) {
    const tlk::Command commands[] = {tlk::DescribeArt(app),   tlk::DescribeBuild(app),
                                     tlk::DescribeCheck(app), tlk::DescribeDump(app),
                                     tlk::DescribeShow(app),  tlk::DescribeWatch(app)};
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (app.exit(error) == 0) return tlk::Done;
        std::cerr << Suggest(app, argc, argv);
        return tlk::Failed;
    }
    for (const tlk::Command& command : commands)
        if (*command.options) return command.run();
    return tlk::Failed;
}

tlk::Status Run(int argc, char** argv) {
    CLI::App app{"Builds skin files (.tlk) from their sources, shows and checks them."};
    app.require_subcommand(1);
    const tlk::Status status = RunNamedCommand(app, argc, argv);
    if (!std::cout.flush()) throw tlk::FileError("the output cannot be written: is the disk full?");
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    // Not a stream, which might throw again.
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (...) {
        std::fputs("tlk: failed\n", stderr);
    }
    return tlk::Failed;
}
