#pragma once

#include <QSet>

#include <vector>

namespace tarn {
class WorldObject;
class WorldScene;
enum class WorldType : quint8;
} // namespace tarn

/// The selected objects of the 3D world, in selection order. What is no part of the scene (any more) is not selected.
class CSelection {
public:
    explicit CSelection(const tarn::WorldScene& world) : m_world(world) {}

    void add(const tarn::WorldObject* object); ///< null: nothing
    void remove(const tarn::WorldObject* object);
    void clear();
    bool contains(const tarn::WorldObject* object) const;
    /// The object that was selected last; null when nothing is selected.
    tarn::WorldObject* get_last() const;
    std::vector<tarn::WorldObject*> objects() const;
    std::vector<tarn::WorldObject*> get_type_objs(tarn::WorldType type) const;

private:
    const tarn::WorldScene& m_world;
    std::vector<quint32> m_ids; ///< undo brings back an object with its id
    QSet<quint32> m_known;      ///< the same
};
