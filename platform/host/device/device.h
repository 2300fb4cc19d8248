// SPDX-License-Identifier: MIT
// The device that runs, and on whose behalf code runs.
#pragma once

#include <host_control.h>

namespace host {

// Empty folder and function while no device runs. The folder is absolute and free of symbolic links.
const DeviceOptions& Options();
void SetOptions(DeviceOptions options);

// The opposite of PlatformScope, for calls into the product's code from platform code.
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
