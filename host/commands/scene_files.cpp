#include "scene_files.h"

#include "core/language.h"
#include "gui_scene/package_reader.h"
#include "store/atomic_file.h"
#include "store/pak_file.h"
#include "store/pak_rules.h"
#include "store/plain_file.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace tarn {

namespace {

const QString manifest = QStringLiteral("manifest.json");
constexpr int deepest_folder = 64;

bool is_of_git(const QString& part)
{
    return part.startsWith(QLatin1String(".git"), Qt::CaseInsensitive);
}

/// Goes through a folder that counts as hostile.
class FolderReader {
public:
    explicit FolderReader(const QString& folder) : m_folder(folder) {}

    Status read(const QString& inside = {}, int depth = 0)
    {
        const QDir dir(m_folder.filePath(inside));
        if (depth > deepest_folder)
            return failed_at(dir.path(), lang(u"文件夹层次过深", u"folders lie too deep in each other"));
        const auto all = dir.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                           QDir::Name);
        for (const QFileInfo& info : all) {
            if (depth == 0 && is_of_git(info.fileName()))
                continue;
            const QString name = inside.isEmpty() ? info.fileName() : inside + QLatin1Char('/') + info.fileName();
            if (auto status = take(info, name, depth); !status)
                return status;
        }
        return {};
    }
    QMap<QString, QByteArray> take_entries() { return std::move(m_entries); }

private:
    Status take(const QFileInfo& info, const QString& name, int depth)
    {
        if (info.isSymLink())
            return failed_at(info.filePath(), lang(u"链接不能打包", u"links are not packed"));
        if (auto status = check_entry_name(name); !status)
            return failed_at(info.filePath(), status.message());
        if (info.isDir())
            return read(name, depth + 1);
        if (m_entries.size() >= PakLimits::max_entries)
            return failed_at(m_folder.path(), lang(u"文件过多", u"there are too many files"));
        if (info.isFile() && quint64(info.size()) > PakLimits::max_entry_size)
            return failed_at(info.filePath(), lang(u"文件过大", u"the file is too large"));
        auto content = read_plain_file(info.filePath(), qint64(PakLimits::max_entry_size));
        if (!content)
            return failed_at(info.filePath(), content.status().message());
        m_total += quint64(content.value().size());
        if (m_total > PakLimits::max_total_size)
            return failed_at(info.filePath(), lang(u"文件总量过大", u"with it the files are too large together"));
        m_entries.insert(name, std::move(content.value()));
        return {};
    }

    QDir m_folder;
    quint64 m_total = 0;
    QMap<QString, QByteArray> m_entries;
};

Status write_files(const QString& folder, const QMap<QString, QByteArray>& entries)
{
    const QDir dir(folder);
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const QString path = dir.filePath(entry.key());
        if (!QDir().mkpath(QFileInfo(path).path()))
            return failed_at(path, lang(u"无法创建文件夹", u"its folder cannot be made"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(entry.value()) != entry.value().size()
            || !file.flush())
            return failed_at(path, file.errorString());
    }
    return {};
}

Status check_names_for_folder(const QMap<QString, QByteArray>& entries)
{
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const QStringList parts = entry.key().split(QLatin1Char('/'));
        if (std::any_of(parts.begin(), parts.end(), is_of_git))
            return Status::error(lang(u"条目“%1”的名称属于 git，不会写入文件夹。",
                                      u"The name of the entry \"%1\" is git's own; it is not written into a folder.")
                                     .arg(entry.key()));
    }
    return {};
}

/// All or nothing: written beside, then renamed.
Status write_new_folder(const QString& folder, const QMap<QString, QByteArray>& entries)
{
    const QFileInfo place(QDir::cleanPath(QDir(folder).absolutePath()));
    QTemporaryDir beside(place.path() + QLatin1Char('/') + place.fileName());
    if (!beside.isValid())
        return failed_at(folder, beside.errorString());
    const QString content = beside.filePath(QStringLiteral("content"));
    if (!QDir().mkdir(content))
        return failed_at(folder, lang(u"无法创建文件夹", u"the folder cannot be made"));
    if (auto status = write_files(content, entries); !status)
        return status;
    QDir().rmdir(place.filePath()); // An empty one.
    if (!QDir().rename(content, place.filePath()))
        return failed_at(folder, lang(u"无法创建文件夹", u"the folder cannot be made"));
    return {};
}

