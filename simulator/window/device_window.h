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

// The picture of the handheld's screen in a window of the desktop, enlarged by a whole number, or reduced by
// any factor if the screen itself does not fit. Draws in real pixels, even on high-density displays; events
// have the desktop's points.
class DeviceWindow {
public:
    // For a `scale` of 0, or one that is too great, uses the greatest whole number that fits the monitor.
    // Throws std::runtime_error.
    explicit DeviceWindow(int scale);
    ~DeviceWindow();
    DeviceWindow(const DeviceWindow&) = delete;
    DeviceWindow& operator=(const DeviceWindow&) = delete;

    // Adapts the window's size to a new size of the screen.
    void FitScreen();
    // Shows the changed part of the screen, or all of it.
    void Present();
    void PresentAll();
    void SetTitle(const std::string& title);

    // The enlargement of the picture; 0 if it is reduced.
    int Scale() const { return Place().w / static_cast<int>(ScreenSize().cx); }

    // Shows a picture of the window's size over the screen / removes it.
    void ShowPage(const host::Picture& page);
    void HidePage();
    bool HasPage() const { return m_page != nullptr; }
    SIZE Size() const;  // in pixels

    // The pixel of the handheld's screen at this position, which may be outside.
    POINT OnDevice(int x, int y) const;

private:
    struct WindowDeleter {
        void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    };

    // The desktop's free area for the inside of a window, in points.
    SDL_Rect Room() const;
    SIZE WantedSize() const;  // in pixels
    void Resize(int width, int height);
    double PixelsPerPoint() const;
    // The screen's picture in the window, in pixels.
    SDL_Rect Place() const;
    // Returns the area drawn.
    SDL_Rect Draw(const RECT& part, SDL_Surface* target) const;

    int m_wantedScale;
    std::unique_ptr<SDL_Window, WindowDeleter> m_window;
    Surface m_page;
};
