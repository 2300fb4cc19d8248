// SPDX-License-Identifier: MIT
#include "module_writer.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace tlk {
namespace {

constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kHeadersSize = 0x200;
constexpr std::uint32_t kSectionAddress = 0x1000;
constexpr std::uint32_t kNewHeaderOffset = 0x40;
constexpr std::uint32_t kBitmapType = 2;
constexpr std::string_view kDataType = "RC_DATA";
constexpr std::uint32_t kHighBit = 0x80000000;
constexpr std::uint32_t kDirectorySize = 16;
constexpr std::uint32_t kEntrySize = 8;
constexpr std::uint32_t kDataEntrySize = 16;

// The differences of headers between processors.
struct Headers {
    std::uint16_t machine;
    std::uint16_t flags;
    std::uint16_t optionalSize;
    std::uint16_t magic;  // PE32 or PE32+
    std::uint64_t base;
    std::uint16_t systemVersion;
    std::uint16_t subsystem;
    std::uint16_t loading;

    bool IsWide() const { return magic == 0x20B; }
};

Headers HeadersFor(Processor processor) {
    constexpr std::uint16_t kLibrary = 0x2002;  // executable image, DLL
    constexpr std::uint16_t kLarge = 0x20;
    constexpr std::uint16_t k32Bits = 0x100;
    constexpr std::uint16_t kSafe = 0x540;  // may be moved, data is not executable, no exception tables
    switch (processor) {
        case Processor::X86:
            return {0x14C, kLibrary | k32Bits, 224, 0x10B, 0x10000000, 4, 2, kSafe};
        case Processor::Arm:  // of the handheld, whose programs have a subsystem of their own
            return {0x1C0, kLibrary | k32Bits, 224, 0x10B, 0x10000000, 3, 9, 0};
        case Processor::X64:
            break;
    }
    return {0x8664, kLibrary | kLarge, 240, 0x20B, 0x180000000, 6, 2, kSafe | kLarge};
}

std::uint32_t RoundUp(std::size_t value, std::uint32_t multiple) {
    return static_cast<std::uint32_t>((value + multiple - 1) / multiple * multiple);
}

// The resource section:
//
//   root -> one directory per type -> one directory per name -> one data entry (language neutral)
//
// in the order directories, data entries, names, data. Named types come before numbered ones, and names
// ascend, for binary searches.
class ResourceSection {
public:
    explicit ResourceSection(const std::vector<Resource>& resources) : m_resources(resources) {
        for (const Resource& resource : resources)
            ++CountOf(resource.kind);
    }

    Bytes Write() {
        PlaceParts();
        WriteRoot();
        WriteTypes();
        WriteLanguages();
        WriteDataEntries();
        Append(m_names, m_dataOffset);
        for (const Resource& resource : m_resources) {
            m_bytes.insert(m_bytes.end(), resource.data.begin(), resource.data.end());
            PadTo(m_bytes, 8);
        }
        return std::move(m_bytes);
    }

private:
    std::uint32_t& CountOf(ResourceKind kind) {
        return kind == ResourceKind::Data ? m_dataCount : m_bitmapCount;
    }
    std::uint32_t Total() const { return m_dataCount + m_bitmapCount; }
    std::uint32_t TypeCount() const { return std::min(m_dataCount, 1U) + std::min(m_bitmapCount, 1U); }

    void PlaceParts() {
        m_typesOffset = kDirectorySize + TypeCount() * kEntrySize;
        m_languagesOffset = m_typesOffset + TypeCount() * kDirectorySize + Total() * kEntrySize;
        m_entriesOffset = m_languagesOffset + Total() * (kDirectorySize + kEntrySize);
        m_namesOffset = m_entriesOffset + Total() * kDataEntrySize;
        m_typeName = m_dataCount == 0 ? 0 : AddName(kDataType);
        for (const Resource& resource : m_resources)
            m_resourceNames.push_back(AddName(resource.name));
        m_dataOffset = RoundUp(m_namesOffset + m_names.size(), 8);
    }

    // Returns the name's offset in the section.
    std::uint32_t AddName(std::string_view name) {
        const auto offset = static_cast<std::uint32_t>(m_namesOffset + m_names.size());
        Put16(m_names, static_cast<unsigned>(name.size()));
        for (char letter : name)
            Put16(m_names, static_cast<unsigned char>(letter));
        return offset;
    }

    void WriteDirectory(std::uint32_t named, std::uint32_t numbered) {
        for (int i = 0; i < 3; ++i)
            Put32(m_bytes, 0);
        Put16(m_bytes, named);
        Put16(m_bytes, numbered);
    }

    void WriteEntry(std::uint32_t name, std::uint32_t target) {
        Put32(m_bytes, name);
        Put32(m_bytes, target);
    }

    void WriteRoot() {
        WriteDirectory(m_dataCount != 0, m_bitmapCount != 0);
        std::uint32_t type = m_typesOffset;
        if (m_dataCount != 0) {
            WriteEntry(kHighBit | m_typeName, kHighBit | type);
            type += kDirectorySize + m_dataCount * kEntrySize;
        }
        if (m_bitmapCount != 0) WriteEntry(kBitmapType, kHighBit | type);
    }