/// What did not change is not touched, so that its time stays.
Status update_folder(const QString& folder, const QMap<QString, QByteArray>& entries)
{
    const auto present = read_folder_entries(folder);
    if (!present)
        return present.status();
    const QDir dir(folder);
    const auto& files = present.value();
    for (auto file = files.begin(); file != files.end(); ++file)
        if (!entries.contains(file.key())) {
            if (!QFile::remove(dir.filePath(file.key())))
                return failed_at(dir.filePath(file.key()), lang(u"无法删除", u"it cannot be removed"));
            dir.rmpath(QFileInfo(file.key()).path()); // As far as folders are empty now.
        }
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const auto old = files.find(entry.key());
        if (old != files.end() && *old == entry.value())
            continue;
        const QString path = dir.filePath(entry.key());
        if (!QDir().mkpath(QFileInfo(path).path()))
            return failed_at(path, lang(u"无法创建文件夹", u"its folder cannot be made"));
        if (auto status = write_file_atomically(path, entry.value()); !status)
            return status;
    }
    return {};
}

} // namespace

Status failed_at(const QString& path, const QString& why)
{
    return Status::error(QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), why));
}

Result<QMap<QString, QByteArray>> read_folder_entries(const QString& folder)
{
    if (QFileInfo(folder).isSymLink())
        return failed_at(folder, lang(u"这是一个链接", u"this is a link"));
    if (!QFileInfo(folder).isDir())
        return failed_at(folder, lang(u"没有这个文件夹", u"there is no such folder"));
    FolderReader reader(folder);
    if (auto status = reader.read(); !status)
        return status;
    auto entries = reader.take_entries();
    if (!entries.contains(manifest))
        return failed_at(
            folder, lang(u"缺少 %1：这不是解包的界面", u"%1 is missing: no interface was unpacked here").arg(manifest));
    return entries;
}

Result<QMap<QString, QByteArray>> read_package_entries(const QString& path)
{
    CPakFile package;
    if (auto status = package.open(path); !status)
        return status;
    QMap<QString, QByteArray> entries;
    for (const QString& name : package.names()) {
        if (name.endsWith(QLatin1Char('/')))
            continue;
        auto content = package.read_file(name);
        if (!content)
            return content.status();
        entries.insert(name, std::move(content.value()));
    }
    return entries;
}

Result<SceneSnapshot> read_scene(CGuiCore& core, QMap<QString, QByteArray> entries)
{
    QMap<QString, QByteArray> texts;
    for (const PackagePart& part : core.document().parts())
        if (entries.contains(QLatin1String(part.entry)))
            texts.insert(QLatin1String(part.entry), entries.take(QLatin1String(part.entry)));
    const QByteArray manifest_text = entries.take(manifest);
    return read_content(manifest_text, std::move(texts), std::move(entries), core);
}

Result<SceneSnapshot> SceneTables::read_entries(QMap<QString, QByteArray> entries)
{
    return read_scene(m_scene.gui_core(), std::move(entries));
}

Result<SceneSnapshot> SceneTables::read(const QString& path)
{
    if (QFileInfo(path).isDir()) {
        auto entries = read_folder_entries(path);
        if (!entries)
            return entries.status();
        auto content = read_entries(std::move(entries.value()));
        return content ? std::move(content) : failed_at(path, content.status().message());
    }
    CPakFile package;
    if (auto status = package.open(path); !status)
        return status;
    return read_package(package, m_scene.gui_core());
}

Status write_package_entries(const Document& document, const QString& path, const QMap<QString, QByteArray>& entries)
{
    CPakFile package;
    if (auto status = package.create(path); !status)
        return status;
    QMap<QString, QByteArray> rest = entries;
    QStringList first{manifest};
    for (const PackagePart& part : document.parts())
        first.append(QLatin1String(part.entry));
    for (const QString& name : first) {
        if (!rest.contains(name))
            continue;
        if (auto status = package.add_file(name, rest.take(name)); !status)
            return status;
    }
    for (auto entry = rest.begin(); entry != rest.end(); ++entry)
        if (auto status = package.add_file(entry.key(), entry.value()); !status)
            return status;
    return package.close();
}

Status write_folder_entries(const QString& folder, const QMap<QString, QByteArray>& entries, bool replace)
{
    if (auto status = check_names_for_folder(entries); !status)
        return status;
    const QFileInfo info(folder);
    if (info.isSymLink() || (info.exists() && !info.isDir()))
        return failed_at(folder, lang(u"这不是文件夹", u"this is no folder"));
    const bool is_empty = !info.exists()
        || QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    if (is_empty)
        return write_new_folder(folder, entries);
    if (!replace)
        return failed_at(folder,
                         lang(u"文件夹不为空；--replace 会更新其中解包的界面",
                              u"the folder is not empty; --replace updates an interface that was unpacked there"));
    return update_folder(folder, entries);
}

} // namespace tarn
