// SPDX-License-Identifier: MIT
// Called by the compiler's library for an unhandled exception. Its own version prints the exception's name,
// with a formatter and a demangler that are larger than the keyboard.
#include <cstdlib>

namespace __gnu_cxx {
void __verbose_terminate_handler();
void __verbose_terminate_handler() { std::abort(); }
}  // namespace __gnu_cxx
