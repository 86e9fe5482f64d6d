#pragma once

#include "look.h"

#include <QString>

#include <span>

class QFont;

namespace tarn {

struct StaticState;

/// A part of a control that is drawn from a picture of the skin, or from one that the author chose instead.
struct StyleElement {
    Element element;
    const char16_t* chinese;
    const char16_t* english;

    QString name() const; ///< in the program's language
};

/// The states that can look different: VisualState::Normal to Focused.
constexpr int style_state_count = 5;
constexpr int most_style_elements = 6;
constexpr int style_slot_count = style_state_count * most_style_elements;

/// What a control of that type is drawn from; empty for a type that has no pictures of the skin.
std::span<const StyleElement> style_elements(int control_type);
/// Whether a control of that type shows a text in a font and a colour of the author's choice.
bool has_styled_text(int control_type);
QString visual_state_name(VisualState state);

/// The place of an element, by its index in style_elements(), and a state in the lists of what the author chose.
constexpr int style_slot(int element, VisualState state)
{
    return element * style_state_count + int(state);
}
/// The index of `element` in the type's elements; -1 when it is none of them.
int style_element_index(int control_type, Element element);

/// The font of a control's text.
QFont font_of(const StaticState& state);

} // namespace tarn
