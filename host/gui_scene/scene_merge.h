#pragma once

#include "gui_core/gui_core.h"

namespace tarn {

/// Merges a read package into the scene. Its root dialog becomes a dialog called `name` when it holds controls; its
/// other dialogs follow in their order above the present ones. Names stay; ids are issued anew and every reference
/// follows. A picture whose name is taken by another picture gets a new name. Styles whose names are taken replace the
/// present ones when `replace_styles` is set and are left out otherwise.
void merge_content(CGuiCore& core, GuiContent content, const QString& name, bool replace_styles);

} // namespace tarn
