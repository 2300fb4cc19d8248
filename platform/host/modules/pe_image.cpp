// SPDX-License-Identifier: MIT
#include "modules/pe_image.h"

#include "device/bytes.h"
#include "device/strings.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace host {
namespace {

// Windows has the first limit, too. The others bound the cost of a directory whose entries refer to the same
// parts again and again; real libraries stay far below.
constexpr std::size_t kMaxSections = 96;
constexpr std::size_t kMaxResources = 16384;
constexpr std::size_t kMaxNameLength = 255;

constexpr std::size_t kResourceDirectoryIndex = 2;
constexpr DWORD kHighBit = 0x80000000;

struct Section {
    DWORD address;     // relative to the image
    DWORD fileOffset;  // of its bytes in the file
    DWORD fileSize;
};

struct Layout {
    std::vector<Section> sections;
    // Of the resource directory; size 0 when the file has none.
    DWORD resourceAddress = 0;
    DWORD resourceSize = 0;
};

std::optional<std::vector<Section>> ReadSections(Bytes file, std::size_t table, std::size_t count) {
    constexpr std::size_t headerSize = 40;
    std::vector<Section> sections;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t header = table + i * headerSize;
        const auto address = Read<DWORD>(file, header + 12);
        const auto fileSize = Read<DWORD>(file, header + 16);
        const auto fileOffset = Read<DWORD>(file, header + 20);
        if (!Read<DWORD>(file, header + headerSize - 4)) return std::nullopt;
        // The offset of a section without bytes in the file (.bss) can be anything.
        if (*fileSize == 0) continue;
        if (*fileOffset > file.size() || file.size() - *fileOffset < *fileSize) return std::nullopt;
        sections.push_back({*address, *fileOffset, *fileSize});
    }
    return sections;
}

// Reads the resource directory's entry in the optional header; false if the header is too short for it.
bool ReadResourceDirectory(Bytes header, Layout& layout) {
    constexpr WORD magic32 = 0x10B;
    constexpr WORD magic64 = 0x20B;
    const auto magic = Read<WORD>(header, 0);
    if (magic != magic32 && magic != magic64) return false;
    const std::size_t directories = magic == magic32 ? 96 : 112;
    const auto count = Read<DWORD>(header, directories - 4);
    if (!count) return false;
    if (*count <= kResourceDirectoryIndex) return true;
    const auto address = Read<DWORD>(header, directories + kResourceDirectoryIndex * 8);
    const auto size = Read<DWORD>(header, directories + kResourceDirectoryIndex * 8 + 4);
    if (!size) return false;
    layout.resourceAddress = *address;
    layout.resourceSize = *size;
    return true;
}

std::optional<Layout> ReadLayout(Bytes file) {
    constexpr WORD dosSignature = 0x5A4D;
    constexpr DWORD peSignature = 0x00004550;
    constexpr std::size_t fileHeaderSize = 24;  // with the signature
    if (Read<WORD>(file, 0) != dosSignature) return std::nullopt;
    const auto header = Read<DWORD>(file, 0x3C);
    if (!header || Read<DWORD>(file, *header) != peSignature) return std::nullopt;
    const auto sectionCount = Read<WORD>(file, std::size_t{*header} + 6);
    const auto optionalSize = Read<WORD>(file, std::size_t{*header} + 20);
    const std::size_t optionalHeader = std::size_t{*header} + fileHeaderSize;
    if (!optionalSize || *sectionCount > kMaxSections || optionalHeader > file.size() ||
        file.size() - optionalHeader < *optionalSize)
        return std::nullopt;
    Layout layout;
    if (!ReadResourceDirectory(file.subspan(optionalHeader, *optionalSize), layout)) return std::nullopt;
    auto sections = ReadSections(file, optionalHeader + *optionalSize, *sectionCount);
    if (!sections) return std::nullopt;
    layout.sections = std::move(*sections);
    return layout;
}

// The file offset of a range of the image, which must be inside one section's bytes.
std::optional<std::size_t> FileOffset(const Layout& layout, DWORD address, std::size_t size) {
    for (const Section& section : layout.sections) {
        if (address < section.address || address - section.address > section.fileSize) continue;
        const DWORD offset = address - section.address;
        if (section.fileSize - offset < size) continue;
        return std::size_t{section.fileOffset} + offset;
    }
    return std::nullopt;
}

// Walks the directory, which has three levels: types, names, languages. Omits what cannot be read.
class DirectoryReader {
public:
    DirectoryReader(Bytes file, const Layout& layout, std::size_t directoryOffset)
        : m_file(file),
          m_layout(layout),
          m_directoryOffset(directoryOffset),
          m_directory(file.subspan(directoryOffset, layout.resourceSize)) {}

