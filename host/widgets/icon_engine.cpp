#include "widgets/icon_engine.h"

#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace tarn {
namespace {

QColor stroke_color(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText);
}

} // namespace

SvgIconEngine::SvgIconEngine(QByteArray svg) : m_svg(std::move(svg)) {}

void SvgIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal ratio = painter->device()->devicePixelRatio();
    QPixmap drawn = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
    drawn.setDevicePixelRatio(ratio);
    painter->drawPixmap(rect.topLeft(), drawn);
}

// `size` is in device pixels.
QPixmap SvgIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State)
{
    if (size.isEmpty())
        return {};
    const QColor color = stroke_color(mode);
    const QString cache_key = QStringLiteral("tarn-svg/%1/%2/%3x%4/%5")
                                  .arg(qHash(m_svg), 0, 16)
                                  .arg(color.rgba(), 0, 16)
                                  .arg(size.width())
                                  .arg(size.height())
                                  .arg(int(mode == QIcon::Disabled));
    QPixmap drawn;
    if (QPixmapCache::find(cache_key, &drawn))
        return drawn;
    QByteArray colored = m_svg;
    QSvgRenderer renderer(colored.replace("currentColor", color.name().toLatin1()));
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    drawn = QPixmap(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    if (mode == QIcon::Disabled)
        painter.setOpacity(disabled_opacity);
    renderer.render(&painter);
    painter.end();
    QPixmapCache::insert(cache_key, drawn);
    return drawn;
}

QPixmap SvgIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal)
{
    return pixmap(size, mode, state);
}

QIconEngine* SvgIconEngine::clone() const
{
    return new SvgIconEngine(m_svg);
}

QString SvgIconEngine::key() const
{
    return QStringLiteral("tarn-svg");
}

bool SvgIconEngine::isNull()
{
    return m_svg.isEmpty();
}

} // namespace tarn
