// SPDX-License-Identifier: MIT
// Self-registration: what it writes, what it removes, and whose entries it leaves alone.
#include <map>
#include <set>

#include "differences.h"
#include "fault_sweep.h"
#include "framework/handles.h"
#include "framework/registrar.h"
#include "server_fixture.h"

namespace {

#define CLASS_ID TEXT("{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}")
#define CLASS_KEY TEXT("CLSID\\{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}")
#define LIBRARY_ID TEXT("{A94E27C1-6B3D-4C85-9E02-F3B81D6A7C54}")

WideString OnDevice(const WideString& path) { return test::DeviceDrive() + path; }
WideString LibraryPath() { return OnDevice(TEXT("\\Windows\\Tolka.DLL")); }
constexpr WCHAR kTypeLibraryKey[] = TEXT("TypeLib\\") LIBRARY_ID;
constexpr WCHAR kOtherClass[] = TEXT("CLSID\\{42429667-ae04-11d0-a4f8-00aa00a749b9}");

struct Entry {
    LPCWSTR key;
    LPCWSTR name;  // empty for the default value
    WideString text;
    DWORD number;  // where there is no text
};

std::vector<Entry> ListedEntries(const WideString& libraryPath) {
    return {
        {TEXT("Tolka.KeybInput.1"), TEXT(""), TEXT("Tolka Class"), 0},
        {TEXT("Tolka.KeybInput.1\\CLSID"), TEXT(""), CLASS_ID, 0},
        {TEXT("Tolka.KeybInput"), TEXT(""), TEXT("Tolka Class"), 0},
        {TEXT("Tolka.KeybInput\\CLSID"), TEXT(""), CLASS_ID, 0},
        {TEXT("Tolka.KeybInput\\CurVer"), TEXT(""), TEXT("Tolka.KeybInput.1"), 0},
        {CLASS_KEY, TEXT(""), TEXT("Tolka Keyboard"), 0},
        {CLASS_KEY TEXT("\\ProgID"), TEXT(""), TEXT("Tolka.KeybInput.1"), 0},
        {CLASS_KEY TEXT("\\VersionIndependentProgID"), TEXT(""), TEXT("Tolka.KeybInput"), 0},
        {CLASS_KEY TEXT("\\InprocServer32"), TEXT(""), libraryPath, 0},
        {CLASS_KEY TEXT("\\InprocServer32"), TEXT("ThreadingModel"), TEXT("Free"), 0},
        {CLASS_KEY TEXT("\\TypeLib"), TEXT(""), LIBRARY_ID, 0},
        {CLASS_KEY TEXT("\\IsSIPInputMethod"), TEXT(""), TEXT("1"), 0},
        {CLASS_KEY, TEXT("InputMode"), {}, 2},
        {CLASS_KEY, TEXT("IsDefault"), {}, 1},
        {CLASS_KEY, TEXT("SwipMode"), {}, 1},
        {CLASS_KEY, TEXT("PrevMethod"), TEXT("{42429667-ae04-11d0-a4f8-00aa00a749b9}"), 0},
    };
}

// For messages.
std::string Narrow(const WideString& text) { return std::string(text.begin(), text.end()); }

CRegistryKeyOwner Open(const WideString& path) {
    CRegistryKeyOwner key;
    RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_ALL_ACCESS, key.Receive());
    return key;
}

bool Exists(const WideString& path) { return static_cast<bool>(Open(path)); }

