#pragma once

#include "core/status.h"
#include "file_io.h"

#include <QByteArray>
#include <QString>

namespace tarn {

/// What happens to a file that is to be replaced and is write-protected.
enum class ReadOnly { Keep, Replace };

/// Whether `path` is a file, or a link to one, that its owner has protected from writing, or that the user may not write.
bool is_read_only(const QString& path);

/// Writes `content` to `path` so that whatever fails, and whoever else saves there at the same time, the old file or a
/// new one is there whole: into a temporary file of its own beside it, synced, then renamed over it. A failure names the
/// file and the reason. Links are followed, also to where nothing is yet; the old file's permissions are kept. What a
/// killed program left behind is removed.
Status write_file_atomically(const QString& path, const QByteArray& content, FileIo& io = FileIo::system(),
                             ReadOnly read_only = ReadOnly::Keep);

/// The message of a save to `path` that failed before anything was written.
Status not_saved(const QString& path, const QString& reason);

} // namespace tarn
