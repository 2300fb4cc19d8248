// SPDX-License-Identifier: MIT
#pragma once

#include <objbase.h>
#include <windows.h>

#include <string>
#include <vector>

struct RegisteredInputMethod {
    CLSID clsid;
    std::u16string name;  // its identifier if it has no name
};

// The classes marked as input methods, in the registry's order.
std::vector<RegisteredInputMethod> ListInputMethods();
