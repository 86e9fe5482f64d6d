#include "plain_file.h"

#include "core/language.h"
#include "enough_memory.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#ifndef Q_OS_WIN
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tarn {

namespace {

bool open_without_waiting(QFile& file)
{
#ifdef Q_OS_WIN
    return file.open(QIODevice::ReadOnly);
#else
    // A pipe under that name would wait for somebody who writes.
    const int handle = ::open(QFile::encodeName(file.fileName()).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
        return file.open(QIODevice::ReadOnly); // For its message.
    return file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
#endif
}

} // namespace

Result<QByteArray> read_plain_file(const QString& path, qint64 max_size)
{
    QFile file(path);
    if (const QFileInfo info(path); info.exists() && !info.isFile())
        return Status::error(lang(u"这不是普通文件", u"it is no ordinary file"));
    if (!open_without_waiting(file))
        return Status::error(file.errorString());
    return with_enough_memory([&]() -> Result<QByteArray> {
        // No more memory is asked for than the file seems to need.
        const qint64 told = std::clamp<qint64>(file.size(), 0, max_size);
        QByteArray content = file.read(told + 1);
        if (content.size() > told) // It has grown, or does not tell its size.
            content += file.read(max_size + 1 - content.size());
        if (content.size() > max_size)
            return Status::error(lang(u"文件太大", u"the file is too large"));
        if (file.error() != QFileDevice::NoError)
            return Status::error(file.errorString());
        return content;
    });
}

QString file_inside(const QString& folder, const QString& name)
{
    const QFileInfo place(folder);
    const QString parent = QFileInfo(place.absolutePath()).canonicalFilePath();
    const QString file = QFileInfo(folder + QLatin1Char('/') + name).canonicalFilePath();
    if (parent.isEmpty() || file.isEmpty())
        return {};
    const QString inside = parent + (parent.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/"))
        + place.fileName() + QLatin1Char('/');
    return file.startsWith(inside) ? file : QString();
}

} // namespace tarn
