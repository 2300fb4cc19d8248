// SPDX-License-Identifier: MIT
#include "display.h"

#include <SDL.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value != '\0';
}

constexpr char kAdvice[] =
    "\nOn a desktop, start it from a terminal window there. Over a plain terminal a script can drive the "
    "keyboard:\n"
    "    simulator --device DIR --script FILE\n"
    "    ./run --demonstration     types on the keyboard and writes pictures of it";

void SetHints() {
    // Without this SDL would fall back to a driver that shows nothing.
    if (!IsSet("SDL_VIDEODRIVER")) SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11,wayland");
    SDL_SetHint(SDL_HINT_APP_NAME, "Tolka");
    // Keeps the desktop's screen saver and effects.
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    // A finger actions as the left mouse button, and only that.
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "1");
    SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
}

}  // namespace

void ConnectToDisplay() {
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY") && !IsSet("SDL_VIDEODRIVER"))
        throw std::runtime_error("there is no display to open a window on." + std::string(kAdvice));
    SetHints();
    SDL_SetMainReady();
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        throw std::runtime_error("the display does not answer: " + std::string(SDL_GetError()) + '.' +
                                 kAdvice);
    }
    SDL_StopTextInput();
}
