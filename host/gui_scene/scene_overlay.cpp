#include "scene_overlay.h"

#include "gui_core/gui_core.h"
#include "scene_in_world.h"
#include "scene_movies.h"

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
    m_in_world.update();
    m_movies.update();
    const QRectF damage = m_core.take_damage();
    m_in_world.damaged(damage);
    return damage;
}

} // namespace tarn
