// SPDX-License-Identifier: MIT
// Reads the resources of a library file (PE format, 32 or 64 bits, any machine) from its bytes, which are not
// trusted. Independent of the device.
#pragma once

#include <windef.h>

#include <compare>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host {

// The name of a resource or of a type: a number, or a text in upper case.
struct ResourceId {
    bool named = false;
    WORD number = 0;
    std::u16string text;

    // From a caller's argument: a number in a pointer or a text ("#123" is a text like any other).
    static ResourceId FromArgument(LPCWSTR argument);
    auto operator<=>(const ResourceId&) const = default;
};

struct Resource {
    ResourceId type;
    ResourceId name;
    DWORD entryOffset = 0;  // file offset of its data entry
    // None if the entry points outside the file.
    std::optional<std::span<const BYTE>> data;
};

class PeImage {
public:
    // The bytes must outlive the image. None if headers or sections are damaged or point outside the file; if
    // the resource directory is damaged, the image lacks those resources that cannot be read.
    static std::optional<PeImage> Parse(std::span<const BYTE> file);

    bool HasType(const ResourceId& type) const;
    // In the first language; null if there is none.
    const Resource* Find(const ResourceId& type, const ResourceId& name) const;
    const Resource* FindByEntry(std::uintptr_t entryOffset) const;
    const std::vector<Resource>& Resources() const { return m_resources; }

private:
    std::vector<Resource> m_resources;  // in order of type and name
};

}  // namespace host
