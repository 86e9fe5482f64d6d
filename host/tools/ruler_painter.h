#pragma once

#include "ruler_scale.h"

#include <QImage>
#include <QPointF>
#include <QRectF>

class QPainter;

namespace tarn {

/// What the rulers show. Places are pixels of the screen.
struct RulerContent {
    QRectF shown; ///< by the view
    RulerScale x;
    RulerScale y;
    QRectF selection; ///< null for none
    QPointF mouse;    ///< beyond what is shown while the mouse is elsewhere
};

/// Draws the rulers along the top and left edge of a view. The strips are kept as pictures until what they count
/// changes; only the marks in them are drawn each time.
class RulerPainter {
public:
    static constexpr double thickness = 18; ///< pixels of the view

    void paint(QPainter& painter, const RulerContent& content);

private:
    struct Look {
        RulerScale scale;
        double start = 0;  ///< of what is shown, a place on the screen
        double length = 0; ///< pixels of the screen
        double pixel = 1;  ///< of the view, in pixels of the screen
        double dpr = 1;
        qint64 palette = 0;
        bool operator==(const Look&) const = default;
    };
    struct Strip {
        Look look;
        QImage image;
    };

    void paint_strip(QPainter& painter, Qt::Orientation along, const Look& look);
    static QImage made_strip(Qt::Orientation along, const Look& look);

    Strip m_top;
    Strip m_left;
};

} // namespace tarn
