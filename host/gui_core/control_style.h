#pragma once

#include "look.h"

#include <QString>

#include <span>

class QFont;

namespace tarn {

struct ControlState;
struct MenuState;
struct StaticState;

/// A part of a control that is drawn from a picture of the skin, or from one that the author chose instead.
struct StyleElement {
    Element element;
    const char* name; ///< in files; it never changes
    const char16_t* chinese;
    const char16_t* english;

    QString caption() const; ///< in the program's language
};

/// The states that can look different: VisualState::Normal to Focused.
constexpr int style_state_count = 5;

/// What a control of that type is drawn from; empty for a type that has no pictures of the skin.
std::span<const StyleElement> style_elements(int control_type);
/// What a menu is drawn from.
std::span<const StyleElement> menu_elements();
/// Whether a control of that type shows a text in a font and a colour of the author's choice.
bool has_styled_text(int control_type);
QString visual_state_caption(VisualState state); ///< in the program's language

/// "hover": a state in files. Empty for Hidden, which looks like nothing.
QString state_name(VisualState state);
/// "Body.hover": an element in a state, in files.
QString look_name(const StyleElement& element, VisualState state);

/// How an element is drawn.
struct ElementLook {
    QString picture;   ///< name in the scene's textures; empty for the default skin's
    quint32 color = 0; ///< ARGB; the picture takes it on: one of the author's is multiplied with it, one of the skin's
                       ///< turned into its shades. 0 leaves it as it is
    bool served = false; ///< the picture was chosen for Normal, and for this state none
};

/// What was chosen for an element and a state: at the control, or else by its style, or else nothing, which stands for
/// the default skin. A picture that was chosen for Normal serves the states that have none, with its colour.
ElementLook element_look(const ControlState& control, Element element, VisualState state);
ElementLook element_look(const MenuState& menu, Element element, VisualState state);
/// ARGB of a text, found in the same order; 0 when nothing was chosen.
quint32 chosen_text_color(const ControlState& control, VisualState state);
quint32 chosen_text_color(const MenuState& menu, VisualState state);

/// The font of a control's text.
QFont font_of(const StaticState& state);

} // namespace tarn
