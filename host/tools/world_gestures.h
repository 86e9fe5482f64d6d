#pragma once

#include "core/journal.h"
#include "engine/view_projection.h"
#include "gesture.h"
#include "world/world_object.h"
#include "world_gizmo.h"

#include <QQuaternion>

#include <optional>
#include <vector>

class CBaseWorld;

namespace tarn {

/// The selected objects of the world that the mouse may change.
std::vector<WorldObject*> movable_objects(CBaseWorld& world);

/// A drag that changes objects of the world; one step of undo. With Ctrl it goes in steps.
class WorldGesture : public Gesture {
public:
    WorldGesture(CBaseWorld& world, const ViewProjection& view, QPointF start)
        : m_world(world), m_view(view), m_start(start), m_place(start)
    {
    }

    void begin() override;
    void drag(QPointF place, Qt::KeyboardModifiers modifiers) override;
    void finish() override;
    void cancel() override;
    /// The numbers beside the mouse.
    void paint(QPainter& painter) const override;
    Qt::CursorShape cursor() const override { return Qt::SizeAllCursor; }

protected:
    virtual QString name() const = 0; ///< of the step
    virtual void change(QPointF place, bool in_steps, Qt::KeyboardModifiers modifiers) = 0;
    virtual QString numbers() const = 0;

    CBaseWorld& m_world;
    const ViewProjection m_view; ///< the camera stands still in a drag
    const QPointF m_start;

private:
    void tell() const;

    QPointF m_place;
    std::optional<UserAction> m_action;
};

/// Moves, turns or scales what is selected, about the place of the object that was selected last.
class GizmoGesture : public WorldGesture {
public:
    GizmoGesture(CBaseWorld& world, const ViewProjection& view, QPointF start, GizmoPart part);

    void begin() override;
    GizmoPart part() const { return m_part; }

private:
    struct Before {
        WorldObject* object;
        QVector3D place;
        QQuaternion turn;
        QVector3D size;
    };

    QString name() const override;
    void change(QPointF place, bool in_steps, Qt::KeyboardModifiers modifiers) override;
    QString numbers() const override;
    void move(QPointF place, bool in_steps);
    void turn(QPointF place, bool in_steps);
    void scale(QPointF place, bool in_steps);
    std::optional<QVector3D> offset(QPointF place) const;

    GizmoPart m_part;
    std::vector<Before> m_before;
    QVector3D m_pivot;
    QVector3D m_axis;   ///< along or about which the part works
    double m_angle = 0; ///< degrees turned so far
    QPointF m_last;     ///< of the mouse in a turn
    double m_shown = 0; ///< degrees or factor, as the numbers tell it
};

/// Drags a point of a path level over the ground, with Shift up and down.
class PathPointGesture : public WorldGesture {
public:
    PathPointGesture(CBaseWorld& world, const ViewProjection& view, QPointF start, WorldObject& path, int point);

private:
    QString name() const override;
    void change(QPointF place, bool in_steps, Qt::KeyboardModifiers modifiers) override;
    QString numbers() const override;

    WorldObject& m_path;
    int m_point;
    QList<QVector3D> m_points; ///< before the drag
};

const QList<QVector3D>& points_of(const WorldObject& path);

} // namespace tarn
