#pragma once

#include "boxes.h"

class QWidget;

namespace menufun {

/// Shows a popup menu at the mouse and waits; answers the chosen command or 0.
int pop_menu(QWidget* parent, const std::vector<tarn::boxes::MenuItem>& items);

} // namespace menufun

/// Enables or disables every control of a page's template.
void enable_all_controls(QWidget* page, bool enable);
