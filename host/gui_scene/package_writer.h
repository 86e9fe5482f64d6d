#pragma once

#include "core/progress.h"
#include "core/scene_snapshot.h"
#include "core/status.h"
#include "save_opt.h"
#include "store/pak_file.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

class CGuiCore;

namespace tarn {

class Document;

constexpr int package_format = 1; ///< version of the package's layout; newer ones are refused

/// The package entry that holds the atlas of a style.
QString atlas_entry(quint32 style);

/// The whole scene, or that of it which the options tell: the selected dialogs go with what belongs to them, their events,
/// and the functions that no other dialog's events use.
SceneSnapshot content_to_save(const CGuiCore& core, const CSaveOpt& options = {});

// What follows may be called by another thread: of `document` only its tables are read.

/// The texts of a package with the names of their entries: one object a line, keys in table order, defaults left out.
/// Equal scenes give equal texts. None when the progress stops it.
std::vector<std::pair<QString, QByteArray>> package_texts(const Document& document, const SceneSnapshot& scene,
                                                          const Progress& progress = {});

/// Puts the scene into a package that is being written.
Status write_package(CPakFile& package, const Document& document, const SceneSnapshot& scene, const CSaveOpt& options,
                     const Progress& progress = {});

/// Saves a scene as the package `path`; what was there before is replaced whole or stays whole.
Status save_package(const QString& path, const Document& document, const SceneSnapshot& scene, const CSaveOpt& options,
                    ReadOnly read_only, const Progress& progress = {});

} // namespace tarn
