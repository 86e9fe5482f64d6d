#include "atomic_file.h"

#include "core/language.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarn {

namespace {

Status failed(const QString& path, const QString& reason)
{
    return Status::error(
        lang(u"无法保存 %1：%2。原文件保持不变。", u"%1 could not be saved: %2. The file is as it was before.")
            .arg(QDir::toNativeSeparators(path), reason));
}

Status write_temporary(const QString& path, const QByteArray& content, FileIo& io, const QString& target)
{
    const int handle = io.open_for_writing(path);
    if (handle < 0)
        return failed(target, io.error_text());
    Status status;
    if (!io.write(handle, content.constData(), content.size()) || !io.sync(handle))
        status = failed(target, io.error_text());
    if (!io.close(handle) && status)
        status = failed(target, io.error_text());
    return status;
}

} // namespace

Status write_file_atomically(const QString& path, const QByteArray& content, FileIo& io)
{
    const QFileInfo wanted(path);
    const QString target = wanted.exists() ? wanted.canonicalFilePath() : wanted.absoluteFilePath();
    const QFileInfo info(target);
    if (info.isDir())
        return failed(path, lang(u"这是一个文件夹", u"it is a folder"));
    // One fixed name a target: what a killed program left behind is overwritten by the next save.
    const QString temporary = info.absolutePath() + QStringLiteral("/.") + info.fileName() + QStringLiteral(".saving");

    Status status = write_temporary(temporary, content, io, path);
    if (status) {
        if (info.exists())
            QFile::setPermissions(temporary, info.permissions());
        if (!io.rename(temporary, target))
            status = failed(path, io.error_text());
    }
    if (!status) {
        io.remove(temporary);
        return status;
    }
    if (!io.sync_folder(info.absolutePath()))
        return Status::error(
            lang(u"%1 已写入，但磁盘没有确认（%2）。断电时可能恢复为旧文件，请再次保存。",
                 u"%1 was written, but the disk did not confirm it (%2). A power cut may bring the old file back; "
                 u"save once more.")
                .arg(QDir::toNativeSeparators(path), io.error_text()));
    return {};
}

} // namespace tarn
