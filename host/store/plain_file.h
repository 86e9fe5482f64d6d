#pragma once

#include "core/status.h"

#include <QByteArray>
#include <QString>

namespace tarn {

/// The content of the file `path`, which must be a file of at most `max_size` bytes: a pipe or a device is refused and
/// never waited for. Links are followed. The message of a failure tells the reason alone.
Result<QByteArray> read_plain_file(const QString& path, qint64 max_size);

/// The path of the file `name`, which may contain folders, in `folder` once all links in it are followed; null when it
/// does not exist or the links lead out of `folder`. A link in place of the last part of `folder` itself leads out, too.
QString file_inside(const QString& folder, const QString& name);

} // namespace tarn
