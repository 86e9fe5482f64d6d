#pragma once

#include "timeline_view.h"

#include <QPainterPath>
#include <QRectF>

namespace tarn {

/// A variable's numbers over the visible time as curves in a box: its least number at the lower edge, the greatest at the
/// upper one.
struct ValueCurves {
    std::vector<QPainterPath> parts; ///< one for each number; none for colours
    double least = 0;
    double greatest = 0;
    QRectF box;

    /// Where a number of the value is drawn.
    double y(double number) const;
};

ValueCurves value_curves(const TimelineView& view, const CTVar& variable, const QRectF& box);
/// One of the numbers of a value, of a matrix its place.
double number_of_part(const KeyValue& value, int part);

} // namespace tarn
