// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "command.h"
#include "errors.h"
#include "file.h"
#include "name_list.h"
#include "png_file.h"
#include "preview.h"
#include "sheet.h"

namespace tlk {
namespace {

struct Arguments {
    std::string skin;
    std::string plane = "lng1-small";
    std::vector<std::string> pressed;
    std::string output;
    std::string font = TLK_FONT;
    int zoom = 1;
    bool isLandscape = false;
    bool hasCapsLock = false;
    bool showsHitAreas = false;
    bool isSheet = false;
};

// Names separated by commas; a single comma is the key of that name.
std::vector<std::string> SplitNames(const std::vector<std::string>& arguments) {
    std::vector<std::string> names;
    for (const std::string& argument : arguments) {
        if (argument == ",") {
            names.push_back(argument);
            continue;
        }
        std::size_t start = 0;
        while (start < argument.size()) {
            const std::size_t comma = std::min(argument.find(',', start), argument.size());
            if (comma > start) names.push_back(argument.substr(start, comma - start));
            start = comma + 1;
        }
    }
    return names;
}

View MakeView(const Arguments& arguments, const SkinModule& skin) {
    const auto plane = FindPlane(arguments.plane);
    if (!plane) {
        std::string names;
        for (std::size_t i = 0; i < kPlaneCount; ++i)
            AppendName(names, PlaneName(i));
        throw FileError("no plane '" + arguments.plane + "': there are " + names);
    }
    Latches latches = LatchesFor(*plane);
    // Caps lock reverses the case, and so does Shift.
    if (arguments.hasCapsLock && *plane != kDigitPlane) latches ^= latch::kCaps | latch::kShift;
    View view{latches, arguments.isLandscape, {}};
    const BoardKind board = ShownBoard(skin, view);
    for (const std::string& name : SplitNames(arguments.pressed))
        view.pressed.push_back(FindKey(skin, board, name));
    return view;
}

Picture Draw(const Arguments& arguments, const SkinModule& skin) {
    if (arguments.isSheet) return DrawSheet(skin, arguments.zoom, Font(arguments.font));
    const View view = MakeView(arguments, skin);
    Picture picture = Enlarge(Paint(skin, view), arguments.zoom);
    if (arguments.showsHitAreas)
        DrawHitAreas(picture, arguments.zoom, skin, ShownBoard(skin, view), Font(arguments.font));
    return picture;
}

Status Show(const Arguments& arguments) {
    const SkinModule skin = ReadSkin(OpenModule(arguments.skin));
    Picture picture;
    try {
        picture = Draw(arguments, skin);
    } catch (const FileError& error) {
        throw FileError(arguments.skin + ": " + error.what());
    }
    WriteFile(arguments.output, EncodePng(picture));
    return Done;
}

}  // namespace

Command DescribeShow(CLI::App& app) {
    CLI::App* options =
        app.add_subcommand("show", "Draw a plane of a skin file, or all of them, into a PNG file");
    auto arguments = std::make_shared<Arguments>();
    options->add_option("skin", arguments->skin, "The skin file")->required();
    options
        ->add_option("--plane", arguments->plane, "lng1, uml1, lng2 or uml2 with -small or -large, or digit")
        ->capture_default_str();
    options->add_flag("--landscape", arguments->isLandscape, "The landscape keyboard");
    options->add_flag("--caps", arguments->hasCapsLock,
                      "With caps lock; the digit row ignores it if the skin says so");
    options
        ->add_option("--pressed", arguments->pressed,
                     "Keys to draw pressed: names or indices, separated by commas")
        ->allow_extra_args(false);
    options->add_flag("--hit-areas", arguments->showsHitAreas, "Outline and name the keys' rectangles");
    CLI::Option* sheet = options->add_flag(
        "--sheet", arguments->isSheet,
        "All planes of all keyboards, latched and pressed keys and hit areas, in one picture");
    for (const char* name : {"--plane", "--landscape", "--caps", "--pressed", "--hit-areas"})
        sheet->excludes(options->get_option(name));
    options->add_option("-o,--output", arguments->output, "The PNG file to write")->required();
    options->add_option("--zoom", arguments->zoom, "Enlarge each pixel")->check(CLI::Range(1, 8));
    options->add_option("--font", arguments->font, "Font file for names and captions")->capture_default_str();
    return {options, [arguments] { return Show(*arguments); }};
}

}  // namespace tlk
