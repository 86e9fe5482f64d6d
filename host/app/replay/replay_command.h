#pragma once

#include "commands/command.h"

class Studio;

namespace tarn {

/// Replays the recorded input of the file `script` with the interface `package`, or with the one that the script names
/// where that is empty. The studio's world is made and has not started yet.
CommandResult run_replay(Studio& studio, const QString& script, const QString& package);

} // namespace tarn
