#include "dxut_control.h"

#include "anchor.h"
#include "core/field.h"
#include "dxut_dialog.h"
#include "gui_core.h"

#include <algorithm>
#include <cmath>

// Rotation, its centre, and scaling with the dialog.

using tarn::CenterXAccess;
using tarn::CenterYAccess;
using tarn::ControlExtras;
using tarn::ControlState;
using tarn::key;

namespace {

float held_to(tarn::FieldKey field, double value)
{
    const tarn::FieldRules& rules = ControlState::field_table().find(field)->rules();
    return float(std::clamp(value, rules.minimum, rules.maximum));
}

} // namespace

int CDXUTControl::scale_mode() const
{
    return align_type() == tarn::anchor_scale;
}

bool CDXUTControl::set_scale_mode(int mode)
{
    const bool on = mode != 0;
    if (on == (scale_mode() != 0))
        return false;
    const int anchor = on ? int(tarn::anchor_scale) : control_state().extras->saved_align_type;
    const int saved = on ? align_type() : 0;
    static_cast<ControlState&>(edit_base()).extras.edit([&](ControlExtras& extras) {
        extras.saved_align_type = saved;
    });
    return set_align_type(anchor);
}

QPointF CDXUTControl::center() const
{
    return center_of(control_state());
}

QPointF CDXUTControl::center_of(const ControlState& s) const
{
    const QSizeF size = rect_of(s).size();
    if (!s.extras->has_center)
        return {size.width() / 2, size.height() / 2};
    // A control that scales takes its centre along.
    const double sx = s.width > 0 ? size.width() / double(s.width) : 1;
    const double sy = s.height > 0 ? size.height() / double(s.height) : 1;
    return {double(s.extras->center_x) * sx, double(s.extras->center_y) * sy};
}

bool CDXUTControl::set_center(QPointF from_corner)
{
    if (has_own_center() && from_corner == center())
        return false;
    const QSizeF size = rect().size();
    auto& s = edit<ControlState>();
    const double sx = size.width() > 0 ? double(s.width) / size.width() : 1;
    const double sy = size.height() > 0 ? double(s.height) / size.height() : 1;
    s.extras.edit([&](ControlExtras& extras) {
        extras.has_center = true;
        extras.center_x = held_to(key<CenterXAccess{}>, from_corner.x() * sx);
        extras.center_y = held_to(key<CenterYAccess{}>, from_corner.y() * sy);
    });
    written({key<CenterXAccess{}>, key<CenterYAccess{}>});
    return true;
}

bool CDXUTControl::reset_center()
{
    if (!has_own_center())
        return false;
    edit<ControlState>().extras.edit([](ControlExtras& extras) {
        extras.has_center = false;
        extras.center_x = extras.center_y = 0;
    });
    written({key<CenterXAccess{}>, key<CenterYAccess{}>});
    return true;
}

double CDXUTControl::turn() const
{
    return std::fmod(double(rotation()), 360.0);
}

QTransform CDXUTControl::rotation_transform() const
{
    const QPointF pivot = rect().topLeft() + center();
    QTransform transform;
    transform.translate(pivot.x(), pivot.y());
    transform.rotate(turn());
    transform.translate(-pivot.x(), -pivot.y());
    return transform;
}

QPointF CDXUTControl::to_local(QPointF in_client) const
{
    return (is_rotated() ? rotation_transform().inverted().map(in_client) : in_client) - rect().topLeft();
}

bool CDXUTControl::contains(QPointF in_client) const
{
    return QRectF(QPointF(), rect().size()).contains(to_local(in_client));
}

QPolygonF CDXUTControl::outline() const
{
    const QRectF frame = rect();
    const QPolygonF corners{{frame.topLeft(), frame.topRight(), frame.bottomRight(), frame.bottomLeft()}};
    return is_rotated() ? rotation_transform().map(corners) : corners;
}

QRectF CDXUTControl::bounds() const
{
    return is_rotated() ? outline().boundingRect() : rect();
}

QPolygonF CDXUTControl::screen_outline() const
{
    if (!dialog())
        return {};
    QPolygonF corners = outline();
    for (QPointF& corner : corners)
        corner = home()->to_screen(QRectF(corner, QSizeF())).topLeft();
    return corners;
}

QRectF CDXUTControl::screen_bounds() const
{
    return dialog() ? home()->to_screen(bounds()) : QRectF();
}

void CDXUTControl::redraw() const
{
    if (!dialog())
        return;
    m_core.add_damage(home()->to_screen(drawn_bounds()));
    if (const QRectF raised = raised_area(); !raised.isEmpty())
        m_core.add_damage(home()->to_screen(raised));
}
