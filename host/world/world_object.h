#pragma once

#include "core/model_object.h"
#include "path_shape.h"
#include "world_states.h"

#include <QMatrix4x4>

#include <optional>
#include <span>

namespace tarn {

/// What the program calls a kind of objects of the world.
struct WorldTypeRow {
    WorldType type;
    const char* kind;       ///< for automation: "animated_model"
    const char* class_name; ///< the same
    const char16_t* chinese;
    const char16_t* english;
};
std::span<const WorldTypeRow> world_types();
const WorldTypeRow& row_of(WorldType type);
/// Null for a kind that there is not.
const WorldTypeRow* world_type_named(const QString& kind);

/// An object of the 3D world: a model, a camera, a path, a panel.
class WorldObject final : public ModelObject {
public:
    using ModelObject::ModelObject;

    WorldType type() const { return WorldType(object_state().type); }
    const QString& name() const { return object_state().name; }
    bool set_name(const QString& name) { return change<&WorldObjectState::name>(name); }
    bool is_visible() const { return object_state().visible; }
    bool is_locked() const { return object_state().locked; }
    bool set_visible(bool on) { return change<&WorldObjectState::visible>(on); }
    bool set_locked(bool on) { return change<&WorldObjectState::locked>(on); }
    bool has_file() const { return type() <= WorldType::Skeleton; }
    bool has_actions() const { return type() == WorldType::AnimatedModel || type() == WorldType::Skeleton; }
    /// Of the package; empty for what has none.
    QString file() const;
    void set_file(const QString& file);
    /// Of what has actions; nothing of others.
    void set_action(const QString& action);

    QVector3D place() const;
    QVector3D turn() const;
    QVector3D size() const;
    void set_place(const QVector3D& place);
    void set_turn(const QVector3D& degrees);
    void set_size(const QVector3D& factors);
    void set_points(const QList<QVector3D>& points); ///< of a path; nothing of others
    /// From the object's own coordinates to those of the world.
    QMatrix4x4 transform() const;

    /// Of a path, in its own coordinates; empty for others.
    const PathShape& shape() const;

    const WorldObjectState& object_state() const { return state<WorldObjectState>(); }
    const char* class_name() const override { return row_of(type()).class_name; }
    void state_changed() override { m_shape.reset(); }

private:
    mutable std::optional<PathShape> m_shape; ///< made when it is asked for
};

} // namespace tarn
