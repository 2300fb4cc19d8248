// SPDX-License-Identifier: MIT
#include "device_window.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace {

constexpr Uint32 kBorderColor = 0x303030;

bool IsEmpty(const RECT& r) { return r.left >= r.right || r.top >= r.bottom; }

int FloorDivide(int value, int divisor) {
    return value >= 0 ? value / divisor : -((-value + divisor - 1) / divisor);
}

// The size of the screen's picture in this much room.
SIZE FittingSize(SIZE screen, SIZE room) {
    const LONG scale = std::min(room.cx / screen.cx, room.cy / screen.cy);
    if (scale > 0) return {screen.cx * scale, screen.cy * scale};
    const double shrink =
        std::min(static_cast<double>(room.cx) / screen.cx, static_cast<double>(room.cy) / screen.cy);
    return {std::max(static_cast<LONG>(screen.cx * shrink), 1),
            std::max(static_cast<LONG>(screen.cy * shrink), 1)};
}

// Blends neighbouring pixels, so that letters stay legible.
void Shrink(SDL_Surface* source, SDL_Surface* target, SDL_Rect place) {
    const Surface alike(SDL_ConvertSurface(source, target->format, 0));
    const bool smooth = alike && SDL_SoftStretchLinear(alike.get(), nullptr, target, &place) == 0;
    if (!smooth) SDL_BlitScaled(source, nullptr, target, &place);
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

// The size of the window's frame is known only once it is shown.
SDL_Rect DeviceWindow::Room() const {
    SDL_Rect room{0, 0, 0, 0};
    if (SDL_GetDisplayUsableBounds(std::max(SDL_GetWindowDisplayIndex(m_window.get()), 0), &room) != 0)
        return room;
    constexpr int usualTitleBar = 36;
    int top = 0;
    int left = 0;
    int bottom = 0;
    int right = 0;
    SDL_GetWindowBordersSize(m_window.get(), &top, &left, &bottom, &right);
    if (top == 0) top = usualTitleBar;
    return {room.x + left, room.y + top, room.w - left - right, room.h - top - bottom};
}

SIZE DeviceWindow::WantedSize() const {
    const SIZE screen = ScreenSize();
    const SDL_Rect room = Room();
    const double ratio = PixelsPerPoint();
    const SIZE fitting =
        FittingSize(screen, {static_cast<LONG>(room.w * ratio), static_cast<LONG>(room.h * ratio)});
    const SIZE wanted{screen.cx * m_wantedScale, screen.cy * m_wantedScale};
    return m_wantedScale > 0 && wanted.cx < fitting.cx ? wanted : fitting;
}

// A maximised window keeps its size.
void DeviceWindow::FitScreen() {
    constexpr Uint32 sizedByDesktop = SDL_WINDOW_MAXIMIZED | SDL_WINDOW_FULLSCREEN;
    if (!(SDL_GetWindowFlags(m_window.get()) & sizedByDesktop)) {
        const SIZE size = WantedSize();
        const double ratio = PixelsPerPoint();
        Resize(static_cast<int>(std::ceil(size.cx / ratio)), static_cast<int>(std::ceil(size.cy / ratio)));
    }
    PresentAll();
}

// Keeps the window's position as far as it stays on the monitor.
void DeviceWindow::Resize(int width, int height) {
    SDL_SetWindowSize(m_window.get(), width, height);
    const SDL_Rect room = Room();
    int x = 0;
    int y = 0;
    SDL_GetWindowPosition(m_window.get(), &x, &y);
    SDL_SetWindowPosition(m_window.get(), std::max(std::min(x, room.x + room.w - width), room.x),
                          std::max(std::min(y, room.y + room.h - height), room.y));
}

// In the middle of the window, which the desktop may have made smaller.
SDL_Rect DeviceWindow::Place() const {
    const SIZE window = Size();
    const SIZE picture = FittingSize(ScreenSize(), window);
    return {(window.cx - picture.cx) / 2, (window.cy - picture.cy) / 2, picture.cx, picture.cy};
}

POINT DeviceWindow::OnDevice(int x, int y) const {
    const double ratio = PixelsPerPoint();
    const SDL_Rect place = Place();
    const SIZE screen = ScreenSize();
    return {FloorDivide((static_cast<int>(x * ratio) - place.x) * screen.cx, place.w),
            FloorDivide((static_cast<int>(y * ratio) - place.y) * screen.cy, place.h)};
}

// A reduced picture is drawn as a whole, as its pixels depend on their neighbours.
SDL_Rect DeviceWindow::Draw(const RECT& part, SDL_Surface* target) const {
    const host::ScreenView screen = host::Screen();
    const SDL_Rect place = Place();
    const Surface source(SDL_CreateRGBSurfaceWithFormatFrom(const_cast<DWORD*>(screen.pixels), screen.width,
                                                            screen.height, 32, screen.width * 4,
                                                            SDL_PIXELFORMAT_RGB888));
    if (!source) return {};
    const int scale = Scale();
    if (scale == 0) return Shrink(source.get(), target, place), place;
    const SDL_Rect from{part.left, part.top, part.right - part.left, part.bottom - part.top};
    SDL_Rect drawn{place.x + from.x * scale, place.y + from.y * scale, from.w * scale, from.h * scale};
    SDL_BlitScaled(source.get(), &from, target, &drawn);
    return drawn;
}

void DeviceWindow::Present() {
    const RECT changes = host::TakeScreenChanges();
    if (IsEmpty(changes) || m_page) return;
    SDL_Surface* target = SDL_GetWindowSurface(m_window.get());
    if (!target) return;
    const SDL_Rect drawn = Draw(changes, target);
    SDL_UpdateWindowSurfaceRects(m_window.get(), &drawn, 1);
}

void DeviceWindow::PresentAll() {
    host::TakeScreenChanges();
    SDL_Surface* target = SDL_GetWindowSurface(m_window.get());
    if (!target) return;
    if (m_page) {
        SDL_BlitSurface(m_page.get(), nullptr, target, nullptr);
    } else {
        SDL_FillRect(target, nullptr, kBorderColor);
        const SIZE screen = ScreenSize();
        Draw({0, 0, screen.cx, screen.cy}, target);
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
