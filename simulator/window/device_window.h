// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>
#include <host_control.h>
#include <sip_layout.h>

#include <memory>
#include <string>

struct SurfaceDeleter {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using Surface = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

// The picture of the handheld's screen in a window of the desktop, enlarged by a whole number; made smaller
// by whatever it takes only where not even the screen itself fits. All pictures are drawn in real pixels, on
// displays of high density too; events come in the desktop's points.
class DeviceWindow {
public:
    // `scale` 0, and any that is too great, is the greatest whole number with which the screen fits the
    // monitor. Throws std::runtime_error.
    explicit DeviceWindow(int scale);
    ~DeviceWindow();
    DeviceWindow(const DeviceWindow&) = delete;
    DeviceWindow& operator=(const DeviceWindow&) = delete;

    // The handheld's screen has another size: the window takes the size for it.
    void FitScreen();
    // Shows what of the screen changed, or all of it.
    void Present();
    void PresentAll();
    void SetTitle(const std::string& title);

    // How much larger than the screen the picture is; 0 when it is smaller.
    int Scale() const { return Place().w / static_cast<int>(ScreenSize().cx); }

    // Lays a picture of the window's size over the screen / takes it away.
    void ShowPage(const host::Picture& page);
    void HidePage();
    bool HasPage() const { return m_page != nullptr; }
    SIZE Size() const;  // in pixels

    // The pixel of the handheld's screen at this place; outside of the screen where the place is.
    POINT OnDevice(int x, int y) const;

private:
    struct WindowDeleter {
        void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    };

    // What the desktop leaves free for the inside of a window, in points.
    SDL_Rect Room() const;
    SIZE WantedSize() const;  // in pixels
    void Resize(int width, int height);
    double PixelsPerPoint() const;
    // Where in the window the screen's picture lies, in pixels.
    SDL_Rect Place() const;
    // Returns where it drew.
    SDL_Rect Draw(const RECT& part, SDL_Surface* target) const;

    int m_wantedScale;
    std::unique_ptr<SDL_Window, WindowDeleter> m_window;
    Surface m_page;
};
