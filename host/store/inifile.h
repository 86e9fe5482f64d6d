#pragma once

#include <QString>
#include <QStringList>

/// Lists in the host's preset files, which are ini files.
namespace inifile {

/// The list kept under `key`; empty when the file or the key is missing.
QStringList get_str_list_from_ini(const QString& path, const QString& key);
/// Keeps `list` under `key`; false when the file cannot be written.
bool set_str_list_to_ini(const QString& path, const QString& key, const QStringList& list);

} // namespace inifile
