#pragma once

#include "core/status.h"

#include <QString>

namespace tarn {

/// What plays movies on this machine; it is no part of the program and may be missing.
struct MovieTools {
    QString node;     ///< the program that runs the player
    QString scripts;  ///< folder of what it runs
    QString packages; ///< folder of the packages of the player

    /// Finds them, the packages in exactly the versions that `scripts` ask for. On failure the message says what is missing
    /// and what to do about it.
    static Result<MovieTools> find();
};

} // namespace tarn
