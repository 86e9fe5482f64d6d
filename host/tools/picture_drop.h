#pragma once

#include "core/status.h"

#include <QPointF>
#include <QString>

class CGuiPlugScene;

namespace tarn {

/// Gives the picture in `file` to the topmost control at `place` of the screen, when that shows pictures; otherwise makes a
/// picture there, as large as it is in the file and as its dialog has room for. One step of undo.
Status drop_picture(CGuiPlugScene& scene, const QString& file, QPointF place);

} // namespace tarn
