#include "ground_raster.h"

#include "render/ground_look.h"

#include <cmath>

namespace tarn {

namespace {

/// An even pattern of -0.5 to 0.5: added before rounding, it keeps slow gradients free of steps.
float dither(unsigned x, unsigned y)
{
    // The 8 x 8 matrix of Bayer: the bits of y and of x ^ y, interleaved, the lowest first.
    const unsigned d = x ^ y;
    const unsigned rank = (d & 1) << 5 | (y & 1) << 4 | (d & 2) << 2 | (y & 2) << 1 | (d & 4) >> 1 | (y & 4) >> 2;
    return (float(rank) + 0.5f) / 64 - 0.5f;
}

// The loop over a row is written so that the compiler makes vector instructions of it: no calls, no branches, nothing
// in it that might be changed through `out`.

float unit(float value)
{
    value = value < 0 ? 0 : value;
    return value > 1 ? 1 : value;
}

float nearest(float value)
{
    return float(int(value + (value < 0 ? -0.5f : 0.5f)));
}

float length(float x, float y)
{
    return std::sqrt(x * x + y * y);
}

/// How much of the pixel the lines of one direction cover. `density`: pixels in a metre.
float lines(float place, float density, float spacing, float width)
{
    const float room = unit((spacing * density / width - ground::crowded) / (ground::roomy - ground::crowded));
    const float away = std::abs(place - spacing * nearest(place / spacing)) * density;
    return unit(width / 2 + 0.5f - away) * room * room * (3 - 2 * room);
}

float axis(float place, float density, float width)
{
    return unit(width * ground::axis_width / 2 + 0.5f - std::abs(place) * density);
}

float larger(float a, float b)
{
    return a > b ? a : b;
}

/// One row of ground pixels. The camera never tilts sideways, so that all of them are at the same depth and the
/// place on the ground is linear along the row.
struct GroundRow {
    QVector3D ray; ///< of the row's first pixel
    float depth;
    float depth_step; ///< to the next row
    QVector3D base;
};

void paint_row(QRgb* out, const GroundLook& look, const GroundRow row, const float* noise)
{
    const int count = look.pixels.width();
    const float width = look.line;
    const float fade_scale = 1 / (look.reach * look.reach);
    constexpr float glow_scale = 1 / (ground::glow_radius * ground::glow_radius);
    const QVector3D eye = look.eye;
    const QVector3D step = look.ray_step_x;
    const QVector3D down = row.depth * look.ray_step_y;
    const QVector4D minor_color = ground::minor_color;
    const QVector4D major_color = ground::major_color;
    const QVector4D x_axis_color = look.x_axis_color();
    const QVector4D z_axis_color = look.z_axis_color();
    const QVector3D glow_color = ground::glow_color;
    for (int i = 0; i < count; ++i) {
        const float ray_x = row.ray.x() + float(i) * step.x();
        const float ray_z = row.ray.z() + float(i) * step.z();
        const float near_x = row.depth * ray_x;
        const float near_z = row.depth * ray_z;
        const float x = near_x + eye.x();
        const float z = near_z + eye.z();
        // How far a step of one pixel, to the right and downwards, moves on the ground: lines stay equally wide on the
        // screen whatever the slant.
        const float density_x = 1 / length(row.depth * step.x(), row.depth_step * ray_x + down.x());
        const float density_z = 1 / length(row.depth * step.z(), row.depth_step * ray_z + down.z());
        const float left = unit(1 - (near_x * near_x + near_z * near_z) * fade_scale);
        const float fade = left * left;
        const float bright = 1 / (1 + (x * x + z * z) * glow_scale);
        const float glow = bright * bright * fade;
        const float minor = fade * minor_color.w()
            * larger(lines(x, density_x, ground::minor_spacing, width),
                     lines(z, density_z, ground::minor_spacing, width));
        const float major = fade * major_color.w()
            * larger(lines(x, density_x, ground::major_spacing, width),
                     lines(z, density_z, ground::major_spacing, width));
        const float x_axis = fade * x_axis_color.w() * axis(z, density_z, width);
        const float z_axis = fade * z_axis_color.w() * axis(x, density_x, width);
        const auto channel = [&](float base, float light, float in_minor, float in_major, float in_x, float in_z) {
            float value = base + glow * light;
            value += (in_minor - value) * minor;
            value += (in_major - value) * major;
            value += (in_z - value) * z_axis;
            value += (in_x - value) * x_axis;
            return unsigned(int(unit(value) * 255 + 0.5f + noise[i]));
        };
        const unsigned red = channel(row.base.x(), glow_color.x(), minor_color.x(), major_color.x(), x_axis_color.x(),
                                     z_axis_color.x());
        const unsigned green = channel(row.base.y(), glow_color.y(), minor_color.y(), major_color.y(), x_axis_color.y(),
                                       z_axis_color.y());
        const unsigned blue = channel(row.base.z(), glow_color.z(), minor_color.z(), major_color.z(), x_axis_color.z(),
                                      z_axis_color.z());
        out[i] = 0xff000000u | red << 16 | green << 8 | blue;
    }
}

void fill_row(QRgb* out, int width, QVector3D base, const float* noise)
{
    for (int i = 0; i < width; ++i) {
        const auto channel = [&](int c) { return int(unit(base[c]) * 255 + 0.5f + noise[i]); };
        out[i] = qRgb(channel(0), channel(1), channel(2));
    }
}

} // namespace

QImage ground_raster(const GroundLook& look)
{
    QImage image(look.pixels, QImage::Format_RGB32);
    const std::vector<QVector3D> background = background_rows(look);
    std::vector<float> noise(std::size_t(image.width()));
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (std::size_t x = 0; x < noise.size(); ++x)
            noise[x] = dither(unsigned(x), unsigned(y));
        const QVector3D ray = look.ray_origin + look.ray_step_y * float(y);
        const QVector3D middle = ray + look.ray_step_x * (float(image.width()) / 2);
        const float depth = -look.eye.y() / ray.y();
        // The nearest pixel of the row is the one in the middle.
        const bool on_ground = depth > 0 && depth * length(middle.x(), middle.z()) < look.reach;
        const QVector3D base = background[std::size_t(y)];
        if (on_ground)
            paint_row(row, look, {ray, depth, -depth * look.ray_step_y.y() / ray.y(), base}, noise.data());
        else
            fill_row(row, image.width(), base, noise.data());
    }
    return image;
}

} // namespace tarn
