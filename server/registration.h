// SPDX-License-Identifier: MIT
// Self-registration.
#pragma once

#include "framework/module.h"

// Runs the registration script, a text resource of the library, for the library's path.
HRESULT UpdateKeybInputRegistry(RegistryAction action);

// Registers the type library that the library file carries.
HRESULT RegisterOwnTypeLibrary();
