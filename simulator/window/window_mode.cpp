// SPDX-License-Identifier: MIT
#include "window_mode.h"

#include <SDL.h>
#include <sip_layout.h>
#include <unicode.h>

#include <algorithm>
#include <deque>
#include <exception>

#include "actions.h"
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
#include "time_of_day.h"

namespace {

// Such a dialog follows the screen when that turns; any other stays where it is.
bool CoversScreen(HWND dialog) {
    RECT area{};
    GetWindowRect(dialog, &area);
    return IsSameSize({area.right - area.left, area.bottom - area.top}, ScreenSize());
}

// The desktop reports a key that is held while the window gets the focus as pressed at that moment.
constexpr Uint32 kFocusDelay = 10;  // milliseconds
constexpr Uint32 kMillisecondsToSave = 1000;
constexpr int kMillisecondsToCommands = 50;  // between looks for commands of another program

// The user at the window: the platform's idle time, even inside modal windows, is spent waiting for them.
// Each action becomes a command and runs like a command of a script, when all messages before it have been
// handled.
class WindowMode {
public:
    explicit WindowMode(const WindowOptions& options);
    bool Run();

private:
    bool OnIdle();
    void SaveInTime();
    void TakeCommands();
    void RunNextAction();
    SDL_Event WaitForEvent();
    void FollowHandheld();
    void Handle(const SDL_Event& event);
    void HandleWindow(const SDL_WindowEvent& event);
    void HandleButton(const SDL_MouseButtonEvent& event);
    void HandleKey(const SDL_KeyboardEvent& event);
    void Perform(const WindowKey& key, Uint32 pressed);
    void Add(const Actions& actions) { m_actions.insert(m_actions.end(), actions.begin(), actions.end()); }
    void Add(const std::optional<Words>& action);
    void ToggleHelp();
    void MoveClockTo(Uint32 ticks);
    void ShowTitle();

    const SkinOptions m_skins;
    std::optional<CommandInput> m_commands;
    Handheld m_handheld;
    Session& m_session = m_handheld.GetSession();
    DeviceWindow m_window;
    PenStroke m_stroke{m_session};
    std::deque<Words> m_actions;
    SIZE m_fittedScreen = ScreenSize();
    std::u16string m_shownSkin;
    SDL_Keycode m_quitKey = SDLK_UNKNOWN;  // pressed and not yet released
    Uint32 m_focused = 0;                  // when the window got the focus
    Uint32 m_ticks = SDL_GetTicks();
    Uint32 m_saved = SDL_GetTicks();  // the last time when nothing was unsaved
    bool m_quitting = false;
};

WindowMode::WindowMode(const WindowOptions& options)
    : m_skins(options.skins), m_handheld(options), m_window(options.scale) {
    ShowTitle();
    if (options.commands == WindowOptions::Commands::FromStandardInput) m_commands.emplace();
    if (options.scale > m_window.Scale()) {
        m_handheld.Report("the monitor has no room for --scale " + std::to_string(options.scale) +
                          ": the picture is as large as fits");
    }
}

bool WindowMode::Run() {
    m_session.RunMessages([this] { return OnIdle(); });
    return m_handheld.Save();
}

// False if the window has been closed: all message loops then end, the innermost first.
bool WindowMode::OnIdle() {
    m_session.GetTrace().Flush();
    if (m_quitting) return false;
    SaveInTime();
    m_session.LayOutApplication();
    if (m_session.PostQueuedPen()) return true;
    if (m_actions.empty()) TakeCommands();
    if (m_actions.empty())
        Handle(WaitForEvent());
    else
        RunNextAction();
    return true;
}

void WindowMode::TakeCommands() {
    if (!m_commands) return;
    while (const std::optional<std::string> line = m_commands->TakeLine()) {
        try {
            const Words words = SplitWords(*line);
            if (!words.empty()) m_actions.push_back(words);
        } catch (const std::exception& error) {
            m_handheld.Report(error.what());
        }
    }
    if (m_commands->HasEnded() && m_actions.empty()) m_quitting = true;
}

// Catches all exceptions, as code of the library may be on the stack.
void WindowMode::RunNextAction() {
    const Words words = m_actions.front();
    m_actions.pop_front();
    try {
        m_handheld.Do(words);
        if (words[0] == "screenshot" && words.size() == 2) m_handheld.Report("the screen is in " + words[1]);
    } catch (const std::exception& error) {
        m_handheld.Report(error.what());
    }
}

// Saves the text once a second.
void WindowMode::SaveInTime() {
    const Uint32 now = SDL_GetTicks();
    const bool unsaved = m_handheld.HasUnsavedNotes();
    if (unsaved && now - m_saved < kMillisecondsToSave) return;
    if (unsaved) m_handheld.Save();
    m_saved = now;
}

// Shows everything before it waits, and wakes up each minute for the time on the screen.
SDL_Event WindowMode::WaitForEvent() {
    SDL_Event event{};
    if (SDL_PollEvent(&event)) return event;
    m_handheld.ShowTime();
    host::DeliverMessages();
    FollowHandheld();
    m_window.Present();
    int wait = MillisecondsToNextMinute();
    if (m_handheld.HasUnsavedNotes()) wait = std::min(wait, static_cast<int>(kMillisecondsToSave));
    if (m_commands) wait = std::min(wait, kMillisecondsToCommands);
    if (!SDL_WaitEventTimeout(&event, wait)) event.type = SDL_FIRSTEVENT;
    return event;
}

// Shows a new screen size, skin or message of the handheld.
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
    if (event.event == SDL_WINDOWEVENT_FOCUS_GAINED)
        m_focused = event.timestamp;
    else if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED && m_window.HasPage())
        m_window.ShowPage(DrawHelpPage(m_window.Size()));
    else if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED || event.event == SDL_WINDOWEVENT_EXPOSED)
        m_window.PresentAll();
}

