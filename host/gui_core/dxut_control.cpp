#include "dxut_control.h"

#include "anchor.h"
#include "dxut_dialog.h"
#include "gui_core.h"

#include <algorithm>
#include <array>

using tarn::CenterXAccess;
using tarn::CenterYAccess;
using tarn::ControlState;
using tarn::FieldBase;
using tarn::key;
using tarn::ScaleModeAccess;

namespace {

/// A field that is read and written as it stands on the present screen.
struct PlaceField {
    tarn::FieldKey field;
    double (*read)(const QRectF& rect, QPointF center); ///< null: as it is stored
    /// `wanted` holds the new value, held to the field's rules.
    void (*write)(CDXUTControl&, const ControlState& wanted);
};

const auto& place_fields()
{
    using Control = CDXUTControl;
    using State = ControlState;
    static constexpr std::array fields{
        PlaceField{key<&State::x>, [](const QRectF& r, QPointF) { return double(float(r.x())); },
                   [](Control& c, const State& s) { c.SetLocation(s.x, c.y()); }},
        PlaceField{key<&State::y>, [](const QRectF& r, QPointF) { return double(float(r.y())); },
                   [](Control& c, const State& s) { c.SetLocation(c.x(), s.y); }},
        PlaceField{key<&State::width>, [](const QRectF& r, QPointF) { return double(float(r.width())); },
                   [](Control& c, const State& s) { c.SetSize(s.width, c.height()); }},
        PlaceField{key<&State::height>, [](const QRectF& r, QPointF) { return double(float(r.height())); },
                   [](Control& c, const State& s) { c.SetSize(c.width(), s.height); }},
        PlaceField{key<CenterXAccess{}>, [](const QRectF&, QPointF c) { return double(float(c.x())); },
                   [](Control& c, const State& s) {
                       c.set_center({s.extras->center_x, c.center().y()});
                   }},
        PlaceField{key<CenterYAccess{}>, [](const QRectF&, QPointF c) { return double(float(c.y())); },
                   [](Control& c, const State& s) {
                       c.set_center({c.center().x(), s.extras->center_y});
                   }},
        PlaceField{key<&State::align_type>, nullptr,
                   [](Control& c, const State& s) { c.set_align_type(s.align_type); }},
        PlaceField{key<ScaleModeAccess{}>, nullptr,
                   [](Control& c, const State& s) { c.set_scale_mode(s.align_type == tarn::anchor_scale); }},
    };
    return fields;
}

const tarn::WrittenFields place_keys{key<&ControlState::x>,          key<&ControlState::y>,
                                     key<&ControlState::width>,      key<&ControlState::height>,
                                     key<&ControlState::base_width>, key<&ControlState::base_height>,
                                     key<CenterXAccess{}>,           key<CenterYAccess{}>};

const tarn::WrittenFields anchor_keys = [] {
    tarn::WrittenFields keys = place_keys;
    keys.add(key<&ControlState::align_type>);
    keys.add(key<ScaleModeAccess{}>);
    keys.add(key<&tarn::ControlExtras::saved_align_type>);
    return keys;
}();

const PlaceField* place_field(const FieldBase& field)
{
    const auto& all = place_fields();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const PlaceField& p) { return p.field == field.key(); });
    return found == all.end() ? nullptr : &*found;
}

} // namespace

CDXUTControl::CDXUTControl(CGuiCore& core, tarn::StatePtr state)
    : ModelObject(core.document(), std::move(state)), m_core(core)
{
}

const char* CDXUTControl::class_name() const
{
    return tarn::control_class(GetType())->class_name;
}

CDXUTDialog* CDXUTControl::home() const
{
    return static_cast<CDXUTDialog*>(parent());
}

CDXUTDialog* CDXUTControl::dialog() const
{
    return is_attached() ? home() : nullptr;
}

QRectF CDXUTControl::rect() const
{
    return rect_of(control_state());
}

QRectF CDXUTControl::rect_of(const ControlState& s) const
{
    const QRectF stored(s.x, s.y, s.width, s.height);
    if (s.align_type == tarn::anchor_top_left || !dialog())
        return stored;
    return tarn::anchored(stored, QSizeF(s.base_width, s.base_height), home()->client_size(), s.align_type);
}

QRectF CDXUTControl::screen_rect() const
{
    return dialog() ? home()->to_screen(rect()) : QRectF();
}

