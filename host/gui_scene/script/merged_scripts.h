#pragma once

#include "gui_scene/scene_content.h"

#include <QHash>

#include <vector>

namespace tarn {

/// The functions and events of a package that is being merged, as the scene takes them.
struct MergedScripts {
    std::vector<FuncPtr> functions; ///< those that the scene does not have yet
    std::vector<CGuiEvent> events;
    QHash<QString, QString> names{}; ///< new names of functions by their old ones, where they differ
};

/// Fails when the scene has no room for those of the package.
Status check_room(const SceneParts& scene, const SceneContent& content);

/// `dialogs` are the package's; `issued` gives the new ids of the package's objects by their old ones. Events of controls that the package does not
/// have keep no id that could be another control's: they are left out.
MergedScripts merged_scripts(const CConfigScene& scene_functions, const SceneContent& content,
                             const std::vector<StatePtr>& dialogs, const QHash<quint32, quint32>& issued);

} // namespace tarn
