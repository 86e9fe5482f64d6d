#include "motion_path.h"

#include "animation/animation_program.h"
#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "engine/base_world.h"
#include "engine/scene_selection.h"
#include "engine/view_projection.h"
#include "gui_scene/gui_plug_scene.h"
#include "selection_overlay.h"
#include "world/world_object.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int pieces_of_span = 16; ///< between two keys
constexpr int most_pieces = 512;
constexpr qsizetype most_marks = 200; ///< more of them would hide the way
constexpr double key_side = 5;        ///< pixels of the view
const QColor way_color(0xe0, 0x6f, 0xd0);

QVector3D place_of(const Pose& pose)
{
    return {pose.number(Channel::Position, 0), pose.number(Channel::Position, 1), pose.number(Channel::Position, 2)};
}

/// The keys that move the object; null when it stays where it is.
const KeyTrack* moving_keys(const CTimerObject& object)
{
    const Channel channel = object.path_object() ? Channel::PathShare : Channel::Position;
    const CTVar* variable = object.is_on(channel) ? object.channel_variable(channel) : nullptr;
    return variable && variable->keys().size() > 1 ? &variable->keys() : nullptr;
}

void paint_way(QPainter& painter, const ViewProjection& view, const CTimerObject& object, const KeyTrack& keys)
{
    AnimationProgram program(object);
    const quint32 id = object.target().id;
    const auto place_at = [&](float time) { return place_of(program.pose_at(id, time)); };

    const float from = keys.first_time();
    const float length = keys.time(keys.size() - 1) - from;
    const int pieces = int(std::min<qsizetype>((keys.size() - 1) * pieces_of_span, most_pieces));
    painter.setPen(line_pen(painter, way_color));
    QVector3D before = place_at(from);
    for (int i = 1; i <= pieces; ++i) {
        const QVector3D place = place_at(from + length * float(i) / float(pieces));
        if (const auto line = view.line(before, place))
            painter.drawLine(*line);
        before = place;
    }
    if (keys.size() > most_marks)
        return;
    painter.setBrush(way_color);
    const double side = key_side * view_pixel(painter);
    for (qsizetype key = 0; key < keys.size(); ++key)
        if (const auto place = view.place(place_at(keys.time(key))))
            painter.drawEllipse(*place, side / 2, side / 2);
}

} // namespace

void paint_motion_paths(QPainter& painter, const ViewProjection& view, const CGuiPlugScene& scene)
{
    const CTimebar* bar = scene.animation().is_editing() ? scene.animation().current_bar() : nullptr;
    if (!bar)
        return;
    painter.save();
    for (const WorldObject* object : scene.world()->selection().objects()) {
        const CTimerObject* timer = bar->SearchItemUsage(*object);
        if (const KeyTrack* keys = timer ? moving_keys(*timer) : nullptr)
            paint_way(painter, view, *timer, *keys);
    }
    painter.restore();
}

} // namespace tarn
