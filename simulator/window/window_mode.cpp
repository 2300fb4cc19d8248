// SPDX-License-Identifier: MIT
#include "window_mode.h"

#include <SDL.h>
#include <sip_layout.h>

#include <ctime>
#include <deque>
#include <iostream>

#include "acts.h"
#include "commands.h"
#include "device_lock.h"
#include "device_window.h"
#include "display.h"
#include "help_page.h"
#include "keys.h"
#include "pen_stroke.h"
#include "recorder.h"
#include "scale.h"
#include "text.h"

namespace {

// A dialog that does follows the screen when that turns; any other stays where it is.
bool CoversScreen(HWND dialog) {
    RECT area{};
    GetWindowRect(dialog, &area);
    return IsSameSize({area.right - area.left, area.bottom - area.top}, ScreenSize());
}

std::tm LocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

std::string TimeText() {
    const std::tm local = LocalTime();
    char text[8];
    std::strftime(text, sizeof text, "%H:%M", &local);
    return text;
}

// A little more than the time to the next full minute.
int MillisecondsToNextMinute() { return (60 - LocalTime().tm_sec) * 1000 + 50; }

// The person at the window: the platform's idle time goes into waiting for them, also inside modal windows.
// What they do becomes a command, and runs as a command of a script does: when everything before has been
// dealt with.
class WindowMode {
public:
    explicit WindowMode(const WindowOptions& options);
    void Run();

private:
    bool OnIdle();
    void RunNextAct();
    SDL_Event WaitForEvent();
    void Handle(const SDL_Event& event);
    void HandleWindow(const SDL_WindowEvent& event);
    void HandleButton(const SDL_MouseButtonEvent& event);
    void HandleKey(SDL_Keycode code);
    void Perform(WindowAction action);
    void Add(const Acts& acts) { m_acts.insert(m_acts.end(), acts.begin(), acts.end()); }
    void Add(const std::optional<Words>& act);
    void ToggleHelp();
    void ShowTime();
    void MoveClockTo(Uint32 ticks);
    void Say(const std::string& text);
    void ShowTitle();

    const WindowOptions m_options;
    DeviceLock m_lock;
    std::optional<Recorder> m_recorder;
    Session m_session;
    DeviceWindow m_window;
    PenStroke m_stroke{m_session};
    std::deque<Words> m_acts;
    SIZE m_fittedScreen;
    std::string m_time;
    bool m_timeRecorded = false;
    Uint32 m_ticks = SDL_GetTicks();
    bool m_quitting = false;
};

WindowMode::WindowMode(const WindowOptions& options)
    : m_options(options),
      m_lock(options.session.device, DeviceLock::Kind::Window),
      m_recorder(options.record ? std::optional<Recorder>(std::in_place, *options.record,
                                                          options.session.device.string())
                                : std::nullopt),
      m_session(options.session),
      m_window(options.scale),
      m_fittedScreen(ScreenSize()) {
    if (options.trace == WindowOptions::Trace::Hidden) m_session.GetTrace().Mute();
    Add(StartActs(options.session.screen, options.skins, options.choice));
    ShowTitle();
    ShowTime();
}

void WindowMode::Run() {
    m_session.RunMessages([this] { return OnIdle(); });
}

// False when the window has been closed: then every message loop ends, the innermost first.
bool WindowMode::OnIdle() {
    m_session.GetTrace().Flush();
    if (m_quitting) return false;
    m_session.LayOutApplication();
    if (m_session.PostQueuedPen()) return true;
    if (m_acts.empty()) {
        Handle(WaitForEvent());
    } else {
        RunNextAct();
    }
    return true;
}

// Nothing is thrown on, as the code of the library may lie between here and the main loop.
void WindowMode::RunNextAct() {
    const Words words = m_acts.front();
    m_acts.pop_front();
    if (m_recorder && !m_timeRecorded) m_recorder->Write({"time", m_time});
    m_timeRecorded = true;
    if (m_recorder) m_recorder->Write(words);
    try {
        RunCommand(m_session, words);
        if (words[0] == "screenshot") Say("the screen is in " + words[1]);
        if (words[0] == "select" && !m_session.Sip().IsSelected()) Say("the keyboard does not start");
    } catch (const std::exception& error) {
        if (m_recorder) m_recorder->TakeBack();
        Say(error.what());
    }
}

// Everything is shown before the wait begins. The time on the screen needs a look at the end of each minute.
SDL_Event WindowMode::WaitForEvent() {
    SDL_Event event{};
    if (SDL_PollEvent(&event)) return event;
    ShowTime();
    host::DeliverMessages();
    const SIZE screen = ScreenSize();
    if (!IsSameSize(screen, m_fittedScreen)) {
        m_fittedScreen = screen;
        m_window.FitScreen();
        ShowTitle();
    }
    m_window.Present();
    if (!SDL_WaitEventTimeout(&event, MillisecondsToNextMinute())) event.type = SDL_FIRSTEVENT;
    return event;
}

void WindowMode::Handle(const SDL_Event& event) {
    if (event.type != SDL_FIRSTEVENT) MoveClockTo(event.common.timestamp);
    switch (event.type) {
        case SDL_QUIT:
            m_quitting = true;
            break;
        case SDL_WINDOWEVENT:
            HandleWindow(event.window);
            break;
        case SDL_KEYDOWN:
            if (event.key.repeat == 0) HandleKey(event.key.keysym.sym);
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            if (event.button.button == SDL_BUTTON_LEFT) HandleButton(event.button);
            break;
        case SDL_MOUSEMOTION:
            Add(m_stroke.Move(m_window.OnDevice(event.motion.x, event.motion.y)));
            break;
        default:
            break;
    }
}

void WindowMode::HandleWindow(const SDL_WindowEvent& event) {
    if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED && m_window.HasPage()) {
        m_window.ShowPage(DrawHelpPage(m_window.Size()));
    } else if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED || event.event == SDL_WINDOWEVENT_EXPOSED) {
        m_window.PresentAll();
    }
}

