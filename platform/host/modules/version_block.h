// SPDX-License-Identifier: MIT
// Reads a version block from its bytes, which are not trusted. A block is a tree of nodes, each aligned to 4
// bytes from the block's start:
//
//     WORD length      bytes of the node with its children, without the padding behind it
//     WORD valueSize   of the value: characters of a text, bytes of anything else
//     WORD type        1 for a text
//     WCHAR key[]      with a null character
//     padding, value, padding, children
#pragma once

#include <windef.h>

#include <optional>
#include <span>
#include <string_view>

namespace host {

struct VersionValue {
    std::size_t offset;  // from the block's start; even
    std::size_t size;    // characters with the null for a text, else bytes
};

// The value at a path of keys ("\" is the root), ignoring case; of equal keys the first counts. None if there
// is none, or a node on the path or the value is damaged, for instance a text without its null character.
std::optional<VersionValue> FindVersionValue(std::span<const BYTE> block, std::u16string_view path);

}  // namespace host
