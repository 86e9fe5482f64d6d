#pragma once

#include <QVector3D>

#include <vector>

class CBaseWorld;

namespace tarn {

class WorldObject;
enum class WorldType : quint8;

// What an author does to the objects of the world, in lists and in views. Each is one step of undo, the windows hear of it
// and the views are drawn again.

/// Selects these and nothing else of the world; the last one becomes the current one.
void select_world_objects(CBaseWorld& world, const std::vector<WorldObject*>& objects);
/// Makes an object at a place of the ground, as high over it as such objects are wanted, and selects it. Null when there is
/// no room for more.
WorldObject* add_world_object(CBaseWorld& world, WorldType type, const QVector3D& ground);
/// Copies what is selected, a little beside it, and selects the copies.
void duplicate_world_objects(CBaseWorld& world);
/// Removes what is selected.
void remove_world_objects(CBaseWorld& world);

/// What an object takes up, in the world; its place alone when it has no extent.
struct WorldBounds {
    QVector3D centre;
    float radius = 0; ///< metres
};
WorldBounds bounds_of(const WorldObject& object);
/// Has the view look at what is selected; false when nothing is.
bool frame_world_objects(CBaseWorld& world);

/// The size at which a camera is shown: the distance from its place to the picture that it takes.
constexpr float camera_reach = 0.8f; ///< metres

} // namespace tarn
