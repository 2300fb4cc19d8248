// SPDX-License-Identifier: MIT
// Reads and writes the text format of registry editors, in UTF-8, from and to a tree, without files and
// handles.
#pragma once

#include "registry/tree.h"

#include <string>
#include <string_view>
#include <variant>

namespace host {

struct RegistryFileError {
    std::size_t line = 0;  // from 1
    std::string what;
};

// Reads what editors write, and what they accept from people: comments, blank lines, lines continued with
// "\", deletions.
std::variant<RegistryTree, RegistryFileError> ParseRegistryFile(std::string_view text);
// ParseRegistryFile reads the text back into an equal tree.
std::string FormatRegistryFile(const RegistryTree& tree);

}  // namespace host
