// The view's zoom and pan of the interface's screen.

#include "view3d.h"
#include "view_marks.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double steps_that_double = 2; ///< of the menu's commands
constexpr double near_whole = 0.02;     ///< share by which a zoom may miss 100 % and still means it
constexpr double area_margin = 1.25;    ///< what is shown of the view around an area, times its size

/// Where `length` pixels of the screen have their middle when they fill a view of `room`, the middle of which is wanted at
/// `wanted`: no empty edge is shown where there is enough to show.
double held_centre(double wanted, double length, double room)
{
    return length <= room ? length / 2 : std::clamp(wanted, room / 2, length - room / 2);
}

} // namespace

QRect CView3D::room_rect() const
{
    const QSize free = (size() - room()).expandedTo({0, 0});
    return {QPoint(free.width() / 2, free.height() / 2), room()};
}

/// The place of the screen that is shown in the middle while only a part of it is shown.
QPointF CView3D::shown_centre() const
{
    const QSizeF screen = screen_size();
    const QSizeF seen = QSizeF(room()) / *m_zoom;
    return {held_centre(m_centre.x(), screen.width(), seen.width()),
            held_centre(m_centre.y(), screen.height(), seen.height())};
}

/// Where the whole screen lies in the widget, or would while only a part of it is shown.
QRect CView3D::whole_rect() const
{
    if (!is_zoomed()) {
        const QSize free = (size() - fit_size()).expandedTo({0, 0});
        return {QPoint(free.width() / 2, free.height() / 2), fit_size()};
    }
    const QPointF corner = QRectF(room_rect()).center() - shown_centre() * *m_zoom;
    return {QPoint(qRound(corner.x()), qRound(corner.y())),
            (QSizeF(screen_size()) * *m_zoom).toSize().expandedTo({1, 1})};
}

void CView3D::zoom_to(double scale, QPointF about)
{
    if (m_is_preview || !(scale > 0))
        return;
    const QPointF aside = about - QRectF(room_rect()).center();
    // Not from where pictures lie, which is rounded to pixels: many small steps would drift.
    const QPointF fixed = is_zoomed() ? shown_centre() + aside / *m_zoom : to_screen(about);
    double wanted = std::clamp(scale, least_zoom, largest_zoom);
    if (std::abs(wanted - 1) < near_whole)
        wanted = 1;
    const double fit = double(fit_size().width()) / std::max(1, screen_size().width());
    m_zoom = wanted == fit ? std::nullopt : std::optional(wanted);
    m_centre = fixed - aside / wanted;
    place_surface();
}

void CView3D::zoom_by(double steps)
{
    zoom_to(zoom() * std::exp2(steps / steps_that_double), QRectF(room_rect()).center());
}

void CView3D::zoom_to_fit()
{
    m_zoom.reset();
    place_surface();
}

void CView3D::zoom_to_area(const QRectF& on_screen)
{
    if (on_screen.isEmpty() || m_is_preview)
        return;
    const QSizeF wanted = on_screen.size() * area_margin;
    m_zoom = std::clamp(std::min(room().width() / wanted.width(), room().height() / wanted.height()), least_zoom,
                        largest_zoom);
    m_centre = on_screen.center();
    place_surface();
}

void CView3D::pan_screen(QPointF way)
{
    // From what is shown, so that beyond an edge nothing is saved up, but not from where pictures lie: parts of a pixel count.
    m_centre = shown_centre() - way / *m_zoom;
    place_surface();
}

void CView3D::set_preview(bool on)
{
    if (on == m_is_preview)
        return;
    m_is_preview = on;
    if (on)
        m_authors_zoom = std::exchange(m_zoom, std::nullopt);
    else
        m_zoom = m_authors_zoom;
    place_surface();
}

void CView3D::mark()
{
    if (m_editor) // Players are told nothing.
        m_marks->show(whole_rect() & room_rect(), zoom(), screen_size(), m_is_preview);
}