// Captures the mouse, as the pen may leave the window while it is down.
void WindowMode::HandleButton(const SDL_MouseButtonEvent& event) {
    const bool down = event.type == SDL_MOUSEBUTTONDOWN;
    SDL_CaptureMouse(down ? SDL_TRUE : SDL_FALSE);
    if (down && m_window.HasPage()) return m_window.HidePage();
    const POINT point = m_window.OnDevice(event.x, event.y);
    Add(down ? m_stroke.PutDown(point) : m_stroke.Lift(point));
}

// Any key closes the list of keys.
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
            if (dialog && !CoversScreen(dialog)) return m_handheld.Report("close the dialog first");
            return Add(TurnActions(m_session, ScreenSize()));
        case WindowAction::NextSize:
            if (dialog) return m_handheld.Report("close the dialog first");
            return Add(ChangeSizeActions(NextScreenSize(ScreenSize()), m_skins));
        case WindowAction::NextSkin:
            if (dialog) return m_handheld.Report("close the dialog first");
            return Add(Words{"skin", "next"});
        case WindowAction::TakeScreenshot:
            return Add(ScreenshotAction());
        case WindowAction::Quit:
            // Quits on release: a held key would be passed on to the next window.
            if (pressed - m_focused > kFocusDelay) m_quitKey = key.code;
    }
}

void WindowMode::Add(const std::optional<Words>& action) {
    if (action) m_actions.push_back(*action);
}

void WindowMode::ToggleHelp() {
    if (m_window.HasPage()) return m_window.HidePage();
    m_window.ShowPage(DrawHelpPage(m_window.Size()));
}

// Whether two taps are a double tap depends on when they were made, not on how busy the simulator was.
void WindowMode::MoveClockTo(Uint32 ticks) {
    const Uint32 passed = ticks - m_ticks;
    if (passed > 0x7FFFFFFF) return;  // older than the last one seen
    host::AdvanceClock(passed);
    m_ticks = ticks;
}

void WindowMode::ShowTitle() {
    const SIZE screen = ScreenSize();
    m_shownSkin = StoredSkin();
    m_window.SetTitle("Tolka " + std::to_string(screen.cx) + " x " + std::to_string(screen.cy) + ' ' +
                      unicode::ToUtf8(PlainSkinName(m_shownSkin)) + " (F1: help)");
}

}  // namespace

bool RunInWindow(const WindowOptions& options) {
    ConnectToDisplay();
    return WindowMode(options).Run();
}
