// SPDX-License-Identifier: MIT
#include "device_window.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace {

constexpr Uint32 borderColor = 0x303030;

SIZE ScreenSize() {
    const host::ScreenView screen = host::Screen();
    return {screen.width, screen.height};
}

bool IsEmpty(const RECT& r) { return r.left >= r.right || r.top >= r.bottom; }

int FloorDivide(int value, int divisor) {
    return value >= 0 ? value / divisor : -((-value + divisor - 1) / divisor);
}

}  // namespace

DeviceWindow::DeviceWindow(int scale) : m_wantedScale(scale) {
    const SIZE screen = ScreenSize();
    m_window.reset(SDL_CreateWindow("Tolka", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, screen.cx,
                                    screen.cy,
                                    SDL_WINDOW_ALLOW_HIGHDPI | SDL_WINDOW_RESIZABLE | SDL_WINDOW_HIDDEN));
    if (!m_window) throw std::runtime_error(std::string("no window can be opened: ") + SDL_GetError());
    FitScreen();
    SDL_SetWindowPosition(m_window.get(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
    SDL_ShowWindow(m_window.get());
}

DeviceWindow::~DeviceWindow() = default;

SIZE DeviceWindow::Size() const {
    int width = 0;
    int height = 0;
    SDL_GetWindowSizeInPixels(m_window.get(), &width, &height);
    return {width, height};
}

double DeviceWindow::PixelsPerPoint() const {
    int width = 0;
    SDL_GetWindowSize(m_window.get(), &width, nullptr);
    return width > 0 ? static_cast<double>(Size().cx) / width : 1;
}

// The frame around the window is known only once it shows.
SDL_Rect DeviceWindow::Room() const {
    SDL_Rect room{0, 0, 0, 0};
    if (SDL_GetDisplayUsableBounds(std::max(SDL_GetWindowDisplayIndex(m_window.get()), 0), &room) != 0) {
        return room;
    }
    constexpr int usualTitleBar = 36;
    int top = 0;
    int left = 0;
    int bottom = 0;
    int right = 0;
    SDL_GetWindowBordersSize(m_window.get(), &top, &left, &bottom, &right);
    if (top == 0) top = usualTitleBar;
    return {room.x + left, room.y + top, room.w - left - right, room.h - top - bottom};
}

int DeviceWindow::FittingScale() const {
    const SDL_Rect room = Room();
    const double ratio = PixelsPerPoint();
    const SIZE screen = ScreenSize();
    const int across = static_cast<int>(room.w * ratio) / static_cast<int>(screen.cx);
    const int down = static_cast<int>(room.h * ratio) / static_cast<int>(screen.cy);
    return std::max(std::min(across, down), 1);
}

// A maximised window stays as it is.
void DeviceWindow::FitScreen() {
    constexpr Uint32 sizedByDesktop = SDL_WINDOW_MAXIMIZED | SDL_WINDOW_FULLSCREEN;
    if (!(SDL_GetWindowFlags(m_window.get()) & sizedByDesktop)) {
        const int scale = m_wantedScale > 0 ? m_wantedScale : FittingScale();
        const SIZE screen = ScreenSize();
        const double ratio = PixelsPerPoint();
        Resize(static_cast<int>(std::ceil(screen.cx * scale / ratio)),
               static_cast<int>(std::ceil(screen.cy * scale / ratio)));
    }
    PresentAll();
}

// The window stays where it is as far as it remains on the monitor there.
void DeviceWindow::Resize(int width, int height) {
    SDL_SetWindowSize(m_window.get(), width, height);
    const SDL_Rect room = Room();
    int x = 0;
    int y = 0;
    SDL_GetWindowPosition(m_window.get(), &x, &y);
    SDL_SetWindowPosition(m_window.get(), std::max(std::min(x, room.x + room.w - width), room.x),
                          std::max(std::min(y, room.y + room.h - height), room.y));
}

// The greatest with which the screen fits the window as it is: the desktop may have made it smaller.
int DeviceWindow::Scale() const {
    const SIZE window = Size();
    const SIZE screen = ScreenSize();
    return std::max(std::min(window.cx / screen.cx, window.cy / screen.cy), 1);
}

// In the middle; of a screen that does not fit, the bottom with the keyboard shows.
POINT DeviceWindow::Origin() const {
    const SIZE window = Size();
    const SIZE screen = ScreenSize();
    const int scale = Scale();
    const LONG down = window.cy - screen.cy * scale;
    return {std::max<LONG>(window.cx - screen.cx * scale, 0) / 2, down < 0 ? down : down / 2};
}

POINT DeviceWindow::OnDevice(int x, int y) const {
    const double ratio = PixelsPerPoint();
    const POINT origin = Origin();
    const int scale = Scale();
    return {FloorDivide(static_cast<int>(x * ratio) - origin.x, scale),
            FloorDivide(static_cast<int>(y * ratio) - origin.y, scale)};
}

void DeviceWindow::Draw(const RECT& part, SDL_Surface* target, SDL_Rect& drawn) const {
    const host::ScreenView screen = host::Screen();
    const POINT origin = Origin();
    const int scale = Scale();
    const Surface source(SDL_CreateRGBSurfaceWithFormatFrom(const_cast<DWORD*>(screen.pixels), screen.width,
                                                            screen.height, 32, screen.width * 4,
                                                            SDL_PIXELFORMAT_RGB888));
    SDL_Rect from{part.left, part.top, part.right - part.left, part.bottom - part.top};
    drawn = {origin.x + from.x * scale, origin.y + from.y * scale, from.w * scale, from.h * scale};
    if (source) SDL_BlitScaled(source.get(), &from, target, &drawn);
}

void DeviceWindow::Present() {
    const RECT changes = host::TakeScreenChanges();
    if (IsEmpty(changes) || m_page) return;
    SDL_Surface* target = SDL_GetWindowSurface(m_window.get());
    if (!target) return;
    SDL_Rect drawn{};
    Draw(changes, target, drawn);
    SDL_UpdateWindowSurfaceRects(m_window.get(), &drawn, 1);
}

void DeviceWindow::PresentAll() {
    host::TakeScreenChanges();
    SDL_Surface* target = SDL_GetWindowSurface(m_window.get());
    if (!target) return;
    if (m_page) {
        SDL_BlitSurface(m_page.get(), nullptr, target, nullptr);
    } else {
        SDL_FillRect(target, nullptr, borderColor);
        const SIZE screen = ScreenSize();
        SDL_Rect drawn{};
        Draw({0, 0, screen.cx, screen.cy}, target, drawn);
    }
    SDL_UpdateWindowSurface(m_window.get());
}

void DeviceWindow::SetTitle(const std::string& title) { SDL_SetWindowTitle(m_window.get(), title.c_str()); }

void DeviceWindow::ShowPage(const host::Picture& page) {
    m_page.reset(SDL_CreateRGBSurfaceWithFormat(0, page.width, page.height, 32, SDL_PIXELFORMAT_RGB888));
    if (m_page) {
        for (int y = 0; y < page.height; ++y) {
            auto* row = static_cast<Uint8*>(m_page->pixels) + static_cast<std::ptrdiff_t>(y) * m_page->pitch;
            std::copy_n(page.pixels.data() + static_cast<std::ptrdiff_t>(y) * page.width, page.width,
                        reinterpret_cast<DWORD*>(row));
        }
    }
    PresentAll();
}

void DeviceWindow::HidePage() {
    m_page.reset();
    PresentAll();
}
