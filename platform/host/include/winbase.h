// SPDX-License-Identifier: MIT
// Modules, resources, files, strings, errors and synchronisation.
#pragma once

#include <windef.h>

// --- Errors, time -----------------------------------------------------------------------------------------
DWORD WINAPI GetLastError();
void WINAPI SetLastError(DWORD error);
// Moves the device's virtual clock; never waits.
void WINAPI Sleep(DWORD milliseconds);

// --- Modules ----------------------------------------------------------------------------------------------
using FARPROC = INT_PTR (*)();

#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3

// The module's code is a shared object beside it, at the same path with ".so" appended; without one the
// module has only resources. Each successful call needs one FreeLibrary.
HMODULE WINAPI LoadLibraryW(LPCWSTR path);
BOOL WINAPI FreeLibrary(HMODULE module);
FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);
DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD characters);

// --- Resources --------------------------------------------------------------------------------------------
#define IS_INTRESOURCE(name) ((reinterpret_cast<ULONG_PTR>(name) >> 16) == 0)
#define MAKEINTRESOURCEW(id) (reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(id))))
#define MAKEINTRESOURCE MAKEINTRESOURCEW
#define RT_BITMAP MAKEINTRESOURCEW(2)
#define RT_DIALOG MAKEINTRESOURCEW(5)
#define RT_STRING MAKEINTRESOURCEW(6)

// The handle belongs to the module and is valid as long as that is loaded.
HRSRC WINAPI FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
// The returned handle is the address of the resource's bytes, read-only, valid while the module is loaded.
HGLOBAL WINAPI LoadResource(HMODULE module, HRSRC resource);
DWORD WINAPI SizeofResource(HMODULE module, HRSRC resource);

// --- Files ------------------------------------------------------------------------------------------------
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

// Only what a folder's listing has without opening each file: no sizes, no times, and of the attributes only
// FILE_ATTRIBUTE_DIRECTORY.
struct WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    WCHAR cFileName[MAX_PATH];
};

// Entries come in ascending order of their names, ignoring case. Closed with FindClose.
HANDLE WINAPI FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data);
BOOL WINAPI FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data);
BOOL WINAPI FindClose(HANDLE find);
BOOL WINAPI DeleteFileW(LPCWSTR path);

// --- Strings ----------------------------------------------------------------------------------------------
#define CP_ACP 0

int WINAPI lstrcmpW(LPCWSTR first, LPCWSTR second);
int WINAPI lstrcmpiW(LPCWSTR first, LPCWSTR second);
// Only for CP_ACP (Windows-1252). A length of -1 includes the terminating null.
int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR bytes, int byteCount, LPWSTR text,
                               int characters);

// --- Synchronisation --------------------------------------------------------------------------------------
struct CRITICAL_SECTION {
    void* mutex;
};

void WINAPI InitializeCriticalSection(CRITICAL_SECTION* section);
void WINAPI EnterCriticalSection(CRITICAL_SECTION* section);
void WINAPI LeaveCriticalSection(CRITICAL_SECTION* section);
void WINAPI DeleteCriticalSection(CRITICAL_SECTION* section);
LONG WINAPI InterlockedIncrement(LONG volatile* value);
LONG WINAPI InterlockedDecrement(LONG volatile* value);
DWORD WINAPI GetCurrentThreadId();