    std::vector<Resource> ReadAll() {
        ForEachEntry(0, [&](DWORD typeField, DWORD typeTarget) {
            const std::optional<ResourceId> type = ReadId(typeField);
            if (type && (typeTarget & kHighBit)) ReadNames(*type, typeTarget & ~kHighBit);
        });
        return std::move(m_resources);
    }

private:
    void ReadNames(const ResourceId& type, DWORD table) {
        ForEachEntry(
            table,
            [&](DWORD nameField, DWORD nameTarget) {
                const std::optional<ResourceId> name = ReadId(nameField);
                if (name && (nameTarget & kHighBit)) ReadFirstLanguage(type, *name, nameTarget & ~kHighBit);
            });
    }

    void ReadFirstLanguage(const ResourceId& type, const ResourceId& name, DWORD table) {
        bool first = true;
        ForEachEntry(table, [&](DWORD, DWORD target) {
            if (first && !(target & kHighBit)) AddResource(type, name, target);
            first = false;
        });
    }

    void AddResource(const ResourceId& type, const ResourceId& name, DWORD entry) {
        const auto address = Read<DWORD>(m_directory, entry);
        const auto size = Read<DWORD>(m_directory, std::size_t{entry} + 4);
        if (!Read<DWORD>(m_directory, std::size_t{entry} + 12)) return;
        Resource resource{type, name, static_cast<DWORD>(m_directoryOffset + entry), std::nullopt};
        if (const auto offset = FileOffset(m_layout, *address, *size))
            resource.data = m_file.subspan(*offset, *size);
        m_resources.push_back(std::move(resource));
    }

    // Calls visit(name or number, target) for each entry of one table, with both fields as in the file.
    template <typename Visitor>
    void ForEachEntry(DWORD table, Visitor visit) {
        const auto namedCount = Read<WORD>(m_directory, std::size_t{table} + 12);
        const auto numberedCount = Read<WORD>(m_directory, std::size_t{table} + 14);
        if (!numberedCount) return;
        const std::size_t count = std::size_t{*namedCount} + *numberedCount;
        for (std::size_t i = 0; i < count && m_visited < kMaxResources; ++i, ++m_visited) {
            const std::size_t entry = std::size_t{table} + 16 + i * 8;
            const auto field = Read<DWORD>(m_directory, entry);
            const auto target = Read<DWORD>(m_directory, entry + 4);
            if (!target) return;
            visit(*field, *target);
        }
    }

    std::optional<ResourceId> ReadId(DWORD field) const {
        if (!(field & kHighBit)) {
            if (field > 0xFFFF) return std::nullopt;
            return ResourceId{false, static_cast<WORD>(field), {}};
        }
        const std::size_t offset = field & ~kHighBit;
        const auto length = Read<WORD>(m_directory, offset);
        if (!length || *length > kMaxNameLength) return std::nullopt;
        const auto text = ReadCharacters(m_directory, offset + sizeof(WORD), *length);
        return text ? std::optional(ResourceId{true, 0, FoldCase(*text)}) : std::nullopt;
    }

    Bytes m_file;
    const Layout& m_layout;
    std::size_t m_directoryOffset;
    Bytes m_directory;
    std::size_t m_visited = 0;
    std::vector<Resource> m_resources;
};

}  // namespace

ResourceId ResourceId::FromArgument(LPCWSTR argument) {
    const auto value = reinterpret_cast<std::uintptr_t>(argument);
    if (value <= 0xFFFF) return {false, static_cast<WORD>(value), {}};
    return {true, 0, FoldCase(argument)};
}

std::optional<PeImage> PeImage::Parse(std::span<const BYTE> file) {
    const std::optional<Layout> layout = ReadLayout(file);
    if (!layout) return std::nullopt;
    PeImage image;
    const auto directory = FileOffset(*layout, layout->resourceAddress, layout->resourceSize);
    if (directory && layout->resourceSize > 0) {
        image.m_resources = DirectoryReader(file, *layout, *directory).ReadAll();
        // Stable: of two with the same name the first one in the file counts.
        std::stable_sort(image.m_resources.begin(), image.m_resources.end(),
                         [](const Resource& a, const Resource& b) {
                             return std::tie(a.type, a.name) < std::tie(b.type, b.name);
                         });
    }
    return image;
}

bool PeImage::HasType(const ResourceId& type) const {
    return std::any_of(
        m_resources.begin(), m_resources.end(),
        [&](const Resource& resource) { return resource.type == type; });
}

const Resource* PeImage::Find(const ResourceId& type, const ResourceId& name) const {
    const auto found = std::lower_bound(m_resources.begin(), m_resources.end(), std::tie(type, name),
                                        [](const Resource& resource, const auto& wanted) {
                                            return std::tie(resource.type, resource.name) < wanted;
                                        });
    return found != m_resources.end() && found->type == type && found->name == name ? &*found : nullptr;
}

const Resource* PeImage::FindByEntry(std::uintptr_t entryOffset) const {
    const auto found = std::find_if(m_resources.begin(), m_resources.end(), [&](const Resource& resource) {
        return resource.entryOffset == entryOffset;
    });
    return found != m_resources.end() ? &*found : nullptr;
}

}  // namespace host
