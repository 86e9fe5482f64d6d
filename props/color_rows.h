#pragma once

#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "gui_core/style_look.h"
#include "page_base/field_row.h"
#include "page_base/value_part.h"

namespace tarn {

// Of colours of which the one that is all zeros means that none is chosen.

/// What is as transparent stands for it where an author picks it.
inline Value chosen_color(const ModelObject&, const Value& picked, Part)
{
    return number_of(picked) != 0 ? picked : Value(qint64(0x00ffffff));
}

/// What is seen where none is chosen: what the interface's style says of one of an edit box's colours.
template <int color>
Value seen_color(const ModelObject& object, const Value& chosen, Part)
{
    const LookOwner& owner = *look_owner(DXUT_CONTROL_EDITBOX);
    const StyleLook& style = static_cast<const CDXUTControl&>(object).core().look();
    return number_of(chosen) != 0
        ? chosen
        : Value(qint64(style.color(owner, int(owner.elements.size()) + color, VisualState::Normal)));
}

template <VisualState state>
Value seen_text_color(const ModelObject& object, const Value& chosen, Part)
{
    const auto& control = static_cast<const CDXUTControl&>(object);
    return number_of(chosen) != 0 ? chosen : Value(qint64(control.core().look().text_color(control.GetType(), state)));
}

} // namespace tarn
