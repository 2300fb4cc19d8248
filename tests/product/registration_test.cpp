// SPDX-License-Identifier: MIT
// Self-registration: the entries that it writes and removes, and those that it leaves alone.
#include <map>
#include <set>

#include "differences.h"
#include "fault_sweep.h"
#include "framework/handles.h"
#include "framework/registrar.h"
#include "registry_values.h"
#include "server_fixture.h"

namespace {

#define CLASS_ID TEXT("{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}")
#define CLASS_KEY TEXT("CLSID\\{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}")
#define LIBRARY_ID TEXT("{A94E27C1-6B3D-4C85-9E02-F3B81D6A7C54}")

using test::NumberValue;
using test::TextValue;

WideString OnDevice(const WideString& path) { return test::DeviceDrive() + path; }
WideString LibraryPath() { return OnDevice(TEXT("\\Windows\\Tolka.DLL")); }
constexpr WCHAR kVersionKey[] = TEXT("TypeLib\\") LIBRARY_ID TEXT("\\1.0");
constexpr WCHAR kOtherClass[] = TEXT("CLSID\\{42429667-ae04-11d0-a4f8-00aa00a749b9}");

struct Entry {
    LPCWSTR key;
    LPCWSTR name;  // empty for the default value
    test::RegistryValue value;
};

std::vector<Entry> ListedEntries(const WideString& libraryPath) {
    return {
        {TEXT("Tolka.KeybInput.1"), TEXT(""), TextValue(TEXT("Tolka Class"))},
        {TEXT("Tolka.KeybInput.1\\CLSID"), TEXT(""), TextValue(CLASS_ID)},
        {TEXT("Tolka.KeybInput"), TEXT(""), TextValue(TEXT("Tolka Class"))},
        {TEXT("Tolka.KeybInput\\CLSID"), TEXT(""), TextValue(CLASS_ID)},
        {TEXT("Tolka.KeybInput\\CurVer"), TEXT(""), TextValue(TEXT("Tolka.KeybInput.1"))},
        {CLASS_KEY, TEXT(""), TextValue(TEXT("Tolka Keyboard"))},
        {CLASS_KEY TEXT("\\ProgID"), TEXT(""), TextValue(TEXT("Tolka.KeybInput.1"))},
        {CLASS_KEY TEXT("\\VersionIndependentProgID"), TEXT(""), TextValue(TEXT("Tolka.KeybInput"))},
        {CLASS_KEY TEXT("\\InprocServer32"), TEXT(""), TextValue(libraryPath)},
        {CLASS_KEY TEXT("\\InprocServer32"), TEXT("ThreadingModel"), TextValue(TEXT("Free"))},
        {CLASS_KEY TEXT("\\TypeLib"), TEXT(""), TextValue(LIBRARY_ID)},
        {CLASS_KEY TEXT("\\IsSIPInputMethod"), TEXT(""), TextValue(TEXT("1"))},
        {CLASS_KEY, TEXT("InputMode"), NumberValue(2)},
        {CLASS_KEY, TEXT("IsDefault"), NumberValue(1)},
        {CLASS_KEY, TEXT("SwipMode"), NumberValue(1)},
        {CLASS_KEY, TEXT("PrevMethod"), TextValue(TEXT("{42429667-ae04-11d0-a4f8-00aa00a749b9}"))},
    };
}

bool Exists(const WideString& path) { return test::KeyExists(HKEY_CLASSES_ROOT, path); }
test::RegistryValue Read(const WideString& path, LPCWSTR name = TEXT("")) {
    return test::ReadValue(HKEY_CLASSES_ROOT, path, name);
}
void Write(const WideString& path, LPCWSTR name, const WideString& text) {
    test::WriteValue(HKEY_CLASSES_ROOT, path, name, TextValue(text));
}

CRegistryKeyOwner Open(const WideString& path) {
    CRegistryKeyOwner key;
    RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_ALL_ACCESS, key.Receive());
    return key;
}

