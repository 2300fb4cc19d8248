// SPDX-License-Identifier: MIT
// What registering a type library needs to know of it, read from its bytes (the MSFT format).
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

// None when the bytes are no type library or point outside themselves.
std::optional<TypeLibrary> ParseTypeLibrary(std::span<const BYTE> bytes);

}  // namespace host
