#pragma once

#include "core/guid.h"

#include <QString>

#include <vector>

namespace tarn {

/// An object of the 3D world.
struct SceneObject {
    QString name;
    QString kind; ///< "ground", "camera"
    CGuid id;
};

} // namespace tarn

/// The selected objects of the 3D world, in selection order.
class CSelection {
public:
    void add(const tarn::SceneObject* object);
    void clear() { m_objects.clear(); }
    bool contains(const tarn::SceneObject* object) const;
    /// The object that was selected last; null when nothing is selected.
    const tarn::SceneObject* get_last() const { return m_objects.empty() ? nullptr : m_objects.back(); }
    const std::vector<const tarn::SceneObject*>& objects() const { return m_objects; }

private:
    std::vector<const tarn::SceneObject*> m_objects;
};
