#include "ground_raster.h"

#include "ground_look.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarn {

namespace {

/// An even pattern of -0.5 to 0.5: added before rounding, it keeps slow gradients free of steps.
float dither(unsigned x, unsigned y)
{
    const unsigned d = x ^ y;
    const unsigned rank
        = (d & 1) << 5 | (y & 1) << 4 | (d & 2) << 2 | (y & 2) << 1 | (d & 4) >> 1 | (y & 4) >> 2;
    return (float(rank) + 0.5f) / 64 - 0.5f;
}

float unit(float value)
{
    return std::min(std::max(value, 0.f), 1.f);
}

/// Whole numbers by conversion: unlike std::round(), the compiler makes vector instructions of it.
float nearest(float value)
{
    return float(int(value + (value < 0 ? -0.5f : 0.5f)));
}

/// How much of the pixel the lines of one direction cover. `step`: metres from this pixel to the next.
float lines(float place, float step, float spacing, float width)
{
    const float room = unit((spacing / (step * width) - ground::crowded) / (ground::roomy - ground::crowded));
    const float away = std::abs(place - spacing * nearest(place / spacing)) / step;
    return unit(width / 2 + 0.5f - away) * room * room * (3 - 2 * room);
}

float axis(float place, float step, float width)
{
    return unit(width * ground::axis_width / 2 + 0.5f - std::abs(place) / step);
}

/// One row of ground pixels. The camera never tilts sideways, so that all of them are at the same depth and the
/// place on the ground is linear along the row.
struct RowPainter {
    const GroundLook& look;
    QVector3D ray; ///< of the row's first pixel
    float depth;
    float depth_step; ///< to the next row

    void paint(QRgb* out, QVector3D base, const std::array<float, 8>& noise) const
    {
        const float width = look.line;
        const float fade_scale = 1 / (look.reach * look.reach);
        constexpr float glow_scale = 1 / (ground::glow_radius * ground::glow_radius);
        for (int i = 0; i < look.pixels.width(); ++i) {
            const float ray_x = ray.x() + float(i) * look.ray_step_x.x();
            const float ray_z = ray.z() + float(i) * look.ray_step_x.z();
            const float near_x = depth * ray_x;
            const float near_z = depth * ray_z;
            const float x = near_x + look.eye.x();
            const float z = near_z + look.eye.z();
            const float step_x
                = std::hypot(depth * look.ray_step_x.x(), depth_step * ray_x + depth * look.ray_step_y.x());
            const float step_z
                = std::hypot(depth * look.ray_step_x.z(), depth_step * ray_z + depth * look.ray_step_y.z());
            const float left = std::max(0.f, 1 - (near_x * near_x + near_z * near_z) * fade_scale);
            const float fade = left * left;
            const float bright = 1 / (1 + (x * x + z * z) * glow_scale);
            const float glow = bright * bright * fade;

            const auto [minor, major, x_axis, z_axis] = std::array{
                fade * ground::minor_color.w()
                    * std::max(lines(x, step_x, ground::minor_spacing, width),
                               lines(z, step_z, ground::minor_spacing, width)),
                fade * ground::major_color.w()
                    * std::max(lines(x, step_x, ground::major_spacing, width),
                               lines(z, step_z, ground::major_spacing, width)),
                fade * ground::x_axis_color.w() * axis(z, step_z, width),
                fade * ground::z_axis_color.w() * axis(x, step_x, width)};
            const auto channel = [&](int c) {
                float value = base[c] + glow * ground::glow_color[c];
                value += (ground::minor_color[c] - value) * minor;
                value += (ground::major_color[c] - value) * major;
                value += (ground::z_axis_color[c] - value) * z_axis;
                value += (ground::x_axis_color[c] - value) * x_axis;
                return unsigned(unit(value) * 255 + 0.5f + noise[unsigned(i) & 7]);
            };
            out[i] = 0xff000000u | channel(0) << 16 | channel(1) << 8 | channel(2);
        }
    }
};

void fill_row(QRgb* out, int width, QVector3D base, const std::array<float, 8>& noise)
{
    std::array<QRgb, 8> pattern{};
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const auto channel = [&](int c) { return int(unit(base[c]) * 255 + 0.5f + noise[i]); };
        pattern[i] = qRgb(channel(0), channel(1), channel(2));
    }
    for (int i = 0; i < width; ++i)
        out[i] = pattern[unsigned(i) & 7];
}

} // namespace

QImage ground_raster(const GroundLook& look)
{
    QImage image(look.pixels, QImage::Format_RGB32);
    const std::vector<QVector3D> background = background_rows(look);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::array<float, 8> noise{};
        for (unsigned i = 0; i < noise.size(); ++i)
            noise[i] = dither(i, unsigned(y));
        const QVector3D ray = look.ray_origin + look.ray_step_y * float(y);
        const QVector3D middle = ray + look.ray_step_x * (float(image.width()) / 2);
        const float depth = -look.eye.y() / ray.y();
        // The nearest pixel of the row is the one in the middle.
        const bool on_ground = depth > 0 && depth * std::hypot(middle.x(), middle.z()) < look.reach;
        const QVector3D base = background[std::size_t(y)];
        if (on_ground)
            RowPainter{look, ray, depth, -depth * look.ray_step_y.y() / ray.y()}.paint(row, base, noise);
        else
            fill_row(row, image.width(), base, noise);
    }
    return image;
}

} // namespace tarn
