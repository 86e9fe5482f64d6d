#pragma once

#include <QImage>

namespace tarn {

struct GroundLook;

/// The ground and the sky without OpenGL.
QImage ground_raster(const GroundLook& look);

} // namespace tarn
