#include "movie_tools.h"

#include "core/language.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace tarn {

namespace {

constexpr const char* packages_folder = "tarn-studio/movie-player/node_modules";

QJsonObject json_of(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.read(1 << 20)).object() : QJsonObject();
}

QString find_packages()
{
    const QString given = qEnvironmentVariable("TARN_MOVIE_PLAYER");
    if (!given.isEmpty())
        return QFile::exists(given + QStringLiteral("/node_modules")) ? given + QStringLiteral("/node_modules")
                                                                      : QString();
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, QLatin1String(packages_folder),
                                  QStandardPaths::LocateDirectory);
}

Status missing(const QString& what)
{
    return Status::error(lang(u"%1。要播放影片，请运行 scripts/setup_movies.sh（见 README）。",
                              u"%1. To play movies run scripts/setup_movies.sh, see the README.")
                             .arg(what));
}

} // namespace

Result<MovieTools> MovieTools::find()
{
    MovieTools found;
    found.scripts = QFileInfo(QCoreApplication::applicationDirPath() + QStringLiteral("/player")).canonicalFilePath();
    const QJsonObject wanted
        = json_of(found.scripts + QStringLiteral("/package.json")).value(QLatin1String("dependencies")).toObject();
    if (found.scripts.isEmpty() || wanted.isEmpty())
        return Status::error(lang(u"本软件的影片播放脚本缺失，请重新安装。",
                                  u"The program's own part of the movie player is missing; install it anew."));
    found.node = QStandardPaths::findExecutable(QStringLiteral("node"));
    if (found.node.isEmpty())
        return missing(lang(u"未安装影片播放器所需的 Node 20 或更新版本",
                            u"Node 20 or later, which the movie player needs, is not installed"));
    found.packages = QFileInfo(find_packages()).canonicalFilePath();
    if (found.packages.isEmpty())
        return missing(lang(u"未安装影片播放器", u"The movie player is not installed"));
    for (auto package = wanted.begin(); package != wanted.end(); ++package) {
        const QJsonObject there = json_of(found.packages + QLatin1Char('/') + package.key()
                                          + QStringLiteral("/package.json"));
        if (there.value(QLatin1String("version")) != package.value())
            return missing(lang(u"影片播放器的 %1 不是版本 %2", u"Of the movie player, %1 is not of version %2")
                               .arg(package.key(), package.value().toString()));
    }
    return found;
}

} // namespace tarn
