// SPDX-License-Identifier: MIT
#include "handheld.h"

#include <unicode.h>

#include <unistd.h>

#include <iostream>

#include "notes_file.h"
#include "time_of_day.h"

namespace {

Session::Options WithReport(Session::Options options, std::function<void(const std::string&)> report) {
    options.report = std::move(report);
    return options;
}

}  // namespace

Handheld::Handheld(const WindowOptions& options)
    : m_lock(options.session.device, DeviceLock::Kind::Window),
      m_recorder(options.record ? std::optional<Recorder>(std::in_place, *options.record,
                                                          options.session.device.string())
                                : std::nullopt),
      m_session(WithReport(options.session, [this](const std::string& text) { Report(text); })) {
    if (options.trace == WindowOptions::Trace::Hidden) m_session.GetTrace().Mute();
    SetNoteHandler([this](const std::string& text) { Report(text); });
    ShowTime();
    Start(options);
}

// Missing skins or notes are only reported: the keyboard has other skins or says that it has none, and new
// notes can be written. Everything else must succeed.
void Handheld::Start(const WindowOptions& options) {
    if (access(options.session.device.c_str(), W_OK) != 0)
        Report("the device " + options.session.device.string() + " cannot be written: no change is kept");
    for (const Words& action : StartActions(options.session.screen, options.skins)) {
        try {
            Do(action);
            if (action[0] == "notes") m_notes = m_session.GetApplication().Text();
        } catch (const std::exception& error) {
            if (action[0] != "skins" && action[0] != "notes") throw;
            Report(error.what());
        }
        m_session.LayOutApplication();
        host::DeliverMessages();
    }
}

void Handheld::Do(const Words& words) {
    if (m_recorder && !m_timeRecorded) m_recorder->Write({"time", m_time});
    m_timeRecorded = true;
    if (m_recorder) m_recorder->Write(words);
    try {
        RunCommand(m_session, words);
        if (words[0] == "select" && !m_session.Sip().IsSelected()) Report("the keyboard does not start");
    } catch (const std::exception&) {
        if (m_recorder) m_recorder->TakeBack();
        throw;
    }
}

void Handheld::ShowTime() {
    const std::string time = TimeOfDay();
    if (time == m_time) return;
    m_time = time;
    m_timeRecorded = false;
    m_session.GetApplication().SetTime(unicode::FromUtf8(time).value_or(std::u16string()));
}

void Handheld::Report(const std::string& text) {
    std::cerr << "simulator: " << text << '\n';
    m_message = text;
}

bool Handheld::HasUnsavedNotes() const { return m_notes && *m_notes != m_session.GetApplication().Text(); }

bool Handheld::Save() {
    const bool notes = SaveNotes();
    return host::FlushRegistry() && notes;
}

bool Handheld::SaveNotes() {
    if (m_notesWritten && !HasUnsavedNotes()) return true;
    m_notes = m_session.GetApplication().Text();
    try {
        WriteNotes(*m_notes);
        m_notesWritten = true;
    } catch (const std::exception& error) {
        Report(error.what());
        m_notesWritten = false;
    }
    return m_notesWritten;
}
