// SPDX-License-Identifier: MIT
// tlk: writes skin files from their source, and shows and checks them.
#include <CLI/CLI.hpp>
#include <iostream>

#include "command.h"

int main(int argc, char** argv) {
    CLI::App app{"Writes skin files (.tlk) from their source, and shows and checks them."};
    app.require_subcommand(1);
    try {
        const tlk::Command commands[] = {tlk::DescribeBuild(app), tlk::DescribeCheck(app),
                                         tlk::DescribeDump(app), tlk::DescribeShow(app)};
        app.parse(argc, argv);
        for (const tlk::Command& command : commands)
            if (*command.pOptions) return command.run();
        return tlk::kFailed;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? tlk::kDone : tlk::kFailed;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return tlk::kFailed;
    }
}
