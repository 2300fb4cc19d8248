// SPDX-License-Identifier: MIT
#include "window_mode.h"

#include <SDL.h>
#include <sip_layout.h>

#include <algorithm>
#include <deque>
#include <exception>

#include "acts.h"
#include "chosen_skin.h"
#include "command_input.h"
#include "device_window.h"
#include "display.h"
#include "handheld.h"
#include "help_page.h"
#include "keys.h"
#include "pen_stroke.h"
#include "scale.h"
#include "script.h"
#include "skin_files.h"
#include "text.h"
#include "time_of_day.h"

namespace {

// A dialog that does follows the screen when that turns; any other stays where it is.
bool CoversScreen(HWND dialog) {
    RECT area{};
    GetWindowRect(dialog, &area);
    return IsSameSize({area.right - area.left, area.bottom - area.top}, ScreenSize());
}

// The desktop hands a key that is held over to the window that it goes to, as if it were pressed at that
// moment.
constexpr Uint32 takingOver = 10;  // milliseconds
constexpr Uint32 millisecondsToSave = 1000;
constexpr int millisecondsToCommands = 50;  // until commands of another program are looked for

// The person at the window: the platform's idle time goes into waiting for them, also inside modal windows.
// What they do becomes a command, and runs as a command of a script does: when everything before has been
// dealt with.
class WindowMode {
public:
    explicit WindowMode(const WindowOptions& options);
    bool Run();

private:
    bool OnIdle();
    void SaveInTime();
    void TakeCommands();
    void RunNextAct();
    SDL_Event WaitForEvent();
    void FollowHandheld();
    void Handle(const SDL_Event& event);
    void HandleWindow(const SDL_WindowEvent& event);
    void HandleButton(const SDL_MouseButtonEvent& event);
    void HandleKey(const SDL_KeyboardEvent& event);
    void Perform(const WindowKey& key, Uint32 pressed);
    void Add(const Acts& acts) { m_acts.insert(m_acts.end(), acts.begin(), acts.end()); }
    void Add(const std::optional<Words>& act);
    void ToggleHelp();
    void MoveClockTo(Uint32 ticks);
    void ShowTitle();

