#pragma once

#include "screen_placing.h"

#include <QImage>
#include <QRectF>

#include <optional>

namespace tarn {

class Overlay;

/// The size of a surface in device pixels.
QSize device_size(QSize logical, double dpr);

/// An overlay as a picture that is painted again only where it changed.
class OverlayBuffer {
public:
    /// The size of the screen that the overlay is laid out on; empty: that of the surface. The picture has the
    /// surface's size all the same.
    void set_screen(QSize screen) { m_screen = screen; }
    const QSize& screen() const { return m_screen; }
    /// Where a surface shows the screen, which is `screen` large while it is zoomed, whatever the surface's size is; none:
    /// the screen fills it.
    void set_zoom(const std::optional<ScreenPlacing>& zoom, QSize screen)
    {
        m_zoom = zoom;
        m_zoomed_screen = screen;
    }
    const std::optional<ScreenPlacing>& zoom() const { return m_zoom; }
    /// Takes over the screen and the zoom of another one.
    void follow(const OverlayBuffer& other);
    /// How a surface of that size shows the screen.
    ScreenPlacing placing(QSize logical) const;
    /// The size of the screen on such a surface.
    QSize screen_on(QSize logical) const { return !m_screen.isEmpty() ? m_screen : m_zoom ? m_zoomed_screen : logical; }

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
    QSize m_screen;
    std::optional<ScreenPlacing> m_zoom;
    QSize m_zoomed_screen;
    ScreenPlacing m_placing;          ///< in which the picture was painted
    QRectF m_damage;                  ///< pixels of the screen
    const Overlay* m_shown = nullptr; ///< only compared
};

} // namespace tarn
