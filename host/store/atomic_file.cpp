#include "atomic_file.h"

#include "core/language.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <filesystem>

namespace tarn {

namespace {

constexpr int most_links = 40;       ///< one after the other, as for the system
constexpr int most_names = 100;      ///< that are tried for a temporary file
constexpr qsizetype stem_bytes = 64; ///< of the file's own name in that of its temporary file
constexpr qsizetype random_digits = 16;
const QString suffix = QStringLiteral(".saving");

using Place = std::filesystem::path;

/// Without links in the folder's own path, so that ".." means what the system means by it.
Place in_real_folder(const Place& place)
{
    std::error_code error;
    const Place folder = std::filesystem::canonical(place.parent_path(), error);
    return error ? place : folder / place.filename();
}

/// Where a save to `path` goes: over all links, the last of which may lead to nothing. Null when they lead in circles.
QString followed(const QString& path)
{
    Place place = in_real_folder(QFileInfo(path).filesystemAbsoluteFilePath());
    std::error_code error;
    for (int i = 0; i < most_links; ++i) {
        if (!std::filesystem::is_symlink(std::filesystem::symlink_status(place, error)))
            return QFileInfo(place).filePath();
        const Place next = std::filesystem::read_symlink(place, error);
        if (error)
            return {};
        place = in_real_folder(place.parent_path() / next); // An absolute one stands for itself.
    }
    return {};
}

/// How the names of all temporary files for `file_name` begin.
QString stem_of(const QString& file_name)
{
    QString stem = file_name;
    while (stem.toUtf8().size() > stem_bytes)
        stem.chop(stem.size() > 1 && stem.back().isLowSurrogate() ? 2 : 1);
    return QLatin1Char('.') + stem + QLatin1Char('.');
}

bool is_temporary(QStringView name, QStringView stem)
{
    if (name.size() != stem.size() + random_digits + suffix.size() || !name.startsWith(stem) || !name.endsWith(suffix))
        return false;
    const QStringView digits = name.mid(stem.size(), random_digits);
    return std::all_of(digits.begin(), digits.end(), [](QChar c) {
        return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
    });
}

void remove_left_over(const QString& folder, const QString& stem)
{
    QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    while (entries.hasNext()) {
        entries.next();
        if (is_temporary(entries.fileName(), stem))
            FileIo::remove_abandoned(entries.filePath());
    }
}

/// A new file of its own for what is to replace `target`.
struct Temporary {
    QString path;
    int handle = -1; ///< -1 when it could not be made
};

Temporary make_temporary(const QFileInfo& target, const QString& stem, FileIo& io)
{
    const QString like = target.exists() ? target.filePath() : QString();
    for (int i = 0; i < most_names; ++i) {
        const auto number = QString::number(QRandomGenerator::system()->generate64(), 16);
        const QString name = stem + number.rightJustified(random_digits, QLatin1Char('0')) + suffix;
        const QString path = target.absolutePath() + QLatin1Char('/') + name;
        const int handle = io.create(path, like);
        if (handle >= 0 || !io.is_taken())
            return {path, handle};
    }
    return {};
}

QString reason_against(const QFileInfo& target)
{
    if (target.isDir())
        return lang(u"这是一个文件夹", u"it is a folder");
    if (target.exists() && !target.isFile())
        return lang(u"这不是普通文件", u"it is no ordinary file");
    return {};
}

bool is_protected(const QFileInfo& file)
{
    return file.isFile()
        && (!file.isWritable() || !(file.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther)));
}

} // namespace

Status not_saved(const QString& path, const QString& reason)
{
    const QString shown = QDir::toNativeSeparators(path);
    if (QFileInfo(path).isFile())
        return Status::error(
            lang(u"无法保存 %1：%2。原文件保持不变。", u"%1 could not be saved: %2. The file is as it was before.")
                .arg(shown, reason));
    return Status::error(lang(u"无法保存 %1：%2。没有写入文件。", u"%1 could not be saved: %2. No file was written.")
                             .arg(shown, reason));
}

bool is_read_only(const QString& path)
{
    return is_protected(QFileInfo(path));
}

Status write_file_atomically(const QString& path, const QByteArray& content, FileIo& io, ReadOnly read_only)
{
    const QString followed_path = followed(path);
    if (followed_path.isNull())
        return not_saved(path, lang(u"链接无法解析", u"its links lead nowhere"));
    const QFileInfo target(followed_path);
    if (const QString reason = reason_against(target); !reason.isNull())
        return not_saved(path, reason);
    if (read_only == ReadOnly::Keep && is_protected(target))
        return not_saved(path, lang(u"文件是只读的", u"the file is read-only"));
    const QString stem = stem_of(target.fileName());
    remove_left_over(target.absolutePath(), stem);

    const Temporary temporary = make_temporary(target, stem, io);
    if (temporary.handle < 0)
        return not_saved(path, io.error_text());
    if (!io.write(temporary.handle, content.constData(), content.size()) || !io.sync(temporary.handle)
        || !io.rename(temporary.path, target.filePath())) {
        const QString reason = io.error_text();
        (void)io.close(temporary.handle);
        (void)io.remove(temporary.path);
        return not_saved(path, reason);
    }
    // It stays open, and so locked, until it has its name. What it holds was synced: closing can lose nothing.
    QString reason;
    if (!io.close(temporary.handle))
        reason = io.error_text();
    if (!io.sync_folder(target.absolutePath()))
        reason = io.error_text();
    if (reason.isNull())
        return {};
    return Status::error(
        lang(u"%1 已写入，但磁盘没有确认（%2）。断电时可能恢复为旧文件，请再次保存。",
             u"%1 was written, but the disk did not confirm it (%2). A power cut may bring the old file back; "
             u"save once more.")
            .arg(QDir::toNativeSeparators(path), reason));
}

} // namespace tarn
