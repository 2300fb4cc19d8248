// SPDX-License-Identifier: MIT
// Redirects the registry's roots to keys of the tests. COM ignores the redirection of the classes: a test
// that needs COM works on the real ones, and its additions are removed afterwards.
#include <string>
#include <vector>

#include "framework/handles.h"
#include "test_support.h"
#include "windows/test_system.h"

namespace test {
namespace {

constexpr WCHAR kStore[] = L"Software\\TolkaTests";
HKEY g_store = nullptr;

using Names = std::vector<std::wstring>;

HKEY Open(HKEY parent, const std::wstring& path) {
    HKEY key = nullptr;
    RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return key;
}

Names SubkeysOf(HKEY key) {
    Names names;
    WCHAR name[256];
    DWORD length = 256;
    for (DWORD i = 0; RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == 0; ++i) {
        names.emplace_back(name, length);
        length = 256;
    }
    return names;
}

// The classes that tests with COM register.
constexpr LPCWSTR kClasses[] = {
    L"Tolka.KeybInput",
    L"Tolka.KeybInput.1",
    L"CLSID\\{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}",
    L"TypeLib\\{A94E27C1-6B3D-4C85-9E02-F3B81D6A7C54}",
    L"CLSID\\{71D0A9C4-E26F-4D1B-935C-0A446BF217DE}",
};

struct Root {
    HKEY root;
    const WCHAR* name;
};
constexpr int kRootCount = 3;
const Root* Roots() {
    static const Root roots[kRootCount] = {
        {HKEY_LOCAL_MACHINE, L"Machine"}, {HKEY_CURRENT_USER, L"User"}, {HKEY_CLASSES_ROOT, L"Classes"}};
    return roots;
}

void Redirect(const Root& root) {
    const CRegistryKeyOwner key(Open(g_store, root.name));
    RegOverridePredefKey(root.root, key.Get());
}

}  // namespace

bool PrepareRegistry() {
    g_store = Open(HKEY_CURRENT_USER, kStore);
    return g_store != nullptr;
}

void EmptyRegistry() {
    for (int i = 0; i < kRootCount; ++i)
        RegOverridePredefKey(Roots()[i].root, nullptr);
    for (const LPCWSTR path : kClasses)
        RegDeleteTreeW(HKEY_CLASSES_ROOT, path);
    for (const std::wstring& name : SubkeysOf(g_store))
        RegDeleteTreeW(g_store, name.c_str());
    for (int i = 0; i < kRootCount; ++i)
        Redirect(Roots()[i]);
}

void LetComSeeClasses() { RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr); }

}  // namespace test
