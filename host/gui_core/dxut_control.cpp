#include "dxut_control.h"

#include "anchor.h"
#include "dxut_dialog.h"
#include "gui_core.h"

#include <algorithm>
#include <array>

using tarn::ControlState;
using tarn::FieldBase;

namespace {

/// The fields that are read and written as they stand on the present screen.
struct PlaceFields {
    const FieldBase* x = ControlState::field_table().find("x");
    const FieldBase* y = ControlState::field_table().find("y");
    const FieldBase* width = ControlState::field_table().find("width");
    const FieldBase* height = ControlState::field_table().find("height");
    const FieldBase* align_type = ControlState::field_table().find("align_type");
};

const PlaceFields& place_fields()
{
    static const PlaceFields fields;
    return fields;
}

} // namespace

CDXUTControl::CDXUTControl(tarn::Journal& journal, CGuiCore& core, ControlState* state)
    : ModelObject(journal, state), m_core(core)
{
}

const char* CDXUTControl::class_name() const
{
    return tarn::control_class(GetType())->class_name;
}

CDXUTDialog* CDXUTControl::dialog() const
{
    m_core.ensure_links();
    return m_dialog && m_dialog->m_attached ? m_dialog : nullptr;
}

bool CDXUTControl::is_attached() const
{
    const CDXUTDialog* home = dialog();
    return home && home->is_attached();
}

QRectF CDXUTControl::rect() const
{
    const ControlState& s = control_state();
    const QRectF stored(s.x, s.y, s.width, s.height);
    if (s.align_type == tarn::anchor_top_left || !dialog())
        return stored;
    return tarn::anchored(stored, QSizeF(s.base_width, s.base_height), m_dialog->client_size(), s.align_type);
}

QRectF CDXUTControl::screen_rect() const
{
    return dialog() ? m_dialog->to_screen(rect()) : QRectF();
}

bool CDXUTControl::set_rect(const QRectF& wanted)
{
    if (wanted == rect())
        return false;
    auto& s = edit<ControlState>();
    s.x = float(wanted.x());
    s.y = float(wanted.y());
    s.width = float(wanted.width());
    s.height = float(wanted.height());
    if (s.align_type != tarn::anchor_top_left && m_dialog) {
        s.base_width = float(m_dialog->client_size().width());
        s.base_height = float(m_dialog->client_size().height());
    }
    state_changed();
    return true;
}

bool CDXUTControl::SetLocation(float x, float y)
{
    return set_rect(QRectF(QPointF(x, y), rect().size()));
}

bool CDXUTControl::SetSize(float width, float height)
{
    return set_rect(QRectF(rect().topLeft(), QSizeF(std::max(0.f, width), std::max(0.f, height))));
}

bool CDXUTControl::set_align_type(int anchor)
{
    anchor = std::clamp(anchor, 0, 9);
    if (anchor == control_state().align_type)
        return false;
    const QRectF present = rect();
    auto& s = edit<ControlState>();
    s.align_type = anchor;
    s.x = float(present.x());
    s.y = float(present.y());
    s.width = float(present.width());
    s.height = float(present.height());
    const QSizeF client = m_dialog && anchor != tarn::anchor_top_left ? m_dialog->client_size() : QSizeF(0, 0);
    s.base_width = float(client.width());
    s.base_height = float(client.height());
    state_changed();
    return true;
}

bool CDXUTControl::set_name(const QString& name)
{
    return change<ControlState>(&ControlState::name, name);
}

bool CDXUTControl::SetVisible(bool visible)
{
    return change<ControlState>(&ControlState::visible, visible);
}

bool CDXUTControl::SetEnabled(bool enabled)
{
    return change<ControlState>(&ControlState::enabled, enabled);
}

bool CDXUTControl::set_locked(bool locked)
{
    return change<ControlState>(&ControlState::locked, locked);
}

bool CDXUTControl::set_color_tag(quint32 argb)
{
    return change<ControlState>(&ControlState::color_tag, argb);
}

tarn::VisualState CDXUTControl::visual_state() const
{
    using enum tarn::VisualState;
    if (!GetVisible())
        return Hidden;
    if (!GetEnabled())
        return Disabled;
    const tarn::LiveState& live = m_core.live();
    if (live.pressed == this)
        return live.hovered == this ? Pressed : Normal;
    if (live.hovered == this)
        return Hover;
    return live.focused == this ? Focused : Normal;
}

tarn::Value CDXUTControl::property(const FieldBase& field) const
{
    const PlaceFields& place = place_fields();
    if (&field == place.x)
        return double(x());
    if (&field == place.y)
        return double(y());
    if (&field == place.width)
        return double(width());
    if (&field == place.height)
        return double(height());
    return ModelObject::property(field);
}

tarn::Status CDXUTControl::set_property(const FieldBase& field, const tarn::Value& value)
{
    const PlaceFields& place = place_fields();
    const std::array moved{place.x, place.y, place.width, place.height, place.align_type};
    if (std::find(moved.begin(), moved.end(), &field) == moved.end())
        return ModelObject::set_property(field, value);
    // The field's own rules first, then the operation that keeps the anchor right.
    const std::unique_ptr<tarn::ObjectState> wanted(base_state().clone());
    if (auto status = field.set(*wanted, value); !status)
        return status;
    const auto& s = static_cast<const ControlState&>(*wanted);
    const QRectF now = rect();
    if (&field == place.align_type)
        set_align_type(s.align_type);
    else if (&field == place.x)
        SetLocation(s.x, float(now.y()));
    else if (&field == place.y)
        SetLocation(float(now.x()), s.y);
    else if (&field == place.width)
        SetSize(s.width, float(now.height()));
    else
        SetSize(float(now.width()), s.height);
    return {};
}

void CDXUTControl::state_changed()
{
    if (!dialog())
        return;
    const QRectF present = rect();
    m_dialog->control_drawn_at(m_dialog->to_screen(present));
    if (m_last_rect != present)
        m_core.add_damage(m_dialog->to_screen(m_last_rect));
    m_last_rect = present;
}
