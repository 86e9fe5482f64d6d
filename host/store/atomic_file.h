#pragma once

#include "core/status.h"
#include "file_io.h"

#include <QByteArray>
#include <QString>

namespace tarn {

/// Writes `content` to `path` so that whatever fails, the old file or the new one is there whole: into a temporary file
/// beside it, synced, then renamed over it. A failure names the file and the reason. A link is followed, and the old
/// file's permissions are kept.
Status write_file_atomically(const QString& path, const QByteArray& content, FileIo& io = FileIo::system());

} // namespace tarn
