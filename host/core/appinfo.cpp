#include "appinfo.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace appinfo {

QString get_preset_ini()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/preset.ini");
}

QString get_tarn_texture_path(const QString& path)
{
    return QFileInfo(path).absolutePath() + QStringLiteral("/textures");
}

QString get_data_path(const QString& kind)
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString beside = program + QLatin1Char('/') + kind;
    if (QFileInfo::exists(beside))
        return beside;
    return program + QStringLiteral("/../share/tarn-studio/") + kind;
}

QString get_user_path(const QString& kind)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1Char('/') + kind;
}

} // namespace appinfo
