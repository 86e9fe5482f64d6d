#include "value_curve.h"

#include "animation/anim_time.h"
#include "animation/t_var.h"
#include "band_geometry.h"

#include <array>
#include <cmath>

namespace tarn {

namespace {

constexpr float piece = 8; // pixels between two points that a curve is drawn through

int part_count(VarType type)
{
    switch (type) {
    case VarType::Float:
    case VarType::Int: return 1;
    case VarType::Vec:
    case VarType::Mat: return 3;
    case VarType::Color: break;
    }
    return 0;
}

/// The times that the curves are drawn through: those of the keys and some between.
std::vector<float> sample_times(const TimelineView& view, CTVar* variable)
{
    const KeyColumns keys = key_columns(view.axis, {&variable, 1}, 0, view.client_width);
    const float end = view.axis.time_from_pixel(float(view.client_width));
    std::vector<float> times{std::max(keys.before.value_or(view.axis.view_origin), view.axis.view_origin)};
    const auto go_on_to = [&](float time) {
        const float from = times.back();
        const int pieces = int((time - from) / view.axis.seconds(piece));
        for (int i = 1; i <= pieces; ++i)
            times.push_back(from + (time - from) * float(i) / float(pieces + 1));
        times.push_back(time);
    };
    for (const KeyStack& column : keys.columns) {
        go_on_to(column.first);
        if (column.last > column.first)
            times.push_back(column.last);
    }
    if (times.back() < end)
        go_on_to(end);
    return times;
}

} // namespace

double ValueCurves::y(double number) const
{
    const double share = greatest > least ? (number - least) / (greatest - least) : 0.5;
    return box.bottom() - share * box.height();
}

double number_of_part(const KeyValue& value, int part)
{
    return value.type() == VarType::Int ? value.as_int() : double(value.part(part));
}

ValueCurves value_curves(const TimelineView& view, const CTVar& variable, const QRectF& box)
{
    ValueCurves curves;
    curves.box = box;
    const int parts = part_count(variable.type());
    if (parts == 0 || variable.keys().is_empty())
        return curves;
    const std::vector<float> times = sample_times(view, const_cast<CTVar*>(&variable));
    std::vector<KeyValue> values;
    curves.least = std::numeric_limits<double>::max();
    curves.greatest = -curves.least;
    for (const float time : times) {
        values.push_back(variable.value_at(time));
        for (int part = 0; part < parts; ++part) {
            curves.least = std::min(curves.least, number_of_part(values.back(), part));
            curves.greatest = std::max(curves.greatest, number_of_part(values.back(), part));
        }
    }
    const double height_per_number = curves.greatest > curves.least ? box.height() / (curves.greatest - curves.least)
                                                                    : 0;
    for (int part = 0; part < parts; ++part) {
        QPainterPath path;
        for (std::size_t i = 0; i < times.size(); ++i) {
            const QPointF to(view.axis.pixel_from_time(times[i]) + 0.5, curves.y(number_of_part(values[i], part)));
            if (i == 0) {
                path.moveTo(to);
                continue;
            }
            const QPointF from = path.currentPosition();
            if (variable.steps()) {
                path.lineTo(to.x(), from.y());
                path.lineTo(to);
                continue;
            }
            // Each piece leaves and arrives with the slopes that the value has there.
            const double third = double(times[i] - times[i - 1]) / 3;
            const double leaving = double(variable.get_derivative(times[i - 1], part)) * height_per_number * third;
            const double arriving = double(variable.get_derivative(std::nextafter(times[i], 0.f), part))
                * height_per_number * third;
            const double run = (to.x() - from.x()) / 3;
            path.cubicTo({from.x() + run, from.y() - leaving}, {to.x() - run, to.y() + arriving}, to);
        }
        curves.parts.push_back(std::move(path));
    }
    return curves;
}

} // namespace tarn
