#pragma once

#include "engine/scene_editor.h"

class CGuiPlugScene;

namespace tarn {

/// The text of the control at `place`, or the caption of the dialog whose caption bar is there.
std::optional<EditableText> editable_text_at(CGuiPlugScene& scene, QPointF place);

} // namespace tarn
