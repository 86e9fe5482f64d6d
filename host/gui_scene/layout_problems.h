#pragma once

#include "engine/scene_plug.h"

#include <QSet>
#include <QSize>

#include <span>
#include <vector>

class CGuiPlugScene;

namespace tarn {

/// What does not look as it is meant: texts that do not fit their areas, controls off the screen, and controls of one
/// dialog that take the mouse and cover each other. Each is told once, for the first of the `sizes` of the screen, in
/// pixels, where it is so; with `over_time` for the times of every timebar, too, and in each of the scene's languages. The
/// scene is shown as authored, and in the size that it had, afterwards. Fails only when it is stopped.
Result<std::vector<SceneModel::Problem>> find_layout_problems(CGuiPlugScene& scene, std::span<const QSize> sizes,
                                                              bool over_time, const Progress& progress = {});

/// The objects whose texts do not fit in a language, on a screen of the present size; ids.
QSet<quint32> find_cut_texts(CGuiPlugScene& scene, const QString& language);

} // namespace tarn
