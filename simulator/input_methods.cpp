// SPDX-License-Identifier: MIT
#include "input_methods.h"

#include <utility>

#include "registry_value.h"

namespace {

// The default value of a key below HKCR; empty if there is none.
std::u16string DefaultText(const std::u16string& key) {
    const std::optional<RegistryValue> value = ReadRegistryValue({HKEY_CLASSES_ROOT, key}, u"");
    if (!value || value->type != REG_SZ) return {};
    const std::u16string text = value->Text();
    return text.substr(0, text.find(u'\0'));
}

}  // namespace

std::vector<RegisteredInputMethod> ListInputMethods() {
    std::vector<RegisteredInputMethod> methods;
    for (const std::u16string& identifier : ListSubkeys({HKEY_CLASSES_ROOT, u"CLSID"})) {
        const std::u16string key = u"CLSID\\" + identifier;
        RegisteredInputMethod method;
        if (DefaultText(key + u"\\IsSIPInputMethod") != u"1") continue;
        if (FAILED(CLSIDFromString(identifier.c_str(), &method.clsid))) continue;
        method.name = DefaultText(key);
        if (method.name.empty()) method.name = identifier;
        methods.push_back(std::move(method));
    }
    return methods;
}
