// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace tlk {

// Lists of names in messages: "light, dark, contrast".
inline void AppendName(std::string& list, std::string_view name, std::string_view separator = ", ") {
    if (!list.empty()) list += separator;
    list += name;
}

// Does the list contain this name?
inline bool HasName(const std::string_view list, std::string_view name) {
    return (", " + std::string(list) + ",").find(" " + std::string(name) + ",") != std::string::npos;
}

}  // namespace tlk
