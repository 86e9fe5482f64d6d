#pragma once

#include <QPointF>

#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CGuiCore;
class CGuiPlugScene;

namespace tarn {

struct ObjectState;

// What can be done to the selected objects. Each call is one step of undo and tells the windows.

/// The selected controls, or those of them that are not locked, by dialog and layer.
std::vector<CDXUTControl*> selected_controls(const CGuiCore& core, bool unlocked_only);

/// The selected dialogs, the root dialog excepted, by layer.
std::vector<CDXUTDialog*> selected_dialogs(const CGuiCore& core);

/// Removes the selected dialogs, or controls that are not locked.
void remove_selected(CGuiPlugScene& scene);
/// Copies every selected control within its dialog, a little aside; the copies become the selection.
void duplicate_selected(CGuiPlugScene& scene);
/// The controls of the current dialog; without one those of all dialogs.
void select_all(CGuiPlugScene& scene);

enum class Layer { Top, Up, Down, Bottom };
/// The selected objects keep their order among each other.
void move_selected_layers(CGuiPlugScene& scene, Layer where);

bool all_locked(const CGuiCore& core);
/// Locks the selected controls, or unlocks them when all of them are locked.
void toggle_locked(CGuiPlugScene& scene);
/// Whether all that show_or_hide_selected() changes is hidden; false when that is nothing.
bool all_hidden(const CGuiCore& core);
/// Hides the selected dialogs, or controls that are not locked, or shows them when all of them are hidden.
void show_or_hide_selected(CGuiPlugScene& scene);
/// From the current control to its dialog.
void select_dialog_of_control(CGuiPlugScene& scene);

/// A new control on top of `dialog` that is like `original`, but for its place.
CDXUTControl* add_copy(CGuiCore& core, const ObjectState& original, CDXUTDialog& dialog, QPointF offset);
/// Tells the windows of controls that were made just now and are the selection.
void tell_new_controls(CGuiPlugScene& scene);

} // namespace tarn
