#pragma once

#include "core/model_changes.h"

class CBaseWorld;

namespace tarn {

class WorldObject;

/// Has the views look through a camera of the world: they follow it, whoever moves it, until it is gone.
class CameraView : private ModelListener {
public:
    explicit CameraView(CBaseWorld& world);
    ~CameraView() override;

    /// Null, or no camera: the views look freely again.
    void look_through(const WorldObject* camera);
    /// Null when the views look freely.
    WorldObject* camera() const;
    /// Puts a camera where the views look from. One step of undo.
    void place_camera(WorldObject& camera) const;

    /// The lines of the axes are for authors: while the interface runs they are not shown.
    void show_axes(bool on) { m_shows_axes = on; }
    bool shows_axes() const { return m_shows_axes; }

private:
    void model_changed(const ModelChange& change) override;
    void follow(const WorldObject* camera);

    CBaseWorld& m_world;
    bool m_shows_axes = true;
};

} // namespace tarn
