// SPDX-License-Identifier: MIT
#include "skin_builder.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include "test_support.h"

namespace test {
namespace {

// The parts of the writer's files: the headers; a table of types, a table of names for each type and a table
// of languages for each name; the data entries.
constexpr std::size_t kHeadersSize = 0x200;
constexpr std::size_t kDirectorySize = 16;
constexpr std::size_t kEntrySize = 8;
constexpr std::size_t kDataEntrySize = 16;

void Put(std::string& bytes, std::size_t value, int count) {
    for (; count > 0; --count, value >>= 8)
        bytes.push_back(static_cast<char>(value & 0xFF));
}

void PutBigEndian16(std::string& bytes, WORD value) {
    bytes.push_back(static_cast<char>(value >> 8));
    bytes.push_back(static_cast<char>(value & 0xFF));
}

void PadTo(std::string& bytes, std::size_t multiple) {
    bytes.resize((bytes.size() + multiple - 1) / multiple * multiple);
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
             {record.key, record.bitmap, record.left, record.top, record.right, record.bottom})
            PutBigEndian16(bytes, field);
        bytes += "\xEE\xEE\xEE\xEE";  // reserved
    }
    return bytes;
}

std::string RectBytes(const RECT& rectangle) {
    std::string bytes;
    for (const LONG edge : {rectangle.left, rectangle.top, rectangle.right, rectangle.bottom})
        Put(bytes, static_cast<std::size_t>(edge), 4);
    return bytes;
}

std::string WordBytes(const std::vector<WORD>& words) {
    std::string bytes;
    for (const WORD word : words)
        Put(bytes, word, 2);
    return bytes;
}

std::string PictureBytes(int width, int height, const std::function<COLORREF(int, int)>& colorAt) {
    std::string bytes = BitmapHeader(width, height, 24);
    for (int y = height - 1; y >= 0; --y) {
        std::string row;
        for (int x = 0; x < width; ++x) {
            const COLORREF color = colorAt(x, y);
            for (const int shift : {16, 8, 0})
                row.push_back(static_cast<char>(color >> shift & 0xFF));
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
        for (int x = 0; x < width; ++x)
            if (bitAt(x, y)) row[static_cast<std::size_t>(x / 8)] |= static_cast<char>(0x80 >> x % 8);
        bytes += row;
    }
    return bytes;
}

SkinBuilder::ResourceName::ResourceName(tlk::ResourceKind resourceKind, std::string text)
    : kind(resourceKind), name(std::move(text)) {
    std::transform(
        name.begin(), name.end(), name.begin(),
        [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
}

SkinBuilder& SkinBuilder::Bitmap(const std::string& name, std::string dib) {
    m_resources[{tlk::ResourceKind::Bitmap, name}] = {std::move(dib)};
    return *this;
}

SkinBuilder& SkinBuilder::Data(const std::string& name, std::string bytes) {
    m_resources[{tlk::ResourceKind::Data, name}] = {std::move(bytes)};
    return *this;
}

SkinBuilder& SkinBuilder::Without(const std::string& name) {
    m_resources.erase({tlk::ResourceKind::Bitmap, name});
    m_resources.erase({tlk::ResourceKind::Data, name});
    return *this;
}

SkinBuilder& SkinBuilder::PointOutside(const std::string& name) {
    for (auto& [resource, content] : m_resources)
        if (resource == ResourceName(resource.kind, name)) content.outside = true;
    return *this;
}

std::string SkinBuilder::Build() const {
    std::vector<tlk::Resource> resources;
    std::set<tlk::ResourceKind> kinds;
    for (const auto& [resource, content] : m_resources) {
        resources.push_back({resource.kind, resource.name, {content.bytes.begin(), content.bytes.end()}});
        kinds.insert(resource.kind);
    }
    const tlk::Bytes file = tlk::WriteModule(resources, tlk::Processor::X64);
    std::string bytes(file.begin(), file.end());
    std::size_t dataEntry = kHeadersSize + kDirectorySize + kinds.size() * (kEntrySize + kDirectorySize) +
                            resources.size() * (kEntrySize + kDirectorySize + kEntrySize);
    for (const auto& [resource, content] : m_resources) {
        if (content.outside) bytes.replace(dataEntry, 4, "\xFF\xFF\xFF\x7F");
        dataEntry += kDataEntrySize;
    }
    return bytes;
}

void SkinBuilder::Install(const std::string& fileName) const {
    WriteDeviceFile("Windows/" + fileName, Build());
}

}  // namespace test
