#pragma once

class QWidget;

namespace tarn {

/// Gives every control of a form that has no text of its own a name for screen readers: its tip, or the caption that stands
/// before or above it, or that of the group that it is in. What has a name keeps it.
void name_controls(QWidget& form);

} // namespace tarn
