// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// A command as the line of a script: words that need it in double quotes.
std::string ScriptLine(const std::vector<std::string>& words);

// Writes what the person does to a script, each line at once, so that the script is whole whatever happens to
// the program.
class Recorder {
public:
    // Throws std::runtime_error when the file cannot be written; an old one is replaced.
    Recorder(const std::filesystem::path& file, const std::string& device);

    // When the disk is full, the person hears of it once and the recording ends there.
    void Write(const std::vector<std::string>& words);
    // The last command did nothing but fail: a script would end at it.
    void TakeBack();

private:
    void WriteLine(const std::string& line);

    std::filesystem::path m_path;
    std::ofstream m_file;
    std::ofstream::pos_type m_lastLine{};
};
