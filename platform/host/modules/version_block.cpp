// SPDX-License-Identifier: MIT
#include "modules/version_block.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "device/strings.h"

namespace host {
namespace {

constexpr std::size_t kHeaderSize = 3 * sizeof(WORD);

using Block = std::span<const BYTE>;

// A node inside the block, with its key and value inside the node. Offsets are from the block's start.
struct Node {
    std::u16string key;
    std::size_t keyEnd;  // of the null character
    std::size_t value;
    std::size_t valueBytes;
    bool isText;
    std::size_t children;  // at most end
    std::size_t end;
};

std::size_t Align(std::size_t offset) { return (offset + 3) & ~std::size_t{3}; }

WORD ReadWord(Block block, std::size_t offset) {
    WORD word;
    std::memcpy(&word, block.data() + offset, sizeof word);
    return word;
}

// The offset of the null character between these two offsets, if any.
std::optional<std::size_t> FindNull(Block block, std::size_t begin, std::size_t end) {
    for (std::size_t offset = begin; offset + sizeof(WCHAR) <= end; offset += sizeof(WCHAR))
        if (ReadWord(block, offset) == 0) return offset;
    return std::nullopt;
}

// The node at an offset, which must not extend beyond the limit.
std::optional<Node> ReadNode(Block block, std::size_t offset, std::size_t limit) {
    if (offset > limit || limit - offset < kHeaderSize) return std::nullopt;
    const std::size_t length = ReadWord(block, offset);
    if (length < kHeaderSize || length > limit - offset) return std::nullopt;
    Node node{};
    node.end = offset + length;
    const std::size_t key = offset + kHeaderSize;
    const std::optional<std::size_t> keyEnd = FindNull(block, key, node.end);
    if (!keyEnd) return std::nullopt;
    node.keyEnd = *keyEnd;
    node.key.resize((node.keyEnd - key) / sizeof(WCHAR));
    std::memcpy(node.key.data(), block.data() + key, node.keyEnd - key);
    node.isText = ReadWord(block, offset + 2 * sizeof(WORD)) == 1;
    node.valueBytes = ReadWord(block, offset + sizeof(WORD)) * (node.isText ? sizeof(WCHAR) : 1);
    node.value = Align(node.keyEnd + sizeof(WCHAR));
    if (node.valueBytes == 0) {
        node.children = node.value;
        return node;
    }
    if (node.value > node.end || node.end - node.value < node.valueBytes) return std::nullopt;
    node.children = Align(node.value + node.valueBytes);
    return node;
}

// Siblings follow each other; each is at least as long as its header, so the search ends.
std::optional<Node> FindChild(Block block, const Node& parent, std::u16string_view key) {
    for (std::size_t offset = parent.children; offset < parent.end;) {
        std::optional<Node> child = ReadNode(block, offset, parent.end);
        if (child && EqualIgnoringCase(child->key, key)) return child;
        if (parent.end - offset < kHeaderSize) break;
        const std::size_t length = ReadWord(block, offset);
        if (length < kHeaderSize) break;
        offset = Align(offset + length);
    }
    return std::nullopt;
}

// For a text without a value, an empty text: the null character of its key.
std::optional<VersionValue> ValueOf(Block block, const Node& node) {
    if (!node.isText) return VersionValue{node.valueBytes == 0 ? node.keyEnd : node.value, node.valueBytes};
    if (node.valueBytes == 0) return VersionValue{node.keyEnd, 0};
    if (!FindNull(block, node.value, node.value + node.valueBytes)) return std::nullopt;
    return VersionValue{node.value, node.valueBytes / sizeof(WCHAR)};
}

}  // namespace

std::optional<VersionValue> FindVersionValue(Block block, std::u16string_view path) {
    std::optional<Node> node = ReadNode(block, 0, block.size());
    for (const std::u16string_view key : Split(path, u"\\"))
        if (node) node = FindChild(block, *node, key);
    return node ? ValueOf(block, *node) : std::nullopt;
}

}  // namespace host
