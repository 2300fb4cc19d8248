// SPDX-License-Identifier: MIT
#include "keys.h"

#include <SDL_keycode.h>

#include <string>

#include "window_mode.h"

namespace {

constexpr WindowKey kKeys[] = {
    {SDLK_F1, "F1", "this list", WindowAction::ShowHelp},
    {SDLK_F2, "F2", "turn the screen", WindowAction::Rotate},
    {SDLK_F3, "F3", "next screen size", WindowAction::NextSize},
    {SDLK_F4, "F4", "next skin", WindowAction::NextSkin},
    {SDLK_F5, "F5", "screenshot", WindowAction::TakeScreenshot},
    {SDLK_F10, "F10", "quit", WindowAction::Quit},
};

}  // namespace

std::span<const WindowKey> WindowKeys() { return kKeys; }

std::string DescribeKeys() {
    std::string text = "Keys of the window:\n";
    for (const WindowKey& key : kKeys) {
        text += "  " + std::string(key.name) + std::string(6 - std::string(key.name).size(), ' ') +
                key.purpose + '\n';
    }
    return text + "The mouse, a finger or a pen is the handheld's pen.";
}
