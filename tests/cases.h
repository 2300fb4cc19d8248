// SPDX-License-Identifier: MIT
// Tests as data: a file of cases, whose lines a test reads and carries out.
#pragma once

#include <fstream>
#include <ostream>
#include <string>
#include <vector>

// A case begins with a line "== Name". What stands above the first one describes the file.
struct Case {
    std::string name;
    std::vector<std::string> lines;
};

inline void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }

inline std::vector<Case> ReadCases(const std::string& path) {
    std::vector<Case> cases;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("== "))
            cases.push_back({line.substr(3), {}});
        else if (!cases.empty())
            cases.back().lines.push_back(line);
    return cases;
}