    const SkinOptions m_skins;
    std::optional<CommandInput> m_commands;
    Handheld m_handheld;
    Session& m_session = m_handheld.GetSession();
    DeviceWindow m_window;
    PenStroke m_stroke{m_session};
    std::deque<Words> m_acts;
    SIZE m_fittedScreen = ScreenSize();
    std::u16string m_shownSkin;
    SDL_Keycode m_quitKey = SDLK_UNKNOWN;  // has been pressed
    Uint32 m_focused = 0;                  // when the window got the keys
    Uint32 m_ticks = SDL_GetTicks();
    Uint32 m_saved = SDL_GetTicks();  // when nothing was unsaved last
    bool m_quitting = false;
};

WindowMode::WindowMode(const WindowOptions& options)
    : m_skins(options.skins), m_handheld(options), m_window(options.scale) {
    ShowTitle();
    if (options.commands == WindowOptions::Commands::FromStandardInput) m_commands.emplace();
    if (options.scale > m_window.Scale()) {
        m_handheld.Tell("the monitor has no room for --scale " + std::to_string(options.scale) +
                        ": the picture is as large as fits");
    }
}

bool WindowMode::Run() {
    m_session.RunMessages([this] { return OnIdle(); });
    return m_handheld.Save();
}

// False when the window has been closed: then every message loop ends, the innermost first.
bool WindowMode::OnIdle() {
    m_session.GetTrace().Flush();
    if (m_quitting) return false;
    SaveInTime();
    m_session.LayOutApplication();
    if (m_session.PostQueuedPen()) return true;
    if (m_acts.empty()) TakeCommands();
    if (m_acts.empty()) {
        Handle(WaitForEvent());
    } else {
        RunNextAct();
    }
    return true;
}

void WindowMode::TakeCommands() {
    if (!m_commands) return;
    while (const std::optional<std::string> line = m_commands->TakeLine()) {
        try {
            const Words words = SplitWords(*line);
            if (!words.empty()) m_acts.push_back(words);
        } catch (const std::exception& error) {
            m_handheld.Tell(error.what());
        }
    }
    if (m_commands->HasEnded() && m_acts.empty()) m_quitting = true;
}

// Nothing is thrown on, as the code of the library may lie between here and the main loop.
void WindowMode::RunNextAct() {
    const Words words = m_acts.front();
    m_acts.pop_front();
    try {
        m_handheld.Do(words);
        if (words[0] == "screenshot" && words.size() == 2) m_handheld.Tell("the screen is in " + words[1]);
    } catch (const std::exception& error) {
        m_handheld.Tell(error.what());
    }
}

// What is typed is saved once a second.
void WindowMode::SaveInTime() {
    const Uint32 now = SDL_GetTicks();
    const bool unsaved = m_handheld.HasUnsavedNotes();
    if (unsaved && now - m_saved < millisecondsToSave) return;
    if (unsaved) m_handheld.Save();
    m_saved = now;
}

// Everything is shown before the wait begins. The time on the screen needs a look at the end of each minute.
SDL_Event WindowMode::WaitForEvent() {
    SDL_Event event{};
    if (SDL_PollEvent(&event)) return event;
    m_handheld.ShowTime();
    host::DeliverMessages();
    FollowHandheld();
    m_window.Present();
    int wait = MillisecondsToNextMinute();
    if (m_handheld.HasUnsavedNotes()) wait = std::min(wait, static_cast<int>(millisecondsToSave));
    if (m_commands) wait = std::min(wait, millisecondsToCommands);
    if (!SDL_WaitEventTimeout(&event, wait)) event.type = SDL_FIRSTEVENT;
    return event;
}

// Its screen size, its skin and what it has to say may be others now.
void WindowMode::FollowHandheld() {
    const bool sameSize = IsSameSize(ScreenSize(), m_fittedScreen);
    m_fittedScreen = ScreenSize();
    if (!sameSize) m_window.FitScreen();
    if (!sameSize || StoredSkin() != m_shownSkin) ShowTitle();
    const std::string message = m_handheld.TakeMessage();
    if (!message.empty()) m_window.SetTitle("Tolka: " + message);
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
            if (event.key.repeat == 0) HandleKey(event.key);
            break;
        case SDL_KEYUP:
            if (event.key.keysym.sym == m_quitKey) m_quitting = true;
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
    if (event.event == SDL_WINDOWEVENT_FOCUS_GAINED) {
        m_focused = event.timestamp;
    } else if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED && m_window.HasPage()) {
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
void WindowMode::HandleKey(const SDL_KeyboardEvent& event) {
    for (const WindowKey& key : WindowKeys()) {
        if (key.code != event.keysym.sym) continue;
        if (m_window.HasPage() && key.action != WindowAction::ShowHelp) m_window.HidePage();
        ShowTitle();
        return Perform(key, event.timestamp);
    }
    if (m_window.HasPage()) m_window.HidePage();
}

void WindowMode::Perform(const WindowKey& key, Uint32 pressed) {
    const HWND dialog = host::TopmostModalWindow();
    switch (key.action) {
        case WindowAction::ShowHelp:
            return ToggleHelp();
        case WindowAction::Rotate:
            if (dialog && !CoversScreen(dialog)) return m_handheld.Tell("close the dialog first");
            return Add(TurnActs(m_session, ScreenSize()));
        case WindowAction::NextSize:
            if (dialog) return m_handheld.Tell("close the dialog first");
            return Add(ChangeSizeActs(NextScreenSize(ScreenSize()), m_skins));
        case WindowAction::NextSkin:
            if (dialog) return m_handheld.Tell("close the dialog first");
            return Add(Words{"skin", "next"});
        case WindowAction::TakeScreenshot:
            return Add(ScreenshotAct());
        case WindowAction::Quit:
            // Its release quits: held, the key would go on into the next window.
            if (pressed - m_focused > takingOver) m_quitKey = key.code;
    }
}

void WindowMode::Add(const std::optional<Words>& act) {
    if (act) m_acts.push_back(*act);
}

void WindowMode::ToggleHelp() {
    if (m_window.HasPage()) return m_window.HidePage();
    m_window.ShowPage(DrawHelpPage(m_window.Size()));
}

// Two taps are a double tap by the time at which they were made, however busy the simulator was then.
void WindowMode::MoveClockTo(Uint32 ticks) {
    const Uint32 passed = ticks - m_ticks;
    if (passed > 0x7FFFFFFF) return;  // older than what was seen last
    host::AdvanceClock(passed);
    m_ticks = ticks;
}

void WindowMode::ShowTitle() {
    const SIZE screen = ScreenSize();
    m_shownSkin = StoredSkin();
    m_window.SetTitle("Tolka " + std::to_string(screen.cx) + " x " + std::to_string(screen.cy) + ' ' +
                      ToUtf8(PlainSkinName(m_shownSkin)) + " (F1: help)");
}

}  // namespace

bool RunInWindow(const WindowOptions& options) {
    ConnectToDisplay();
    return WindowMode(options).Run();
}
