#pragma once

#include "gui_core/look.h"

#include <QImage>
#include <QMargins>
#include <QRect>

namespace tarn {

/// Where an element's picture is in the atlas, in sheet units, and how it fills an area: as nine slices with fixed
/// edges, or (an icon) scaled as a whole.
struct ElementPicture {
    QRect rect;
    QMargins edges;
    bool icon = false;
};

/// The pictures and colours with which an interface is drawn.
class Skin {
public:
    /// The skin that comes with the program.
    static const Skin& default_skin();

    explicit Skin(QImage atlas);

    /// The atlas; pixels_per_unit() pixels stand for one unit of the sheet, which is one pixel of the interface.
    const QImage& atlas() const { return m_atlas; }
    double pixels_per_unit() const { return m_pixels_per_unit; }

    /// Whether the element looks different in each state.
    static bool has_states(Element element);
    static ElementPicture picture(Element element, VisualState state);
    /// The colour of a text in this state, ARGB; `text_color` is the author's choice, 0 for none.
    static quint32 text_color(VisualState state, quint32 text_color);

    // Of an edit box whose author chose none, ARGB.
    static constexpr quint32 selection_color = 0xff2f7f8f;
    static constexpr quint32 caret_color = 0xffbfeef5;
    static constexpr quint32 border_color = 0xff6fd3e0;

private:
    QImage m_atlas;
    double m_pixels_per_unit;
};

} // namespace tarn
