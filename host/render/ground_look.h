#pragma once

#include <QMatrix4x4>
#include <QSize>
#include <QVector3D>
#include <QVector4D>

#include <vector>

namespace tarn {

/// How the ground and the sky look from a camera with a perspective. Everything that draws them asks here, so that a view with OpenGL
/// and one without it show the same picture. Pixels are device pixels and count from the top left.
struct GroundLook {
    QSize pixels;
    QVector3D eye;
    /// The ray from the eye through the middle of a pixel is origin + x * step_x + y * step_y, of any length.
    QVector3D ray_origin;
    QVector3D ray_step_x;
    QVector3D ray_step_y;
    float axes = 1;       ///< how much of the axes' lines shows, 0 to 1
    float reach = 0;      ///< metres from the eye at which the lines have faded away
    float line = 1;       ///< width of a line in pixels
    bool is_level = true; ///< the horizon is: the camera does not tilt sideways

    QVector4D x_axis_color() const;
    QVector4D z_axis_color() const;

    friend bool operator==(const GroundLook&, const GroundLook&) = default;
};

GroundLook ground_look(const QMatrix4x4& view, const QMatrix4x4& projection, QSize pixels, double dpr);

/// The colour behind the lines for every row of pixels of a level camera: along a row, the height over the horizon hardly
/// changes.
std::vector<QVector3D> background_rows(const GroundLook& look);

inline constexpr int background_steps = 8; ///< for each degree

/// The colours behind the lines from straight down to straight up, evenly spaced.
std::vector<QVector3D> background_heights();

/// Colours as red, green, blue and opacity, 0 to 1.
namespace ground {

inline constexpr float minor_spacing = 1; ///< metres
inline constexpr float major_spacing = 10;
inline constexpr float axis_width = 1.7f; ///< times the width of other lines
/// Lines closer than the first fade away, lines further apart than the second are shown in full; in line widths.
inline constexpr float crowded = 3;
inline constexpr float roomy = 14;
inline constexpr float glow_radius = 13; ///< metres around the origin
inline const QVector4D minor_color{0.74f, 0.81f, 0.95f, 0.13f};
inline const QVector4D major_color{0.80f, 0.87f, 1.00f, 0.30f};
inline const QVector4D x_axis_color{0.93f, 0.42f, 0.44f, 0.90f};
inline const QVector4D z_axis_color{0.38f, 0.62f, 1.00f, 0.90f};
inline const QVector3D glow_color{0.075f, 0.085f, 0.125f};

} // namespace ground
} // namespace tarn
