#include "control_style.h"
#include "core/field.h"
#include "dxut_control.h"

#include <algorithm>
#include <iterator>

// What the author chose instead of the style's pictures, colours and font.

using tarn::ControlExtras;
using tarn::ControlState;
using tarn::key;
using tarn::StaticState;
using tarn::VisualState;

namespace {

const std::initializer_list<tarn::FieldKey> style_fields{
    key<&ControlExtras::style_images>, key<&ControlExtras::style_colors>, key<&ControlExtras::style_text_colors>,
    key<&ControlExtras::font_family>,  key<&ControlExtras::font_italic>,  key<&StaticState::text_color>,
    key<&StaticState::font_size>,      key<&StaticState::bold>,
};

} // namespace

template <auto member, class T>
bool CDXUTControl::change_extra(const T& value)
{
    if (control_state().extras.get().*member == value)
        return false;
    edit<ControlState>().extras.edit([&](ControlExtras& extras) { extras.*member = value; });
    written(key<member>);
    return true;
}

template <auto map, class T>
bool CDXUTControl::put_style(const QString& name, const T& value)
{
    if (name.isEmpty())
        return false;
    auto chosen = control_state().extras.get().*map;
    if (value == T())
        chosen.remove(name);
    else
        chosen.insert(name, value);
    return change_extra<map>(chosen);
}

bool CDXUTControl::set_style_image(const QString& look, const QString& name)
{
    return put_style<&ControlExtras::style_images>(look, name);
}

bool CDXUTControl::set_style_color(const QString& look, quint32 argb)
{
    return put_style<&ControlExtras::style_colors>(look, argb);
}

quint32 CDXUTControl::style_text_color(VisualState state) const
{
    return control_state().extras->style_text_colors.value(tarn::state_name(state));
}

bool CDXUTControl::set_style_text_color(VisualState state, quint32 argb)
{
    return put_style<&ControlExtras::style_text_colors>(tarn::state_name(state), argb);
}

bool CDXUTControl::set_font_family(const QString& family)
{
    return change_extra<&ControlExtras::font_family>(family);
}

bool CDXUTControl::set_font_italic(bool italic)
{
    return change_extra<&ControlExtras::font_italic>(italic);
}

bool CDXUTControl::has_style() const
{
    return std::any_of(std::begin(style_fields), std::end(style_fields), [this](tarn::FieldKey key) {
        const tarn::FieldBase* field = fields().find(key);
        return field && !field->is_default(base_state());
    });
}

bool CDXUTControl::reset_style()
{
    if (!has_style())
        return false;
    const tarn::StatePtr fresh = tarn::control_class(GetType())->create(journal(), core())->shared_state();
    tarn::ObjectState& state = edit_base();
    for (const tarn::FieldKey key : style_fields)
        if (const tarn::FieldBase* field = fields().find(key))
            field->copy(*fresh, state);
    written(style_fields);
    return true;
}

quint32 CDXUTControl::text_color_in(VisualState look, quint32 authored) const
{
    return tarn::text_color(control_state(), look, authored);
}
