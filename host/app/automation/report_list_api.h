#pragma once

#include "page_handles.h"

// The methods of a control handle that only report lists have.
namespace tarn::script {

Result<Data> rows(Automation&, ControlHandle* self);
Result<Data> columns(Automation&, ControlHandle* self);
Result<Data> icons(Automation&, ControlHandle* self);
Status select_rows(Automation& app, ControlHandle* self, std::vector<int> wanted);
Result<Data> selected_rows(Automation&, ControlHandle* self);
Status click_cell(Automation& app, ControlHandle* self, int row, int column, const std::optional<QString>& mods);
Status drag_row(Automation& app, ControlHandle* self, int row, int onto, const QString& place);
Result<Data> cell_icons(Automation&, ControlHandle* self, int row, int column);
Status click_icon(Automation& app, ControlHandle* self, int row, int column, int icon);
Status double_click_row(Automation& app, ControlHandle* self, int row);

/// The Qt::Key of that name, "Delete" or "A".
Result<int> read_key(const QString& name);
/// "shift", "ctrl" and "alt" in any combination.
Result<Qt::KeyboardModifiers> read_modifiers(const std::optional<QString>& mods);

} // namespace tarn::script
