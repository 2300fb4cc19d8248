// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "acts.h"
#include "commands.h"
#include "device_lock.h"
#include "recorder.h"
#include "window_mode.h"

// The handheld that the window shows: its device, which no other simulator uses meanwhile, and the record of
// what is done to it.
class Handheld {
public:
    // Brings it to where its keyboard is selected. Throws std::exception with a message for the user.
    explicit Handheld(const WindowOptions& options);
    ~Handheld() { SetNoteHandler(nullptr); }
    Handheld(const Handheld&) = delete;
    Handheld& operator=(const Handheld&) = delete;

    Session& GetSession() { return m_session; }
    // Runs a command. Throws what it throws, and then the record is without it.
    void Do(const Words& words);
    // A record hears of it with the next command, so that a handheld nobody touches writes nothing.
    void ShowTime();

    // Tells the person, at the terminal at once and in the title of the window, which takes the last message.
    void Tell(const std::string& text);
    std::string TakeMessage() { return std::exchange(m_message, {}); }

    bool HasUnsavedNotes() const;
    // Writes what has changed. False when something of the device could not be written.
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
    std::optional<std::u16string> m_notes;  // as they were written last; none when they are not kept
    bool m_notesWritten = true;
};