    void WriteTypes() {
        std::uint32_t index = 0;
        for (std::uint32_t count : {m_dataCount, m_bitmapCount}) {
            if (count == 0) continue;
            WriteDirectory(count, 0);
            for (std::uint32_t last = index + count; index < last; ++index)
                WriteEntry(kHighBit | m_resourceNames[index],
                           kHighBit | (m_languagesOffset + index * (kDirectorySize + kEntrySize)));
        }
    }

    void WriteLanguages() {
        for (std::uint32_t index = 0; index < Total(); ++index) {
            WriteDirectory(0, 1);
            WriteEntry(0, m_entriesOffset + index * kDataEntrySize);
        }
    }

    void WriteDataEntries() {
        std::uint32_t offset = m_dataOffset;
        for (const Resource& resource : m_resources) {
            Put32(m_bytes, kSectionAddress + offset);
            Put32(m_bytes, static_cast<std::uint32_t>(resource.data.size()));
            Put32(m_bytes, 0);
            Put32(m_bytes, 0);
            offset += RoundUp(resource.data.size(), 8);
        }
    }

    void Append(const Bytes& part, std::uint32_t end) {
        m_bytes.insert(m_bytes.end(), part.begin(), part.end());
        m_bytes.resize(end);
    }

    const std::vector<Resource>& m_resources;
    std::uint32_t m_dataCount = 0;
    std::uint32_t m_bitmapCount = 0;
    std::uint32_t m_typesOffset = 0;
    std::uint32_t m_languagesOffset = 0;
    std::uint32_t m_entriesOffset = 0;
    std::uint32_t m_namesOffset = 0;
    std::uint32_t m_dataOffset = 0;
    std::uint32_t m_typeName = 0;
    std::vector<std::uint32_t> m_resourceNames;
    Bytes m_names;
    Bytes m_bytes;
};

void WriteDosAndFileHeader(Bytes& file, const Headers& headers) {
    Put16(file, 0x5A4D);
    file.resize(0x3C);
    Put32(file, kNewHeaderOffset);
    Put32(file, 0x00004550);
    Put16(file, headers.machine);
    Put16(file, 1);  // sections
    for (int i = 0; i < 3; ++i)
        Put32(file, 0);
    Put16(file, headers.optionalSize);
    Put16(file, headers.flags);
}

// Writes a number as wide as the machine's addresses.
void PutAddress(Bytes& file, const Headers& headers, std::uint64_t value) {
    if (headers.IsWide()) return Put64(file, value);
    Put32(file, static_cast<std::uint32_t>(value));
}

void WriteOptionalHeader(Bytes& file, const Headers& headers, std::uint32_t sectionSize) {
    const std::uint32_t rawSize = RoundUp(sectionSize, kFileAlignment);
    Put16(file, headers.magic);
    Put16(file, 0);
    Put32(file, 0);        // code
    Put32(file, rawSize);  // initialised data
    for (int i = 0; i < 3; ++i)
        Put32(file, 0);
    if (!headers.IsWide()) Put32(file, kSectionAddress);  // where data begins
    PutAddress(file, headers, headers.base);
    Put32(file, kSectionAlignment);
    Put32(file, kFileAlignment);
    for (int i = 0; i < 3; ++i)
        Put32(file, i == 1 ? 0 : headers.systemVersion);  // system, image, subsystem version
    Put32(file, 0);
    Put32(file, kSectionAddress + RoundUp(sectionSize, kSectionAlignment));
    Put32(file, kHeadersSize);
    Put32(file, 0);
    Put16(file, headers.subsystem);
    Put16(file, headers.loading);
    for (const std::uint32_t stackAndHeap : {0x100000U, 0x1000U, 0x100000U, 0x1000U})
        PutAddress(file, headers, stackAndHeap);
    Put32(file, 0);
    Put32(file, 16);
    for (int directory = 0; directory < 16; ++directory) {
        Put32(file, directory == 2 ? kSectionAddress : 0);
        Put32(file, directory == 2 ? sectionSize : 0);
    }
}

void WriteSectionHeader(Bytes& file, std::uint32_t sectionSize) {
    for (char letter : std::string_view(".rsrc\0\0\0", 8))
        Put8(file, static_cast<unsigned char>(letter));
    Put32(file, sectionSize);
    Put32(file, kSectionAddress);
    Put32(file, RoundUp(sectionSize, kFileAlignment));
    Put32(file, kHeadersSize);
    for (int i = 0; i < 3; ++i)
        Put32(file, 0);
    Put32(file, 0x40000040);  // initialised data, readable
}

}  // namespace

Bytes WriteModule(std::vector<Resource> resources, Processor processor) {
    for (Resource& resource : resources)
        std::ranges::transform(resource.name, resource.name.begin(),
                               [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    std::ranges::sort(resources, [](const Resource& a, const Resource& b) {
        if (a.kind != b.kind) return a.kind == ResourceKind::Data;
        return a.name < b.name;
    });
    const Bytes section = ResourceSection(resources).Write();
    const Headers headers = HeadersFor(processor);
    Bytes file;
    WriteDosAndFileHeader(file, headers);
    WriteOptionalHeader(file, headers, static_cast<std::uint32_t>(section.size()));
    WriteSectionHeader(file, static_cast<std::uint32_t>(section.size()));
    file.resize(kHeadersSize);
    file.insert(file.end(), section.begin(), section.end());
    PadTo(file, kFileAlignment);
    return file;
}

}  // namespace tlk
