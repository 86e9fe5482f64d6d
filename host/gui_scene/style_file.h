#pragma once

#include "core/object_state.h"
#include "core/status.h"

#include <QString>

namespace tarn {

struct StyleState;

/// Whether a style of that name can have a file: a name that leads elsewhere can not.
bool is_file_name(const QString& style);
/// The name of the style in the file `path`.
QString style_name_of(const QString& path);

/// Writes the style, which is based on none, as a package of its own; what was at `path` is replaced whole or stays whole.
Status write_style_file(const QString& path, const StyleState& style);

/// The style in the file `path`, which counts as hostile, under the file's name. It has no id yet.
Result<StatePtr> read_style_file(const QString& path);

} // namespace tarn
