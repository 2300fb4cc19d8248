// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "bytes.h"

namespace tlk {

// Bitmaps have the standard numeric type; data has the type named "RC_DATA", as the engine asks for it.
enum class ResourceKind { Bitmap, Data };

struct Resource {
    ResourceKind kind;
    // ASCII; written in upper case, as lookups without regard to case need it.
    std::string name;
    Bytes data;
};

// Whose loader the library is for. It holds no code, but a loader takes only what is made for its processor.
enum class Processor { X64, X86, Arm };

// A resource-only library: no code, no entry point, no time stamp. Equal resources give equal bytes.
[[nodiscard]] Bytes WriteModule(std::vector<Resource> resources, Processor processor = Processor::Arm);

}  // namespace tlk
