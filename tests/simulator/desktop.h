// SPDX-License-Identifier: MIT
// An invisible desktop, and programs on it.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// 0x00RRGGBB, rows from the top.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> values;

    std::uint32_t At(int x, int y) const {
        return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};
Pixels ReadPng(const std::filesystem::path& file);  // empty if it is no complete picture
Pixels Enlarge(const Pixels& picture, int scale);
// Does `whole` contain `part` at this position?
bool ShowsAt(const Pixels& whole, int left, int top, const Pixels& part);

std::string ReadText(const std::filesystem::path& file);
// Waits until the condition is true; false after a minute, which is enough for any machine.
bool Await(const std::function<bool()>& condition);

// A program, which ends at the latest with its object.
class Process {
public:
    // Runs in the folder; output and errors go to the files.
    Process(const std::vector<std::string>& words, const std::filesystem::path& folder,
            const std::filesystem::path& output, const std::filesystem::path& errors);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t Id() const { return m_id; }
    // Sends the signal and returns the exit status; 128 plus the signal if that ended it.
    int End(int signal);
    int Wait();

private:
    pid_t m_id;
    bool m_running = true;
};

// An X server without a screen, and its user's pointer and keys.
class Desktop {
public:
    explicit Desktop(const std::filesystem::path& folder);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    bool IsReady() const { return !m_display.empty(); }
    Pixels Picture() const;  // of the whole desktop
    // Programs started after this call appear on it.
    void Enter() const;

    struct Place {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool operator==(const Place&) const = default;
    };
    // The place of the one window whose title begins so; all 0 if there is none.
    Place WindowPlace(const std::string& title) const;
    // Runs xdotool with these words.
    std::string Run(const std::string& words) const;

private:
    std::filesystem::path m_folder;
    Process m_server;
    std::string m_display;
};
