#pragma once

#include "commands/input_script.h"
#include "core/status.h"

class CView3D;
class Studio;

namespace tarn {

/// How a replay ended.
struct ReplayResult {
    int expectations = 0; ///< that held
    int line = 0;         ///< of the script, of the first that did not; 0: all held
    QString difference{}; ///< what was expected there, and what was there
};

/// Runs the scene that is open and does to it what the script says, in a time of its own that is the same each time. Ends
/// with the first expectation that does not hold. Fails when the scene cannot run.
Result<ReplayResult> replay_input(Studio& studio, CView3D& view, const InputScript& script);

} // namespace tarn
