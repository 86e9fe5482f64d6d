#pragma once

#include "engine/view_projection.h"

#include <QQuaternion>

class QPainter;

namespace tarn {

/// What of the gizmo the mouse takes hold of. Each kind has its three axes in a row.
enum class GizmoPart { None, MoveX, MoveY, MoveZ, TurnX, TurnY, TurnZ, SizeX, SizeY, SizeZ, Ground, Size };

/// Whether the part is one of the three that begin with `first`.
bool is_axis_of(GizmoPart part, GizmoPart first);
/// 0 to 2: x, y, z.
int axis_of(GizmoPart part);
QVector3D axis_direction(int axis);

/// Handles at an object's place: arrows move along the axes of the world, a square on the ground, arcs turn about the axes,
/// cubes at the end of the object's own axes scale along them, and the one in the middle all three. It has the same size on
/// the screen at every distance.
class WorldGizmo {
public:
    /// `pixel` pixels of the screen show one of the view.
    WorldGizmo(const ViewProjection& view, const QVector3D& pivot, const QQuaternion& turn, double pixel);

    /// One geometry for painting and for hit tests.
    GizmoPart part_at(QPointF place) const;
    void paint(QPainter& painter, GizmoPart held) const;
    /// A place above all handles, for the object's name; null when the object is not before the eye.
    std::optional<QPointF> above() const;
    /// The direction in which an axis is drawn for a part of it.
    QVector3D direction(GizmoPart part) const;

private:
    QVector3D at(const QVector3D& pixels) const { return m_pivot + pixels * m_unit; }
    std::vector<QVector3D> ground() const;
    std::vector<QVector3D> arc(int axis) const;
    std::optional<QPointF> cube(GizmoPart part) const;
    double distance(GizmoPart part, QPointF place) const;

    ViewProjection m_view;
    QVector3D m_pivot;
    QQuaternion m_turn;
    double m_pixel;
    float m_unit; ///< metres that show as one pixel of the view
};

} // namespace tarn
