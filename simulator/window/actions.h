// SPDX-License-Identifier: MIT
// The actions of the window's keys, as commands of scripts. A recording consists of exactly these.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session.h"

using Words = std::vector<std::string>;  // one command
using Actions = std::vector<Words>;

// The options about skins; empty if not given.
struct SkinOptions {
    std::string folder;     // contains a folder for each screen
    std::string file;       // copied to \Windows
    std::string choice;     // the name of the skin to use
    std::string preferred;  // the skin to use if none was chosen or the screen lacks it
};

// Replaces the skins of another screen by those in the folder; the chosen skin stays chosen.
Actions SkinActions(const SkinOptions& skins);
// Starts a handheld with this screen and selects its keyboard. Begins with the screen size unless it is the
// default, so that a recording replays without options.
Actions StartActions(SIZE screen, const SkinOptions& skins);
// Changes the screen size later on; the keyboard releases its skin in between.
Actions ChangeSizeActions(SIZE screen, SkinOptions skins);
// No commands for a square screen.
Actions TurnActions(Session& session, SIZE now);
// Writes to the first file in the current folder that does not exist yet.
Words ScreenshotAction();

// The next of the screen sizes, upright.
SIZE NextScreenSize(SIZE screen);
