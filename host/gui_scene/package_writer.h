#pragma once

#include "core/scene_snapshot.h"
#include "core/status.h"
#include "store/pak_file.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

class CGuiCore;
struct CSaveOpt;

namespace tarn {

constexpr int package_format = 1; ///< version of the package's layout; newer ones are refused

/// The whole scene, or the selected dialogs with what belongs to them: their events, and the functions that no other
/// dialog's events use.
SceneSnapshot content_to_save(const CGuiCore& core, bool selection_only = false);

/// The texts of a package with the names of their entries: one object a line, keys in table order, defaults left out. Equal scenes give
/// equal texts. Another thread may call this.
std::vector<std::pair<QString, QByteArray>> package_texts(const CGuiCore& core, const SceneSnapshot& scene);

/// Puts the scene into a package that is being written. Another thread may call this.
Status write_package(CPakFile& package, const CGuiCore& core, const SceneSnapshot& scene, const CSaveOpt& options);

} // namespace tarn