std::set<WideString> Subkeys(const WideString& path) {
    std::set<WideString> names;
    const CRegistryKeyOwner key = Open(path);
    WCHAR name[256];
    for (DWORD size = 256; RegEnumKeyExW(key.Get(), static_cast<DWORD>(names.size()), name, &size, nullptr,
                                         nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         size = 256)
        names.insert(WideString(name, size));
    return names;
}

// Counts the values of all keys in a tree.
void CountValues(const WideString& path, std::map<WideString, DWORD>& counts) {
    const CRegistryKeyOwner key = Open(path);
    EXPECT_EQ(RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &counts[path],
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    for (const WideString& name : Subkeys(path))
        CountValues(path + TEXT("\\") + name, counts);
}

// Also checks that CLSID and the two keys beside it have nothing else, unless others have entries there.
void ExpectListedEntries(const WideString& libraryPath, bool alone = true) {
    std::map<WideString, DWORD> listed = {{TEXT("CLSID"), 0}};
    for (const Entry& entry : ListedEntries(libraryPath)) {
        ++listed[entry.key];
        EXPECT_EQ(Read(entry.key, entry.name), entry.value)
            << testing::PrintToString(entry.key) << " " << testing::PrintToString(entry.name);
    }
    std::map<WideString, DWORD> found;
    for (const LPCWSTR root : {TEXT("CLSID"), TEXT("Tolka.KeybInput"), TEXT("Tolka.KeybInput.1")})
        CountValues(root, found);
    EXPECT_EQ(found == listed, alone);
}

void ExpectTypeLibrary(const WideString& libraryPath) {
    const WideString version = kVersionKey;
    EXPECT_EQ(Read(version), TextValue(TEXT("Tolka 1.0 Type Library")));
    EXPECT_EQ(Read(version + TEXT("\\HELPDIR")),
              TextValue(libraryPath.substr(0, libraryPath.find_last_of(TEXT('\\')) + 1)));
    EXPECT_EQ(Read(version + TEXT("\\FLAGS")),
              TextValue(test::Either(test::Difference::TypeLibraryFlags, TEXT("0"), TEXT("8"))));
    EXPECT_EQ(Read(version +
                   test::Either(test::Difference::TypeLibrarySystem, TEXT("\\0\\win32"), TEXT("\\0\\win64"))),
              TextValue(libraryPath));
}

void ExpectUnregistered() {
    EXPECT_FALSE(Exists(TEXT("Tolka.KeybInput")));
    EXPECT_FALSE(Exists(TEXT("Tolka.KeybInput.1")));
    EXPECT_FALSE(Exists(CLASS_KEY));
}

}  // namespace

using RegistrationTest = ServerTest;

TEST_F(RegistrationTest, WritesExactlyTheListedEntriesAndRepairsThem) {
    EXPECT_EQ(DllRegisterServer(), S_OK);
    ExpectListedEntries(LibraryPath());
    ExpectTypeLibrary(LibraryPath());
    EXPECT_EQ(Subkeys(TEXT("")).size(), 4u) << "the three of the class and TypeLib";
    const LPCWSTR changes[][2] = {{CLASS_KEY, TEXT("")},
                                  {CLASS_KEY, TEXT("InputMode")},
                                  {CLASS_KEY, TEXT("Foreign")},
                                  {CLASS_KEY TEXT("\\Foreign\\Deep\\Deeper"), TEXT("x")},
                                  {CLASS_KEY TEXT("\\Foreign\\Second"), TEXT("x")},
                                  {TEXT("Tolka.KeybInput"), TEXT("")},
                                  {TEXT("Tolka.KeybInput\\CurVer"), TEXT("")}};
    for (const auto& [key, name] : changes)
        Write(key, name, TEXT("changed"));
    EXPECT_EQ(DllRegisterServer(), S_OK);
    ExpectListedEntries(LibraryPath());
}

TEST_F(RegistrationTest, UnregistrationRemovesAllButClsidAndTypeLibrary) {
    EXPECT_EQ(DllUnregisterServer(), S_OK) << "nothing to remove";
    EXPECT_FALSE(Exists(TEXT("CLSID"))) << "nor anything to write";
    for (const bool isWhole : {true, false}) {
        ASSERT_EQ(DllRegisterServer(), S_OK);
        if (!isWhole) {  // missing parts are no obstacle
            RegDeleteKeyW(HKEY_CLASSES_ROOT, CLASS_KEY TEXT("\\InprocServer32"));
            RegDeleteKeyW(HKEY_CLASSES_ROOT, TEXT("Tolka.KeybInput.1"));
            RegDeleteValueW(Open(CLASS_KEY).Get(), TEXT("IsDefault"));
        }
        EXPECT_EQ(DllUnregisterServer(), S_OK);
        ExpectUnregistered();
        EXPECT_TRUE(Exists(TEXT("CLSID")));
        ExpectTypeLibrary(LibraryPath());
    }
}

TEST_F(RegistrationTest, EntriesOfOthersInTheProgIdsSurviveRegistration) {
    const struct {
        LPCWSTR key, name;
        bool survivesUnregistration;
    } others[] = {{TEXT("Tolka.KeybInput.1"), TEXT("Foreign"), false},  // a value does not keep a key
                  {TEXT("Tolka.KeybInput\\Foreign"), TEXT("x"), true},
                  {TEXT("Tolka.KeybInput\\CurVer\\Foreign"), TEXT("x"), true},
                  {kOtherClass, TEXT(""), true}};
    for (const auto& other : others)
        Write(other.key, other.name, TEXT("value"));
    EXPECT_EQ(DllRegisterServer(), S_OK);
    ExpectListedEntries(LibraryPath(), false);
    for (const auto& other : others)
        EXPECT_EQ(Read(other.key, other.name), TextValue(TEXT("value")));
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    for (const auto& other : others)
        EXPECT_EQ(Read(other.key, other.name) == TextValue(TEXT("value")), other.survivesUnregistration);
    EXPECT_FALSE(Exists(TEXT("Tolka.KeybInput.1")));
    EXPECT_EQ(Subkeys(TEXT("Tolka.KeybInput")), (std::set<WideString>{TEXT("CurVer"), TEXT("Foreign")}));
    EXPECT_EQ(Read(TEXT("Tolka.KeybInput")), TextValue(TEXT("Tolka Class")));
    EXPECT_EQ(Read(TEXT("Tolka.KeybInput\\CurVer")), TextValue(TEXT("Tolka.KeybInput.1")));
}

TEST_F(RegistrationTest, AClassKeyWithAForeignSubkeyLosesOnlyTheListedEntries) {
    ASSERT_EQ(DllRegisterServer(), S_OK);
    Write(CLASS_KEY, TEXT("Foreign"), TEXT("value"));
    Write(CLASS_KEY TEXT("\\InprocServer32\\Foreign"), TEXT(""), TEXT("value"));
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    std::map<WideString, DWORD> left;
    CountValues(CLASS_KEY, left);
    EXPECT_EQ(left, (std::map<WideString, DWORD>{{CLASS_KEY, 2},
                                                 {CLASS_KEY TEXT("\\InprocServer32"), 1},
                                                 {CLASS_KEY TEXT("\\InprocServer32\\Foreign"), 1}}));
    EXPECT_EQ(Read(CLASS_KEY), TextValue(TEXT("Tolka Keyboard")));
    EXPECT_EQ(Read(CLASS_KEY, TEXT("Foreign")), TextValue(TEXT("value")));
    EXPECT_EQ(Read(CLASS_KEY TEXT("\\InprocServer32"), TEXT("ThreadingModel")), test::RegistryValue());
}

TEST_F(RegistrationTest, PathsOfUpTo259CharactersAreRegistered) {
    Detach();
    const std::string folder(120, 'a');
    for (const std::size_t length : {std::size_t{259}, std::size_t{260}}) {
        // Three backslashes, two folders, and a name with the remaining length.
        const std::string name = std::string(length - OnDevice({}).size() - 243 - 4, 'b') + ".dll";
        const std::string path = "\\" + folder + "\\" + folder + "\\" + name;
        const WideString fullPath = OnDevice(WideString(path.begin(), path.end()));
        ASSERT_EQ(fullPath.size(), length);
        Attach(fullPath.c_str(), folder + "/" + folder + "/" + name);
        EXPECT_EQ(static_cast<DWORD>(DllRegisterServer()), length < 260 ? 0 : 0x8007007Au);
        if (length < 260) {
            ExpectListedEntries(fullPath);
            ExpectTypeLibrary(fullPath);
        }
        EXPECT_EQ(DllUnregisterServer(), S_OK);
        ExpectUnregistered();
        Detach();
    }
    Attach(LibraryPath().c_str(), "Windows/Tolka.DLL");
}

// On success everything is written; after a failure the next attempt can write it.
TEST_F(RegistrationTest, EveryFailureOfThePlatformIsReported) {
    for (test::FaultSweep sweep; sweep.Next();) {
        Write(CLASS_KEY TEXT("\\Foreign"), TEXT("x"), TEXT("value"));
        sweep.Arm();
        const HRESULT result = DllRegisterServer();
        sweep.Disarm();
        EXPECT_TRUE(result == S_OK || sweep.WasHit());
        if (result != S_OK) {
            EXPECT_TRUE(FAILED(result)) << sweep.Describe();
            EXPECT_EQ(DllRegisterServer(), S_OK) << "after " << sweep.Describe();
        }
        ExpectListedEntries(LibraryPath());
        sweep.Arm();
        EXPECT_EQ(DllUnregisterServer(), S_OK) << sweep.Describe();
        sweep.Disarm();
        EXPECT_EQ(DllUnregisterServer(), S_OK);
        ExpectUnregistered();
    }
    test::TakeReports();  // the failure to write the registry file
}

// Unregistering reports no failure; the next call removes the rest.
TEST_F(RegistrationTest, RunningOutOfMemoryIsReported) {
    for (const auto& [act, failure] :
         {std::pair(&DllRegisterServer, E_OUTOFMEMORY), {&DllUnregisterServer, S_OK}}) {
        for (test::AllocationSweep sweep; sweep.Next();) {
            sweep.Arm();
            const HRESULT result = act();
            sweep.Disarm();
            EXPECT_EQ(result, sweep.WasHit() ? failure : S_OK) << sweep.Describe();
        }
    }
    ExpectUnregistered();
}

TEST_F(RegistrationTest, BrokenScriptsFailAndLeaveOtherEntriesAlone) {
    const HRSRC resource = FindResourceW(m_library, MAKEINTRESOURCE(101), TEXT("REGISTRY"));
    const auto* bytes = static_cast<const char*>(LoadResource(m_library, resource));
    const WideString script(bytes, bytes + SizeofResource(m_library, resource));
    const WideString path = LibraryPath();
    CRegistrar registrar(path.c_str());
    WideStringList broken = {
        TEXT("HKLM { key = s 'x' }"),
        TEXT("HKCR { key = s x }"),
        TEXT("HKCR { key = b '1' }"),
        TEXT("HKCR { key = s 'x }"),
        TEXT("HKCR { val }"),
        TEXT("HKCR { val name s 'x' }"),
        TEXT("HKCR { ForceRemove }"),
        TEXT("HKCR { ForceRemove { } }"),
        TEXT("HKCR { NoRemove 'x' }"),
        TEXT("HKCR { 'x' }"),
        TEXT("HKCR } {"),
        TEXT("{ }"),
    };
    for (std::size_t length = 0; length <= script.find_last_of('}'); length += 7)
        broken.push_back(script.substr(0, length));
    Write(kOtherClass, TEXT(""), TEXT("of others"));
    for (const WideString& text : broken) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_TRUE(FAILED(registrar.Run(text, RegistryAction::Register)));
        EXPECT_TRUE(FAILED(registrar.Run(text, RegistryAction::Unregister)));
        ASSERT_EQ(Read(kOtherClass), TextValue(TEXT("of others")));
    }
}

TEST_F(RegistrationTest, QuotesAndBracesInAStringAreText) {
    CRegistrar registrar(TEXT("\\it's {here}.dll"));
    const WideString script = TEXT("HKCR { one = s '}''{' { val a = s '%MODULE%' two = s ''' } ' } }");
    EXPECT_EQ(registrar.Run(script, RegistryAction::Register), S_OK);
    EXPECT_EQ(Read(TEXT("one")), TextValue(TEXT("}'{")));
    EXPECT_EQ(Read(TEXT("one"), TEXT("a")), TextValue(TEXT("\\it's {here}.dll")));
    EXPECT_EQ(Read(TEXT("one\\two")), TextValue(TEXT("' } ")));
    EXPECT_EQ(registrar.Run(script, RegistryAction::Unregister), S_OK);
    EXPECT_EQ(registrar.Run(script, RegistryAction::Unregister), S_OK) << "a block to skip";
    EXPECT_FALSE(Exists(TEXT("one")));
}
