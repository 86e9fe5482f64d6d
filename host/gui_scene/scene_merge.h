#pragma once

#include "core/scene_snapshot.h"
#include "core/status.h"

#include <QString>

class CGuiPlugScene;

namespace tarn {

class Document;

/// Merges a read package into the scene. Its root dialog becomes a dialog called `name` when it holds controls; its
/// other dialogs follow in their order above the present ones. Names stay; ids are issued anew and every reference
/// follows. A picture whose name is taken by another picture gets a new name. Styles whose names are taken replace the
/// present ones when `replace_styles` is set and are left out otherwise; then the interface has the other one's look, too.
///
/// Functions that were made for events are named after the new ids. Another function whose name is taken by one with
/// another text gets a new name; events, and texts that name it as a literal, follow. Fails, and changes nothing, when
/// there would be more functions or events than a scene may have.
Status merge_content(CGuiPlugScene& scene, SceneSnapshot content, const QString& name, bool replace_styles);

/// What was read, to be put in the place of everything but the 3D world, which stays as it is: ids are issued anew where
/// that has some.
SceneSnapshot with_present_world(SceneSnapshot content, Document& document);

} // namespace tarn
