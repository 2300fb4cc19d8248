// SPDX-License-Identifier: MIT
#include "device_setup.h"

#include "library.h"
#include "registry_value.h"
#include "script.h"
#include "store/registry_names.h"

void SetUpDevice(Library& library) {
    library.EnsureRegistered();
    const KeyPath settings{HKEY_LOCAL_MACHINE, kSettingsKey};
    for (const InitialSetting& setting : kInitialSettings) {
        if (ReadRegistryValue(settings, setting.name)) continue;
        const RegistryValue value = RegistryValue::FromNumber(setting.value);
        if (WriteRegistryValue(settings, setting.name, value) != ERROR_SUCCESS)
            throw ScriptError("the settings of the device cannot be written");
    }
}
