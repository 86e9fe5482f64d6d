#pragma once

#include "gui_draw/skin.h"
#include "page_base/field_row.h"
#include "page_base/value_part.h"

namespace tarn {

// Of colours of which the one that is all zeros means that none is chosen.

/// What is as transparent stands for it where an author picks it.
inline Value chosen_color(const ModelObject&, const Value& picked, Part)
{
    return number_of(picked) != 0 ? picked : Value(qint64(0x00ffffff));
}

/// What is seen where none is chosen.
template <quint32 usual>
Value seen_color(const ModelObject&, const Value& chosen, Part)
{
    return number_of(chosen) != 0 ? chosen : Value(qint64(usual));
}

template <VisualState state>
Value seen_text_color(const ModelObject&, const Value& chosen, Part)
{
    return number_of(chosen) != 0 ? chosen : Value(qint64(Skin::text_color(state, 0)));
}

} // namespace tarn
