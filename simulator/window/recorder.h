// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// Writes what the user does to a script, each line at once, so that the script is complete even if the
// program is killed.
class Recorder {
public:
    // Replaces an existing file. Throws std::runtime_error if it cannot be written.
    Recorder(const std::filesystem::path& file, const std::string& device);

    // If the disk is full, tells the user once and ends the recording.
    void Write(const std::vector<std::string>& words);
    // Removes the last command, which failed: a script would end there.
    void TakeBack();

private:
    void WriteLine(const std::string& line);

    std::filesystem::path m_path;
    std::ofstream m_file;
    std::ofstream::pos_type m_lastLine{};
};
