// SPDX-License-Identifier: MIT
// Reads from the bytes of a type library (MSFT format) what its registration needs.
#pragma once

#include <unknwn.h>

#include <optional>
#include <span>
#include <string>

namespace host {

struct TypeLibrary {
    GUID identifier{};
    WORD major = 0;
    WORD minor = 0;
    DWORD locale = 0;
    DWORD flags = 0;
    std::u16string helpString;  // empty when there is none
};

// None if the bytes are no type library or contain an offset outside.
std::optional<TypeLibrary> ParseTypeLibrary(std::span<const BYTE> bytes);

}  // namespace host
