#include "create_tool.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_input.h"
#include "gui_plug_scene.h"
#include "selection_overlay.h"

#include <QPainter>

#include <cmath>

namespace tarn {

namespace {

constexpr double click_reach = 4; ///< pixels; a shorter drag counts as a click
constexpr double smallest = 8;    ///< pixels; side of the smallest object that is drawn
constexpr QSizeF dialog_size(260, 180);

QPointF whole(QPointF place)
{
    return {std::floor(place.x()), std::floor(place.y())};
}

} // namespace

QRectF CreateTool::frame() const
{
    return QRectF(*m_start, m_end).normalized();
}

bool CreateTool::mouse(const MouseEvent& event)
{
    if (event.kind == MouseEvent::Kind::Press && event.button == Qt::LeftButton) {
        m_start = m_end = whole(event.place);
        return true;
    }
    if (!m_start)
        return false;
    m_end = whole(event.place);
    if (event.kind == MouseEvent::Kind::Release) {
        QRectF drawn = frame();
        if (drawn.width() < click_reach && drawn.height() < click_reach)
            drawn.setSize(m_type == dialog ? dialog_size : QSizeF(control_class(m_type)->default_size));
        m_start.reset();
        create(QRectF(drawn.topLeft(), drawn.size().expandedTo(QSizeF(smallest, smallest))));
        return true;
    }
    m_scene.world()->update_all_views();
    return true;
}

void CreateTool::create(const QRectF& frame)
{
    CGuiCore& core = m_scene.gui_core();
    CBaseWorld* world = m_scene.world();
    {
        const UserAction action(core.journal(),
                                m_type == dialog ? lang(u"创建窗口", u"Create Dialog")
                                                 : lang(u"创建控件", u"Create Control"));
        if (m_type == dialog) {
            // The frame that was drawn is the whole dialog: the caption bar is part of it.
            CDXUTDialog* made = core.create_dialog(frame.toRect());
            const int caption = qRound(made->caption_rect().height());
            made->SetSize(qRound(frame.width()), std::max(int(smallest), qRound(frame.height()) - caption));
            core.SelectDialog(made, false);
        } else {
            CDXUTDialog* home = GuiInput::dialog_at(core, frame.topLeft());
            if (!home)
                home = core.GetRootDialog();
            const QRectF inside(home->to_client(frame.topLeft()), home->to_client(frame.bottomRight()));
            if (CDXUTControl* made = core.create_control(m_type, home, inside))
                core.SelectControl(made, false);
        }
    }
    m_scene.SetMTFunction(0, 0); // Destroys this tool.
    world->broadcast(ui_scene_changed);
    world->update_all_views();
}

bool CreateTool::key(int key, Qt::KeyboardModifiers)
{
    if (key != Qt::Key_Escape)
        return false;
    CBaseWorld* world = m_scene.world();
    if (m_start) {
        m_start.reset();
    } else {
        m_scene.SetMTFunction(0, 0);
        world->broadcast(ui_control_selected); // The pages release the button that armed the tool.
    }
    world->update_all_views();
    return true;
}

void CreateTool::paint(QPainter& painter)
{
    if (m_start)
        paint_rubber_frame(painter, frame());
}

} // namespace tarn
