// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "bytes.h"

namespace tlk {

// Bitmaps have the standard numeric type; data has the type named "RC_DATA", which the engine looks for.
enum class ResourceKind { Bitmap, Data };

struct Resource {
    ResourceKind kind;
    // ASCII; written in upper case, as lookups that ignore case require.
    std::string name;
    Bytes data;
};

// The processor for which the library is. It has no code, but devices load only libraries for their
// processor.
enum class Processor { X64, X86, Arm };

// A resource-only library: no code, no entry point, no time stamp. Equal resources give equal bytes.
[[nodiscard]] Bytes WriteModule(std::vector<Resource> resources, Processor processor = Processor::Arm);

}  // namespace tlk
