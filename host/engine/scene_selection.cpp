#include "scene_selection.h"

#include "world/world_scene.h"

#include <algorithm>

bool CSelection::contains(const tarn::WorldObject* object) const
{
    return object && m_known.contains(object->id());
}

void CSelection::add(const tarn::WorldObject* object)
{
    if (!object || contains(object))
        return;
    m_ids.push_back(object->id());
    m_known.insert(object->id());
}

void CSelection::clear()
{
    m_ids.clear();
    m_known.clear();
}

void CSelection::remove(const tarn::WorldObject* object)
{
    if (m_known.remove(object->id()))
        std::erase(m_ids, object->id());
}

tarn::WorldObject* CSelection::get_last() const
{
    for (auto id = m_ids.rbegin(); id != m_ids.rend(); ++id)
        if (tarn::WorldObject* object = m_world.find(*id))
            return object;
    return nullptr;
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
