#pragma once

#include <QFont>
#include <QString>

namespace tarn {

constexpr int default_font_size = 14; ///< pixels

/// The font in which interfaces are drawn; `family` comes before the usual ones.
QFont interface_font(int pixel_size, bool bold, const QString& family = {}, bool italic = false);

/// Whoever adds fonts to the program, or takes some away, says so; what is kept of texts that were laid out before is
/// worth nothing then. Another number after each time.
void fonts_changed();
quint64 fonts_revision();

} // namespace tarn
