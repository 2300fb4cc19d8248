// SPDX-License-Identifier: MIT
// Any text as a registry file: it is refused, or stays the same when written and read again.
#include "registry/file.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const BYTE* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto parsed = host::ParseRegistryFile(text);
    if (const auto* error = std::get_if<host::RegistryFileError>(&parsed)) {
        if (error->line == 0 || error->what.empty()) std::abort();
        return 0;
    }
    const std::string written = host::FormatRegistryFile(std::get<host::RegistryTree>(parsed));
    const auto read = host::ParseRegistryFile(written);
    if (!std::holds_alternative<host::RegistryTree>(read)) std::abort();
    if (host::FormatRegistryFile(std::get<host::RegistryTree>(read)) != written) std::abort();
    return 0;
}
