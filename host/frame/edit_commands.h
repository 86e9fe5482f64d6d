#pragma once

#include "engine/scene_editor.h"

class QPoint;
class QWidget;

namespace tarn {

/// Runs a command after the question that it asks, if any; a failure is shown in a box.
void run_edit_command(QWidget* parent, SceneEditor& editor, const EditCommand& command);

/// Shows the commands in a popup menu at `place` of the desktop and runs the chosen one. Answers its id, 0 for none: a
/// window can offer commands of its own, which are unknown to the editor.
int pop_edit_menu(QWidget* parent, SceneEditor& editor, const std::vector<EditCommand>& commands, QPoint place);

} // namespace tarn
