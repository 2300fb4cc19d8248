// SPDX-License-Identifier: MIT
// Automation: strings and the registration of type libraries.
#pragma once

#include <unknwn.h>

using BSTR = WCHAR*;

// The caller owns it and frees it with SysFreeString. Null if memory runs out or text is null.
BSTR WINAPI SysAllocString(const WCHAR* text);
void WINAPI SysFreeString(BSTR text);

// Callers only load, register and release it.
struct ITypeLib : IUnknown {};

// Reads the type library from a .tlb file or from resource TYPELIB 1 of a library file.
HRESULT WINAPI LoadTypeLib(const WCHAR* path, ITypeLib** library);
// Writes HKCR\TypeLib\{identifier}\version with the path and the help directory.
HRESULT WINAPI RegisterTypeLib(ITypeLib* library, const WCHAR* path, const WCHAR* helpDirectory);
