#include "world_mouse.h"

#include "core/language.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "gui_scene/gui_plug_scene.h"
#include "selection_edit.h"
#include "selection_overlay.h"
#include "world/world_scene.h"
#include "world_gestures.h"
#include "world_layer.h"
#include "world_shape.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr double point_side = 8;  ///< pixels of the view
constexpr double point_reach = 7; ///< around the middle of a point
constexpr double line_reach = 6;
constexpr int least_points = 2;
constexpr double label_height = 16; ///< pixels of the view

/// Where on the way from one place to the other, 0 to 1, it is seen nearest to `place`.
float share_of_way(const ViewProjection& view, QPointF place, const QVector3D& from, const QVector3D& to)
{
    const auto begin = view.place(from);
    const auto end = view.place(to);
    if (!begin || !end || *begin == *end)
        return 0.5f;
    const QPointF way = *end - *begin;
    const double share = QPointF::dotProduct(place - *begin, way) / QPointF::dotProduct(way, way);
    return float(std::clamp(share, 0.0, 1.0));
}

bool is_selection_code(int code)
{
    return code == ui_scene_changed || code == ui_selection_changed || code == ui_control_selected;
}

} // namespace

WorldMouse::WorldMouse(CGuiPlugScene& scene) : m_scene(scene) {}

WorldMouse::~WorldMouse()
{
    if (!m_world)
        return;
    m_world->remove_listener(this);
    m_world->set_objects_layer(nullptr);
}

void WorldMouse::on_world_created(CBaseWorld& world)
{
    m_world = &world;
    m_layer = std::make_unique<WorldLayer>(m_scene);
    world.set_objects_layer(m_layer.get());
    world.add_listener(this);
}

void WorldMouse::update_ui(int code)
{
    const SelectionRecord& selection = m_scene.gui_core().selection();
    if (selection.controls.empty() && selection.dialogs.empty())
        return;
    if (is_selection_code(code) && has_selection())
        clear_selection();
    else if (code == ui_world_selection_changed && has_selection())
        tarn::clear_selection(m_scene);
}

ViewProjection WorldMouse::view() const
{
    return {m_world->camera(), m_scene.gui_core().screen_size()};
}

bool WorldMouse::has_selection() const
{
    return m_world && m_world->selection().get_last();
}

bool WorldMouse::is_selected(const WorldObject& object) const
{
    return m_world->selection().contains(&object);
}

void WorldMouse::clear_selection()
{
    if (has_selection())
        select_world_objects(*m_world, {});
}

bool WorldMouse::frame_selection()
{
    return m_world && frame_world_objects(*m_world);
}

void WorldMouse::add(WorldType type, QPointF place)
{
    QVector3D looked_at = m_world->camera().target();
    looked_at.setY(0);
    constexpr float farthest = 100; // metres; towards the horizon a pixel is many of them
    auto ground = view().ray(place).meet({}, {0, 1, 0});
    if (ground && (*ground - looked_at).length() > farthest)
        ground.reset();
    add_world_object(*m_world, type, ground.value_or(looked_at));
}

WorldObject* WorldMouse::object_at(QPointF place) const
{
    return m_world ? world_object_at(*m_world, view(), place) : nullptr;
}

void WorldMouse::select(WorldObject& object, bool toggle)
{
    std::vector<WorldObject*> selected;
    if (toggle)
        selected = m_world->selection().objects();
    if (std::erase(selected, &object) == 0)
        selected.push_back(&object);
    select_world_objects(*m_world, selected);
}

std::optional<WorldGizmo> WorldMouse::gizmo(double pixel) const
{
    const std::vector<WorldObject*> objects = m_world ? movable_objects(*m_world) : std::vector<WorldObject*>();
    if (objects.empty() || !view().place(objects.back()->place()))
        return {};
    const WorldObject& last = *objects.back();
    return WorldGizmo(view(), last.place(), QQuaternion::fromEulerAngles(last.turn()), pixel);
}

/// The path whose points can be dragged: the only thing that is selected.
WorldObject* WorldMouse::edited_path() const
{
    const std::vector<WorldObject*> objects = m_world ? movable_objects(*m_world) : std::vector<WorldObject*>();
    return objects.size() == 1 && objects.front()->type() == WorldType::Path ? objects.front() : nullptr;
}

