#pragma once

#include "core/model_object.h"
#include "world_object.h"

#include <vector>

namespace tarn {

/// The objects of the 3D world, a part of the document of their own.
class WorldScene final : public ModelObject {
public:
    static constexpr std::size_t max_objects = 100'000;

    /// The world becomes a part of the document.
    explicit WorldScene(Document& document);

    const std::vector<WorldObject*>& objects() const;
    WorldObject* find(quint32 id) const; ///< null for an id of something else
    /// `wanted`, or one like it when an object has that name.
    QString free_name(const QString& wanted) const;
    /// A new object at the end of the list, of a free name like `wanted`, the kind's when that is empty. Null when there
    /// is no room for more.
    WorldObject* create(WorldType type, const QString& wanted = {});
    /// Copies right behind the last one of them, of free names.
    std::vector<WorldObject*> duplicate(const std::vector<WorldObject*>& objects);
    void remove(const std::vector<WorldObject*>& objects);
    const ObjectKind& object_kind() const { return *m_kind; }

    ObjectState* fresh_state() const override { return new WorldState; }
    const char* class_name() const override { return "CWorld"; }
    void children_changed() override { m_stale = true; }

private:
    WorldObject* add(ObjectState* state, qsizetype place);
    const WorldState& world_state() const { return state<WorldState>(); }

    const ObjectKind* m_kind = nullptr;
    mutable std::vector<WorldObject*> m_objects;
    mutable bool m_stale = true;
};

} // namespace tarn
