// SPDX-License-Identifier: MIT
// Writes and reads the little-endian fields of modules and bitmaps, byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tlk {

using Bytes = std::vector<std::uint8_t>;

// Valid as long as the bytes.
inline std::string_view AsText(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline void Put8(Bytes& bytes, unsigned value) { bytes.push_back(static_cast<std::uint8_t>(value & 0xFF)); }

inline void Put16(Bytes& bytes, unsigned value) {
    Put8(bytes, value);
    Put8(bytes, value >> 8);
}

inline void Put32(Bytes& bytes, std::uint32_t value) {
    Put16(bytes, value & 0xFFFF);
    Put16(bytes, value >> 16);
}

inline void Put64(Bytes& bytes, std::uint64_t value) {
    Put32(bytes, static_cast<std::uint32_t>(value & 0xFFFFFFFF));
    Put32(bytes, static_cast<std::uint32_t>(value >> 32));
}

inline void PadTo(Bytes& bytes, std::size_t multiple) {
    bytes.resize((bytes.size() + multiple - 1) / multiple * multiple);
}

// For reading a file that may be damaged: nothing if the field is outside.
inline std::optional<std::uint32_t> Get32(std::span<const std::uint8_t> bytes, std::size_t offset) {
    if (bytes.size() < 4 || offset > bytes.size() - 4) return std::nullopt;
    return static_cast<std::uint32_t>(bytes[offset]) | static_cast<std::uint32_t>(bytes[offset + 1]) << 8 |
           static_cast<std::uint32_t>(bytes[offset + 2]) << 16 |
           static_cast<std::uint32_t>(bytes[offset + 3]) << 24;
}

inline std::optional<std::uint16_t> Get16(std::span<const std::uint8_t> bytes, std::size_t offset) {
    if (bytes.size() < 2 || offset > bytes.size() - 2) return std::nullopt;
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

}  // namespace tlk
