# SPDX-License-Identifier: MIT
# Compiler options for product sources: small enough for a handheld, no run-time type information, no hidden locks.
add_library(product_rules INTERFACE)
target_compile_options(product_rules INTERFACE -fno-rtti -fno-threadsafe-statics -ffunction-sections
                                               -fdata-sections)
target_compile_definitions(product_rules INTERFACE UNICODE _UNICODE)
