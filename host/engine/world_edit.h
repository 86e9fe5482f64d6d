#pragma once

#include "core/progress.h"
#include "models/model_box.h"

#include <QString>
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
/// The same from a model's file, which the package takes in with those beside it that it needs.
Result<WorldObject*> add_world_model(CBaseWorld& world, const QString& path, const QVector3D& ground,
                                     const Progress& progress);
/// Copies what is selected, a little beside it, and selects the copies.
void duplicate_world_objects(CBaseWorld& world);
/// Removes what is selected, and the models that nothing else shows.
void remove_world_objects(CBaseWorld& world);
void show_world_objects(CBaseWorld& world, const std::vector<WorldObject*>& objects, bool on);
void lock_world_objects(CBaseWorld& world, const std::vector<WorldObject*>& objects, bool on);

/// What an object takes up, in the world; its place alone when it has no extent.
struct WorldBounds {
    QVector3D centre;
    float radius = 0; ///< metres
};
WorldBounds bounds_of(const CBaseWorld& world, const WorldObject& object);
/// Of an object from a file, in its own coordinates. A block of a metre stands for a model that is not there.
ModelBox model_box(const CBaseWorld& world, const WorldObject& object);
/// Has the view look at what is selected; false when nothing is.
bool frame_world_objects(CBaseWorld& world);

/// Waits until all models that objects show are read: for pictures that are taken at once.
void wait_for_models(CBaseWorld& world);

/// The size at which a camera is shown: the distance from its place to the picture that it takes.
constexpr float camera_reach = 0.8f; ///< metres

} // namespace tarn
