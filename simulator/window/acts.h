// SPDX-License-Identifier: MIT
// What the window's keys do to the handheld, as commands of scripts. A record holds exactly these.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "session.h"

using Words = std::vector<std::string>;  // of one command
using Acts = std::vector<Words>;

using SkinFolder = std::optional<std::filesystem::path>;

// Skins of another screen make room for those in the folder. Where none has been chosen yet, `choice` is, the
// name of one in \Windows without "-WxH" and ".tlk"; where that is empty, the keyboard takes the first that
// it finds.
Acts SkinActs(const SkinFolder& skins, const std::string& choice, SIZE screen);
// A handheld with this screen whose keyboard is selected. Where the screen is not the one that every script
// begins with, it is said first: a record replays without options.
Acts StartActs(SIZE screen, const SkinFolder& skins, const std::string& choice);
// The screen changes later on: the keyboard lets go of its skin in between.
Acts ChangeSizeActs(SIZE screen, const SkinFolder& skins);
// None for a square screen.
Acts TurnActs(Session& session, SIZE now);
// Into the first file that does not exist yet in the current folder.
Words ScreenshotAct();

// The size behind this one of those that handhelds have, upright.
SIZE NextScreenSize(SIZE screen);
