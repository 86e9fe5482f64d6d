#pragma once

#include <QColor>

class QPalette;

namespace tarn {

enum class TimerObjectType : quint8;

/// The timeline's colours on a light or a dark background.
struct TimelineColors {
    explicit TimelineColors(const QPalette& palette);

    /// `color` over the background.
    QColor faint(const QColor& color, double part) const;
    QColor of_type(TimerObjectType type) const;

    // Those of the time cursor, of the other end of a selected range, and on the mark of the end
    static constexpr QRgb cursor = 0xffff0000;
    static constexpr QRgb anchor = 0xff00ff00;
    static constexpr QRgb end_triangle = 0xffeeeeff;

    bool dark;
    QColor background;
    QColor ruler;
    QColor stripe;  ///< every other row
    QColor outside; ///< before the begin and behind the end
    QColor line;
    QColor grid;
    QColor text;
    QColor dim_text;
    QColor accent;
    QColor key;
    QColor key_edge;
    QColor selected;
    QColor selected_edge;
    QColor held; ///< between keys of one value
    QColor script;
    QColor warning;
    QColor end_box;
    QColor end_box_lit;
    QColor parts[3]; ///< of a value: x, y, z
};

} // namespace tarn