/// Makes `place` the one that is meant, and the present client area the one that it is meant for.
void CDXUTControl::store_place(ControlState& s, const QRectF& place, QPointF pivot) const
{
    s.x = float(place.x());
    s.y = float(place.y());
    s.width = float(place.width());
    s.height = float(place.height());
    const QSizeF client = home() && s.align_type != tarn::anchor_top_left ? home()->client_size() : QSizeF(0, 0);
    s.base_width = float(client.width());
    s.base_height = float(client.height());
    if (s.extras->has_center)
        s.extras.edit([&](tarn::ControlExtras& extras) {
            extras.center_x = float(pivot.x());
            extras.center_y = float(pivot.y());
        });
}

/// Keys count from the client area that the author's place is meant for, so that stays.
void CDXUTControl::store_driven_place(ControlState& s, const QRectF& place) const
{
    const QRectF now = rect_of(s);
    QRectF stored = place;
    if (s.align_type != tarn::anchor_top_left && home() && s.base_width > 0 && s.base_height > 0)
        stored = tarn::anchored(place, home()->client_size(), QSizeF(s.base_width, s.base_height), s.align_type);
    // Only what was asked for: there and back may lose a fraction.
    if (place.x() != now.x())
        s.x = float(stored.x());
    if (place.y() != now.y())
        s.y = float(stored.y());
    if (place.width() != now.width())
        s.width = float(stored.width());
    if (place.height() != now.height())
        s.height = float(stored.height());
}

bool CDXUTControl::set_rect(const QRectF& wanted)
{
    if (wanted == rect())
        return false;
    if (is_driven(key<&ControlState::x>) || is_driven(key<&ControlState::width>))
        store_driven_place(edit<ControlState>(), wanted);
    else
        store_place(edit<ControlState>(), wanted, center());
    written(place_keys);
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
    // What drives the place keeps its numbers: it counts from the anchor that there is.
    const auto& before = static_cast<const ControlState&>(base_state());
    const QRectF present = rect_of(before);
    const QPointF pivot = center_of(before);
    auto& s = static_cast<ControlState&>(edit_base());
    s.align_type = anchor;
    store_place(s, present, pivot);
    written(anchor_keys);
    return true;
}

bool CDXUTControl::SetVisible(bool visible)
{
    return change<&ControlState::visible>(visible);
}

bool CDXUTControl::set_locked(bool locked)
{
    return change<&ControlState::locked>(locked);
}

bool CDXUTControl::can_be_reached() const
{
    return is_interactive() && is_seen() && GetEnabled() && dialog() && dialog()->is_seen() && !dialog()->minimized();
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

tarn::VisualState CDXUTControl::dragged_state() const
{
    const tarn::VisualState look = CDXUTControl::visual_state();
    const bool dragged = m_core.live().pressed == this;
    return dragged && look == tarn::VisualState::Normal ? tarn::VisualState::Pressed : look;
}

tarn::Value CDXUTControl::value_in(const tarn::ObjectState& state, const FieldBase& field) const
{
    const PlaceField* place = place_field(field);
    if (!place || !place->read)
        return ModelObject::value_in(state, field);
    const auto& s = static_cast<const ControlState&>(state);
    return place->read(rect_of(s), center_of(s));
}

tarn::Status CDXUTControl::set_property(const FieldBase& field, const tarn::Value& value)
{
    const PlaceField* place = place_field(field);
    if (!place)
        return ModelObject::set_property(field, value);
    // The field's own rules first, then the operation that keeps the anchor right.
    const std::unique_ptr<tarn::ObjectState> wanted(shown_state().clone());
    if (auto status = field.set(*wanted, value); !status)
        return status;
    place->write(*this, static_cast<const ControlState&>(*wanted));
    return {};
}

void CDXUTControl::after_write(const tarn::WrittenFields& written)
{
    if (written.contains(key<&ControlState::name>))
        m_core.names_changed();
}

void CDXUTControl::state_changed()
{
    if (!dialog())
        return;
    const QRectF present = drawn_bounds();
    home()->control_drawn_at(home()->to_screen(present));
    if (m_last_bounds != present)
        m_core.add_damage(home()->to_screen(m_last_bounds));
    m_last_bounds = present;
}

void CDXUTControl::raise(GuiEventType type)
{
    m_core.raise(type, *this);
}
