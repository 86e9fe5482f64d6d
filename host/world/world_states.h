#pragma once

#include "core/field_type.h"
#include "core/object_state.h"

#include <QVector3D>

namespace tarn {

/// Kinds of objects of the 3D world; the numbers are saved.
enum class WorldType : quint8 { Model, AnimatedModel, Skeleton, Camera, Path, Panel };
constexpr int world_type_count = 6;

/// The 3D world as a whole.
struct WorldState : StateOf<WorldState> {
    IdList objects; ///< in the order in which lists show them

    static const FieldTable& field_table();
};

/// What every object of the world has. Lengths are metres, the y axis points up, turns are degrees.
struct WorldObjectState : StateOf<WorldObjectState> {
    static constexpr int max_name = 100;

    explicit WorldObjectState(WorldType kind = WorldType::Model) : type(int(kind)) {}

    QString name;
    int type; ///< WorldType
    float x = 0;
    float y = 0;
    float z = 0;
    float turn_x = 0; ///< about the axes: first about z, then x, then y
    float turn_y = 0;
    float turn_z = 0;
    float size_x = 1; ///< factors
    float size_y = 1;
    float size_z = 1;
    quint32 color = 0xffffffff; ///< ARGB, multiplied with what the object is drawn with
    float transparency = 0;     ///< 0 opaque, 1 not to be seen
    bool visible = true;
    bool locked = false;   ///< the view's mouse leaves it alone
    bool hot_spot = false; ///< maps show where it is

    static const FieldTable& field_table();
};

/// An object that is drawn from a file of the package.
struct ModelState : StateOf<ModelState, WorldObjectState> {
    explicit ModelState(WorldType kind = WorldType::Model) { type = int(kind); }

    QString file; ///< entry of the package: "models/tree.glb"

    static const FieldTable& field_table();
};

/// One whose nodes or skeleton move.
struct MovingModelState : StateOf<MovingModelState, ModelState> {
    explicit MovingModelState(WorldType kind) { type = int(kind); }

    QString action;        ///< by its name in the file; empty: the model is at rest
    float action_time = 0; ///< seconds since the action's beginning
    bool plays = true;     ///< the action goes on by itself while the interface runs
    bool repeats = true;   ///< otherwise the action holds its last pose when it is over

    static const FieldTable& field_table();
};

struct CameraState : StateOf<CameraState, WorldObjectState> {
    CameraState() { type = int(WorldType::Camera); }

    float field_of_view = 45; ///< degrees, from the lower to the upper edge

    static const FieldTable& field_table();
};

/// A way through the world; see PathShape.
struct PathState : StateOf<PathState, WorldObjectState> {
    static constexpr int max_points = 10'000;

    PathState() { type = int(WorldType::Path); }

    QList<QVector3D> points; ///< from the object's place, turned and sized with it
    bool closed = false;
    bool smooth = true; ///< a curve through the points instead of straight lines

    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

/// A rectangle that stands in the world and shows a picture or a dialog.
struct PanelState : StateOf<PanelState, WorldObjectState> {
    PanelState() { type = int(WorldType::Panel); }

    float width = 1; ///< metres
    float height = 1;
    QString picture; ///< name in the scene's textures; empty for none

    static const FieldTable& field_table();
};

/// A list of points, for the outside a flat list of numbers, three for each.
template <>
struct FieldType<QList<QVector3D>> : detail::SingleType<QList<QVector3D>> {
    static constexpr float farthest = 1e6f; ///< metres, either way

    static Value to_value(const QList<QVector3D>& points);
    static Status from_value(const Value& value, const FieldRules& rules, QList<QVector3D>& out);
    static void hold(const FieldRules& rules, QList<QVector3D>& points);
    static void write(const QList<QVector3D>& points, JsonWriter& writer);
    static Status read(JsonCursor& cursor, QList<QVector3D>& out);
    static std::size_t kept_bytes(const QList<QVector3D>& kept, const QList<QVector3D>& other);
};

} // namespace tarn
