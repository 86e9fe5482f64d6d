#include "recovery_file.h"

#include "atomic_file.h"
#include "plain_file.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSet>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr qint64 largest_info = 1024 * 1024; ///< bytes

const QString file_key = QStringLiteral("file");
const QString size_key = QStringLiteral("size");
const QString modified_key = QStringLiteral("modified");
const QString when_key = QStringLiteral("when");

bool make_private_folder(const QString& folder)
{
    return QFileInfo(folder).isDir()
        || (QDir().mkpath(folder)
            && QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

} // namespace

RecoveryFile::RecoveryFile(QString stem, std::unique_ptr<QLockFile> lock)
    : m_stem(std::move(stem)), m_lock(std::move(lock))
{
}

RecoveryFile::~RecoveryFile() = default;

/// Null when another program has it.
std::unique_ptr<RecoveryFile> RecoveryFile::locked(const QString& stem)
{
    auto lock = std::make_unique<QLockFile>(stem + QStringLiteral(".lock"));
    lock->setStaleLockTime(0); // However old: it is stale when its program is gone.
    if (!lock->tryLock(0))
        return nullptr;
    return std::unique_ptr<RecoveryFile>(new RecoveryFile(stem, std::move(lock)));
}

std::unique_ptr<RecoveryFile> RecoveryFile::make(const QString& folder)
{
    if (!make_private_folder(folder))
        return nullptr;
    return locked(folder + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::WithoutBraces));
}

std::vector<std::unique_ptr<RecoveryFile>> RecoveryFile::left_behind(const QString& folder)
{
    QSet<QString> names;
    for (const QFileInfo& file : QDir(folder).entryInfoList(
             {QStringLiteral("*.tarn"), QStringLiteral("*.json"), QStringLiteral("*.lock")}, QDir::Files))
        names.insert(file.completeBaseName());
    std::vector<std::unique_ptr<RecoveryFile>> found;
    for (const QString& name : std::as_const(names)) {
        auto file = locked(folder + QLatin1Char('/') + name);
        if (file && QFileInfo(file->package()).isFile())
            found.push_back(std::move(file));
        else if (file)
            file->remove(); // Its program had nothing to keep.
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a->info().when > b->info().when; });
    return found;
}

RecoveryInfo RecoveryFile::info() const
{
    RecoveryInfo info{.file = {}, .stamp = {}, .when = QFileInfo(package()).lastModified()};
    const auto text = read_plain_file(info_path(), largest_info);
    const QJsonObject json = QJsonDocument::fromJson(text ? text.value() : QByteArray()).object();
    info.file = json.value(file_key).toString();
    info.stamp = {json.value(size_key).toInteger(-1), json.value(modified_key).toInteger()};
    const auto when = QDateTime::fromString(json.value(when_key).toString(), Qt::ISODateWithMs);
    if (when.isValid())
        info.when = when;
    return info;
}

Status RecoveryFile::write_info(const RecoveryInfo& info) const
{
    QJsonObject json{{when_key, info.when.toUTC().toString(Qt::ISODateWithMs)}};
    json.insert(file_key, info.file.isEmpty() ? QJsonValue() : QJsonValue(info.file));
    if (!info.file.isEmpty()) {
        json.insert(size_key, info.stamp.size);
        json.insert(modified_key, info.stamp.modified);
    }
    return write_file_atomically(info_path(), QJsonDocument(json).toJson());
}

void RecoveryFile::remove() const
{
    QFile::remove(package());
    QFile::remove(info_path());
    // What a save that was killed left.
    const QFileInfo stem(m_stem);
    QDir folder(stem.absolutePath());
    for (const QString& name :
         folder.entryList({QLatin1Char('.') + stem.fileName() + QStringLiteral(".*")}, QDir::Files | QDir::Hidden))
        folder.remove(name);
}

} // namespace tarn
