#include "scene_selection.h"

#include "world/world_scene.h"

#include <algorithm>

bool CSelection::contains(const tarn::WorldObject* object) const
{
    return object && std::find(m_ids.begin(), m_ids.end(), object->id()) != m_ids.end();
}

void CSelection::add(const tarn::WorldObject* object)
{
    if (object && !contains(object))
        m_ids.push_back(object->id());
}

void CSelection::remove(const tarn::WorldObject* object)
{
    std::erase(m_ids, object->id());
}

tarn::WorldObject* CSelection::get_last() const
{
    const auto selected = objects();
    return selected.empty() ? nullptr : selected.back();
}

std::vector<tarn::WorldObject*> CSelection::objects() const
{
    std::vector<tarn::WorldObject*> selected;
    for (const quint32 id : m_ids)
        if (tarn::WorldObject* object = m_world.find(id))
            selected.push_back(object);
    return selected;
}

std::vector<tarn::WorldObject*> CSelection::get_type_objs(tarn::WorldType type) const
{
    std::vector<tarn::WorldObject*> selected = objects();
    std::erase_if(selected, [type](const tarn::WorldObject* object) { return object->type() != type; });
    return selected;
}
