#pragma once

#include "core/progress.h"
#include "core/status.h"
#include "scene_content.h"
#include "store/pak_file.h"

#include <QByteArray>

struct CSaveOpt;

namespace tarn {

constexpr int package_format = 1; ///< version of the package's layout; newer ones are refused

/// The scene as it is authored now, or its selected dialogs with their events and the functions that no other dialog's
/// events use. It shares its data with the scene: another thread can write it, this one is to release it.
SceneContent copy_of(const SceneParts& scene, bool selection_only = false);

/// The text of scene.json: one object a line, keys in table order, defaults left out. Equal scenes give equal text.
QByteArray scene_text(const SceneParts& scene, bool selection_only = false);

/// Puts a scene into a package that is being written. Of `document` only its tables are read.
Status write_package(CPakFile& package, const Document& document, const SceneContent& scene, const CSaveOpt& options,
                     const Progress& progress = {});

/// Saves a scene as the package `path`; what was there before is replaced whole or stays whole.
Status save_package(const QString& path, const Document& document, const SceneContent& scene, const CSaveOpt& options,
                    ReadOnly read_only, const Progress& progress = {});

} // namespace tarn
