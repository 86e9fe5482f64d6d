#include "type_icons.h"

#include "animation/animation_target.h"

namespace tarn {

namespace {

QPainterPath script_icon()
{
    QPainterPath path(QPointF(4.5, 1.5));
    for (const double side : {1., -1.}) { // a pair of braces
        const auto x = [side](double distance) { return 6 - side * distance; };
        path.moveTo(x(1.5), 1.5);
        path.cubicTo(x(4), 1.5, x(2), 6, x(5), 6);
        path.cubicTo(x(2), 6, x(4), 10.5, x(1.5), 10.5);
    }
    return path;
}

QPainterPath control_icon()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(0.5, 3.5, 11, 5.5), 2, 2);
    path.moveTo(3.5, 6.25);
    path.lineTo(8.5, 6.25);
    return path;
}

QPainterPath dialog_icon()
{
    QPainterPath path;
    path.addRect(QRectF(0.5, 1.5, 11, 9));
    path.moveTo(0.5, 4);
    path.lineTo(11.5, 4);
    path.moveTo(8.5, 2.75);
    path.lineTo(10, 2.75);
    return path;
}

QPainterPath camera_icon()
{
    QPainterPath path;
    path.addRect(QRectF(0.5, 3.5, 7.5, 6));
    path.moveTo(8, 6);
    path.lineTo(11.5, 4);
    path.lineTo(11.5, 9);
    path.lineTo(8, 7);
    return path;
}

QPainterPath panel_icon()
{
    QPainterPath path(QPointF(1, 3.5));
    path.lineTo(11, 1);
    path.lineTo(11, 9);
    path.lineTo(1, 11.5);
    path.closeSubpath();
    return path;
}

QPainterPath bone_icon()
{
    QPainterPath path;
    path.addEllipse(QPointF(2.5, 9.5), 1.8, 1.8);
    path.addEllipse(QPointF(9.5, 2.5), 1.8, 1.8);
    path.moveTo(3.8, 8.2);
    path.lineTo(8.2, 3.8);
    return path;
}

QPainterPath cube_icon()
{
    QPainterPath path(QPointF(6, 0.8));
    path.lineTo(11, 3.4);
    path.lineTo(11, 8.8);
    path.lineTo(6, 11.4);
    path.lineTo(1, 8.8);
    path.lineTo(1, 3.4);
    path.closeSubpath();
    path.moveTo(1, 3.4);
    path.lineTo(6, 6);
    path.lineTo(11, 3.4);
    path.moveTo(6, 6);
    path.lineTo(6, 11.4);
    return path;
}

} // namespace

QPainterPath type_icon(TimerObjectType type)
{
    switch (type) {
    case TimerObjectType::Script: return script_icon();
    case TimerObjectType::Control: return control_icon();
    case TimerObjectType::Dialog: return dialog_icon();
    case TimerObjectType::Camera: return camera_icon();
    case TimerObjectType::Panel: return panel_icon();
    case TimerObjectType::Skeleton: return bone_icon();
    case TimerObjectType::Model:
    case TimerObjectType::AniModel: break;
    }
    return cube_icon();
}

} // namespace tarn
