// What holds for every kind of objects, from the table of kinds: a kind that is new is tested without a line here.

#include "core/authored.h"
#include "gui_core/dxut_menu.h"
#include "gui_scene/picture_names.h"
#include "support/gui_fixture.h"
#include "support/scene_fixture.h"
#include "world/world_scene.h"

#include <map>

using namespace tarn;
using namespace tarn::test;

namespace {

class EveryKind : public SceneTest {
protected:
    Document& document() { return m_scene.document(); }
    /// An object of every kind, which names a picture and refers to an object wherever it can.
    void SetUp() override
    {
        core().set_texture(u"a.png"_s, png(Qt::red));
        for (const ObjectKind& kind : document().kinds())
            if (!kind.fixed)
                make(kind);
        const ObjectRef somebody{core().GetMenus().front()->id()};
        for (ModelObject* object : document().objects())
            for (const FieldBase* field : object->fields())
                if (!field->rules().read_only)
                    fill(*object, *field, somebody);
        document().forget_history();
    }
    void make(const ObjectKind& kind)
    {
        ModelObject* parent = kind.container;
        for (ModelObject* object : document().objects())
            if (!kind.container && kind.children_of(Authored::state(*object)))
                parent = object;
        ASSERT_NE(parent, nullptr) << kind.key;
        StatePtr state(kind.make_state(kind.saves_type ? DXUT_CONTROL_BUTTONST : -1));
        if (!state)
            state = StatePtr(kind.make_state(0));
        state->id = document().take_id();
        if (kind.unique_key)
            complete(*state);
        document().attach(*document().create(kind, state), *parent, 0);
    }
    /// Of what has a key no part may be missing.
    static void complete(ObjectState& state)
    {
        for (const FieldBase* field : state.fields()) {
            if (!field->is_default(state) || field->rules().derived)
                continue;
            const Value now = field->get(state);
            if (std::holds_alternative<QString>(now))
                EXPECT_TRUE(field->set(state, u"f"_s));
            else if (std::holds_alternative<ObjectRef>(now))
                EXPECT_TRUE(field->set(state, ObjectRef{state.id - 1}));
            else if (std::holds_alternative<TextMap>(now))
                EXPECT_TRUE(field->set(state, TextMap{{u"de"_s, u"f"_s}}));
            else
                EXPECT_TRUE(field->set(state, qint64(257)));
        }
    }
    static void fill(ModelObject& object, const FieldBase& field, ObjectRef somebody)
    {
        const Value now = Authored::property(object, field);
        Value wanted;
        if (std::holds_alternative<ObjectRef>(now))
            wanted = somebody;
        else if (field.rules().picture && std::holds_alternative<TextMap>(now))
            wanted = TextMap{{u"Body.normal"_s, u"a.png"_s}};
        else if (field.rules().picture)
            wanted = u"a.png"_s;
        else
            return;
        ASSERT_TRUE(object.set_property(field, wanted).ok()) << field.name();
    }
    std::map<std::string, int> counts()
    {
        std::map<std::string, int> found;
        for (const ModelObject* object : document().objects())
            ++found[object->kind()->key];
        return found;
    }
};

} // namespace

TEST_F(EveryKind, is_saved_read_and_found_by_scripts)
{
    const QByteArray before = text();
    const auto all = counts();
    EXPECT_EQ(all.size(), document().kinds().size());
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    m_scene.new_scene();
    EXPECT_LT(counts().size(), all.size());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), before));
    EXPECT_EQ(counts(), all);
    for (ModelObject* object : document().objects()) {
        if (!object->kind()->recorded)
            continue; // Scripts do not find scripts.
        EXPECT_EQ(m_scene.model().objects().find(object->id()).get(), object) << object->kind()->key;
        EXPECT_FALSE(m_scene.model().objects().classes_of(*object).empty()) << object->kind()->key;
    }
}

TEST_F(EveryKind, comes_back_when_its_removal_is_undone)
{
    const QByteArray before = text();
    for (ModelObject* object : document().objects()) {
        if (object->kind()->fixed || !object->kind()->recorded)
            continue;
        act([&] { document().detach(std::span(&object, 1)); });
        EXPECT_FALSE(object->is_attached());
        EXPECT_NE(text(), before) << object->kind()->key;
        ASSERT_TRUE(m_scene.journal().undo());
        EXPECT_TRUE(same_text(text(), before)) << object->kind()->key;
    }
}

TEST_F(EveryKind, is_merged_with_ids_references_and_pictures_of_its_own)
{
    const auto once = counts();
    const quint32 old_menu = core().GetMenus().front()->id();
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    core().set_texture(u"a.png"_s, png(Qt::blue));
    ASSERT_TRUE(m_scene.functions().set_function(u"f"_s, u"return 'another'"_s));
    std::vector<ModelObject*> present = document().objects();
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false).ok());
    for (const auto& [key, count] : once) {
        const bool stays = document().kind(key)->container == &m_world.objects();
        EXPECT_EQ(counts()[key], stays ? count : document().kind(key)->fixed ? 1 : 2 * count) << key;
    }
    for (ModelObject* object : document().objects()) {
        if (std::find(present.begin(), present.end(), object) != present.end())
            continue;
        for (const FieldBase* field : object->fields())
            field->each_reference(Authored::state(*object), [&](ObjectRef reference) {
                EXPECT_TRUE(reference.id != old_menu && document().find(reference.id)) << field->name();
            });
        each_picture(Authored::state(*object), [&](const QString& name) {
            EXPECT_NE(name, u"a.png"_s) << object->kind()->key;
            EXPECT_TRUE(core().texture_names().contains(name));
        });
    }
}

TEST_F(EveryKind, that_names_a_missing_picture_is_told_among_the_problems)
{
    document().edit_files([](auto& files) { files.clear(); });
    const auto problems = m_scene.model().problems();
    for (ModelObject* object : document().objects()) {
        const bool named = !file_entries(Authored::state(*object)).empty();
        const bool told = std::any_of(problems.begin(), problems.end(), [&](const SceneModel::Problem& problem) {
            return problem.object == object && problem.text.contains(u"a.png"_s);
        });
        EXPECT_EQ(told, named) << object->kind()->key;
    }
}
