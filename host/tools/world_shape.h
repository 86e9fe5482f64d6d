#pragma once

#include <QPolygonF>
#include <QVector3D>

#include <vector>

class CBaseWorld;

namespace tarn {

class ViewProjection;
class WorldObject;

/// How an object of the world is drawn and found: faces and lines, in the coordinates of the world.
struct WorldShape {
    struct Line {
        QVector3D from;
        QVector3D to;
    };
    struct Face {
        std::vector<QVector3D> corners;
        float light = 1; ///< 0 to 1, by how it is turned
    };
    std::vector<Face> faces;
    std::vector<Line> lines;
};

WorldShape world_shape(const CBaseWorld& world, const WorldObject& object);
/// Pixels from `place` to what is seen of the shape; 0 within a face, and far away when nothing is seen.
double distance_to(const WorldShape& shape, const ViewProjection& view, QPointF place);
/// Pixels from `place` to the line that is seen between two points of the world; far away when it is not seen.
double distance_to_line(const ViewProjection& view, QPointF place, const QVector3D& from, const QVector3D& to);

constexpr double far_away = 1e9; ///< pixels

} // namespace tarn
