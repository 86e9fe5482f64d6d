#pragma once

#include <QtGlobal>

namespace tarn {

/// What the views show and do to help with exact placement. Not saved, not recorded. 0 is off.
struct ViewAids {
    quint32 ruler = 0;              ///< rulers along the top and left edge
    quint32 coordinate_display = 0; ///< rulers and read-outs count from the current dialog's corner, not the screen's
    quint32 guide_lines = 0;        ///< the guide lines are shown and can be moved
    quint32 snap = 0;               ///< what is created, moved or resized snaps

    /// A click on a control or dialog chooses the element that is drawn there, for the page that edits elements.
    bool picks_elements = false;
    bool tab_numbers = false; ///< the controls of the current dialog bear the order in which Tab comes to them

    // Without rulers the others rest, whatever their flags are.
    bool counts_from_dialog() const { return ruler && coordinate_display; }
    bool shows_guides() const { return ruler && guide_lines; }
    bool snaps() const { return ruler && snap; }
};

} // namespace tarn
