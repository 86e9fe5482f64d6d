#pragma once

#include <QAbstractButton>
#include <QColor>

/// A field that shows a colour with alpha, over a checkerboard where it is not opaque, and can be clicked like a button.
class CColorSwatch : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(QColor color READ color)

public:
    explicit CColorSwatch(QWidget* parent = nullptr);

    /// The colour as 0xAARRGGBB; opaque black at first.
    void set_color(quint32 argb);
    quint32 argb() const { return m_argb; }
    QColor color() const { return QColor::fromRgba(m_argb); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    quint32 m_argb = 0xff000000;
};
