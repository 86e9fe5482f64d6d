#pragma once

#include <QString>

#include <optional>

class CColorSwatch;
class CGuiCore;
class QComboBox;
class QWidget;

namespace tarn {

struct LookPart;

// What the pages of a look's design have in common.

/// What an author reads for a named colour.
QString token_caption(const QString& name);

/// Shows the colour of the part, and lists where it can come from: nothing, a colour of its own, a named one.
void show_color(const CGuiCore& core, const LookPart& part, CColorSwatch& swatch, QComboBox& sources);
/// What a style says of the colour when the user chose row `row` of the sources.
QString color_source(const CColorSwatch& swatch, const QComboBox& sources, int row);
/// Asks for a colour, beginning with the swatch's: ARGB, never the 0 that means none.
std::optional<quint32> ask_color(QWidget* parent, const CColorSwatch& swatch);

/// What is selected in the view: what it is made of, and which one it is, only to be compared; null for nothing.
struct SelectedOwner {
    int owner = -1; ///< see look_owner()
    const void* object = nullptr;
};
SelectedOwner selected_owner(const CGuiCore& core);

} // namespace tarn
