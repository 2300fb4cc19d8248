// SPDX-License-Identifier: MIT
// Reads little-endian fields of files, which may be damaged.
#pragma once

#include <windef.h>

#include <cstring>
#include <optional>
#include <span>
#include <string>

namespace host {

using Bytes = std::span<const BYTE>;

// At any alignment. None beyond the end of the bytes.
template <typename Value>
std::optional<Value> Read(Bytes bytes, std::size_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Value)) return std::nullopt;
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof(Value));
    return value;
}

// None if they are not all inside.
inline std::optional<std::u16string> ReadCharacters(Bytes bytes, std::size_t offset, std::size_t count) {
    const std::size_t size = count * sizeof(WCHAR);
    if (offset > bytes.size() || bytes.size() - offset < size) return std::nullopt;
    std::u16string text(count, u'\0');
    std::memcpy(text.data(), bytes.data() + offset, size);
    return text;
}

}  // namespace host
