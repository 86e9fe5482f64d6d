#include "marquee_gesture.h"

#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_scene/gui_plug_scene.h"
#include "selection_edit.h"
#include "selection_overlay.h"

#include <QSet>

namespace tarn {

void MarqueeGesture::drag(QPointF place, Qt::KeyboardModifiers modifiers)
{
    m_frame = QRectF(m_start, place).normalized();
    m_modifiers = modifiers;
    catch_controls();
    m_scene.world()->update_all_views();
}

void MarqueeGesture::catch_controls()
{
    const auto mode = m_scene.selection_mode().enclosed ? MarqueeMode::Enclosed : MarqueeMode::Touched;
    m_caught = controls_in(m_scene.gui_core(), m_frame, mode, m_home);
}

void MarqueeGesture::finish()
{
    catch_controls(); // Some may have gone since the mouse moved.
    const SelectionRecord& selection = m_scene.gui_core().selection();
    std::vector<CDXUTControl*> wanted;
    if (m_modifiers & (Qt::ControlModifier | Qt::ShiftModifier))
        wanted = selection.controls;
    if (m_modifiers.testFlag(Qt::ControlModifier)) {
        const QSet<CDXUTControl*> caught(m_caught.begin(), m_caught.end());
        std::erase_if(wanted, [&](CDXUTControl* control) { return caught.contains(control); });
    }
    for (CDXUTControl* control : m_caught)
        if (!m_modifiers.testFlag(Qt::ControlModifier) || !selection.contains(control))
            wanted.push_back(control);
    select_controls(m_scene, wanted);
}

void MarqueeGesture::paint(QPainter& painter) const
{
    std::vector<QRectF> frames;
    for (const CDXUTControl* control : m_caught)
        frames.push_back(control->screen_rect());
    paint_frames(painter, frames);
    paint_marquee(painter, m_frame);
}

} // namespace tarn
