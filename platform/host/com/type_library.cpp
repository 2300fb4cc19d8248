// SPDX-License-Identifier: MIT
// The parts of the format that matter here (offsets in bytes, numbers little-endian):
//
//     0x00  "MSFT", 0x00010002            0x18  version: major, minor (16 bits each)
//     0x08  GUID of the library           0x1C  flags of the library
//     0x0C  language of the descriptions  0x20  number of descriptions
//     0x10  locale of the library         0x24  help string
//     0x14  system and format flags       0x54  path of a help library, where 0x14 has bit 0x100
//
// Then come 4 bytes for each description, then the directory: 16 bytes (offset, size, ...) for each table.
// The GUID and the help string are offsets in their tables, -1 for none.
#include "com/type_library.h"

#include "device/bytes.h"

#include <windows.h>

#include <utility>

namespace host {
namespace {

constexpr DWORD kSignature = 0x5446534D;
constexpr DWORD kFormatVersion = 0x00010002;
constexpr DWORD kNone = 0xFFFFFFFF;

enum class Table { Guids = 5, Strings = 8 };

std::optional<Bytes> FindTable(Bytes library, Table table) {
    constexpr DWORD hasHelpLibrary = 0x100;
    const auto format = Read<DWORD>(library, 0x14);
    const auto descriptions = Read<DWORD>(library, 0x20);
    if (!descriptions) return std::nullopt;
    const std::size_t directory =
        std::size_t{0x54} + ((*format & hasHelpLibrary) ? 4 : 0) + std::size_t{*descriptions} * 4;
    const std::size_t entry = directory + static_cast<std::size_t>(table) * 16;
    const auto offset = Read<DWORD>(library, entry);
    const auto size = Read<DWORD>(library, entry + 4);
    if (!size || *offset > library.size() || library.size() - *offset < *size) return std::nullopt;
    return library.subspan(*offset, *size);
}

// A length in bytes and that many bytes of the western code page.
std::optional<std::u16string> ReadString(Bytes strings, std::size_t offset) {
    const auto length = Read<WORD>(strings, offset);
    if (!length || strings.size() - offset - sizeof(WORD) < *length) return std::nullopt;
    std::u16string text(*length, u'\0');
    if (text.empty()) return text;
    MultiByteToWideChar(CP_ACP, 0, reinterpret_cast<const char*>(strings.data() + offset + sizeof(WORD)),
                        *length, text.data(), *length);
    return text;
}

}  // namespace

std::optional<TypeLibrary> ParseTypeLibrary(Bytes bytes) {
    if (Read<DWORD>(bytes, 0) != kSignature || Read<DWORD>(bytes, 4) != kFormatVersion) return std::nullopt;
    const std::optional<Bytes> guids = FindTable(bytes, Table::Guids);
    if (!guids) return std::nullopt;
    // The bytes exist: finding a table has read beyond this part of the header.
    const auto identifier = Read<GUID>(*guids, *Read<DWORD>(bytes, 0x08));
    if (!identifier) return std::nullopt;
    TypeLibrary library{*identifier,
                        *Read<WORD>(bytes, 0x18),
                        *Read<WORD>(bytes, 0x1A),
                        *Read<DWORD>(bytes, 0x10),
                        *Read<DWORD>(bytes, 0x1C),
                        {}};
    const DWORD help = *Read<DWORD>(bytes, 0x24);
    if (help == kNone) return library;
    const std::optional<Bytes> strings = FindTable(bytes, Table::Strings);
    std::optional<std::u16string> text = strings ? ReadString(*strings, help) : std::nullopt;
    if (!text) return std::nullopt;
    library.helpString = std::move(*text);
    return library;
}

}  // namespace host
