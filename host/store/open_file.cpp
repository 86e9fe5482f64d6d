#include "open_file.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <utility>

namespace tarn {

namespace {

/// One path for a file, however it is reached. What does not exist yet is told by its folder.
QString one_path(const QString& path)
{
    const QFileInfo file(path);
    if (const QString canonical = file.canonicalFilePath(); !canonical.isEmpty())
        return canonical;
    return QFileInfo(file.absolutePath()).canonicalFilePath() + QLatin1Char('/') + file.fileName();
}

std::unique_ptr<QLockFile> lock_at(const QString& path)
{
    auto lock = std::make_unique<QLockFile>(path);
    lock->setStaleLockTime(0); // However old: it is stale when its program is gone.
    return lock;
}

} // namespace

FileStamp FileStamp::of(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        return {};
    return {file.size(), file.lastModified().toMSecsSinceEpoch()};
}

OpenFile::OpenFile(QString lock_folder) : m_lock_folder(std::move(lock_folder)) {}

OpenFile::~OpenFile() = default;
OpenFile::OpenFile(OpenFile&&) noexcept = default;
OpenFile& OpenFile::operator=(OpenFile&&) noexcept = default;

QString OpenFile::lock_path(const QString& path) const
{
    const QByteArray hash = QCryptographicHash::hash(one_path(path).toUtf8(), QCryptographicHash::Sha1);
    return m_lock_folder + QLatin1Char('/') + QLatin1String(hash.toHex()) + QStringLiteral(".lock");
}

std::optional<FileHolder> OpenFile::other_holder(const QString& path) const
{
    if (m_lock_folder.isNull() || (m_lock && m_lock->fileName() == lock_path(path)))
        return std::nullopt;
    QDir().mkpath(m_lock_folder);
    const auto lock = lock_at(lock_path(path));
    if (lock->tryLock(0) || lock->error() != QLockFile::LockFailedError)
        return std::nullopt; // Where no lock can be made, none was made.
    FileHolder holder;
    QString program;
    if (!lock->getLockInfo(&holder.process, &holder.computer, &program))
        return std::nullopt; // It went meanwhile.
    return holder;
}

void OpenFile::take(const QString& path, const FileStamp& stamp, bool as_copy)
{
    m_stamp = stamp;
    m_is_copy = as_copy;
    const QString lock = lock_path(path);
    m_path = path;
    if (m_lock && m_lock->fileName() == lock && !as_copy)
        return;
    m_lock.reset();
    if (m_lock_folder.isNull() || as_copy)
        return;
    QDir().mkpath(m_lock_folder);
    m_lock = lock_at(lock);
    if (!m_lock->tryLock(0))
        m_lock.reset();
}

void OpenFile::leave()
{
    m_lock.reset();
    m_path.clear();
    m_stamp = {};
    m_is_copy = false;
}

bool OpenFile::was_changed_outside(const QString& path) const
{
    if (m_path.isEmpty() || one_path(path) != one_path(m_path))
        return false;
    const FileStamp now = FileStamp::of(path);
    return now.exists() && now != m_stamp;
}

} // namespace tarn
