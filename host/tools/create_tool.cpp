#include "create_tool.h"

#include "aids_layer.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_input.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/scene_tools.h"
#include "selection_overlay.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr double click_reach = 4; ///< pixels of the view; a shorter drag counts as a click
constexpr double smallest = 8;    ///< pixels; side of the smallest object that is drawn
constexpr double beside = 10;     ///< pixels, right and down, from what stands where something is to be made
constexpr QSizeF dialog_size(260, 180);

QPointF whole(QPointF place)
{
    return {std::floor(place.x()), std::floor(place.y())};
}

} // namespace

QRectF CreateTool::frame() const
{
    QPointF way = m_end - *m_start;
    if (m_modifiers.testFlag(Qt::ShiftModifier)) {
        const double side = std::max(std::abs(way.x()), std::abs(way.y()));
        way = {std::copysign(side, way.x()), std::copysign(side, way.y())};
    }
    const QPointF first = m_modifiers.testFlag(Qt::AltModifier) ? *m_start - way : *m_start;
    return QRectF(first, *m_start + way).normalized();
}

/// The dialog into which a control goes: the one in which the drawing began.
CDXUTDialog* CreateTool::home() const
{
    CGuiCore& core = m_scene.gui_core();
    CDXUTDialog* below = GuiInput::dialog_at(core, *m_press);
    return below ? below : core.GetRootDialog();
}

/// Where the mouse is, or what is near. A square has no choice of its second corner.
QPointF CreateTool::snapped(const MouseEvent& event)
{
    const QPointF place = whole(event.place);
    return event.modifiers.testFlag(Qt::ShiftModifier) ? place
                                                       : whole(place + m_snap->pull_point(place, event.modifiers));
}

void CreateTool::begin(const MouseEvent& event)
{
    m_press = whole(event.place);
    m_snap.emplace(m_scene.gui_core(), m_aids, m_type == SceneTools::new_dialog ? nullptr : home(),
                   SnapSession::Of::NewObject);
    m_start = m_end = snapped(event);
    m_modifiers = event.modifiers;
}

bool CreateTool::mouse(const MouseEvent& event)
{
    m_aids.follow(event);
    if (event.kind == MouseEvent::Kind::Press && event.button == Qt::LeftButton) {
        begin(event);
        return true;
    }
    if (!m_start)
        return m_aids.shows_rulers();
    m_end = snapped(event);
    m_modifiers = event.modifiers;
    if (event.kind == MouseEvent::Kind::Release) {
        QRectF drawn = frame();
        const double reach = click_reach * m_aids.pixel();
        if (drawn.width() < reach && drawn.height() < reach)
            drawn.setSize(usual_size());
        create(QRectF(drawn.topLeft(), drawn.size().expandedTo(QSizeF(smallest, smallest))),
               home()); // Destroys this tool.
        return true;
    }
    m_scene.world()->update_all_views();
    return true;
}

QSizeF CreateTool::usual_size() const
{
    return m_type == SceneTools::new_dialog ? dialog_size : QSizeF(control_class(m_type)->default_size);
}

/// In the middle of the current dialog, or of the screen, beside what was put there before.
void CreateTool::create_usual()
{
    const CGuiCore& core = m_scene.gui_core();
    const bool of_dialog = m_type == SceneTools::new_dialog;
    CDXUTDialog* current = core.selection().current_dialog;
    CDXUTDialog* owner = !of_dialog && current && current->is_seen() ? current : core.GetRootDialog();
    QRectF frame(QPointF(), usual_size());
    frame.moveCenter(owner->client_rect().center());
    frame.moveTopLeft(whole(frame.topLeft()));
    const auto taken = [&](QPointF corner) {
        return of_dialog
            ? std::any_of(core.GetDialogs().begin(), core.GetDialogs().end(),
                          [&](const CDXUTDialog* dialog) { return dialog->outer_rect().topLeft() == corner; })
            : std::any_of(owner->controls().begin(), owner->controls().end(), [&](const CDXUTControl* control) {
                  return whole(control->screen_bounds().topLeft()) == corner;
              });
    };
    while (taken(frame.topLeft()))
        frame.translate(beside, beside);
    create(frame, owner); // Destroys this tool.
}

void CreateTool::create(const QRectF& drawn, CDXUTDialog* owner)
{
    CGuiCore& core = m_scene.gui_core();
    CBaseWorld* world = m_scene.world();
    {
        const UserAction action(core.journal(),
                                m_type == SceneTools::new_dialog ? lang(u"创建窗口", u"Create Dialog")
                                                                 : lang(u"创建控件", u"Create Control"));
        if (m_type == SceneTools::new_dialog) {
            // The frame that was drawn is the whole dialog: the caption bar is part of it.
            if (CDXUTDialog* made = core.create_dialog(drawn.toRect())) {
                const int caption = qRound(made->caption_rect().height());
                made->SetSize(qRound(drawn.width()), std::max(int(smallest), qRound(drawn.height()) - caption));
                core.SelectDialog(made, false);
            }
        } else {
            const QRectF inside(owner->to_client(drawn.topLeft()), owner->to_client(drawn.bottomRight()));
            if (CDXUTControl* made = core.create_control(m_type, owner, inside))
                core.SelectControl(made, false);
        }
    }
    m_scene.SetMTFunction(0, 0); // Destroys this tool.
    world->broadcast(ui_scene_changed);
    world->update_all_views();
}

bool CreateTool::key(int key, Qt::KeyboardModifiers)
{
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !m_start) {
        create_usual();
        return true;
    }
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
    m_aids.paint_grid(painter);
    m_aids.paint_guides(painter);
    if (m_start)
        paint_drawing(painter);
    m_aids.paint_rulers(painter);
}

void CreateTool::paint_drawing(QPainter& painter) const
{
    if (m_type != SceneTools::new_dialog && !home()->is_root())
        paint_frames(painter, {home()->client_rect()});
    m_snap->paint(painter, frame());
    QString title = m_type == SceneTools::new_dialog ? lang(u"窗口", u"Dialog") : GetControlTypeName(m_type);
    if (m_aids.shows_rulers())
        title += QStringLiteral("  ") + m_aids.place_text(frame().topLeft());
    paint_rubber_frame(painter, frame(), title);
}

} // namespace tarn
