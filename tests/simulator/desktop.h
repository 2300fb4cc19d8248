// SPDX-License-Identifier: MIT
// A desktop that nobody sees, and programs on it.
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
Pixels ReadPng(const std::filesystem::path& file);  // empty when it is no whole picture
Pixels Enlarge(const Pixels& picture, int scale);
// Does the one hold the other with its corner there?
bool ShowsAt(const Pixels& whole, int left, int top, const Pixels& part);

std::string ReadText(const std::filesystem::path& file);
// Asks until the answer is yes; no after a minute, which no machine needs.
bool Await(const std::function<bool()>& condition);

// A program that is ended with its object at the latest.
class Process {
public:
    // Output and errors go to the files; the folder is where it runs.
    Process(const std::vector<std::string>& words, const std::filesystem::path& folder,
            const std::filesystem::path& output, const std::filesystem::path& errors);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t Id() const { return m_id; }
    // Sends the signal and returns the exit status; 128 and the signal when that ended it.
    int End(int signal);
    int Wait();

private:
    pid_t m_id;
    bool m_running = true;
};

// An X server without a screen to look at, and the pointer and keys of its user.
class Desktop {
public:
    explicit Desktop(const std::filesystem::path& folder);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    bool IsReady() const { return !m_display.empty(); }
    Pixels Picture() const;  // of all of it
    // Programs started from here on appear on it.
    void Enter() const;

    struct Place {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool operator==(const Place&) const = default;
    };
    // Of the one window whose title begins so; all 0 while there is none.
    Place WindowPlace(const std::string& title) const;
    // xdotool with these words.
    std::string Act(const std::string& words) const;

private:
    std::filesystem::path m_folder;
    Process m_server;
    std::string m_display;
};
