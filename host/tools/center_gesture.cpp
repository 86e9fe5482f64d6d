#include "center_gesture.h"

#include "animation/animation_scene.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "selection_overlay.h"

#include <QPainter>

#include <cmath>

namespace tarn {

namespace {

constexpr double arm = 9;   ///< pixels of the view from the middle of the cross to its ends
constexpr double reach = 7; ///< pixels of the view
const QColor center_color(0xff, 0xb0, 0x3a);

QPointF on_screen(const CDXUTControl& control)
{
    return control.dialog()->to_screen({control.rect().topLeft() + control.center(), QSizeF()}).topLeft();
}

void paint_cross(QPainter& painter, QPointF place)
{
    const double pixel = view_pixel(painter);
    const double length = arm * pixel;
    painter.setBrush(Qt::NoBrush);
    for (const QPen& pen : {QPen(QColor(0, 0, 0, 150), 4 * pixel), QPen(center_color, 2 * pixel)}) {
        painter.setPen(pen);
        painter.drawEllipse(place, length * 0.55, length * 0.55);
        painter.drawLine(place - QPointF(length, 0), place + QPointF(length, 0));
        painter.drawLine(place - QPointF(0, length), place + QPointF(0, length));
    }
}

} // namespace

CDXUTControl* control_with_center(const CGuiPlugScene& scene)
{
    auto* control = scene.document().find_as<CDXUTControl>(scene.animation().edited_center().id);
    return control && control->is_attached() && control->dialog() ? control : nullptr;
}

bool hits_center(const CDXUTControl& control, QPointF place, double pixel)
{
    const QPointF way = place - on_screen(control);
    return std::hypot(way.x(), way.y()) <= reach * pixel;
}

void paint_center(QPainter& painter, const CDXUTControl& control)
{
    paint_cross(painter, on_screen(control));
}

CenterGesture::CenterGesture(CGuiPlugScene& scene, const CDXUTControl& control)
    : m_scene(scene), m_control(control.id()), m_place(on_screen(control))
{
}

void CenterGesture::drag(QPointF place, Qt::KeyboardModifiers)
{
    m_place = place;
    m_scene.world()->update_all_views();
}

void CenterGesture::finish()
{
    CDXUTControl* control = control_with_center(m_scene);
    if (!control || control->id() != m_control)
        return;
    const UserAction action(m_scene.journal(), lang(u"移动旋转中心", u"Move Rotation Center"));
    if (control->set_center(control->to_local(control->dialog()->to_client(m_place))))
        m_scene.world()->broadcast(ui_control_properties);
    m_scene.world()->update_all_views();
}

void CenterGesture::cancel()
{
    m_scene.world()->update_all_views();
}

void CenterGesture::paint(QPainter& painter) const
{
    paint_cross(painter, m_place);
}

} // namespace tarn
