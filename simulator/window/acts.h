// SPDX-License-Identifier: MIT
// What the window's keys do to the handheld, as commands of scripts. A record holds exactly these.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session.h"

using Words = std::vector<std::string>;  // of one command
using Acts = std::vector<Words>;

// What the options say about skins; what is empty is not asked for.
struct SkinOptions {
    std::string folder;     // a folder for each screen in it
    std::string file;       // goes into \Windows
    std::string choice;     // the name of the skin to use
    std::string preferred;  // of the one to begin with, and where there is no chosen one for the screen
};

// Skins of another screen make room for those in the folder; the skin that was chosen stays chosen.
Acts SkinActs(const SkinOptions& skins);
// A handheld with this screen whose keyboard is selected. Where the screen is not the one that every script
// begins with, it is said first: a record replays without options.
Acts StartActs(SIZE screen, const SkinOptions& skins);
// The screen changes later on: the keyboard lets go of its skin in between.
Acts ChangeSizeActs(SIZE screen, SkinOptions skins);
// None for a square screen.
Acts TurnActs(Session& session, SIZE now);
// Into the first file that does not exist yet in the current folder.
Words ScreenshotAct();

// The size behind this one of those that handhelds have, upright.
SIZE NextScreenSize(SIZE screen);
