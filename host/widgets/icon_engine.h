#pragma once

#include <QByteArray>
#include <QIconEngine>

namespace tarn {

/// Draws an SVG document at any size and device pixel ratio, with `currentColor` standing for the palette's text
/// colour at the time of drawing, so that one file serves light and dark themes.
class SvgIconEngine final : public QIconEngine {
public:
    static constexpr qreal disabled_opacity = 0.4; ///< of all pictures

    explicit SvgIconEngine(QByteArray svg);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QIconEngine* clone() const override;
    QString key() const override;
    bool isNull() override;

private:
    QByteArray m_svg;
};

} // namespace tarn
