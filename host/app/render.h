#pragma once

#include "command_line.h"
#include "core/status.h"

class Studio;

namespace tarn {

/// Draws the scene of the studio as the command line tells, into a PNG file or, of a span of time, into one for each frame.
Status render_to_files(Studio& studio, const CommandLine& line);

} // namespace tarn
