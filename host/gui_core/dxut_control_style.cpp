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

/// Beyond the end of the list stands what the style has.
template <class T>
void put(QList<T>& list, int slot, const T& value)
{
    if (slot >= list.size())
        list.resize(slot + 1);
    list[slot] = value;
    while (!list.isEmpty() && list.back() == T())
        list.removeLast();
}

constexpr tarn::FieldKey text_fields[] = {key<&StaticState::text_color>, key<&StaticState::font_size>,
                                          key<&StaticState::bold>};

} // namespace

template <class T>
bool CDXUTControl::put_style(QList<T> ControlExtras::*list, int slot, const T& value)
{
    if (slot < 0 || slot >= tarn::style_slot_count || (control_state().extras.get().*list).value(slot) == value)
        return false;
    edit<ControlState>().extras.edit([&](ControlExtras& extras) { put(extras.*list, slot, value); });
    state_changed();
    return true;
}

bool CDXUTControl::set_style_image(int slot, const QString& name)
{
    return put_style(&ControlExtras::style_images, slot, name);
}

bool CDXUTControl::set_style_color(int slot, quint32 argb)
{
    return put_style(&ControlExtras::style_colors, slot, argb);
}

bool CDXUTControl::set_style_text_color(VisualState look, quint32 argb)
{
    return look != VisualState::Hidden && put_style(&ControlExtras::style_text_colors, int(look), argb);
}

bool CDXUTControl::set_font_family(const QString& family)
{
    if (family == font_family())
        return false;
    edit<ControlState>().extras.edit([&](ControlExtras& extras) { extras.font_family = family; });
    state_changed();
    return true;
}

bool CDXUTControl::set_font_italic(bool italic)
{
    if (italic == font_italic())
        return false;
    edit<ControlState>().extras.edit([&](ControlExtras& extras) { extras.font_italic = italic; });
    state_changed();
    return true;
}

bool CDXUTControl::has_style() const
{
    const ControlExtras& extras = control_state().extras.get();
    const auto is_chosen = [this](tarn::FieldKey key) {
        const tarn::FieldBase* field = fields().find(key);
        return field && !field->is_default(base_state());
    };
    return !extras.style_images.isEmpty() || !extras.style_colors.isEmpty() || !extras.style_text_colors.isEmpty()
        || !extras.font_family.isEmpty() || extras.font_italic
        || std::any_of(std::begin(text_fields), std::end(text_fields), is_chosen);
}

bool CDXUTControl::reset_style()
{
    if (!has_style())
        return false;
    edit<ControlState>().extras.edit([](ControlExtras& extras) {
        extras.style_images.clear();
        extras.style_colors.clear();
        extras.style_text_colors.clear();
        extras.font_family.clear();
        extras.font_italic = false;
    });
    for (const tarn::FieldKey key : text_fields)
        if (const tarn::FieldBase* field = fields().find(key))
            (void)field->set(edit_base(), tarn::Value(qint64(0)));
    state_changed();
    return true;
}

quint32 CDXUTControl::text_color_in(VisualState look, quint32 authored) const
{
    const quint32 chosen = look == VisualState::Hidden ? 0 : style_text_color(look);
    return chosen ? chosen : tarn::Skin::text_color(look, authored);
}
