#pragma once

#include "core/status.h"
#include "store/pak_file.h"

#include <QByteArray>

struct CSaveOpt;

namespace tarn {

struct SceneParts;

constexpr int package_format = 1; ///< version of the package's layout; newer ones are refused

/// The text of scene.json: one object a line, keys in table order, defaults left out. Equal scenes give equal text.
/// With the selected dialogs alone go their events, and the functions that no other dialog's events use.
QByteArray scene_text(const SceneParts& scene, bool selection_only = false);

/// Puts the whole scene into a package that is being written.
Status write_package(CPakFile& package, const SceneParts& scene, const CSaveOpt& options);

} // namespace tarn
