// SPDX-License-Identifier: MIT
// Any bytes as a version block.
#include <cstdlib>
#include <cstring>

#include "modules/version_block.h"

// Reads a value to its end, so that a sanitizer notices one that extends beyond the block.
static void ReadValue(std::span<const BYTE> block, std::u16string_view path) {
    const auto value = host::FindVersionValue(block, path);
    if (!value) return;
    if (value->offset > block.size() || value->size > block.size() - value->offset) std::abort();
    BYTE sum = 0;
    for (const BYTE byte : block.subspan(value->offset, value->size))
        sum ^= byte;
    const volatile BYTE sink = sum;  // keeps the reads from being optimised away
    static_cast<void>(sink);
}

extern "C" int LLVMFuzzerTestOneInput(const BYTE* bytes, std::size_t size) {
    for (const std::u16string_view path :
         {u"\\", u"\\VarFileInfo\\Translation", u"\\StringFileInfo\\040904b0",
          u"\\StringFileInfo\\040904b0\\FileDescription", u"\\StringFileInfo\\040904b0\\ProductVersion"})
        ReadValue({bytes, size}, path);
    return 0;
}