// The pen may leave the window while it is down.
void WindowMode::HandleButton(const SDL_MouseButtonEvent& event) {
    const bool down = event.type == SDL_MOUSEBUTTONDOWN;
    SDL_CaptureMouse(down ? SDL_TRUE : SDL_FALSE);
    if (down && m_window.HasPage()) return m_window.HidePage();
    const POINT point = m_window.OnDevice(event.x, event.y);
    Add(down ? m_stroke.PutDown(point) : m_stroke.Lift(point));
}

// Any key takes the list of keys away.
void WindowMode::HandleKey(SDL_Keycode code) {
    for (const WindowKey& key : WindowKeys()) {
        if (key.code != code) continue;
        if (m_window.HasPage() && key.action != WindowAction::ShowHelp) m_window.HidePage();
        ShowTitle();
        return Perform(key.action);
    }
    if (m_window.HasPage()) m_window.HidePage();
}

void WindowMode::Perform(WindowAction action) {
    const HWND dialog = host::TopmostModalWindow();
    switch (action) {
        case WindowAction::ShowHelp:
            return ToggleHelp();
        case WindowAction::Rotate:
            if (dialog && !CoversScreen(dialog)) return Say("close the dialog first");
            return Add(TurnActs(m_session, ScreenSize()));
        case WindowAction::NextSize:
            if (dialog) return Say("close the dialog first");
            return Add(ChangeSizeActs(NextScreenSize(ScreenSize()), m_options.skins));
        case WindowAction::NextSkin:
            if (dialog) return Say("close the dialog first");
            return Add(Words{"skin", "next"});
        case WindowAction::TakeScreenshot:
            return Add(ScreenshotAct());
        case WindowAction::Quit:
            m_quitting = true;
    }
}

void WindowMode::Add(const std::optional<Words>& act) {
    if (act) m_acts.push_back(*act);
}

void WindowMode::ToggleHelp() {
    if (m_window.HasPage()) return m_window.HidePage();
    m_window.ShowPage(DrawHelpPage(m_window.Size()));
}

// A record hears of it with the next act, so that a handheld nobody touches writes nothing.
void WindowMode::ShowTime() {
    const std::string time = TimeText();
    if (time == m_time) return;
    m_time = time;
    m_timeRecorded = false;
    m_session.GetApplication().SetTime(FromUtf8(time).value_or(std::u16string()));
}

// Two taps are a double tap by the time at which they were made, however busy the simulator was then.
void WindowMode::MoveClockTo(Uint32 ticks) {
    const Uint32 passed = ticks - m_ticks;
    if (passed > 0x7FFFFFFF) return;  // older than what was seen last
    host::AdvanceClock(passed);
    m_ticks = ticks;
}

void WindowMode::Say(const std::string& text) {
    std::cerr << "simulator: " << text << '\n';
    m_window.SetTitle("Tolka: " + text);
}

void WindowMode::ShowTitle() {
    const SIZE screen = ScreenSize();
    m_window.SetTitle("Tolka " + std::to_string(screen.cx) + " x " + std::to_string(screen.cy) +
                      " (F1: help)");
}

}  // namespace

void RunInWindow(const WindowOptions& options) {
    ConnectToDisplay();
    WindowMode(options).Run();
}
