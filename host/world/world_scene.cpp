#include "world_scene.h"

#include "core/authored.h"
#include "core/free_names.h"
#include "core/language.h"

#include <algorithm>
#include <span>

namespace tarn {

namespace {

constexpr const char* entry = "world.json";

IdList* objects_in(ObjectState& parent)
{
    auto* world = dynamic_cast<WorldState*>(&parent);
    return world ? &world->objects : nullptr;
}

ObjectState* fresh(int type)
{
    if (type < 0 || type >= world_type_count)
        return nullptr;
    switch (WorldType(type)) {
    case WorldType::Model: return new ModelState(WorldType::Model);
    case WorldType::AnimatedModel:
    case WorldType::Skeleton: return new MovingModelState(WorldType(type));
    case WorldType::Camera: return new CameraState;
    case WorldType::Path: return new PathState;
    case WorldType::Panel: return new PanelState;
    }
    return nullptr;
}

/// "Tree" for "Tree12".
QString stem_of(QString name)
{
    while (!name.isEmpty() && name.back().isDigit())
        name.chop(1);
    return name;
}

} // namespace

WorldScene::WorldScene(Document& document) : ModelObject(document, new WorldState)
{
    document.add_part({.entry = entry, .container = this, .folder = "models/", .travels = false});
    document.add_kind(
        {.part = entry,
         .key = "objects",
         .chinese = u"物体",
         .english = u"object",
         .saves_type = true,
         .container = this,
         .make_state = fresh,
         .make_object =
             [this](StatePtr state) { return std::make_shared<WorldObject>(this->document(), std::move(state)); },
         .children = objects_in,
         .most = max_objects});
    m_kind = &document.kinds().back();
}

const std::vector<WorldObject*>& WorldScene::objects() const
{
    if (std::exchange(m_stale, false)) {
        m_objects.clear();
        for (const ObjectRef object : world_state().objects)
            m_objects.push_back(document().find_as<WorldObject>(object.id));
    }
    return m_objects;
}

WorldObject* WorldScene::find(quint32 id) const
{
    auto* object = document().find_as<WorldObject>(id);
    return object && object->is_attached() ? object : nullptr;
}

QString WorldScene::free_name(const QString& wanted) const
{
    FreeNames names;
    for (const WorldObject* object : objects())
        names.add(object->name());
    const QString name = wanted.left(WorldObjectState::max_name - 10);
    return names.has(name) ? names.find(stem_of(name)) : name;
}

WorldObject* WorldScene::add(ObjectState* state, qsizetype place)
{
    StatePtr held(state);
    if (objects().size() >= max_objects || (state->id = document().take_id()) == 0)
        return nullptr;
    const auto object = document().create(*m_kind, std::move(held));
    document().attach(*object, *this, place);
    return static_cast<WorldObject*>(object.get());
}

WorldObject* WorldScene::create(WorldType type, const QString& wanted)
{
    const UserAction action(journal(), lang(u"添加物体", u"Add Object"));
    auto* state = static_cast<WorldObjectState*>(fresh(int(type)));
    const QString kind = QString::fromUtf16(row_of(type).english) + u'1';
    state->name = free_name(wanted.isEmpty() ? kind : wanted);
    return add(state, world_state().objects.size());
}

std::vector<WorldObject*> WorldScene::duplicate(const std::vector<WorldObject*>& objects)
{
    const UserAction action(journal(), lang(u"复制物体", u"Duplicate Objects"));
    qsizetype place = 0;
    for (const WorldObject* object : objects)
        place = std::max(place, world_state().objects.indexOf(ObjectRef{object->id()}) + 1);
    std::vector<WorldObject*> copies;
    for (const WorldObject* object : objects) {
        StatePtr state(Authored::state(*object).clone());
        auto& copy = static_cast<WorldObjectState&>(*state);
        copy.parent = {};
        copy.name = free_name(copy.name);
        if (WorldObject* made = add(state.take(), place))
            copies.push_back(made);
        ++place;
    }
    return copies;
}

void WorldScene::remove(const std::vector<WorldObject*>& objects)
{
    const UserAction action(journal(), lang(u"删除物体", u"Delete Objects"));
    std::vector<ModelObject*> gone;
    for (WorldObject* object : objects)
        if (object->parent() == this)
            gone.push_back(object);
    document().detach(gone);
}

} // namespace tarn
