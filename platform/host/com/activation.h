// SPDX-License-Identifier: MIT
#pragma once

#include <objbase.h>

#include <string>

namespace host {

// "{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}": braces, upper case, 38 characters.
std::u16string FormatGuid(const GUID& guid);

// Releases the libraries that activation loaded.
void ResetCom();

}  // namespace host
