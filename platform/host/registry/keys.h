// SPDX-License-Identifier: MIT
// The device's registry and its file, as the rest of the layer uses them.
#pragma once

#include <host_control.h>

#include "registry/tree.h"

namespace host {

void StartRegistry();  // reads device.reg
void ResetRegistry();  // writes it, closes every key
void CountRegistryHandles(LiveHandles& counts);

const RegistryTree& Registry();
// Starts with no key at all, without a file to write to.
void ForgetRegistry();
// Something differs from the file; the next FlushRegistry writes.
void MarkRegistryChanged();

// For what the platform does on its own account, without handles and fault injection.
// The text of a string value; empty when there is none.
std::u16string ReadRegistryText(RegistryRoot root, std::u16string_view key, std::u16string_view name);
// Makes the key when it is missing. False when it cannot be made.
bool WriteRegistryText(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                       std::u16string_view text);

}  // namespace host
