#include "element_picture.h"

#include "part_painting.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr int usual_height = 132; ///< pixels
constexpr double reach = 4;       ///< pixels beside a line that still take hold of it
constexpr double margin = 6;      ///< pixels around a picture that fits
constexpr double zoom_step = 1.25;
constexpr double least_zoom = 0.25;
constexpr double most_zoom = 32;

int& width_of(QMargins& edges, int edge, int (&values)[4])
{
    values[0] = edges.left();
    values[1] = edges.top();
    values[2] = edges.right();
    values[3] = edges.bottom();
    return values[edge];
}

} // namespace

CElementPicture::CElementPicture(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CElementPicture::sizeHint() const
{
    return {0, usual_height};
}

void CElementPicture::show_picture(const QImage& picture, const QMargins& edges, bool fixed)
{
    const bool other_size = picture.size() != m_picture.size();
    m_picture = picture;
    m_edges = edges;
    m_is_fixed = fixed;
    if (other_size)
        m_was_zoomed = false;
    fit();
    update();
}

/// As large as it goes, unless the user zoomed.
void CElementPicture::fit()
{
    if (m_was_zoomed || m_picture.isNull())
        return;
    m_offset = {};
    const double wanted = std::min((width() - 2 * margin) / m_picture.width(),
                                   (height() - 2 * margin) / m_picture.height());
    m_zoom = std::clamp(wanted >= 2 ? std::floor(wanted) : wanted, least_zoom, most_zoom);
}

void CElementPicture::resizeEvent(QResizeEvent*)
{
    fit();
}

QPointF CElementPicture::corner() const
{
    const QPointF middle = QPointF(width(), height()) / 2 + m_offset;
    return middle - QPointF(m_picture.width(), m_picture.height()) * m_zoom / 2;
}

double CElementPicture::line_of(int edge) const
{
    switch (edge) {
    case 0: return corner().x() + m_edges.left() * m_zoom;
    case 1: return corner().y() + m_edges.top() * m_zoom;
    case 2: return corner().x() + (m_picture.width() - m_edges.right()) * m_zoom;
    default: return corner().y() + (m_picture.height() - m_edges.bottom()) * m_zoom;
    }
}

int CElementPicture::edge_at(QPointF place) const
{
    if (m_is_fixed || m_picture.isNull())
        return -1;
    int nearest = -1;
    double distance = reach;
    for (int edge = 0; edge < 4; ++edge) {
        const double off = std::abs((edge % 2 == 0 ? place.x() : place.y()) - line_of(edge));
        if (off > distance)
            continue;
        nearest = edge;
        distance = off;
    }
    return nearest;
}

void CElementPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    tarn::paint_contrast(painter, rect());
    if (m_picture.isNull())
        return;
    const QRectF area(corner(), QSizeF(m_picture.size()) * m_zoom);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_zoom < 1);
    painter.drawImage(area, m_picture);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(255, 255, 255, 160), 1, Qt::DotLine));
    painter.drawRect(area);
    if (m_is_fixed)
        return;
    for (int edge = 0; edge < 4; ++edge) {
        const double at = line_of(edge);
        const QLineF line = edge % 2 == 0 ? QLineF(at, 0, at, height()) : QLineF(0, at, width(), at);
        painter.setPen(QPen(QColor(0, 0, 0, 160), 3));
        painter.drawLine(line);
        painter.setPen(QPen(edge == m_edge ? palette().color(QPalette::Highlight) : QColor(255, 196, 64), 1));
        painter.drawLine(line);
    }
}

void CElementPicture::wheelEvent(QWheelEvent* event)
{
    if (m_picture.isNull())
        return;
    const double before = m_zoom;
    m_zoom = std::clamp(m_zoom * std::pow(zoom_step, event->angleDelta().y() / 120.0), least_zoom, most_zoom);
    // What is under the mouse stays there.
    const QPointF from_middle = event->position() - QPointF(width(), height()) / 2 - m_offset;
    m_offset -= from_middle * (m_zoom / before - 1);
    m_was_zoomed = true;
    update();
    event->accept();
}

void CElementPicture::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_edge = edge_at(event->position());
    if (m_edge < 0)
        m_moved_from = event->position();
    update();
}

void CElementPicture::mouseMoveEvent(QMouseEvent* event)
{
    if (m_edge >= 0)
        return drag_edge(event->position());
    if (m_moved_from) {
        m_offset += event->position() - *m_moved_from;
        m_moved_from = event->position();
        m_was_zoomed = true;
        return update();
    }
    const int edge = edge_at(event->position());
    setCursor(edge < 0 ? Qt::ArrowCursor : edge % 2 == 0 ? Qt::SplitHCursor : Qt::SplitVCursor);
}

void CElementPicture::drag_edge(QPointF place)
{
    const QPointF inside = (place - corner()) / m_zoom;
    int values[4];
    int& width = width_of(m_edges, m_edge, values);
    const bool across = m_edge % 2 == 0;
    const int room = across ? m_picture.width() : m_picture.height();
    const double from_near = across ? inside.x() : inside.y();
    const int wanted = int(std::lround(m_edge < 2 ? from_near : room - from_near));
    width = std::clamp(wanted, 0, std::max(0, room - values[(m_edge + 2) % 4]));
    const QMargins edges(values[0], values[1], values[2], values[3]);
    if (edges == m_edges)
        return;
    m_edges = edges;
    update();
    Q_EMIT edges_dragged(edges);
}

void CElementPicture::mouseReleaseEvent(QMouseEvent*)
{
    m_moved_from.reset();
    if (m_edge < 0)
        return;
    m_edge = -1;
    update();
    Q_EMIT drag_ended();
}
