#pragma once

#include "hit_test.h"

class CGuiPlugScene;

namespace tarn {

bool is_selected(const CGuiCore& core, const Target& target);

// Each of these changes the selection as the user's doing: the windows hear of it, what shows the current dialog is
// drawn again, and a run of arrow keys ends.
void select(CGuiPlugScene& scene, const Target& target, bool add);
/// The last one becomes the current control; none clears the selection.
void select_controls(CGuiPlugScene& scene, const std::vector<CDXUTControl*>& controls);
void deselect(CGuiPlugScene& scene, const Target& target);
void clear_selection(CGuiPlugScene& scene);
/// From controls to their dialog, from dialogs to nothing; false when nothing is selected.
bool select_less(CGuiPlugScene& scene);

/// Tells the windows that what is selected is another.
void tell_selection(CGuiPlugScene& scene);
/// Tells the windows that places, sizes or attributes of what is selected changed.
void notify_properties(CGuiPlugScene& scene);

} // namespace tarn
