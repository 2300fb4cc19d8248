// SPDX-License-Identifier: MIT
// Loads and registers type libraries.
#include "com/activation.h"
#include "com/type_library.h"
#include "device/faults.h"
#include "device/files.h"
#include "modules/modules.h"
#include "registry/keys.h"

#include <oleauto.h>

#include <cstdio>
#include <utility>

namespace host {
namespace {

// Only the object below has this interface: RegisterTypeLib recognises its own objects by it.
constexpr IID IID_LoadedTypeLibrary = {
    0x5D0F2A91, 0x7C34, 0x4B1E, {0x8A, 0x62, 0x19, 0xE7, 0x30, 0xC5, 0xD4, 0xB8}};

class LoadedTypeLibrary final : public ITypeLib {
public:
    explicit LoadedTypeLibrary(TypeLibrary library) : m_library(std::move(library)) {}
    virtual ~LoadedTypeLibrary() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (iid != IID_IUnknown && iid != IID_LoadedTypeLibrary) return E_NOINTERFACE;
        *object = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&m_references)); }
    STDMETHODIMP_(ULONG) Release() override {
        const auto left = static_cast<ULONG>(InterlockedDecrement(&m_references));
        if (left == 0) delete this;
        return left;
    }

    const TypeLibrary& Content() const { return m_library; }

private:
    TypeLibrary m_library;
    LONG m_references = 1;
};

// Reads a .tlb file, or resource TYPELIB 1 of a library file.
std::optional<TypeLibrary> ReadTypeLibrary(std::u16string_view devicePath) {
    const ResolvedPath path = ResolvePath(devicePath);
    if (path.error != ERROR_SUCCESS) return std::nullopt;
    const std::optional<FileImage> file = FileImage::Read(path.path);
    if (!file) return std::nullopt;
    const std::optional<PeImage> image = PeImage::Parse(file->Bytes());
    if (!image) return ParseTypeLibrary(file->Bytes());
    const Resource* resource =
        image->Find(ResourceId::FromArgument(u"TYPELIB"), ResourceId::FromArgument(MAKEINTRESOURCEW(1)));
    return resource && resource->data ? ParseTypeLibrary(*resource->data) : std::nullopt;
}

// In the registry, versions and locales are hexadecimal, flags decimal.
std::u16string Format(const char* format, DWORD first, DWORD second = 0) {
    char text[24];
    const int length = std::snprintf(text, sizeof(text), format, first, second);
    return {text, text + length};
}

bool WriteEntries(const TypeLibrary& library, std::u16string_view path, const WCHAR* helpDirectory) {
    const std::u16string version =
        u"TypeLib\\" + FormatGuid(library.identifier) + u'\\' + Format("%x.%x", library.major, library.minor);
    const auto write = [&](const std::u16string& subkey, std::u16string_view text) {
        return WriteRegistryText(RegistryRoot::ClassesRoot, version + subkey, u"", text);
    };
    return write(u"", library.helpString) && write(u'\\' + Format("%x", library.locale) + u"\\win32", path) &&
           write(u"\\FLAGS", Format("%u", library.flags)) &&
           (!helpDirectory || write(u"\\HELPDIR", helpDirectory));
}

}  // namespace
}  // namespace host

using namespace host;

HRESULT WINAPI LoadTypeLib(const WCHAR* path, ITypeLib** library) {
    if (!library) return E_INVALIDARG;
    *library = nullptr;
    if (!path) return E_INVALIDARG;
    if (CallFails(Call::LoadTypeLib)) return TYPE_E_CANTLOADLIBRARY;
    std::optional<TypeLibrary> content = ReadTypeLibrary(path);
    if (!content) return TYPE_E_CANTLOADLIBRARY;
    *library = new LoadedTypeLibrary(std::move(*content));
    return S_OK;
}

HRESULT WINAPI RegisterTypeLib(ITypeLib* library, const WCHAR* path, const WCHAR* helpDirectory) {
    if (!library || !path) return E_INVALIDARG;
    if (CallFails(Call::RegisterTypeLib)) return TYPE_E_REGISTRYACCESS;
    void* loaded = nullptr;
    if (FAILED(library->QueryInterface(IID_LoadedTypeLibrary, &loaded))) return E_INVALIDARG;
    auto* own = static_cast<LoadedTypeLibrary*>(loaded);
    const bool written = WriteEntries(own->Content(), path, helpDirectory);
    own->Release();
    FlushRegistry();
    return written ? S_OK : TYPE_E_REGISTRYACCESS;
}
