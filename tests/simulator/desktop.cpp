// SPDX-License-Identifier: MIT
#include "desktop.h"

#include <fcntl.h>
#include <png.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>

namespace fs = std::filesystem;

namespace {

void Redirect(int descriptor, const fs::path& file) {
    const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (opened >= 0) dup2(opened, descriptor);
}

int StatusOf(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : -1;
}

// A big-endian word of the header of the server's picture.
std::uint32_t HeaderWord(const std::string& bytes, std::size_t index) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < 4; ++i)
        word = word << 8 | static_cast<unsigned char>(bytes[index * 4 + i]);
    return word;
}

}  // namespace

Pixels ReadPng(const fs::path& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, file.c_str())) return {};
    image.format = PNG_FORMAT_BGRA;
    Pixels picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    picture.values.resize(std::size_t{image.width} * image.height);
    if (!png_image_finish_read(&image, nullptr, picture.values.data(), 0, nullptr)) return {};
    for (std::uint32_t& value : picture.values)
        value &= 0xFFFFFF;
    return picture;
}

Pixels Enlarge(const Pixels& picture, int scale) {
    Pixels result{picture.width * scale, picture.height * scale, {}};
    for (int y = 0; y < result.height; ++y)
        for (int x = 0; x < result.width; ++x)
            result.values.push_back(picture.At(x / scale, y / scale));
    return result;
}

bool ShowsAt(const Pixels& whole, int left, int top, const Pixels& part) {
    if (part.values.empty() || left < 0 || top < 0) return false;
    if (left + part.width > whole.width || top + part.height > whole.height) return false;
    for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x)
            if (whole.At(left + x, top + y) != part.At(x, y)) return false;
    }
    return true;
}

std::string ReadText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

bool Await(const std::function<bool()>& condition) {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(10ms);
    }
    return true;
}

Process::Process(const std::vector<std::string>& words, const fs::path& folder, const fs::path& output,
                 const fs::path& errors)
    : m_id(fork()) {
    if (m_id != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // even if the test is killed
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    Redirect(STDOUT_FILENO, output);
    Redirect(STDERR_FILENO, errors);
    setenv("XDG_CACHE_HOME", folder.c_str(), 1);  // for what graphics drivers keep
    setenv("LSAN_OPTIONS", "print_suppressions=0:suppressions='" KNOWN_LEAKS "'",
           1);  // quoted, as it may contain blanks
    if (chdir(folder.c_str()) == 0) execvp(arguments[0], arguments.data());
    _exit(127);
}

Process::~Process() {
    if (m_running) End(SIGKILL);
}

int Process::End(int signal) {
    kill(m_id, signal);
    return Wait();
}

int Process::Wait() {
    int status = 0;
    waitpid(m_id, &status, 0);
    m_running = false;
    return StatusOf(status);
}

// The server chooses a free display number and prints it when it is ready. By default it would reset when its
// last client ends, and disconnect one that starts at that moment.
Desktop::Desktop(const fs::path& folder)
    : m_folder(folder),
      m_server({"Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-fbdir", folder.string(),
                "-noreset", "-nolisten", "tcp"},
               folder, folder / "display", folder / "server") {
    Await([this] { return ReadText(m_folder / "display").ends_with('\n'); });
    std::istringstream(ReadText(m_folder / "display")) >> m_display;
}

// Waits for the server's end, so that it removes its socket and its lock.
Desktop::~Desktop() { m_server.End(SIGTERM); }

void Desktop::Enter() const { setenv("DISPLAY", (":" + m_display).c_str(), 1); }

// The file is the server's memory. Its header has the sizes of the header and the picture, the length of a
// row, and the number of colours between header and picture.
Pixels Desktop::Picture() const {
    const std::string bytes = ReadText(m_folder / "Xvfb_screen0");
    if (bytes.size() < 100) return {};
    Pixels picture{static_cast<int>(HeaderWord(bytes, 4)), static_cast<int>(HeaderWord(bytes, 5)), {}};
    const std::size_t row = HeaderWord(bytes, 12);
    const std::size_t start = HeaderWord(bytes, 0) + std::size_t{HeaderWord(bytes, 19)} * 12;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            std::uint32_t value = 0;
            const std::size_t at =
                start + static_cast<std::size_t>(y) * row + static_cast<std::size_t>(x) * 4;
            std::memcpy(&value, bytes.data() + at, sizeof value);
            picture.values.push_back(value & 0xFFFFFF);
        }
    }
    return picture;
}

std::string Desktop::Run(const std::string& words) const {
    FILE* output = popen(("xdotool " + words + " 2>&1").c_str(), "r");
    if (!output) return {};
    std::string text;
    char piece[256];
    while (std::fgets(piece, sizeof piece, output))
        text += piece;
    pclose(output);
    return text;
}

Desktop::Place Desktop::WindowPlace(const std::string& title) const {
    std::istringstream lines(Run("search --onlyvisible --name '^" + title + "' getwindowgeometry --shell"));
    Place place;
    for (std::string line; std::getline(lines, line);) {
        const std::string value = line.substr(line.find('=') + 1);
        if (line.starts_with("X=")) place.x = std::stoi(value);
        if (line.starts_with("Y=")) place.y = std::stoi(value);
        if (line.starts_with("WIDTH=")) place.width = std::stoi(value);
        if (line.starts_with("HEIGHT=")) place.height = std::stoi(value);
    }
    return place;
}
