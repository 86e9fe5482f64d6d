#pragma once

#include <QColor>

class QApplication;
class QPalette;

namespace tarn {

enum class Theme { System, Light, Dark };

/// Gives the whole program its style, palette and icons. System is light or dark as the desktop is.
void apply_theme(QApplication& app, Theme theme);

/// Whether the program shows light text on a dark background now.
bool is_dark();

QPalette light_palette();
QPalette dark_palette();

/// The colour, moved towards black or white as far as needed to stand out from the background by this contrast
/// (1 to 21, as the web's accessibility guidelines count it; 3 is enough for labels of controls).
QColor readable_on(const QColor& color, const QColor& background, double contrast);

} // namespace tarn
