#pragma once

#include <QFont>
#include <QPainter>

#include <cmath>
#include <vector>

class QImage;

namespace tarn {

/// Draws into pixels of the screen what is placed in the pixels of the layout, so that edges are sharp at every scale. The
/// painter's coordinates have to be the screen's.
class DevicePainter {
public:
    enum class TextSize { Usual, Small };

    /// `ratio`: pixels of the screen for one of the layout.
    DevicePainter(QPainter& painter, double ratio, const QFont& font);

    double ratio() const { return m_ratio; }
    int at(double place) const { return int(std::floor(place * m_ratio + 0.5)); }
    QRect at(const QRectF& rect) const;

    void fill(const QRectF& rect, const QBrush& brush);
    /// Rectangles in pixels of the screen.
    void fill(const std::vector<QRect>& rects, const QColor& color);
    /// A frame inside the rectangle, as wide as lines are.
    void frame(const QRectF& rect, const QColor& color);
    void vertical_line(double x, double top, double bottom, const QColor& color);
    void horizontal_line(double left, double right, double y, const QColor& color);
    /// The whole image, in pixels of the screen.
    void image(int x, int y, const QImage& image);
    /// With smooth edges, for what is not made of rectangles.
    void shape(const QPainterPath& path, const QBrush& fill, const QColor& outline = Qt::transparent, double width = 1);
    /// The line's middle is at `middle`.
    void text(double x, double middle, const QString& text, const QColor& color, TextSize size = TextSize::Usual);
    double text_width(const QString& text, TextSize size = TextSize::Usual) const;
    QString elided(const QString& text, double width, TextSize size = TextSize::Usual) const;
    void clip(const QRectF& rect);
    void unclip();

private:
    const QFont& font(TextSize size) const { return size == TextSize::Usual ? m_font : m_small_font; }

    QPainter& m_painter;
    double m_ratio;
    QTransform m_base;
    QFont m_font;
    QFont m_small_font;
};

} // namespace tarn
