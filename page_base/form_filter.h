#pragma once

#include <QString>

class QWidget;

namespace tarn {

/// Shows of the pages in `form` only the lines of which a caption, in one of the program's languages, or the name of an
/// attribute contains `text`; of a group or section whose title does, all. Sections with a line that is shown unfold. An
/// empty text shows everything again, and the sections are folded as they were. False when nothing is left.
bool filter_form(QWidget& form, const QString& text);

/// The first widget in the form that is shown and takes the keyboard; null when there is none.
QWidget* first_editor(QWidget& form);

} // namespace tarn
