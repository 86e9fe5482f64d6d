#pragma once

#include <QString>

/// Where the program's files stand.
namespace appinfo {

/// The host's preset file (an ini file in the user's configuration folder).
QString get_preset_ini();
/// The folder beside the package `path` in which loose textures are looked for.
QString get_tarn_texture_path(const QString& path);
/// The folder of a kind of installed file ("templates", "samples", "plugins"): beside the program, or under
/// ../share/tarn-studio of it.
QString get_data_path(const QString& kind);
/// The user's own folder of that kind of data; it need not exist.
QString get_user_path(const QString& kind);

} // namespace appinfo
