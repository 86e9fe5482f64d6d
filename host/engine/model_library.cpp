#include "model_library.h"

#include "core/document.h"
#include "core/language.h"
#include "store/pak_rules.h"
#include "store/plain_file.h"

#include <QFileInfo>
#include <QMutexLocker>

#include <utility>

namespace tarn {

namespace {

const QString models_folder = QStringLiteral("models/");
constexpr qint64 largest_file = qint64(256) << 20; ///< bytes of one file that a model is made of

Status missing(const QString& file)
{
    return Status::error(
        lang(u"模型 %1 不在文件包中。", u"The model %1 is not in the package.").arg(file.section(u'/', 1)));
}

/// The file at `path`, as `name`, and those that were found beside it when it was imported, by their names relative to it.
Result<QMap<QString, QByteArray>> read_files(const QString& path, const QString& name, const Model& model)
{
    const QString folder = QFileInfo(path).path() + u'/';
    QMap<QString, QString> paths{{name, path}};
    for (const ModelSource& source : model.data().sources)
        if (!source.content.isEmpty() && check_entry_name(models_folder + source.name))
            paths.insert(source.name, folder + source.name);
    QMap<QString, QByteArray> files;
    for (auto file = paths.begin(); file != paths.end(); ++file) {
        const auto content = read_plain_file(file.value(), largest_file);
        if (!content)
            return Status::error(lang(u"无法读取模型文件 %1：%2", u"The model's file %1 cannot be read: %2")
                                     .arg(file.value(), content.status().message()));
        files.insert(file.key(), content.value());
    }
    return files;
}

} // namespace

QString model_folder(const QString& file)
{
    const qsizetype end = file.indexOf(u'/', models_folder.size()) + 1;
    return file.startsWith(models_folder) && end > 0 ? file.left(end) : QString();
}

ModelLibrary::ModelLibrary(Document& document) : m_document(document)
{
    m_pool.setMaxThreadCount(1);
}

ModelLibrary::~ModelLibrary()
{
    m_stops = true;
    m_pool.clear();
    m_pool.waitForDone();
}

/// By their names relative to the folder.
QMap<QString, QByteArray> ModelLibrary::files_beside(const QString& folder) const
{
    QMap<QString, QByteArray> beside;
    const auto& files = m_document.files();
    for (auto entry = files.lowerBound(folder); entry != files.end() && entry.key().startsWith(folder); ++entry)
        beside.insert(entry.key().mid(folder.size()), entry.value());
    return beside;
}

const ModelLibrary::Entry& ModelLibrary::find(const QString& file)
{
    const QByteArray content = model_folder(file).isEmpty() ? QByteArray() : m_document.files().value(file);
    Known& known = m_known[file];
    if (content.isEmpty()) {
        known = {{nullptr, missing(file)}, {}};
    } else if (known.content.constData() != content.constData()) {
        known = {{}, content};
        begin(file, content);
    }
    return known.entry;
}

void ModelLibrary::begin(const QString& file, const QByteArray& content)
{
    const QString folder = model_folder(file);
    m_pool.start([this, file, content, name = file.mid(folder.size()), files = files_beside(folder)] {
        const Progress::Tell tell = [this](double) { return !m_stops; };
        Result<ModelPtr> result = m_importer.import_files(name, files, Progress(tell));
        const QMutexLocker locker(&m_mutex);
        m_read.push_back({file, content, std::move(result)});
        QMetaObject::invokeMethod(
            &m_context, [this] { deliver(); }, Qt::QueuedConnection);
    });
}

void ModelLibrary::finish()
{
    m_pool.waitForDone();
    deliver();
}

void ModelLibrary::deliver()
{
    std::vector<Read> read;
    {
        const QMutexLocker locker(&m_mutex);
        read.swap(m_read);
    }
    for (Read& one : read) {
        Known& known = m_known[one.file];
        if (known.content.constData() != one.content.constData())
            continue; // Another file has come in its place.
        known.entry = {one.result ? one.result.value() : nullptr, one.result.status()};
        ++m_revision;
    }
    if (!read.empty() && on_read)
        on_read();
}

Result<ModelLibrary::Import> ModelLibrary::import(const QString& path, const Progress& progress) const
{
    auto model = m_importer.import_file(path, progress);
    if (!model)
        return model.status();
    const QFileInfo info(path);
    const bool usable = bool(check_entry_name(models_folder + info.completeBaseName() + u'/' + info.fileName()));
    const QString stem = usable ? info.completeBaseName() : QStringLiteral("model");
    const QString name = usable ? info.fileName() : stem + u'.' + info.suffix().toLower();
    const auto files = read_files(path, name, *model.value());
    if (!files)
        return files.status();
    for (int number = 1;; ++number) {
        const QString folder = models_folder + (number == 1 ? stem : stem + QString::number(number)) + u'/';
        const auto present = files_beside(folder);
        if (present == files.value())
            return Import{model.value(), folder + name, {}};
        if (!present.isEmpty())
            continue;
        Import taken{model.value(), folder + name, {}};
        for (auto file = files.value().begin(); file != files.value().end(); ++file)
            taken.files.insert(folder + file.key(), file.value());
        return taken;
    }
}

void ModelLibrary::take(const Import& import)
{
    if (!import.files.isEmpty())
        m_document.edit_files([&](auto& files) { files.insert(import.files); });
    m_known[import.file] = {{import.model, {}}, m_document.files().value(import.file)};
    ++m_revision;
}

void ModelLibrary::release(const QString& file)
{
    const QString folder = model_folder(file);
    if (folder.isEmpty())
        return;
    m_document.edit_files(
        [&](auto& files) { files.removeIf([&](auto entry) { return entry.key().startsWith(folder); }); });
}

} // namespace tarn
