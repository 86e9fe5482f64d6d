#include "merged_outlines.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tarn {

namespace {

/// A stretch of a row or a column of pixels.
struct Stretch {
    int line;
    int from;
    int to; ///< behind the last pixel
};

int held(double place, int low, int high)
{
    return int(std::clamp(std::round(place), double(low), double(high)));
}

/// The sides of frames as stretches inside `window`, all in device pixels.
class Sides {
public:
    Sides(const QRect& window, int width) : m_window(window), m_width(width) {}

    void add(const QRectF& frame)
    {
        // Held a little outside the window, where nothing is drawn.
        const int left = held(frame.left(), m_window.left(), m_window.right() + 1 + m_width);
        const int right = held(frame.right(), m_window.left() - m_width, m_window.right() + 1);
        const int top = held(frame.top(), m_window.top(), m_window.bottom() + 1 + m_width);
        const int bottom = held(frame.bottom(), m_window.top() - m_width, m_window.bottom() + 1);
        rows.push_back({top - m_width, left - m_width, right + m_width});
        rows.push_back({bottom, left - m_width, right + m_width});
        columns.push_back({left - m_width, top, bottom});
        columns.push_back({right, top, bottom});
    }

    std::vector<Stretch> rows;
    std::vector<Stretch> columns;

private:
    QRect m_window;
    int m_width;
};

void merge(std::vector<Stretch>& stretches)
{
    std::sort(stretches.begin(), stretches.end(),
              [](const Stretch& a, const Stretch& b) { return std::tie(a.line, a.from) < std::tie(b.line, b.from); });
    std::size_t last = 0;
    for (std::size_t i = 1; i < stretches.size(); ++i) {
        const Stretch& next = stretches[i];
        if (stretches[last].line == next.line && next.from <= stretches[last].to)
            stretches[last].to = std::max(stretches[last].to, next.to);
        else
            stretches[++last] = next;
    }
    if (!stretches.empty())
        stretches.resize(last + 1);
}

} // namespace

void draw_merged_outlines(QPainter& painter, const std::vector<QRectF>& frames, const QColor& color)
{
    const double ratio = painter.device()->devicePixelRatio();
    const QTransform to_pixels = painter.worldTransform() * QTransform::fromScale(ratio, ratio);
    const int width = std::max(1, qRound(ratio));
    const QRect window(painter.window().topLeft() * ratio, painter.window().size() * ratio);
    Sides sides(window, width);
    sides.rows.reserve(frames.size() * 2);
    sides.columns.reserve(frames.size() * 2);
    for (const QRectF& frame : frames)
        sides.add(to_pixels.mapRect(frame));
    merge(sides.rows);
    merge(sides.columns);
    painter.save();
    painter.resetTransform();
    painter.scale(1 / ratio, 1 / ratio);
    for (const Stretch& row : sides.rows)
        painter.fillRect(row.from, row.line, row.to - row.from, width, color);
    for (const Stretch& column : sides.columns)
        painter.fillRect(column.line, column.from, width, column.to - column.from, color);
    painter.restore();
}

} // namespace tarn
