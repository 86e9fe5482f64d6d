#include "scene_selection.h"

#include <algorithm>

bool CSelection::contains(const tarn::SceneObject* object) const
{
    return std::find(m_objects.begin(), m_objects.end(), object) != m_objects.end();
}

void CSelection::add(const tarn::SceneObject* object)
{
    if (object && !contains(object))
        m_objects.push_back(object);
}
