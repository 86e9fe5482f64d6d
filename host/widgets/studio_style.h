#pragma once

#include <QProxyStyle>

namespace tarn {

/// Fusion, made denser, with flat headers, tabs, dock titles and scroll bars. All colours come from the palette.
class StudioStyle final : public QProxyStyle {
    Q_OBJECT

public:
    StudioStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    /// Disabled pictures fade, in both themes; Fusion's own greys hardly differ on a dark ground.
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap, const QStyleOption* option) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
};

} // namespace tarn
