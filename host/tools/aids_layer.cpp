#include "aids_layer.h"

#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "selection_overlay.h"

#include <QPainter>

#include <cmath>

namespace tarn {

namespace {

constexpr double guide_reach = 4; ///< pixels of the view
const QColor guide_color(0x8a, 0x6c, 0xff);
const QColor grid_color(0xff, 0xff, 0xff, 46);
constexpr double least_grid_gap = 6; ///< pixels of the view; denser lines are left out, every second one first

/// The dialog whose corner is counted from; null for the screen's.
const CDXUTDialog* counted_dialog(const CGuiCore& core)
{
    return core.view_aids().counts_from_dialog() ? core.selection().current_dialog : nullptr;
}

double across(Qt::Orientation lines, QPointF place)
{
    return lines == Qt::Vertical ? place.x() : place.y();
}

} // namespace

void paint_guide(QPainter& painter, Qt::Orientation lines, double place)
{
    // Both ends lie out of every view.
    constexpr double far = 1e5;
    painter.setPen(line_pen(painter, guide_color));
    const double middle = place + 0.5;
    painter.drawLine(lines == Qt::Vertical ? QLineF(middle, 0, middle, far) : QLineF(0, middle, far, middle));
}

void AidsLayer::follow(const MouseEvent& event)
{
    m_mouse = event.place;
    m_pixel = 1 / event.scale;
    m_corner = event.corner;
}

bool AidsLayer::shows_rulers() const
{
    return m_core.view_aids().ruler && m_core.selection().editing;
}

bool AidsLayer::shows_guides() const
{
    return m_core.view_aids().shows_guides() && m_core.selection().editing;
}

RulerScale AidsLayer::x_scale() const
{
    const CDXUTDialog* dialog = counted_dialog(m_core);
    return dialog ? RulerScale{dialog->client_rect().x(), dialog->scale_x()} : RulerScale();
}

RulerScale AidsLayer::y_scale() const
{
    const CDXUTDialog* dialog = counted_dialog(m_core);
    return dialog ? RulerScale{dialog->client_rect().y(), dialog->scale_y()} : RulerScale();
}

QString AidsLayer::place_text(QPointF on_screen) const
{
    return QStringLiteral("X %1  Y %2")
        .arg(qRound(x_scale().number_at(on_screen.x())))
        .arg(qRound(y_scale().number_at(on_screen.y())));
}

/// Whether `place` is on the ruler that lines of that direction come out of.
bool AidsLayer::on_strip(Qt::Orientation lines, QPointF place) const
{
    return across(lines, place - m_corner) < RulerPainter::thickness * m_pixel;
}

bool AidsLayer::on_ruler(QPointF place) const
{
    return shows_rulers() && (on_strip(Qt::Vertical, place) || on_strip(Qt::Horizontal, place));
}

std::optional<Guide> AidsLayer::guide_from_ruler(QPointF place) const
{
    const bool corner = on_strip(Qt::Vertical, place) && on_strip(Qt::Horizontal, place);
    if (!shows_guides() || !on_ruler(place) || corner)
        return {};
    return Guide{on_strip(Qt::Horizontal, place) ? Qt::Horizontal : Qt::Vertical, {}};
}

bool AidsLayer::drops_guide(Qt::Orientation lines, QPointF place) const
{
    const bool inside = QRectF(QPointF(), m_core.screen_size()).contains(place);
    return !inside || (shows_rulers() && on_strip(lines, place));
}

std::optional<Guide> AidsLayer::guide_at(QPointF place) const
{
    if (!shows_guides() || on_ruler(place))
        return {};
    std::optional<Guide> nearest;
    double least = guide_reach * m_pixel;
    for (const Qt::Orientation lines : {Qt::Vertical, Qt::Horizontal}) {
        for (const quint32 guide : m_core.guides(lines)) {
            const double distance = std::abs(across(lines, place) - (guide + 0.5));
            if (distance > least)
                continue;
            least = distance;
            nearest = Guide{lines, guide};
        }
    }
    return nearest;
}

void AidsLayer::paint_guides(QPainter& painter) const
{
    if (!shows_guides())
        return;
    const QSize screen = m_core.screen_size();
    for (const Qt::Orientation lines : {Qt::Vertical, Qt::Horizontal}) {
        const auto end = quint32(lines == Qt::Vertical ? screen.width() : screen.height());
        for (const quint32 guide : m_core.guides(lines))
            if (guide < end && !(m_dragged && m_dragged->lines == lines && m_dragged->place == guide))
                paint_guide(painter, lines, guide);
    }
}

/// The one that what is selected would snap to: its dialog's or, of dialogs, the screen's.
void AidsLayer::paint_grid(QPainter& painter) const
{
    const SelectionRecord& selection = m_core.selection();
    if (!m_grid.shown || !selection.editing)
        return;
    const CDXUTDialog* home = selection.controls_selected ? selection.current_dialog : nullptr;
    const QRectF area = home ? home->client_rect() : QRectF(QPointF(), m_core.screen_size());
    const QRectF shown = area & shown_area(painter);
    std::vector<QLineF> lines;
    const auto add = [&](double origin, double unit, double low, double high, auto line) {
        double step = m_grid.step * unit;
        while (step / view_pixel(painter) < least_grid_gap)
            step *= 2;
        for (double place = origin + std::ceil((low - origin) / step) * step; place <= high; place += step)
            lines.push_back(line(place));
    };
    add(area.left(), home ? home->scale_x() : 1, shown.left(), shown.right(),
        [&](double x) { return QLineF(x, shown.top(), x, shown.bottom()); });
    add(area.top(), home ? home->scale_y() : 1, shown.top(), shown.bottom(),
        [&](double y) { return QLineF(shown.left(), y, shown.right(), y); });
    painter.setPen(line_pen(painter, grid_color));
    painter.drawLines(lines.data(), int(lines.size()));
}

void AidsLayer::paint_rulers(QPainter& painter)
{
    if (!shows_rulers())
        return;
    m_rulers.paint(painter, {shown_area(painter), x_scale(), y_scale(), selected_frame(m_core), m_mouse});
}

} // namespace tarn
