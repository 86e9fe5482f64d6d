#pragma once

#include "core/status.h"

#include <QSize>
#include <QString>

class CBaseWorld;

namespace tarn {

/// Draws the world's view into a PNG file of `size` pixels.
Status render_to_file(CBaseWorld& world, const QString& path, QSize size);

} // namespace tarn
