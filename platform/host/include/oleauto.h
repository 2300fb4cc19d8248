// SPDX-License-Identifier: MIT
// Automation: the registration of type libraries.
#pragma once

#include <unknwn.h>

// Callers only load, register and release it.
struct ITypeLib : IUnknown {};

// Reads the type library from a .tlb file or from resource TYPELIB 1 of a library file.
HRESULT WINAPI LoadTypeLib(const WCHAR* path, ITypeLib** library);
// Writes HKCR\TypeLib\{identifier}\version with the path and the help directory.
HRESULT WINAPI RegisterTypeLib(ITypeLib* library, const WCHAR* path, const WCHAR* helpDirectory);