int WorldMouse::point_at(const WorldObject& path, QPointF place, double pixel) const
{
    int found = -1;
    double nearest = point_reach * pixel;
    const QMatrix4x4 transform = path.transform();
    for (int i = 0; i < points_of(path).size(); ++i)
        if (const auto seen = view().place(transform.map(points_of(path)[i])))
            if (const double away = QLineF(*seen, place).length(); away < nearest) {
                nearest = away;
                found = i;
            }
    return found;
}

std::unique_ptr<Gesture> WorldMouse::grab(QPointF place, double pixel) const
{
    const auto handles = gizmo(pixel);
    if (const GizmoPart part = handles ? handles->part_at(place) : GizmoPart::None; part != GizmoPart::None)
        return std::make_unique<GizmoGesture>(*m_world, view(), place, part);
    WorldObject* path = edited_path();
    const int point = path ? point_at(*path, place, pixel) : -1;
    return point < 0 ? nullptr : std::make_unique<PathPointGesture>(*m_world, view(), place, *path, point);
}

std::unique_ptr<Gesture> WorldMouse::move_gesture(QPointF place) const
{
    return std::make_unique<GizmoGesture>(*m_world, view(), place, GizmoPart::Ground);
}

bool WorldMouse::edit_points(QPointF place, double pixel)
{
    WorldObject* path = edited_path();
    if (!path)
        return false;
    QList<QVector3D> points = points_of(*path);
    if (const int point = point_at(*path, place, pixel); point >= 0) {
        if (points.size() <= least_points)
            return true;
        points.removeAt(point);
        const UserAction action(m_scene.journal(), lang(u"删除路径点", u"Remove Path Point"));
        path->set_points(points);
        return true;
    }
    // Between which two points: the curve has as many pieces from each point to the next.
    const std::vector<QVector3D>& corners = path->shape().corners();
    const QMatrix4x4 transform = path->transform();
    double nearest = line_reach * pixel;
    std::size_t found = 0;
    for (std::size_t i = 1; i < corners.size(); ++i)
        if (const double away = distance_to_line(view(), place, transform.map(corners[i - 1]),
                                                 transform.map(corners[i]));
            away < nearest) {
            nearest = away;
            found = i;
        }
    if (found == 0 || points.size() >= PathState::max_points)
        return false;
    const auto& state = static_cast<const PathState&>(path->object_state());
    const std::size_t ways = std::size_t(points.size()) - (state.closed && points.size() > 2 ? 0 : 1);
    const std::size_t pieces = (corners.size() - 1) / ways;
    const QVector3D from = corners[found - 1];
    const QVector3D to = corners[found];
    points.insert(qsizetype((found - 1) / pieces + 1),
                  from + (to - from) * share_of_way(view(), place, transform.map(from), transform.map(to)));
    const UserAction action(m_scene.journal(), lang(u"添加路径点", u"Add Path Point"));
    path->set_points(points);
    return true;
}

void WorldMouse::paint(QPainter& painter, const Gesture* gesture) const
{
    const double pixel = view_pixel(painter);
    if (const WorldObject* path = edited_path()) {
        const QMatrix4x4 transform = path->transform();
        const double side = point_side * pixel;
        painter.setPen(line_pen(painter, QColor(20, 30, 34)));
        painter.setBrush(Qt::white);
        for (const QVector3D& point : points_of(*path))
            if (const auto seen = view().place(transform.map(point)))
                painter.drawRect(QRectF(*seen - QPointF(side, side) / 2, QSizeF(side, side)));
    }
    const auto* held = dynamic_cast<const GizmoGesture*>(gesture);
    const auto handles = gizmo(pixel);
    if (handles)
        handles->paint(painter, held ? held->part() : GizmoPart::None);
    if (m_world)
        paint_names(painter, handles ? handles->above() : std::nullopt);
}

/// The names of what is selected: the last one's at `above`, over its handles, when it has some.
void WorldMouse::paint_names(QPainter& painter, std::optional<QPointF> above) const
{
    const QPointF room(0, 2 * label_height * view_pixel(painter));
    for (const WorldObject* object : m_world->selection().objects()) {
        const bool has_handles = above && object == m_world->selection().get_last();
        const auto place = has_handles ? *above - room : view().place(bounds_of(*m_world, *object).centre);
        if (place && object->is_visible())
            paint_label(painter, QRectF(*place, QSizeF(1, 1)), object->name());
    }
}

} // namespace tarn
