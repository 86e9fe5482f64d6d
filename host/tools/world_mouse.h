#pragma once

#include "engine/base_world.h"
#include "engine/view_projection.h"
#include "world_gizmo.h"

#include <memory>

class CGuiPlugScene;

namespace tarn {

class Gesture;
class WorldLayer;
class WorldObject;
enum class WorldType : quint8;

/// What the selecting tool does to the objects of the world. Objects of the world and of the interface are never selected
/// at once: selecting some of the one clears the other, whoever selects, so that a key like Delete means one of them.
class WorldMouse : private UiListener {
public:
    explicit WorldMouse(CGuiPlugScene& scene);
    ~WorldMouse() override;
    void on_world_created(CBaseWorld& world);

    /// What a press at `place` drags of the handles of what is selected; null for none. `pixel` pixels of the screen show
    /// one of the view.
    std::unique_ptr<Gesture> grab(QPointF place, double pixel) const;
    WorldObject* object_at(QPointF place) const;
    /// Selects the object; with `toggle` it is added to what is selected, or taken away.
    void select(WorldObject& object, bool toggle);
    bool is_selected(const WorldObject& object) const;
    /// What moves the selected objects over the ground.
    std::unique_ptr<Gesture> move_gesture(QPointF place) const;
    /// A double click: removes the point of the selected path at `place`, or makes one where the path is clicked.
    bool edit_points(QPointF place, double pixel);
    /// Whether commands go to the world.
    bool has_selection() const;
    void clear_selection();
    bool frame_selection();
    /// Makes an object on the ground at `place`, or in the middle of the view when the ground is not seen there.
    void add(WorldType type, QPointF place);
    void paint(QPainter& painter, const Gesture* gesture) const;

private:
    void update_ui(int code) override;
    WorldObject* edited_path() const;
    int point_at(const WorldObject& path, QPointF place, double pixel) const;
    ViewProjection view() const;
    void paint_names(QPainter& painter, std::optional<QPointF> above) const;
    std::optional<WorldGizmo> gizmo(double pixel) const;

    CGuiPlugScene& m_scene;
    CBaseWorld* m_world = nullptr;
    std::unique_ptr<WorldLayer> m_layer; ///< made with the world
};

} // namespace tarn
