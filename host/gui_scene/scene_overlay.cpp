#include "scene_overlay.h"

#include "gui_core/gui_core.h"

namespace tarn {

void SceneOverlay::set_screen_size(QSize size)
{
    m_core.set_screen_size(size);
}

void SceneOverlay::paint(QPainter& painter, const QRectF& clip, double scale)
{
    m_painter.paint(painter, m_core, clip, scale);
}

QRectF SceneOverlay::take_damage()
{
    return m_core.take_damage();
}

} // namespace tarn
