#pragma once

#include "core/progress.h"
#include "core/status.h"

#include <QByteArray>
#include <QImage>

class CGuiCore;

namespace tarn {

/// The content of a file of pictures, which is read up to a size that no picture for an interface has.
Result<QByteArray> read_picture_file(const QString& path);

/// The picture in the file `path`, which can be taken into a scene.
Result<QImage> load_picture(const QString& path, const Progress& progress = {});

/// Takes the picture in the file `path` into the scene and answers its name there: that of the file, or another one
/// where the name is taken or no package could hold it. A picture that the scene has already is shared.
Result<QString> take_picture(CGuiCore& core, const QString& path, const Progress& progress = {});

} // namespace tarn
