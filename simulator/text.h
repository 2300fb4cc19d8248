// SPDX-License-Identifier: MIT
// Writes texts of the device (UTF-16, with possible lone surrogates) in traces.
#pragma once

#include <string>
#include <string_view>

// UTF-8 for a trace line: `\"`, `\\`, `\n`, and `\uXXXX` for other control characters and lone surrogates.
std::string Escaped(std::u16string_view text);
// The same in double quotes.
std::string Quoted(std::u16string_view text);
