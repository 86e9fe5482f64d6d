#pragma once

#include <QString>

/// Small helpers around files and folders.
namespace filefun {

bool file_exist(const QString& path);
/// Makes the folder and those above it; true when it is there afterwards.
bool create_path(const QString& folder);
bool delete_file_or_dir(const QString& path);
/// Starts the program `program` with the file, without waiting for it; false when it cannot be started. `mode` 3 asks for
/// a large window.
bool shell_open_file(const QString& program, const QString& path, int mode);
/// The file's name without its folder; `with_extension` 0 leaves the extension away too.
QString get_pure_filename(const QString& path, int with_extension);

} // namespace filefun
