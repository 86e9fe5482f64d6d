#include "world_shape.h"

#include "engine/view_projection.h"
#include "engine/world_edit.h"
#include "world/world_object.h"

#include <QtMath>

#include <algorithm>
#include <array>
#include <cmath>

namespace tarn {

namespace {

constexpr float picture_ratio = 16.f / 9; ///< of the pictures that cameras are drawn with

void add_outline(WorldShape& shape, const std::vector<QVector3D>& corners)
{
    for (std::size_t i = 0; i < corners.size(); ++i)
        shape.lines.push_back({corners[i], corners[(i + 1) % corners.size()]});
}

void add_face(WorldShape& shape, const std::vector<QVector3D>& corners)
{
    const QVector3D light = QVector3D(0.4f, 0.8f, 0.45f).normalized();
    const QVector3D normal = QVector3D::normal(corners[0], corners[1], corners[2]);
    shape.faces.push_back({corners, 0.55f + 0.45f * std::abs(QVector3D::dotProduct(normal, light))});
}

/// A pyramid from the camera's place to the picture that it takes, with a mark at its upper side.
void add_camera(WorldShape& shape, const CameraState& camera, const QMatrix4x4& transform)
{
    const float y = camera_reach * std::tan(qDegreesToRadians(std::min(camera.field_of_view, 120.f)) / 2);
    const float x = y * picture_ratio;
    const float z = -camera_reach;
    std::vector<QVector3D> corners{{-x, -y, z}, {x, -y, z}, {x, y, z}, {-x, y, z}};
    std::vector<QVector3D> mark{{-x / 3, y * 1.1f, z}, {x / 3, y * 1.1f, z}, {0, y * 1.1f + x / 3, z}};
    for (std::vector<QVector3D>* points : {&corners, &mark})
        for (QVector3D& point : *points)
            point = transform.map(point);
    const QVector3D eye = transform.map(QVector3D());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        add_face(shape, {eye, corners[i], corners[(i + 1) % corners.size()]});
        shape.lines.push_back({eye, corners[i]});
    }
    add_outline(shape, corners);
    add_face(shape, mark);
    add_outline(shape, mark);
}

void add_path(WorldShape& shape, const WorldObject& path, const QMatrix4x4& transform)
{
    const std::vector<QVector3D>& corners = path.shape().corners();
    for (std::size_t i = 1; i < corners.size(); ++i)
        shape.lines.push_back({transform.map(corners[i - 1]), transform.map(corners[i])});
}

void add_panel(WorldShape& shape, const PanelState& panel, const QMatrix4x4& transform)
{
    const float x = panel.width / 2;
    const float y = panel.height / 2;
    std::vector<QVector3D> corners{{-x, y, 0}, {x, y, 0}, {x, -y, 0}, {-x, -y, 0}};
    for (QVector3D& corner : corners)
        corner = transform.map(corner);
    add_face(shape, corners);
    add_outline(shape, corners);
}

/// For what is drawn from a file.
void add_block(WorldShape& shape, const ModelBox& box, const QMatrix4x4& transform)
{
    static constexpr std::array<std::array<int, 4>, 6> sides{
        {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}}};
    for (const auto& side : sides) {
        std::vector<QVector3D> corners;
        for (const int corner : side)
            corners.push_back(
                transform.map(QVector3D((corner & 1 ? box.high : box.low).x(), (corner & 2 ? box.high : box.low).y(),
                                        (corner & 4 ? box.high : box.low).z())));
        add_face(shape, corners);
        add_outline(shape, corners);
    }
}

double distance(QPointF place, const QLineF& line)
{
    const QPointF way = line.p2() - line.p1();
    const double length = QPointF::dotProduct(way, way);
    const double t = length > 0 ? std::clamp(QPointF::dotProduct(place - line.p1(), way) / length, 0.0, 1.0) : 0;
    return QLineF(line.p1() + way * t, place).length();
}

} // namespace

WorldShape world_shape(const CBaseWorld& world, const WorldObject& object)
{
    WorldShape shape;
    const QMatrix4x4 transform = object.transform();
    const WorldObjectState& state = object.object_state();
    switch (object.type()) {
    case WorldType::Camera: add_camera(shape, static_cast<const CameraState&>(state), transform); break;
    case WorldType::Path: add_path(shape, object, transform); break;
    case WorldType::Panel: add_panel(shape, static_cast<const PanelState&>(state), transform); break;
    default: add_block(shape, model_box(world, object), transform); break;
    }
    return shape;
}

double distance_to_line(const ViewProjection& view, QPointF place, const QVector3D& from, const QVector3D& to)
{
    const auto line = view.line(from, to);
    return line ? distance(place, *line) : far_away;
}

double distance_to(const WorldShape& shape, const ViewProjection& view, QPointF place)
{
    for (const WorldShape::Face& face : shape.faces)
        if (view.face(face.corners).containsPoint(place, Qt::OddEvenFill))
            return 0;
    double nearest = far_away;
    for (const WorldShape::Line& line : shape.lines)
        nearest = std::min(nearest, distance_to_line(view, place, line.from, line.to));
    return nearest;
}

} // namespace tarn
