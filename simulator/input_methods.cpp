// SPDX-License-Identifier: MIT
#include "input_methods.h"

#include <utility>

#include "registry_value.h"

std::vector<RegisteredInputMethod> ListInputMethods() {
    std::vector<RegisteredInputMethod> methods;
    for (const std::u16string& identifier : ListSubkeys({HKEY_CLASSES_ROOT, u"CLSID"})) {
        const std::u16string key = u"CLSID\\" + identifier;
        RegisteredInputMethod method;
        if (ReadRegistryText({HKEY_CLASSES_ROOT, key + u"\\IsSIPInputMethod"}, u"") != u"1") continue;
        if (FAILED(CLSIDFromString(identifier.c_str(), &method.clsid))) continue;
        method.name = ReadRegistryText({HKEY_CLASSES_ROOT, key}, u"");
        if (method.name.empty()) method.name = identifier;
        methods.push_back(std::move(method));
    }
    return methods;
}
