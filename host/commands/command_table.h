#pragma once

#include "command.h"

namespace tarn {

std::span<const Command> command_table();

// The commands' functions, in a file each.
CommandResult run_check(CommandArguments& arguments);
CommandResult run_pack(CommandArguments& arguments);
CommandResult run_unpack(CommandArguments& arguments);
CommandResult run_diff(CommandArguments& arguments);
CommandResult run_merge(CommandArguments& arguments);

} // namespace tarn
