#pragma once

#include "core/progress.h"
#include "core/status.h"
#include "gui_core/gui_core.h"

#include <QByteArray>
#include <QMap>

class CPakFile;

namespace tarn {

/// Reads a package's content into objects that are not part of the scene yet; nothing of the open scene changes.
/// The file counts as hostile: whatever is wrong gives one message that names the entry and the place. Entries that the
/// interface can be shown without, like pictures, may be damaged: DocumentState::damaged has them then. While somebody
/// watches the progress, another thread unpacks.
Result<SceneSnapshot> read_package(const CPakFile& package, CGuiCore& core, const Progress& progress = {});

/// The same from texts that were read before, those of the parts by their entries (of a part that may be missing, none or an empty one); `files` are the package's other
/// entries.
Result<SceneSnapshot> read_content(QByteArray manifest, QMap<QString, QByteArray> texts,
                                   QMap<QString, QByteArray> files, CGuiCore& core, const Progress& progress = {});

} // namespace tarn