std::set<WideString> Subkeys(const WideString& path) {
    std::set<WideString> names;
    const CRegistryKeyOwner key = Open(path);
    WCHAR name[256];
    for (DWORD size = 256; RegEnumKeyExW(key.Get(), static_cast<DWORD>(names.size()), name, &size, nullptr,
                                         nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         size = 256) {
        names.insert(WideString(name, size));
    }
    return names;
}

void AddTree(const WideString& path, std::set<WideString>& paths) {
    paths.insert(path);
    for (const WideString& name : Subkeys(path)) {
        AddTree(path + TEXT("\\") + name, paths);
    }
}

DWORD CountValues(const WideString& path) {
    DWORD count = 0;
    const CRegistryKeyOwner key = Open(path);
    EXPECT_EQ(RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count,
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    return count;
}

// Type and bytes as stored; type REG_NONE when the value does not exist.
std::pair<DWORD, std::string> ReadBytes(const WideString& path, LPCWSTR name) {
    char bytes[1024];
    DWORD size = sizeof bytes;
    DWORD type = REG_NONE;
    const CRegistryKeyOwner key = Open(path);
    if (RegQueryValueExW(key.Get(), name, nullptr, &type, reinterpret_cast<BYTE*>(bytes), &size) !=
        ERROR_SUCCESS) {
        return {};
    }
    return {type, std::string(bytes, size)};
}

// A string with its terminating null, else a number of four bytes.
std::pair<DWORD, std::string> Stored(const WideString& text, DWORD number = 0) {
    if (text.empty()) return {REG_DWORD, {reinterpret_cast<const char*>(&number), sizeof number}};
    return {REG_SZ, {reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(WCHAR)}};
}

void Write(const WideString& path, LPCWSTR name, const WideString& text) {
    CRegistryKeyOwner key;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              key.Receive(), nullptr),
              ERROR_SUCCESS);
    const std::string bytes = Stored(text).second;
    ASSERT_EQ(RegSetValueExW(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
}

// The three keys hold exactly the listed entries, and nothing else is in CLSID.
void ExpectListedEntries(const WideString& libraryPath) {
    std::map<WideString, DWORD> valuesOfKey;
    for (const Entry& entry : ListedEntries(libraryPath)) {
        ++valuesOfKey[entry.key];
        EXPECT_EQ(ReadBytes(entry.key, entry.name), Stored(entry.text, entry.number))
            << Narrow(entry.key) << " " << Narrow(entry.name);
    }
    std::set<WideString> found;
    for (const WideString& name : Subkeys(TEXT("CLSID"))) {
        AddTree(TEXT("CLSID\\") + name, found);
    }
    AddTree(TEXT("Tolka.KeybInput"), found);
    AddTree(TEXT("Tolka.KeybInput.1"), found);
    for (const WideString& path : found) {
        EXPECT_TRUE(valuesOfKey.count(path)) << "not listed: " << Narrow(path);
        EXPECT_EQ(CountValues(path), valuesOfKey[path]) << Narrow(path);
    }
    EXPECT_EQ(found.size(), valuesOfKey.size());
    EXPECT_EQ(CountValues(TEXT("CLSID")), 0u);
}

void ExpectTypeLibrary(const WideString& libraryPath, const WideString& folder) {
    const WideString version = WideString(kTypeLibraryKey) + TEXT("\\1.0");
    EXPECT_EQ(ReadBytes(version, TEXT("")), Stored(TEXT("Tolka 1.0 Type Library")));
    EXPECT_EQ(ReadBytes(version + TEXT("\\HELPDIR"), TEXT("")), Stored(folder));
    EXPECT_EQ(ReadBytes(version + TEXT("\\FLAGS"), TEXT("")),
              Stored(test::Either(test::Difference::TypeLibraryFlags, TEXT("0"), TEXT("8"))));
    int paths = 0;
    for (const WideString& locale : Subkeys(version)) {
        for (const WideString& system : Subkeys(version + TEXT("\\") + locale)) {
            EXPECT_EQ(ReadBytes(version + TEXT("\\") + locale + TEXT("\\") + system, TEXT("")),
                      Stored(libraryPath));
            ++paths;
        }
    }
    EXPECT_EQ(paths, 1);
}

void ExpectUnregistered() {
    EXPECT_FALSE(Exists(TEXT("Tolka.KeybInput")));
    EXPECT_FALSE(Exists(TEXT("Tolka.KeybInput.1")));
    EXPECT_FALSE(Exists(CLASS_KEY));
}

WideString RegistrationScript(HMODULE library) {
    const HRSRC resource = FindResourceW(library, MAKEINTRESOURCE(101), TEXT("REGISTRY"));
    const auto* bytes = static_cast<const char*>(LoadResource(library, resource));
    return {bytes, bytes + SizeofResource(library, resource)};
}

}  // namespace

using RegistrationTest = ServerTest;

TEST_F(RegistrationTest, WritesExactlyTheListedEntries) {
    EXPECT_EQ(DllRegisterServer(), S_OK);
    ExpectListedEntries(LibraryPath());
    ExpectTypeLibrary(LibraryPath(), OnDevice(TEXT("\\Windows\\")));
    EXPECT_EQ(Subkeys(TEXT("")).size(), 4u) << "the three of the class and TypeLib";
}

TEST_F(RegistrationTest, SecondRegistrationRepairsTheEntries) {
    ASSERT_EQ(DllRegisterServer(), S_OK);
    Write(CLASS_KEY, TEXT(""), TEXT("changed"));
    Write(CLASS_KEY, TEXT("InputMode"), TEXT("changed"));
    Write(CLASS_KEY, TEXT("Foreign"), TEXT("value"));
    Write(CLASS_KEY TEXT("\\Foreign\\Deep\\Deeper"), TEXT("x"), TEXT("value"));
    Write(CLASS_KEY TEXT("\\Foreign\\Second"), TEXT("x"), TEXT("value"));
    Write(TEXT("Tolka.KeybInput"), TEXT(""), TEXT("changed"));
    Write(TEXT("Tolka.KeybInput\\CurVer"), TEXT(""), TEXT("changed"));
    EXPECT_EQ(DllRegisterServer(), S_OK);
    ExpectListedEntries(LibraryPath());
}

TEST_F(RegistrationTest, UnregistrationRemovesAllButClsidAndTypeLibrary) {
    EXPECT_EQ(DllUnregisterServer(), S_OK) << "nothing to remove";
    EXPECT_FALSE(Exists(TEXT("CLSID"))) << "nor anything to write";
    ASSERT_EQ(DllRegisterServer(), S_OK);
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    ExpectUnregistered();
    EXPECT_TRUE(Exists(TEXT("CLSID")));
    ExpectTypeLibrary(LibraryPath(), OnDevice(TEXT("\\Windows\\")));
    EXPECT_EQ(DllUnregisterServer(), S_OK) << "twice";
    EXPECT_TRUE(Exists(TEXT("CLSID")));
}

TEST_F(RegistrationTest, PartsThatAreMissingAreNoObstacle) {
    ASSERT_EQ(DllRegisterServer(), S_OK);
    RegDeleteKeyW(HKEY_CLASSES_ROOT, CLASS_KEY TEXT("\\InprocServer32"));
    RegDeleteKeyW(HKEY_CLASSES_ROOT, TEXT("Tolka.KeybInput.1"));
    RegDeleteValueW(Open(CLASS_KEY).Get(), TEXT("IsDefault"));
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    ExpectUnregistered();
}

TEST_F(RegistrationTest, EntriesOfOthersInTheProgIdsSurviveRegistration) {
    Write(TEXT("Tolka.KeybInput.1"), TEXT("Foreign"), TEXT("value"));
    Write(TEXT("Tolka.KeybInput\\Foreign"), TEXT("x"), TEXT("value"));
    Write(TEXT("Tolka.KeybInput\\CurVer\\Foreign"), TEXT("x"), TEXT("value"));
    Write(kOtherClass, TEXT(""), TEXT("another input method"));
    EXPECT_EQ(DllRegisterServer(), S_OK);
    for (const Entry& entry : ListedEntries(LibraryPath())) {
        EXPECT_EQ(ReadBytes(entry.key, entry.name), Stored(entry.text, entry.number)) << Narrow(entry.key);
    }
    EXPECT_EQ(ReadBytes(TEXT("Tolka.KeybInput.1"), TEXT("Foreign")), Stored(TEXT("value")));
    EXPECT_EQ(ReadBytes(TEXT("Tolka.KeybInput\\Foreign"), TEXT("x")), Stored(TEXT("value")));
    EXPECT_EQ(ReadBytes(kOtherClass, TEXT("")), Stored(TEXT("another input method")));

    EXPECT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_FALSE(Exists(TEXT("Tolka.KeybInput.1"))) << "a value alone does not keep a key";
    EXPECT_EQ(Subkeys(TEXT("Tolka.KeybInput")), (std::set<WideString>{TEXT("CurVer"), TEXT("Foreign")}));
    EXPECT_EQ(ReadBytes(TEXT("Tolka.KeybInput"), TEXT("")), Stored(TEXT("Tolka Class")));
    EXPECT_EQ(ReadBytes(TEXT("Tolka.KeybInput\\CurVer"), TEXT("")), Stored(TEXT("Tolka.KeybInput.1")));
    EXPECT_EQ(ReadBytes(TEXT("Tolka.KeybInput\\CurVer\\Foreign"), TEXT("x")), Stored(TEXT("value")));
    EXPECT_EQ(ReadBytes(kOtherClass, TEXT("")), Stored(TEXT("another input method")));
}

TEST_F(RegistrationTest, ClassKeyWithAForeignSubkeyLosesTheListedEntriesAlone) {
    ASSERT_EQ(DllRegisterServer(), S_OK);
    Write(CLASS_KEY, TEXT("Foreign"), TEXT("value"));
    Write(CLASS_KEY TEXT("\\InprocServer32\\Foreign"), TEXT(""), TEXT("value"));
    EXPECT_EQ(DllUnregisterServer(), S_OK);
    EXPECT_EQ(Subkeys(CLASS_KEY), (std::set<WideString>{TEXT("InprocServer32")}));
    EXPECT_EQ(CountValues(CLASS_KEY), 2u);
    EXPECT_EQ(ReadBytes(CLASS_KEY, TEXT("")), Stored(TEXT("Tolka Keyboard")));
    EXPECT_EQ(ReadBytes(CLASS_KEY, TEXT("Foreign")), Stored(TEXT("value")));
    EXPECT_EQ(CountValues(CLASS_KEY TEXT("\\InprocServer32")), 1u) << "no ThreadingModel";
    EXPECT_EQ(Subkeys(CLASS_KEY TEXT("\\InprocServer32")), (std::set<WideString>{TEXT("Foreign")}));
}

TEST_F(RegistrationTest, PathsOfUpTo259CharactersAreRegistered) {
    Detach();
    const std::string folder(120, 'a');
    const WideString wideFolder(folder.begin(), folder.end());
    for (const std::size_t length : {std::size_t{259}, std::size_t{260}, std::size_t{300}}) {
        // Three backslashes, two folders, and the name of what is left.
        const std::size_t drive = OnDevice({}).size();
        const std::string name = std::string(length - drive - 243 - 4, 'b') + ".dll";
        const WideString path = OnDevice(TEXT("\\")) + wideFolder + TEXT("\\") + wideFolder + TEXT("\\") +
                                WideString(name.begin(), name.end());
        ASSERT_EQ(path.size(), length);
        Attach(path.c_str(), folder + "/" + folder + "/" + name);
        if (length < 260) {
            EXPECT_EQ(DllRegisterServer(), S_OK);
            ExpectListedEntries(path);
            ExpectTypeLibrary(path, OnDevice(TEXT("\\")) + wideFolder + TEXT("\\") + wideFolder + TEXT("\\"));
            EXPECT_EQ(DllUnregisterServer(), S_OK);
        } else {
            EXPECT_EQ(static_cast<DWORD>(DllRegisterServer()), 0x8007007Au);
            EXPECT_EQ(DllUnregisterServer(), S_OK);
        }
        ExpectUnregistered();
        Detach();
    }
    Attach(LibraryPath().c_str(), "Windows/Tolka.DLL");
}

// Success means that everything is written; a failure leaves nothing that the next attempt could not repair.
TEST_F(RegistrationTest, EveryFailureOfThePlatformIsReported) {
    for (test::FaultSweep sweep; sweep.Next();) {
        Write(CLASS_KEY TEXT("\\Foreign"), TEXT("x"), TEXT("value"));
        sweep.Arm();
        const HRESULT result = DllRegisterServer();
        sweep.Disarm();
        EXPECT_TRUE(result == S_OK || sweep.WasHit());
        if (result == S_OK) {
            ExpectListedEntries(LibraryPath());
        } else {
            EXPECT_TRUE(FAILED(result)) << sweep.Describe();
            EXPECT_EQ(DllRegisterServer(), S_OK) << "after " << sweep.Describe();
            ExpectListedEntries(LibraryPath());
        }
        sweep.Arm();
        EXPECT_EQ(DllUnregisterServer(), S_OK) << sweep.Describe();
        sweep.Disarm();
        EXPECT_EQ(DllUnregisterServer(), S_OK);
        ExpectUnregistered();
    }
    test::TakeReports();  // of the registry file that could not be written
}

TEST_F(RegistrationTest, LackOfMemoryIsReported) {
    for (test::AllocationSweep sweep; sweep.Next();) {
        sweep.Arm();
        const HRESULT result = DllRegisterServer();
        sweep.Disarm();
        EXPECT_EQ(result, sweep.WasHit() ? E_OUTOFMEMORY : S_OK) << sweep.Describe();
    }
    for (test::AllocationSweep sweep; sweep.Next();) {
        sweep.Arm();
        EXPECT_EQ(DllUnregisterServer(), S_OK);
        sweep.Disarm();
    }
    ExpectUnregistered();
}

TEST_F(RegistrationTest, BrokenScriptsFailAndTouchNobodyElse) {
    const WideString script = RegistrationScript(m_library);
    const WideString path = LibraryPath();
    CRegistrar registrar(path.c_str());
    ASSERT_EQ(registrar.Run(script, RegistryAction::Register), S_OK);
    ExpectListedEntries(LibraryPath());
    ASSERT_EQ(registrar.Run(script, RegistryAction::Unregister), S_OK);
    ExpectUnregistered();

    Write(kOtherClass, TEXT(""), TEXT("another input method"));
    Write(TEXT("txtfile\\shell"), TEXT(""), TEXT("open"));
    const std::size_t end = script.find_last_of('}');
    for (std::size_t length = 0; length <= end; length += 7) {
        const WideString prefix = script.substr(0, length);
        EXPECT_TRUE(FAILED(registrar.Run(prefix, RegistryAction::Register))) << length;
        EXPECT_TRUE(FAILED(registrar.Run(prefix, RegistryAction::Unregister))) << length;
        ASSERT_EQ(ReadBytes(kOtherClass, TEXT("")), Stored(TEXT("another input method"))) << length;
        ASSERT_EQ(ReadBytes(TEXT("txtfile\\shell"), TEXT("")), Stored(TEXT("open"))) << length;
    }
    for (const LPCWSTR broken : {
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
         }) {
        EXPECT_TRUE(FAILED(registrar.Run(broken, RegistryAction::Register))) << Narrow(broken);
        EXPECT_TRUE(FAILED(registrar.Run(broken, RegistryAction::Unregister))) << Narrow(broken);
        ASSERT_EQ(ReadBytes(kOtherClass, TEXT("")), Stored(TEXT("another input method"))) << Narrow(broken);
    }
}

TEST_F(RegistrationTest, QuotesAndBracesInAStringAreText) {
    CRegistrar registrar(TEXT("\\it's {here}.dll"));
    const WideString script = TEXT("HKCR { one = s '}''{' { val a = s '%MODULE%' two = s ''' } ' } }");
    EXPECT_EQ(registrar.Run(script, RegistryAction::Register), S_OK);
    EXPECT_EQ(ReadBytes(TEXT("one"), TEXT("")), Stored(TEXT("}'{")));
    EXPECT_EQ(ReadBytes(TEXT("one"), TEXT("a")), Stored(TEXT("\\it's {here}.dll")));
    EXPECT_EQ(ReadBytes(TEXT("one\\two"), TEXT("")), Stored(TEXT("' } ")));
    EXPECT_EQ(registrar.Run(script, RegistryAction::Unregister), S_OK);
    EXPECT_EQ(registrar.Run(script, RegistryAction::Unregister), S_OK) << "a block to skip";
    EXPECT_FALSE(Exists(TEXT("one")));
}
