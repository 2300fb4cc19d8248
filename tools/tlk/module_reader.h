// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "module_writer.h"

namespace tlk {

// The resources of a library file of any origin, 32 or 64 bits. A damaged file is refused or has fewer
// resources; nothing outside its bytes is read.
class Module {
public:
    // Throws FileError.
    static Module Parse(Bytes file);

    struct Entry {
        // Numbered types and names are "#" and the number.
        std::string type;
        std::string name;
        std::uint16_t language = 0;
        std::span<const std::uint8_t> data;
    };

    // Facts from the file's headers; a skin needs no code and so no entry point.
    struct Facts {
        std::uint16_t machine = 0;
        bool isLibrary = false;
        std::uint32_t timeStamp = 0;
        std::uint32_t entryPoint = 0;
        std::size_t fileSize = 0;
    };

    std::span<const std::uint8_t> File() const { return m_file; }
    const Facts& GetFacts() const { return m_facts; }
    const std::vector<Entry>& Entries() const { return m_entries; }
    // Ignores case; valid as long as the module.
    [[nodiscard]] std::optional<std::span<const std::uint8_t>> Find(ResourceKind kind,
                                                                    std::string_view name) const;

    Module(Module&&) = default;
    Module& operator=(Module&&) = default;

private:
    explicit Module(Bytes file) : m_file(std::move(file)) {}

    Bytes m_file;
    Facts m_facts;
    std::vector<Entry> m_entries;
};

// The name for a file's machine number: "ARM", "x86-64", ...
[[nodiscard]] std::string ProcessorName(std::uint16_t machine);

}  // namespace tlk
