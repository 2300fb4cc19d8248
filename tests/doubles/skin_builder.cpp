// SPDX-License-Identifier: MIT
#include "skin_builder.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "test_support.h"

namespace test {
namespace {

constexpr std::size_t kSectionAddress = 0x1000;  // in the loaded module
constexpr std::size_t kHeadersSize = 0x200;
constexpr std::size_t kDirectoryEntrySize = 8;
constexpr std::size_t kHighBit = 0x80000000;  // the entry refers to a name's text or to a directory
constexpr std::size_t kBitmapType = 2;

std::string UpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    return text;
}

void Put(std::string& bytes, std::size_t value, int count) {
    for (; count > 0; --count, value >>= 8) {
        bytes.push_back(static_cast<char>(value & 0xFF));
    }
}

void PutBigEndian16(std::string& bytes, WORD value) {
    bytes.push_back(static_cast<char>(value >> 8));
    bytes.push_back(static_cast<char>(value & 0xFF));
}

void Patch32(std::string& bytes, std::size_t position, std::size_t value) {
    std::string patch;
    Put(patch, value, 4);
    bytes.replace(position, patch.size(), patch);
}

void PadTo(std::string& bytes, std::size_t multiple) {
    bytes.resize((bytes.size() + multiple - 1) / multiple * multiple);
}

// Appends a resource directory of empty entries; returns the offset of the first entry.
std::size_t PutDirectory(std::string& section, std::size_t named, std::size_t numbered) {
    section.append(12, '\0');
    Put(section, named, 2);
    Put(section, numbered, 2);
    const std::size_t entries = section.size();
    section.append((named + numbered) * kDirectoryEntrySize, '\0');
    return entries;
}

std::size_t PutName(std::string& section, const std::string& name) {
    const std::size_t place = section.size();
    Put(section, name.size(), 2);
    for (const char letter : name) {
        Put(section, static_cast<unsigned char>(letter), 2);
    }
    PadTo(section, 4);
    return place;
}

// Appends a directory for the language, the data entry and the bytes; returns the directory's offset.
std::size_t PutResource(std::string& section, const std::string& bytes, bool outside) {
    const std::size_t directory = section.size();
    const std::size_t language = PutDirectory(section, 0, 1);
    Patch32(section, language + 4, section.size());
    Put(section, outside ? 0x7FFFFFFF : kSectionAddress + section.size() + 16, 4);
    Put(section, bytes.size(), 4);
    Put(section, 0, 8);
    section += bytes;
    PadTo(section, 4);
    return directory;
}

template <typename Resources>
void PutType(std::string& section, std::size_t entry, const Resources& resources) {
    Patch32(section, entry + 4, kHighBit | section.size());
    std::size_t nameEntry = PutDirectory(section, resources.size(), 0);
    for (const auto& [name, resource] : resources) {
        Patch32(section, nameEntry, kHighBit | PutName(section, name));
        Patch32(section, nameEntry + 4, kHighBit | PutResource(section, resource.bytes, resource.outside));
        nameEntry += kDirectoryEntrySize;
    }
}

std::string BuildHeaders(std::size_t sectionSize, std::size_t fileSize) {
    std::string file = "MZ";
    file.resize(0x3C);
    Put(file, 0x40, 4);
    Put(file, 0x00004550, 4);
    Put(file, 0x8664, 2);  // machine
    Put(file, 1, 2);       // sections
    Put(file, 0, 12);
    Put(file, 240, 2);     // size of the optional header
    Put(file, 0x2022, 2);  // executable, large addresses, library
    const std::size_t optional = file.size();
    file.resize(optional + 240);
    const auto set = [&](std::size_t offset, std::size_t value) { Patch32(file, optional + offset, value); };
    set(0, 0x20B);
    set(8, fileSize);
    set(24, 0x80000000);  // image base 0x180000000
    set(28, 1);
    set(32, 0x1000);  // alignment in memory and in the file
    set(36, 0x200);
    set(40, 6);
    set(48, 6);
    set(56, kSectionAddress + (sectionSize + 0xFFF) / 0x1000 * 0x1000);
    set(60, kHeadersSize);
    set(68, 0x05600002);  // graphical, movable, data is not executable
    set(72, 0x100000);
    set(80, 0x1000);
    set(88, 0x100000);
    set(96, 0x1000);
    set(108, 16);
    set(112 + 2 * 8, kSectionAddress);
    set(112 + 2 * 8 + 4, sectionSize);
    file += ".rsrc";
    file.resize(optional + 240 + 8);
    for (const std::size_t value : {sectionSize, kSectionAddress, fileSize, kHeadersSize}) {
        Put(file, value, 4);
    }
    Put(file, 0, 12);
    Put(file, 0x40000040, 4);  // readable data
    file.resize(kHeadersSize);
    return file;
}

// Header and colour table; the rows that follow are bottom-up and padded to 4 bytes.
std::string BitmapHeader(int width, int height, int bits) {
    std::string bytes;
    Put(bytes, 40, 4);
    Put(bytes, static_cast<std::size_t>(width), 4);
    Put(bytes, static_cast<std::size_t>(height), 4);
    Put(bytes, 1, 2);
    Put(bytes, static_cast<std::size_t>(bits), 2);
    bytes.append(24, '\0');
    if (bits == 1) {
        Put(bytes, 0x000000, 4);
        Put(bytes, 0xFFFFFF, 4);
    }
    return bytes;
}

}  // namespace

