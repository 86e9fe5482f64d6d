#pragma once

#include "core/scene_snapshot.h"

#include <QHash>

class CGuiPlugScene;

namespace tarn {

/// Prepares the functions of a package that is being merged, whose objects have got their new ids (`issued`, by the old
/// ones). Functions that the scene has too go; one whose name is taken gets a new name, and so do those that are named
/// after the object whose events call them. What names a function follows: attributes, and literals in texts.
void merge_functions(SceneSnapshot& content, const CGuiPlugScene& scene, const QHash<quint32, quint32>& issued);

/// Gives functions other names, by the old ones; `functions` is the place of their kind. What names a function follows.
void follow_function_names(SceneSnapshot& content, std::size_t functions, const QHash<QString, QString>& names);

} // namespace tarn
