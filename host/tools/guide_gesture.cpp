#include "guide_gesture.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"
#include "selection_overlay.h"

#include <algorithm>
#include <cmath>

namespace tarn {

GuideGesture::~GuideGesture()
{
    m_aids.set_dragged({});
}

void GuideGesture::begin()
{
    m_aids.set_dragged(m_guide);
}

void GuideGesture::drag(QPointF place, Qt::KeyboardModifiers)
{
    m_mouse = place;
    m_wanted.reset();
    if (!m_aids.drops_guide(m_guide.lines, place))
        m_wanted = quint32(std::floor(m_guide.lines == Qt::Vertical ? place.x() : place.y()));
    m_scene.world()->update_all_views();
}

QString GuideGesture::step_name() const
{
    if (!m_guide.place)
        return lang(u"添加辅助线", u"Add Guide");
    return m_wanted ? lang(u"移动辅助线", u"Move Guide") : lang(u"删除辅助线", u"Remove Guide");
}

void GuideGesture::finish()
{
    const UserAction action(m_scene.journal(), step_name());
    m_scene.gui_core().move_guide(m_guide.lines, m_guide.place, m_wanted);
}

void GuideGesture::cancel()
{
    m_scene.world()->update_all_views();
}

void GuideGesture::paint(QPainter& painter) const
{
    if (!m_wanted) {
        if (m_guide.place)
            paint_label(painter, {m_mouse, QSizeF()}, lang(u"删除", u"Remove"));
        return;
    }
    paint_guide(painter, m_guide.lines, *m_wanted);
    const bool vertical = m_guide.lines == Qt::Vertical;
    const RulerScale scale = vertical ? m_aids.x_scale() : m_aids.y_scale();
    paint_label(painter, {m_mouse, QSizeF()},
                QStringLiteral("%1 %2")
                    .arg(vertical ? QLatin1Char('X') : QLatin1Char('Y'))
                    .arg(qRound(scale.number_at(*m_wanted))));
}

} // namespace tarn
