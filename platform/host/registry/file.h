// SPDX-License-Identifier: MIT
// The text format that registry editors export, in UTF-8: from and to a tree, without files and handles.
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

// Understands what editors write and accept by hand: comments, blank lines, lines continued with "\",
// deletions.
std::variant<RegistryTree, RegistryFileError> ParseRegistryFile(std::string_view text);
// What ParseRegistryFile reads back to the same tree, byte for byte.
std::string FormatRegistryFile(const RegistryTree& tree);

}  // namespace host
