#pragma once

#include "core/object_state.h"
#include "core/status.h"

#include <QByteArray>
#include <QMap>
#include <QString>

namespace tarn {

struct StyleState;

/// Whether a style of that name can have a file: a name that leads elsewhere can not.
bool is_file_name(const QString& style);
/// The name of the style in the file `path`.
QString style_name_of(const QString& path);

/// Writes the style, which is based on none, as a package of its own, with the fonts by their names ("letters.ttf"); what
/// was at `path` is replaced whole or stays whole.
Status write_style_file(const QString& path, const StyleState& style, const QMap<QString, QByteArray>& fonts = {});

struct StyleFile {
    StatePtr state;                  ///< without an id
    QMap<QString, QByteArray> fonts; ///< by their names; whether they are any nobody has looked
};
/// The style in the file `path`, which counts as hostile, under the file's name.
Result<StyleFile> read_style_file(const QString& path);

} // namespace tarn
