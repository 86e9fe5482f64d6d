// Two random walks from one base, merged both ways. The edits go through the table of kinds and the field tables, so that
// a kind or an attribute that is new takes part.

#include "animation/animation_states.h"
#include "core/authored.h"
#include "support/long_tests.h"
#include "versions_fixture.h"

#include <algorithm>
#include <random>
#include <span>

using namespace tarn;
using namespace tarn::test;

namespace {

class RandomMerges : public VersionsTest, public testing::WithParamInterface<unsigned> {
protected:
    int number(int below) { return int(m_random() % unsigned(below)); }
    Document& document() { return m_scene.document(); }
    ModelObject* any_object()
    {
        const auto all = document().objects();
        return all[std::size_t(number(int(all.size())))];
    }
    ModelObject* any_parent(const ObjectKind& kind)
    {
        if (kind.container)
            return kind.container;
        std::vector<ModelObject*> parents;
        for (ModelObject* object : document().objects())
            if (kind.children_of(Authored::state(*object)))
                parents.push_back(object);
        return parents.empty() ? nullptr : parents[std::size_t(number(int(parents.size())))];
    }
    qsizetype any_place(const ObjectKind& kind, const ModelObject& parent)
    {
        return number(int(kind.children_of(Authored::state(parent))->size()) + 1);
    }
    void make()
    {
        const ObjectKind& kind = document().kinds()[std::size_t(number(int(document().kinds().size())))];
        ModelObject* parent = kind.fixed ? nullptr : any_parent(kind);
        StatePtr state(parent ? kind.make_state(kind.saves_type ? number(3) : -1) : nullptr);
        if (!state)
            return;
        state->id = document().take_id();
        if (kind.unique_key) // No two may be alike.
            for (const FieldBase* field : state->fields()) {
                const Value now = field->get(*state);
                if (field->rules().derived
                    || field->key() == key<&ObjectState::id> || field->key() == key<&ObjectState::parent>)
                    continue;
                if (std::holds_alternative<QString>(now))
                    (void)field->set(*state, u"GUI_FUNC_%1_%2"_s.arg(state->id).arg(number(100000)));
                else if (std::holds_alternative<ObjectRef>(now))
                    (void)field->set(*state, ObjectRef{any_object()->id()});
                else
                    (void)field->set(*state, qint64(257 + number(100000)));
            }
        const auto object = document().create(kind, state);
        document().attach(*object, *parent, any_place(kind, *parent));
        for (int i = 0; i < 3; ++i)
            set_any_field(*object);
    }
    void set_any_field(ModelObject& object)
    {
        const FieldBase& field = *object.fields().at(std::size_t(number(int(object.fields().size()))));
        const bool is_key = object.kind() && object.kind()->unique_key && std::string_view(field.name()) != "text";
        if (field.rules().read_only || field.rules().derived || is_key)
            return;
        const Value now = Authored::property(object, field);
        if (std::holds_alternative<QString>(now))
            (void)object.set_property(field, QString(1 + number(5), QChar(u'a' + number(20))));
        else if (std::holds_alternative<bool>(now))
            (void)object.set_property(field, !std::get<bool>(now));
        else if (std::holds_alternative<TextMap>(now))
            (void)object.set_property(field, TextMap{{u"Body.%1"_s.arg(number(4)), u"v%1"_s.arg(number(9))}});
        else if (std::holds_alternative<ObjectRef>(now))
            (void)object.set_property(field, ObjectRef{any_object()->id()});
        else
            (void)object.set_property(field, qint64(number(300)));
    }
    void set_any_key()
    {
        const auto variables = document().objects_of(*document().kind("variables"));
        if (variables.empty())
            return;
        variables[std::size_t(number(int(variables.size())))]->write<VarState>([this](VarState& s) {
            if (s.keys.size() > 3 && number(3) == 0) {
                const qsizetype gone = number(int(s.keys.size()));
                s.keys.edit(std::span(&gone, 1), {});
            } else {
                s.keys.set_key({.time = float(number(40)) / 4, .value = KeyValue::number(float(number(100)))});
            }
        });
    }
    /// Objects that hang on others.
    ModelObject* any_movable()
    {
        ModelObject* object = any_object();
        return object->kind() && !object->kind()->fixed && object->parent() ? object : nullptr;
    }
    void remove(ModelObject* object)
    {
        if (object)
            document().detach(std::span(&object, 1));
    }
    void move(ModelObject* object)
    {
        ModelObject* parent = object ? any_parent(*object->kind()) : nullptr;
        if (!parent || object->kind()->unique_key)
            return;
        document().detach(std::span(&object, 1));
        document().attach(*object, *parent, any_place(*object->kind(), *parent));
    }
    void walk(int steps)
    {
        for (int i = 0; i < steps; ++i) {
            const UserAction action(m_scene.journal(), u"edit"_s);
            switch (number(10)) {
            case 0:
            case 1:
            case 2: make(); break;
            case 3: remove(number(2) ? any_movable() : nullptr); break;
            case 4: move(any_movable()); break;
            case 5:
            case 6: set_any_key(); break;
            default: set_any_field(*any_object()); break;
            }
        }
    }
    void expect_opens(const SceneSnapshot& scene)
    {
        QMap<QString, QByteArray> entries = scene.files;
        for (const auto& [entry, text] : package_texts(m_tables.document(), scene))
            entries.insert(entry, text);
        const auto again = m_tables.read_entries(entries);
        ASSERT_TRUE(again.ok()) << again.status().message().toStdString();
    }
    /// One base, two walks; answers whether the merge went without a conflict.
    bool merge_walks(int length)
    {
        version(u"ours"_s, [&] { walk(length); });
        version(u"theirs"_s, [&] { walk(length); });
        const MergedScene one = merge_files(u"base"_s, u"ours"_s, u"theirs"_s);
        const MergedScene other = merge_files(u"base"_s, u"theirs"_s, u"ours"_s, MergeSide::Theirs);
        expect_opens(one.scene);
        expect_opens(other.scene);
        EXPECT_EQ(one.conflicts.empty(), other.conflicts.empty());
        if (one.conflicts.empty()) {
            EXPECT_TRUE(same_text(content_of(one.scene), content_of(other.scene)));
        }
        expect_opens(merge_files(u"base"_s, u"ours"_s, u"theirs"_s, MergeSide::Theirs).scene);
        return one.conflicts.empty();
    }

    std::mt19937 m_random{GetParam()};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Seeds, RandomMerges, testing::Range(1u, 7u));

TEST_P(RandomMerges, give_one_scene_that_opens_whichever_side_is_ours)
{
    read_sample(u"tiny"_s);
    walk(200);
    keep(u"base"_s);
    int without_conflict = 0;
    const int rounds = long_tests() ? 200 : 6;
    for (int i = 0; i < rounds && !HasFailure(); ++i)
        without_conflict += merge_walks(3 << i % 4);
    EXPECT_GT(without_conflict, 0);
}

TEST_P(RandomMerges, with_a_side_that_did_nothing_are_what_the_other_side_made)
{
    read_sample(u"tiny"_s);
    walk(100);
    keep(u"base"_s);
    version(u"ours"_s, [&] { walk(60); });
    const QByteArray made = texts_of(read_version(u"ours"_s));
    for (const MergedScene& merged :
         {merge_files(u"base"_s, u"ours"_s, u"base"_s), merge_files(u"base"_s, u"base"_s, u"ours"_s),
          merge_files(u"base"_s, u"ours"_s, u"ours"_s)}) {
        EXPECT_TRUE(merged.conflicts.empty());
        EXPECT_TRUE(same_text(texts_of(merged.scene), made));
    }
}
