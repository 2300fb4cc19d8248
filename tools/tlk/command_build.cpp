// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "command.h"
#include "compile.h"
#include "errors.h"
#include "file.h"
#include "source.h"

namespace tlk {
namespace {

struct Arguments {
    std::string source;
    std::string output;
    std::string font = TLK_FONT;
    std::string screen;
};

Font OpenFont(const Skin& skin, const std::string& usual) {
    namespace fs = std::filesystem;
    if (!skin.fontFile) return Font(usual);
    const fs::path own = skin.fontFile->path;
    try {
        return Font(fs::exists(own) ? own.string() : (fs::path(usual).parent_path() / own).string());
    } catch (const FileError& error) {
        throw SourceError(skin.fontFile->place, error.what());
    }
}

Status Build(const Arguments& arguments) {
    const Bytes text = ReadFile(arguments.source);
    try {
        const Skin skin = ReadSource({reinterpret_cast<const char*>(text.data()), text.size()},
                                     arguments.source, arguments.screen);
        const Font font = OpenFont(skin, arguments.font);
        const Bytes file = WriteModule(CompileSkin(skin, font));
        WriteFile(arguments.output, file);
        const Module module = Module::Parse(file);
        TellRemarks({module, arguments.output, arguments.screen, &skin.places}, "warning: ", std::cerr);
    } catch (const SourceError& error) {
        FailAt(error, arguments.source);
    }
    return kDone;
}

}  // namespace

Command DescribeBuild(CLI::App& app) {
    CLI::App* pOptions = app.add_subcommand("build", "Write a skin file from a source");
    auto arguments = std::make_shared<Arguments>();
    pOptions->add_option("source", arguments->source, "The skin's TOML text")->required();
    pOptions->add_option("-o,--output", arguments->output, "The skin file to write")->required();
    pOptions->add_option("--screen", arguments->screen,
                         "Width and height of the upright screen, such as 240x320; without it the first one "
                         "that the source lists");
    pOptions->add_option("--font", arguments->font, "Font file for all glyphs, unless the source names one")
        ->capture_default_str();
    return {pOptions, [arguments] { return Build(*arguments); }};
}

}  // namespace tlk
