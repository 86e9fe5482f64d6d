#include "snap_session.h"

#include "aids_layer.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "selection_overlay.h"

#include <QPainter>

#include <array>

namespace tarn {

namespace {

constexpr double snap_reach = 6; ///< pixels of the view
const QColor snap_color(0xff, 0x3d, 0x9a);

std::array<double, 3> places(double low, double high)
{
    return {low, (low + high) / 2, high};
}

} // namespace

SnapSession::SnapSession(const CGuiCore& core, const AidsLayer& aids, const CDXUTDialog* home, Of what)
    : m_core(core), m_aids(aids)
{
    if (!core.view_aids().snaps())
        return;
    collect(home, what);
    add_places();
}

SnapSession SnapSession::for_selection(const CGuiCore& core, const AidsLayer& aids)
{
    const SelectionRecord& selection = core.selection();
    return {core, aids, selection.controls_selected ? selection.current_dialog : nullptr, Of::Selection};
}

void SnapSession::collect(const CDXUTDialog* home, Of what)
{
    const auto counts = [&, &selection = m_core.selection()](const auto* object) {
        return object->GetVisible() && !(what == Of::Selection && selection.contains(object));
    };
    if (!home) {
        m_home = QRectF(QPointF(), m_core.screen_size());
        for (const CDXUTDialog* dialog : m_core.GetDialogs())
            if (counts(dialog))
                m_others.push_back(dialog->outer_rect());
        return;
    }
    m_home = home->client_rect();
    m_unit = {home->scale_x(), home->scale_y()};
    for (const CDXUTControl* control : home->controls()) {
        if (counts(control))
            m_others.push_back(control->screen_bounds());
    }
}

void SnapSession::add_places()
{
    const auto add = [this](const QRectF& rect) {
        m_x.add_object(rect.left(), rect.right(), rect.top(), rect.bottom());
        m_y.add_object(rect.top(), rect.bottom(), rect.left(), rect.right());
    };
    for (const QRectF& other : m_others)
        add(other);
    add(m_home);
    if (m_aids.shows_guides()) {
        for (const quint32 guide : m_core.guides(Qt::Vertical))
            m_x.add_guide(guide);
        for (const quint32 guide : m_core.guides(Qt::Horizontal))
            m_y.add_guide(guide);
    }
    m_x.set_grid(m_home.left(), m_aids.grid().step * m_unit.x());
    m_y.set_grid(m_home.top(), m_aids.grid().step * m_unit.y());
    m_x.prepare();
    m_y.prepare();
}

QPointF SnapSession::pull(std::span<const double> x, std::span<const double> y, Qt::KeyboardModifiers modifiers)
{
    m_active = m_core.view_aids().snaps() && !modifiers.testFlag(Qt::ControlModifier);
    if (!m_active)
        return {};
    const double reach = snap_reach * m_aids.pixel();
    const auto hit_x = m_x.nearest(x, reach);
    const auto hit_y = m_y.nearest(y, reach);
    return {hit_x ? hit_x->offset : 0, hit_y ? hit_y->offset : 0};
}

QPointF SnapSession::pull_frame(const QRectF& frame, Qt::KeyboardModifiers modifiers)
{
    return pull(places(frame.left(), frame.right()), places(frame.top(), frame.bottom()), modifiers);
}

QPointF SnapSession::pull_point(QPointF point, Qt::KeyboardModifiers modifiers)
{
    return pull(std::array{point.x()}, std::array{point.y()}, modifiers);
}

void SnapSession::paint_alignments(QPainter& painter, const QRectF& frame) const
{
    for (const double x : places(frame.left(), frame.right()))
        if (const auto line = m_x.alignment(x, frame.top(), frame.bottom()))
            painter.drawLine(QLineF(x, line->low, x, line->high));
    for (const double y : places(frame.top(), frame.bottom()))
        if (const auto line = m_y.alignment(y, frame.left(), frame.right()))
            painter.drawLine(QLineF(line->low, y, line->high, y));
}

void SnapSession::paint(QPainter& painter, const QRectF& frame) const
{
    if (!m_active)
        return;
    painter.setPen(line_pen(painter, snap_color));
    paint_alignments(painter, frame);
    for (const QLineF& way : free_ways(frame, m_others, m_home)) {
        const double unit = way.dy() == 0 ? m_unit.x() : m_unit.y();
        paint_way(painter, way, snap_color, QString::number(qRound(way.length() / unit)));
    }
}

} // namespace tarn
