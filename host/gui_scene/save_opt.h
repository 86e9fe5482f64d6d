#pragma once

#include <QString>

/// How a scene is saved.
struct CSaveOpt {
    QString prefix{};            ///< put before the names of the package's entries; empty for a whole package
    bool selection_only = false; ///< save only the selected dialogs
    bool interface_only = false; ///< leave out the 3D world, as selection_only does, too
    bool with_pictures = true;   ///< put the scene's pictures into the package
    QString texture_path{};      ///< folder beside the package in which pictures that are not in it are looked for
};
