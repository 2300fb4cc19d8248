// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <iterator>
#include <string>

#include "bytes.h"

inline tlk::Bytes ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string ReadText(const std::string& path) {
    const tlk::Bytes bytes = ReadBytes(path);
    return {bytes.begin(), bytes.end()};
}
