#pragma once

#include <QFont>
#include <QString>

namespace tarn {

constexpr int default_font_size = 14; ///< pixels

/// The font in which interfaces are drawn; `family` comes before the usual ones.
QFont interface_font(int pixel_size, bool bold, const QString& family = {}, bool italic = false);

} // namespace tarn
