// SPDX-License-Identifier: MIT
// Any bytes as a library file, and as a type library.
#include "com/type_library.h"
#include "modules/pe_image.h"

#include <cstdlib>

namespace {

volatile unsigned g_sink;  // keeps the reads from being optimised away

// Reads every byte, so that a sanitizer notices a resource that extends beyond the file.
unsigned Sum(std::span<const BYTE> bytes) {
    unsigned sum = 0;
    for (const BYTE byte : bytes)
        sum += byte;
    return sum;
}

void CheckLookup(const host::PeImage& image, const host::Resource& resource) {
    const host::Resource* found = image.Find(resource.type, resource.name);
    if (!found || found->name != resource.name || found->type != resource.type) std::abort();
    if (!image.HasType(resource.type) || !image.FindByEntry(resource.entryOffset)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const BYTE* data, std::size_t size) {
    const std::span<const BYTE> file(data, size);
    unsigned sum = 0;
    if (const auto library = host::ParseTypeLibrary(file)) sum += library->major;
    if (const auto image = host::PeImage::Parse(file)) {
        for (const host::Resource& resource : image->Resources()) {
            CheckLookup(*image, resource);
            if (resource.data) sum += Sum(*resource.data);
        }
    }
    g_sink = sum;
    return 0;
}
