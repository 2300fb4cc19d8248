// SPDX-License-Identifier: MIT
#include "recorder.h"

#include <cstdint>
#include <iostream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

// A command as the line of a script: words that need it in double quotes.
std::string ScriptLine(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty()) line += ' ';
        if (!word.empty() && word.find_first_of(" \t\"#") == std::string::npos) {
            line += word;
            continue;
        }
        line += '"';
        for (const char character : word) {
            if (character == '"' || character == '\\') line += '\\';
            line += character;
        }
        line += '"';
    }
    return line;
}

}  // namespace

Recorder::Recorder(const fs::path& file, const std::string& device)
    : m_path(file), m_file(file, std::ios::binary | std::ios::trunc) {
    if (!m_file) throw std::runtime_error("cannot write the recording " + file.string());
    WriteLine("# Replay it with: simulator --device DIR --script " + file.filename().string());
    WriteLine("# where DIR is a copy of " + device + " as it was before.");
}

void Recorder::Write(const std::vector<std::string>& words) {
    m_lastLine = m_file.tellp();
    WriteLine(ScriptLine(words));
}

void Recorder::WriteLine(const std::string& line) {
    if (!m_file) return;
    m_file << line << '\n' << std::flush;
    if (!m_file)
        std::cerr << "simulator: cannot write to " << m_path.string() << ": the recording ends here\n";
}

void Recorder::TakeBack() {
    if (!m_file) return;
    m_file.seekp(m_lastLine);
    std::error_code ignored;
    fs::resize_file(m_path, static_cast<std::uintmax_t>(m_lastLine), ignored);
}
