#include "import_cache.h"

#include "models/model_file.h"
#include "store/atomic_file.h"
#include "store/filefun.h"
#include "store/plain_file.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>

#include <algorithm>

namespace tarn {

namespace {

/// Raised when an importer makes something else of the same file.
constexpr int importer_version = 1;
constexpr qsizetype hash_size = 32;
constexpr qint64 max_source = qint64(256) << 20; ///< bytes

QByteArray hash_of(const QByteArray& content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

bool is_as_then(const ModelSource& source, const QString& folder)
{
    const QString path = file_inside(folder, source.name);
    const auto content = path.isNull() ? Result<QByteArray>(Status::error({})) : read_plain_file(path, max_source);
    return (content ? hash_of(content.value()) : QByteArray()) == source.content;
}

} // namespace

QString ImportCache::path_of(const QByteArray& content, const QString& layout) const
{
    QCryptographicHash key(QCryptographicHash::Sha256);
    key.addData(QStringLiteral("%1 %2 %3 ").arg(importer_version).arg(model_file_version).arg(layout).toUtf8());
    key.addData(content);
    return m_folder + QLatin1Char('/') + QLatin1String(key.result().toHex()) + QStringLiteral(".model");
}

ModelPtr ImportCache::find(const QByteArray& content, const QString& layout, const QString& folder) const
{
    const QString path = path_of(content, layout);
    const auto file = read_plain_file(path, ModelLimits::file_size + hash_size);
    if (!file)
        return nullptr;
    const QByteArray body = QByteArray::fromRawData(file.value().constData() + std::min(hash_size, file.value().size()),
                                                    std::max<qsizetype>(0, file.value().size() - hash_size));
    if (!file.value().startsWith(hash_of(body)))
        return nullptr;
    const auto model = read_model(body);
    if (!model)
        return nullptr;
    for (const ModelSource& source : model.value()->data().sources)
        if (!is_as_then(source, folder))
            return nullptr;
    QFile used(path);
    if (used.open(QIODevice::ReadWrite)) // The oldest go first.
        used.setFileTime(QDateTime::currentDateTimeUtc(), QFileDevice::FileModificationTime);
    return model.value();
}

void ImportCache::keep(const QByteArray& content, const QString& layout, const QByteArray& model) const
{
    if (m_folder.isEmpty() || !filefun::create_path(m_folder))
        return;
    if (write_file_atomically(path_of(content, layout), hash_of(model) + model))
        remove_oldest();
}

void ImportCache::remove_oldest() const
{
    qint64 bytes = 0;
    const QDir folder(m_folder);
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.model")}, QDir::Files, QDir::Time)) {
        bytes += file.size();
        if (bytes > max_bytes)
            QFile::remove(file.filePath());
    }
}

} // namespace tarn
