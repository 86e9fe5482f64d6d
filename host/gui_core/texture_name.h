#pragma once

#include <QString>

#include <functional>

namespace tarn {

/// The package entry that holds the picture `name`.
inline QString texture_entry(const QString& name)
{
    return QStringLiteral("textures/") + name;
}

/// A name like `taken`, "folder/name-2.png", for which `is_free` holds.
QString free_picture_name(const QString& taken, const std::function<bool(const QString&)>& is_free);

} // namespace tarn
