// SPDX-License-Identifier: MIT
// COM: activation through the registry, task memory, identifiers as text.
#pragma once

#include <unknwn.h>

#define CLSCTX_INPROC_SERVER 1

// Loads the library that InprocServer32 of the class names and calls its DllGetClassObject. The library stays
// loaded until CoFreeUnusedLibraries finds that it can be unloaded.
HRESULT WINAPI CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid, void** object);
HRESULT WINAPI CoGetClassObject(REFCLSID clsid, DWORD context, void* server, REFIID iid, void** object);
void WINAPI CoFreeUnusedLibraries();
void* WINAPI CoTaskMemAlloc(SIZE_T bytes);
void WINAPI CoTaskMemFree(void* memory);
// The text is allocated with CoTaskMemAlloc and owned by the caller.
HRESULT WINAPI StringFromCLSID(REFCLSID clsid, LPWSTR* text);
HRESULT WINAPI CLSIDFromString(LPCWSTR text, CLSID* clsid);
