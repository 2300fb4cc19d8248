// SPDX-License-Identifier: MIT
#include "module_reader.h"

#include <algorithm>
#include <cctype>
#include <iomanip>
#include <sstream>

#include "errors.h"

namespace tlk {
namespace {

using View = std::span<const std::uint8_t>;

constexpr std::uint32_t kHighBit = 0x80000000;
// In all directories; more than any skin has. A damaged directory may claim any number.
constexpr std::size_t kMostEntries = 4096;

std::uint32_t Need32(View view, std::size_t offset) {
    if (const auto value = Get32(view, offset)) return *value;
    throw FileError("not a library file that can be read: it ends too early");
}

std::uint16_t Need16(View view, std::size_t offset) {
    if (const auto value = Get16(view, offset)) return *value;
    throw FileError("not a library file that can be read: it ends too early");
}

// The section with the resources, and its address.
struct Section {
    View bytes;
    std::uint32_t address = 0;
    std::uint32_t root = 0;
};

constexpr std::uint16_t kLibraryFlag = 0x2000;

[[noreturn]] void FailAsNoLibrary() {
    throw FileError("not a library file, as skins are: 'tlk build' makes one of a source");
}

// The offset of the "PE" signature, which the file header follows.
std::size_t FindHeader(View file) {
    if (Need16(file, 0) != 0x5A4D) FailAsNoLibrary();
    const std::size_t header = Need32(file, 0x3C);
    if (Need32(file, header) != 0x00004550) FailAsNoLibrary();
    return header;
}

Module::Facts ReadFacts(View file) {
    const std::size_t header = FindHeader(file);
    Module::Facts facts;
    facts.machine = Need16(file, header + 4);
    facts.timeStamp = Need32(file, header + 8);
    facts.isLibrary = (Need16(file, header + 22) & kLibraryFlag) != 0;
    facts.entryPoint = Need32(file, header + 24 + 16);
    facts.fileSize = file.size();
    return facts;
}

Section FindSection(View file) {
    const std::size_t header = FindHeader(file);
    const std::size_t sectionCount = Need16(file, header + 6);
    const std::size_t optional = header + 24;
    const bool wide = Need16(file, optional) == 0x20B;
    const std::uint32_t resources = Need32(file, optional + (wide ? 128U : 112U));
    const std::size_t table = optional + Need16(file, header + 20);
    for (std::size_t i = 0; i < sectionCount; ++i) {
        const std::size_t entry = table + i * 40;
        const std::uint32_t address = Need32(file, entry + 12);
        const std::size_t size = Need32(file, entry + 16);
        const std::size_t offset = Need32(file, entry + 20);
        if (resources < address || resources - address >= size) continue;
        if (offset > file.size() || size > file.size() - offset)
            throw FileError("not a library file that can be read: it ends too early");
        return {file.subspan(offset, size), address, resources - address};
    }
    throw FileError("a library file without resources");
}

class DirectoryReader {
public:
    DirectoryReader(const Section& section, std::vector<Module::Entry>& entries)
        : m_section(section), m_entries(entries) {}

    // Levels: type, name, language.
    void Read(std::uint32_t directory, int level) {
        const View bytes = m_section.bytes;
        const std::size_t start = std::size_t{m_section.root} + directory;
        const std::size_t count = std::size_t{Need16(bytes, start + 12)} + Need16(bytes, start + 14);
        for (std::size_t i = 0; i < count; ++i) {
            if (++m_entryCount > kMostEntries) throw FileError("damaged resources: too many of them");
            const std::size_t entry = start + 16 + i * 8;
            if (level < 2)
                m_path[level] = ReadName(Need32(bytes, entry));
            else
                m_language = static_cast<std::uint16_t>(Need32(bytes, entry));
            const std::uint32_t target = Need32(bytes, entry + 4);
            const bool isDirectory = (target & kHighBit) != 0;
            if (isDirectory != (level < 2)) throw FileError("damaged resources: directory of another depth");
            if (isDirectory)
                Read(target & ~kHighBit, level + 1);
            else
                AddEntry(target);
        }
    }

private:
    std::string ReadName(std::uint32_t name) const {
        if ((name & kHighBit) == 0) return "#" + std::to_string(name);
        const std::size_t start = std::size_t{m_section.root} + (name & ~kHighBit);
        const std::size_t length = Need16(m_section.bytes, start);
        std::string text;
        for (std::size_t i = 0; i < length; ++i) {
            const std::uint16_t letter = Need16(m_section.bytes, start + 2 + i * 2);
            text += letter < 0x80 ? static_cast<char>(letter) : '?';
        }
        return text;
    }

    void AddEntry(std::uint32_t offset) {
        const std::size_t start = std::size_t{m_section.root} + offset;
        const std::uint32_t address = Need32(m_section.bytes, start);
        const std::size_t size = Need32(m_section.bytes, start + 4);
        if (address < m_section.address) throw FileError("damaged resources: data outside of the section");
        const std::size_t place = address - m_section.address;
        if (place > m_section.bytes.size() || size > m_section.bytes.size() - place)
            throw FileError("damaged resources: data outside of the section");
        m_entries.push_back({m_path[0], m_path[1], m_language, m_section.bytes.subspan(place, size)});
    }

    const Section& m_section;
    std::vector<Module::Entry>& m_entries;
    std::string m_path[2];
    std::uint16_t m_language = 0;
    std::size_t m_entryCount = 0;
};

bool EqualNames(std::string_view a, std::string_view b) {
    return std::ranges::equal(
        a, b, [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

}  // namespace

Module Module::Parse(Bytes file) {
    Module module(std::move(file));
    module.m_facts = ReadFacts(module.m_file);
    const Section section = FindSection(module.m_file);
    DirectoryReader(section, module.m_entries).Read(0, 0);
    return module;
}

std::optional<View> Module::Find(ResourceKind kind, std::string_view name) const {
    const std::string_view type = kind == ResourceKind::Bitmap ? "#2" : "RC_DATA";
    for (const Entry& entry : m_entries)
        if (EqualNames(entry.type, type) && EqualNames(entry.name, name)) return entry.data;
    return std::nullopt;
}

std::string ProcessorName(std::uint16_t machine) {
    constexpr std::pair<std::uint16_t, const char*> kProcessors[] = {
        {0x0000, "any processor"}, {0x014C, "x86"},  {0x0166, "MIPS R4000"}, {0x01A2, "SH3"},
        {0x01A6, "SH4"},           {0x01C0, "ARM"},  {0x01C2, "Thumb"},      {0x0266, "MIPS16"},
        {0x8664, "x86-64"},        {0xAA64, "ARM64"}};
    for (const auto& [number, name] : kProcessors)
        if (number == machine) return name;
    std::ostringstream number;
    number << "machine 0x" << std::hex << std::uppercase << std::setw(4) << std::setfill('0') << machine;
    return number.str();
}

}  // namespace tlk
