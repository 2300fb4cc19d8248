// SPDX-License-Identifier: MIT
// The device's registry and its file, for the rest of the layer.
#pragma once

#include <host_control.h>

#include "registry/tree.h"

namespace host {

void StartRegistry();  // reads device.reg
void ResetRegistry();  // writes it, closes every key
void CountRegistryHandles(LiveHandles& counts);

const RegistryTree& Registry();
// Starts empty and without a file.
void ForgetRegistry();
// The registry differs from the file; the next FlushRegistry writes it.
void MarkRegistryChanged();

// For the platform itself, without handles and fault injection: the text of a string value; empty if there is
// none.
std::u16string ReadRegistryText(RegistryRoot root, std::u16string_view key, std::u16string_view name);
// The same: creates the key if it is missing; false on failure.
bool WriteRegistryText(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                       std::u16string_view text);

}  // namespace host
