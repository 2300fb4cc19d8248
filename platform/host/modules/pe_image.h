// SPDX-License-Identifier: MIT
// Reads the resources of a library file (PE format, 32 or 64 bit, any machine) from its bytes. Knows nothing
// of the device, trusts nothing that the file says.
#pragma once

#include <windef.h>

#include <compare>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host {

// What a resource, or its type, is called: a number or a text in upper case.
struct ResourceId {
    bool named = false;
    WORD number = 0;
    std::u16string text;

    // From what callers pass: a number in a pointer, "#123" or a text.
    static ResourceId FromArgument(LPCWSTR argument);
    auto operator<=>(const ResourceId&) const = default;
};

struct Resource {
    ResourceId type;
    ResourceId name;
    DWORD entryOffset = 0;  // file offset of its data entry
    // None when the entry points outside the file.
    std::optional<std::span<const BYTE>> data;
};

class PeImage {
public:
    // The bytes are borrowed and have to outlive the image. None when headers or sections are damaged or
    // point outside the file; a damaged resource directory merely lacks what cannot be read.
    static std::optional<PeImage> Parse(std::span<const BYTE> file);

    bool HasType(const ResourceId& type) const;
    // The first language alone. Null when there is none.
    const Resource* Find(const ResourceId& type, const ResourceId& name) const;
    const Resource* FindByEntry(std::uintptr_t entryOffset) const;
    const std::vector<Resource>& Resources() const { return m_resources; }

private:
    std::vector<Resource> m_resources;  // in order of type and name
};

}  // namespace host
