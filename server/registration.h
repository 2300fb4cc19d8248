// SPDX-License-Identifier: MIT
// What self-registration writes and removes.
#pragma once

#include "framework/module.h"

// Runs the registration script, a text resource of the library, with the library's path filled in.
HRESULT UpdateKeybInputRegistry(RegistryAction action);

// Registers the type library that the library file carries.
HRESULT RegisterOwnTypeLibrary();
