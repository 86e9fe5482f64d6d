#include "model_importer.h"

#include "core/language.h"
#include "models/model_file.h"
#include "store/open_file.h"
#include "store/pak_rules.h"
#include "store/plain_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace tarn {

namespace {

constexpr qint64 max_source = qint64(256) << 20; ///< bytes of a model's file
constexpr int pause = 20;                        ///< milliseconds between two looks at the child
constexpr qsizetype max_message = 300;

Status failure(const QString& path, const QString& reason, const QString& advice)
{
    return Status::error(lang(u"无法导入模型“%1”：%2。%3", u"The model “%1” could not be imported: %2. %3")
                             .arg(QFileInfo(path).fileName(), reason, advice));
}

QString save_anew()
{
    return lang(u"请在制作它的程序中重新保存，或另存为 glTF（.glb）后再试。",
                u"Save it anew in the program that made it, or as glTF (.glb), and try again.");
}

QString choose_another()
{
    return lang(u"请检查该文件，或选择其他文件。", u"Check the file, or choose another one.");
}

/// One line of what a child said, which may hold anything that its file does.
QString line_of(const QByteArray& said)
{
    QString line = QString::fromUtf8(said.left(4 * max_message)).simplified().left(max_message);
    for (QChar& letter : line)
        if (!letter.isPrint())
            letter = QLatin1Char('?');
    return line.endsWith(QLatin1Char('.')) ? line.chopped(1) : line;
}

/// The child is gone when this is.
class Child {
public:
    Child() { m_process.setProcessChannelMode(QProcess::SeparateChannels); }
    ~Child()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    QProcess& process() { return m_process; }

private:
    QProcess m_process;
};

/// The last number that the child told, 0 to 1.
double share_told(QProcess& process, double before)
{
    const QByteArrayList lines = process.readAllStandardOutput().split('\n');
    return lines.size() < 2 ? before : std::clamp(lines[lines.size() - 2].toDouble() / 100, before, 1.0);
}

} // namespace

ModelImporter::ModelImporter()
    : ModelImporter(QCoreApplication::applicationDirPath() + QStringLiteral("/tarn-import"),
                    QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/models"))
{
}

QStringList ModelImporter::layouts()
{
    return {QStringLiteral("glb"), QStringLiteral("gltf"), QStringLiteral("obj"),
            QStringLiteral("fbx"), QStringLiteral("dae"),  QStringLiteral("stl")};
}

Status ModelImporter::run(const QString& in, const QString& out, const Progress& progress) const
{
    Child child;
    QProcess& process = child.process();
    const bool chinese = VLCMsgIniW::language() == Language::Chinese;
    process.start(m_program,
                  {QStringLiteral("--lang"), chinese ? QStringLiteral("zh") : QStringLiteral("en"), in, out});
    if (!process.waitForStarted())
        return failure(in, lang(u"缺少导入程序 %1", u"the program %1 is missing").arg(m_program),
                       lang(u"请重新安装本软件。", u"Install this program anew."));
    QElapsedTimer clock;
    clock.start();
    QByteArray said;
    double share = 0;
    while (process.state() != QProcess::NotRunning) {
        process.waitForFinished(pause);
        share = share_told(process, share);
        // More than a message is not kept, however much a child says.
        said = (said + process.readAllStandardError()).left(4 * max_message);
        if (!progress.go_on(share))
            return stopped();
        if (clock.hasExpired(m_time_limit.count()))
            return failure(
                in, lang(u"导入超过了 %1 秒", u"it took longer than %1 seconds").arg(m_time_limit.count() / 1000),
                lang(u"文件可能已损坏或过于复杂，请简化后再试。",
                     u"It may be damaged or too complex; simplify it and try again."));
    }
    said += process.readAllStandardError();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() > 1)
        return failure(in,
                       lang(u"导入程序意外终止，文件可能已损坏", u"the importer broke down over it; it may be damaged"),
                       save_anew());
    if (process.exitCode() != 0)
        return failure(in, line_of(said), choose_another());
    return {};
}

Result<ModelPtr> ModelImporter::import_anew(const QString& path, const QByteArray& content,
                                            const Progress& progress) const
{
    const QTemporaryDir folder;
    const QString out = folder.filePath(QStringLiteral("out.model"));
    const FileStamp before = FileStamp::of(path);
    if (auto status = run(path, out, progress.part(0, 0.9)); !status)
        return status;
    const auto file = read_plain_file(out, ModelLimits::file_size);
    if (!file)
        return failure(path, file.status().message(), save_anew());
    auto model = read_model(file.value());
    if (!model)
        return failure(path, model.status().message(), save_anew());
    if (FileStamp::of(path) == before) // Otherwise the child may have read another content.
        m_cache.keep(content, QFileInfo(path).suffix().toLower(), file.value());
    return model;
}

Result<ModelPtr> ModelImporter::import_file(const QString& path, const Progress& progress) const
{
    const QFileInfo info(path);
    const QString layout = info.suffix().toLower();
    if (!layouts().contains(layout))
        return failure(path, lang(u"不支持这种格式", u"files of this kind are not read"),
                       lang(u"请使用 glTF、OBJ、FBX、Collada 或 STL 文件。", u"Use glTF, OBJ, FBX, Collada or STL."));
    const auto content = read_plain_file(path, max_source);
    if (!content)
        return failure(path, content.status().message(), choose_another());
    if (auto known = m_cache.find(content.value(), layout, QFileInfo(info.canonicalFilePath()).path()))
        return known;
    return import_anew(path, content.value(), progress);
}

Result<ModelPtr> ModelImporter::import_files(const QString& name, const QMap<QString, QByteArray>& files,
                                             const Progress& progress) const
{
    const QTemporaryDir temporary;
    const QString folder = QFileInfo(temporary.path()).canonicalFilePath();
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (auto status = check_entry_name(file.key()); !status)
            return failure(name, status.message(), choose_another());
        const QString path = folder + QLatin1Char('/') + file.key();
        QFile out(path);
        if (!QDir().mkpath(QFileInfo(path).path()) || !out.open(QIODevice::WriteOnly)
            || out.write(*file) != file->size() || !out.flush())
            return failure(
                name, out.errorString(),
                lang(u"请检查临时文件夹是否有空间。", u"Check whether the folder of temporary files has room."));
    }
    return import_file(folder + QLatin1Char('/') + name, progress);
}

} // namespace tarn
