// SPDX-License-Identifier: MIT
// The running device, and on whose behalf code runs.
#pragma once

#include <host_control.h>

namespace host {

// Without a device, folder and function are empty. The folder is absolute, without symbolic links.
const DeviceOptions& Options();
void SetOptions(DeviceOptions options);

// The opposite of PlatformScope, for calls from platform code into the product's code.
class ProductScope {
public:
    ProductScope();
    ~ProductScope();
    ProductScope(const ProductScope&) = delete;
    ProductScope& operator=(const ProductScope&) = delete;

private:
    int m_platformDepth;
};

void ResetClock();

}  // namespace host
