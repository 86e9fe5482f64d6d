#pragma once

#include "look_parts.h"

#include <QString>

#include <span>

class QFont;

namespace tarn {

struct ControlState;
struct MenuState;
struct StaticState;
class StyleLook;

/// What a control of that type is drawn from; empty for a type that has no pictures of the skin.
std::span<const StyleElement> style_elements(int control_type);
/// Whether a control of that type shows a text in a font and a colour of the author's choice.
bool has_styled_text(int control_type);
QString visual_state_caption(VisualState state); ///< in the program's language

/// "hover": a state in files. Empty for Hidden, which looks like nothing.
QString state_name(VisualState state);
/// "Body.hover": an element in a state, in files.
QString look_name(const StyleElement& element, VisualState state);

/// How an element is drawn.
struct ElementLook {
    QString picture;     ///< name in the scene's textures; empty for the style's
    quint32 color = 0;   ///< ARGB; 0 leaves the picture as it is
    bool served = false; ///< the picture was chosen for Normal, and for this state none
    QRect region = {};   ///< of the style's picture, pixels of the atlas; empty for that of the sheet
    QMargins edges = {}; ///< of the region, pixels of the atlas
    bool shades = false; ///< the picture is turned into the colour's shades; otherwise it is multiplied with it
};

/// How the style alone has an element of `owner` drawn.
ElementLook style_element_look(const StyleLook& style, int owner, Element element, VisualState state);
/// What was chosen for an element and a state: at the control, or else by the style. A picture that was chosen for Normal
/// serves the states that have none, with its colour. `part` is the state of the element itself where that is not the
/// control's, as of a row in a list: the style goes by it.
ElementLook element_look(const StyleLook& style, const ControlState& control, Element element, VisualState state,
                         VisualState part);
ElementLook element_look(const StyleLook& style, const MenuState& menu, Element element, VisualState state);
/// ARGB of a text that the control or menu has of its own; 0 when nothing was chosen.
quint32 chosen_text_color(const ControlState& control, VisualState state);
quint32 chosen_text_color(const MenuState& menu, VisualState state);

/// The font of a control's text.
QFont font_of(const StyleLook& style, const StaticState& state);

} // namespace tarn