std::string LayoutBytes(const std::vector<LayoutRecord>& records) {
    std::string bytes;
    for (const LayoutRecord& record : records) {
        for (const WORD field :
             {record.key, record.bitmap, record.left, record.top, record.right, record.bottom}) {
            PutBigEndian16(bytes, field);
        }
        bytes += "\xEE\xEE\xEE\xEE";  // reserved
    }
    return bytes;
}

std::string RectBytes(const RECT& rectangle) {
    std::string bytes;
    for (const LONG edge : {rectangle.left, rectangle.top, rectangle.right, rectangle.bottom}) {
        Put(bytes, static_cast<std::size_t>(edge), 4);
    }
    return bytes;
}

std::string WordBytes(const std::vector<WORD>& words) {
    std::string bytes;
    for (const WORD word : words) {
        Put(bytes, word, 2);
    }
    return bytes;
}

std::string PictureBytes(int width, int height, const std::function<COLORREF(int, int)>& colorAt) {
    std::string bytes = BitmapHeader(width, height, 24);
    for (int y = height - 1; y >= 0; --y) {
        std::string row;
        for (int x = 0; x < width; ++x) {
            const COLORREF color = colorAt(x, y);
            for (const int shift : {16, 8, 0}) {
                row.push_back(static_cast<char>(color >> shift & 0xFF));
            }
        }
        PadTo(row, 4);
        bytes += row;
    }
    return bytes;
}

std::string MaskBytes(int width, int height, const std::function<bool(int, int)>& bitAt) {
    std::string bytes = BitmapHeader(width, height, 1);
    for (int y = height - 1; y >= 0; --y) {
        std::string row(static_cast<std::size_t>(width + 31) / 32 * 4, '\0');
        for (int x = 0; x < width; ++x) {
            if (bitAt(x, y)) row[static_cast<std::size_t>(x / 8)] |= static_cast<char>(0x80 >> x % 8);
        }
        bytes += row;
    }
    return bytes;
}

SkinBuilder& SkinBuilder::Bitmap(const std::string& name, std::string dib) {
    m_bitmaps[UpperCase(name)] = {std::move(dib)};
    return *this;
}

SkinBuilder& SkinBuilder::Data(const std::string& name, std::string bytes) {
    m_data[UpperCase(name)] = {std::move(bytes)};
    return *this;
}

SkinBuilder& SkinBuilder::Without(const std::string& name) {
    m_bitmaps.erase(UpperCase(name));
    m_data.erase(UpperCase(name));
    return *this;
}

SkinBuilder& SkinBuilder::PointOutside(const std::string& name) {
    for (Resources* resources : {&m_bitmaps, &m_data}) {
        const auto found = resources->find(UpperCase(name));
        if (found != resources->end()) found->second.outside = true;
    }
    return *this;
}

// Named types come before numbered ones.
std::string SkinBuilder::BuildSection() const {
    std::string section;
    const std::size_t named = m_data.empty() ? 0 : 1;
    std::size_t entry = PutDirectory(section, named, m_bitmaps.empty() ? 0 : 1);
    if (!m_data.empty()) {
        Patch32(section, entry, kHighBit | PutName(section, "RC_DATA"));
        PutType(section, entry, m_data);
        entry += kDirectoryEntrySize;
    }
    if (!m_bitmaps.empty()) {
        Patch32(section, entry, kBitmapType);
        PutType(section, entry, m_bitmaps);
    }
    return section;
}

std::string SkinBuilder::Build() const {
    std::string section = BuildSection();
    const std::size_t size = section.size();
    PadTo(section, 0x200);
    return BuildHeaders(size, section.size()) + section;
}

void SkinBuilder::Install(const std::string& fileName) const {
    WriteDeviceFile("Windows/" + fileName, Build());
}

}  // namespace test
