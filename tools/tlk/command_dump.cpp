// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "command.h"
#include "dump.h"
#include "file.h"

namespace tlk {

Command DescribeDump(CLI::App& app) {
    CLI::App* options = app.add_subcommand("dump", "Print the content of a skin file");
    auto skin = std::make_shared<std::string>();
    options->add_option("skin", *skin, "The skin file")->required();
    return {options, [skin] {
                std::cout << Dump(OpenModule(*skin));
                return Done;
            }};
}

}  // namespace tlk
