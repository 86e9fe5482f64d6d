#pragma once

#include "overlay_buffer.h"
#include "render/ground_look.h"

#include <QImage>
#include <QWidget>

#include <initializer_list>

class CBaseWorld;

namespace tarn {

/// The world's picture, drawn again only when it changed: with models where they can be drawn, otherwise the ground.
class WorldPicture {
public:
    const QImage& image(CBaseWorld& world, QSize pixels, double dpr);

private:
    GroundLook m_look;
    bool m_with_models = false;
    QImage m_image;
};

/// Paints what lies over the ground, the lowest layer first, and then the mouse tool. The painter's logical pixels are
/// those of the view, `scale` of which show one of the screen.
void paint_over(QPainter& painter, std::initializer_list<QImage> layers, CBaseWorld& world, double scale);

/// What a view shows where there is no OpenGL.
class PlainSurface : public QWidget {
public:
    PlainSurface(CBaseWorld& world, OverlayBuffer& overlay, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CBaseWorld& m_world;
    OverlayBuffer m_objects;
    OverlayBuffer& m_overlay;
    WorldPicture m_picture;
};

} // namespace tarn
