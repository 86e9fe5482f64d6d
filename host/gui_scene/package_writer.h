#pragma once

#include "core/pak_file.h"
#include "core/status.h"

#include <QByteArray>

struct CSaveOpt;
class CGuiCore;

namespace tarn {

constexpr int package_format = 1; ///< version of the package's layout; newer ones are refused

/// The text of scene.json: one object a line, keys in table order, defaults left out. Equal scenes give equal text.
QByteArray scene_text(const CGuiCore& core, bool selection_only = false);

/// Puts the whole scene into a package that is being written.
Status write_package(CPakFile& package, const CGuiCore& core, const CSaveOpt& options);

} // namespace tarn
