#include "ground_look.h"

#include <QtMath>

#include <algorithm>
#include <array>
#include <cmath>

namespace tarn {

namespace {

struct Stop {
    float elevation; ///< degrees over the horizon
    QVector3D color;
};

constexpr QVector3D rgb(int value)
{
    return {float(value >> 16 & 255) / 255, float(value >> 8 & 255) / 255, float(value & 255) / 255};
}

/// An evening after sunset. Dark enough for white text anywhere.
const std::array stops{
    Stop{-90, rgb(0x161d2c)}, Stop{-50, rgb(0x1a2335)}, Stop{-26, rgb(0x212d44)}, Stop{-12, rgb(0x304162)},
    Stop{-4, rgb(0x485b84)},  Stop{0, rgb(0x62689a)},   Stop{3, rgb(0x616398)},   Stop{10, rgb(0x445089)},
    Stop{22, rgb(0x2c3c6b)},  Stop{45, rgb(0x1b2749)},  Stop{90, rgb(0x111a33)},
};

QVector3D slope(std::size_t i)
{
    const Stop& before = stops[i == 0 ? 0 : i - 1];
    const Stop& after = stops[std::min(i + 1, stops.size() - 1)];
    return (after.color - before.color) / (after.elevation - before.elevation);
}

/// Smooth through the stops: a bend in the gradient would be seen as a line.
QVector3D color_at(float elevation)
{
    std::size_t i = 0;
    while (i + 2 < stops.size() && elevation > stops[i + 1].elevation)
        ++i;
    const float width = stops[i + 1].elevation - stops[i].elevation;
    const float t = std::clamp((elevation - stops[i].elevation) / width, 0.f, 1.f);
    const float u = 1 - t;
    return stops[i].color * (1 + 2 * t) * u * u + stops[i + 1].color * (3 - 2 * t) * t * t
        + (slope(i) * u - slope(i + 1) * t) * (t * u * width);
}

} // namespace

QVector4D GroundLook::x_axis_color() const
{
    return {ground::x_axis_color.toVector3D(), ground::x_axis_color.w() * axes};
}

QVector4D GroundLook::z_axis_color() const
{
    return {ground::z_axis_color.toVector3D(), ground::z_axis_color.w() * axes};
}

GroundLook ground_look(const QMatrix4x4& view, const QMatrix4x4& projection, QSize pixels, double dpr)
{
    GroundLook look;
    look.pixels = pixels;
    look.eye = view.inverted().column(3).toVector3D();
    look.line = float(dpr);
    look.reach = std::clamp(50 + 12 * std::abs(look.eye.y()), 50.f, 900.f);
    QMatrix4x4 turn = view;
    turn.setColumn(3, {0, 0, 0, 1});
    look.is_level = std::abs(turn(0, 1)) < 1e-4f;
    const QMatrix4x4 rays = (projection * turn).inverted();
    const float width = float(std::max(1, pixels.width()));
    const float height = float(std::max(1, pixels.height()));
    const auto ray = [&](float x, float y) { return rays.map(QVector3D(2 * x / width - 1, 1 - 2 * y / height, -1)); };
    // From edge to edge: the difference of two neighbours would lose most of its digits.
    look.ray_step_x = (ray(width, 0) - ray(0, 0)) / width;
    look.ray_step_y = (ray(0, height) - ray(0, 0)) / height;
    look.ray_origin = ray(0, 0) + (look.ray_step_x + look.ray_step_y) / 2;
    return look;
}

std::vector<QVector3D> background_rows(const GroundLook& look)
{
    std::vector<QVector3D> rows;
    rows.reserve(std::size_t(look.pixels.height()));
    const QVector3D top = look.ray_origin + look.ray_step_x * (float(look.pixels.width()) / 2);
    for (int y = 0; y < look.pixels.height(); ++y) {
        const QVector3D ray = top + look.ray_step_y * float(y);
        rows.push_back(color_at(float(qRadiansToDegrees(std::asin(ray.y() / ray.length())))));
    }
    return rows;
}

std::vector<QVector3D> background_heights()
{
    std::vector<QVector3D> heights;
    for (int i = 0; i <= 180 * background_steps; ++i)
        heights.push_back(color_at(float(i) / background_steps - 90));
    return heights;
}

} // namespace tarn
