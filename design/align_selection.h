#pragma once

#include "align_math.h"

class CGuiCore;

namespace tarn {

// What the alignment tools do with the selection. The caller has a user action open. Each answers false when there was
// nothing to work on: no reference object (the current control, or the current dialog where dialogs are selected), or
// nothing selected. Locked objects are moved like the others.

/// Controls are brought into line with the current control, as far as they are in the same dialog.
bool align_selection(CGuiCore& core, Edge edge);
/// Controls of all dialogs take the size of the current one. Dialogs are compared with their caption bars.
bool match_selection(CGuiCore& core, Dimension dimension);
/// Spreads the selected controls of the current control's dialog; false for fewer than two. Dialogs stay where they
/// are.
bool distribute_selection(CGuiCore& core, Qt::Orientation direction);
/// Moves the selection as a whole to an edge or the middle of the screen, or of the current dialog when that holds the
/// controls, and anchors it there.
bool align_selection_to_area(CGuiCore& core, Edge edge);

} // namespace tarn
