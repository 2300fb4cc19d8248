// SPDX-License-Identifier: MIT
// The modal windows of the input method and its button images.
#include "commands.h"
#include "script.h"

namespace {

void NotAvailable(Session&, const Arguments&) { throw ScriptError("this command is not available yet"); }

constexpr Command commands[] = {
    {"options", "", 0, 0, NotAvailable},        {"click", "ID", 1, 1, NotAvailable},
    {"choose", "ID TEXT", 2, 2, NotAvailable},  {"file", "PATH|cancel", 1, 1, NotAvailable},
    {"dialog", "", 0, 0, NotAvailable},         {"image narrow", "FILE", 1, 1, NotAvailable},
    {"image wide", "FILE", 1, 1, NotAvailable},
};

}  // namespace

std::span<const Command> DialogCommands() { return commands; }
