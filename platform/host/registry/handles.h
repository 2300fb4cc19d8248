// SPDX-License-Identifier: MIT
// Open keys, for the registry's calls only.
#pragma once

#include "device/handles.h"
#include "registry/tree.h"

namespace host {

struct OpenKey {
    std::shared_ptr<RegistryKey> key;
    REGSAM access = 0;
};

// The key of a handle, which may be a predefined one. An error if there is none, it was deleted, or it was
// not opened for all of this access.
LSTATUS UseKey(HKEY handle, REGSAM access, OpenKey& key);

}  // namespace host
