// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "actions.h"
#include "commands.h"
#include "device_lock.h"
#include "recorder.h"
#include "window_mode.h"

// The handheld that the window shows: its device, locked against other simulators, and the recording.
class Handheld {
public:
    // Starts it and selects its keyboard. Throws std::exception with a message for the user.
    explicit Handheld(const WindowOptions& options);
    ~Handheld() { SetNoteHandler(nullptr); }
    Handheld(const Handheld&) = delete;
    Handheld& operator=(const Handheld&) = delete;

    Session& GetSession() { return m_session; }
    // Runs and records a command; one that throws is not recorded.
    void Do(const Words& words);
    // Recorded with the next command, so that an idle handheld writes nothing.
    void ShowTime();

    // Tells the user at the terminal, and shows the last message in the window's title.
    void Report(const std::string& text);
    std::string TakeMessage() { return std::exchange(m_message, {}); }

    bool HasUnsavedNotes() const;
    // Writes what has changed. False if something could not be written.
    bool Save();

private:
    void Start(const WindowOptions& options);
    bool SaveNotes();

    std::string m_message;
    DeviceLock m_lock;
    std::optional<Recorder> m_recorder;
    Session m_session;
    std::string m_time;
    bool m_timeRecorded = false;
    std::optional<std::u16string> m_notes;  // as last written; none if they are not kept
    bool m_notesWritten = true;
};
