// SPDX-License-Identifier: MIT
// Open keys, for the registry's calls alone.
#pragma once

#include "device/handles.h"
#include "registry/tree.h"

namespace host {

struct OpenKey {
    std::shared_ptr<RegistryKey> key;
    REGSAM access = 0;
};

// The key behind a handle, predefined ones included; an error when it is none, when its key was deleted, or
// when it was not opened for all of this access.
LSTATUS UseKey(HKEY handle, REGSAM access, OpenKey& key);

}  // namespace host
