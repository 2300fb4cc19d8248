// SPDX-License-Identifier: MIT
// tlk: writes skin files from their source, and shows and checks them.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "command.h"
#include "errors.h"

namespace {

tlk::Status RunNamedCommand(CLI::App& app, int argc, char** argv) {
    const tlk::Command commands[] = {tlk::DescribeBuild(app), tlk::DescribeCheck(app), tlk::DescribeDump(app),
                                     tlk::DescribeShow(app)};
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? tlk::kDone : tlk::kFailed;
    }
    for (const tlk::Command& command : commands)
        if (*command.pOptions) return command.run();
    return tlk::kFailed;
}

tlk::Status Run(int argc, char** argv) {
    CLI::App app{"Writes skin files (.tlk) from their source, and shows and checks them."};
    app.require_subcommand(1);
    const tlk::Status status = RunNamedCommand(app, argc, argv);
    if (!std::cout.flush()) throw tlk::FileError("the output cannot be written: is the disk full?");
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    // Not by a stream, which might throw in its turn.
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (...) {
        std::fputs("tlk: cannot go on\n", stderr);
    }
    return tlk::kFailed;
}
