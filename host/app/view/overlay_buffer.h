#pragma once

#include <QImage>
#include <QRectF>

namespace tarn {

class Overlay;

/// The size of a surface in device pixels.
QSize device_size(QSize logical, double dpr);

/// An overlay as a picture that is painted again only where it changed.
class OverlayBuffer {
public:
    /// Brings the picture up to date and answers the device pixels that changed. Null as overlay: an empty picture.
    QRect update(Overlay* overlay, QSize logical, double dpr);
    /// Paints the whole picture and leaves the overlay's damage to the views.
    void paint_all(Overlay* overlay, QSize logical, double dpr);
    /// Whether the overlay changed since update(). The damage is kept for it.
    bool has_damage(Overlay* overlay);

    /// Device pixels, premultiplied.
    const QImage& image() const { return m_image; }

private:
    void resize(QSize logical, double dpr);
    void paint(Overlay& overlay, const QRect& pixels);

    QImage m_image;
    QRectF m_damage;                  ///< logical pixels
    const Overlay* m_shown = nullptr; ///< only compared
};

} // namespace tarn
