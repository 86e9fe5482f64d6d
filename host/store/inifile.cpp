#include "inifile.h"

#include <QSettings>

namespace inifile {

QStringList get_str_list_from_ini(const QString& path, const QString& key)
{
    return QSettings(path, QSettings::IniFormat).value(key).toStringList();
}

bool set_str_list_to_ini(const QString& path, const QString& key, const QStringList& list)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.setValue(key, list);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace inifile
