#include "filefun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace filefun {

bool file_exist(const QString& path)
{
    return QFileInfo(path).isFile();
}

bool create_path(const QString& folder)
{
    return QDir().mkpath(folder);
}

bool delete_file_or_dir(const QString& path)
{
    return QFileInfo(path).isDir() ? QDir(path).removeRecursively() : QFile::remove(path);
}

bool shell_open_file(const QString& program, const QString& path, int)
{
    return QProcess::startDetached(program, {path});
}

QString get_pure_filename(const QString& path, int with_extension)
{
    const QFileInfo info(path);
    return with_extension ? info.fileName() : info.completeBaseName();
}

} // namespace filefun
