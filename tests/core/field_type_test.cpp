#include "core/field.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarn;

namespace {

struct PartState : StateOf<PartState> {
    ObjectRef home;
    IdList parts;
    TextMap pictures;
    QString text;

    static const FieldTable& field_table()
    {
        using S = PartState;
        static const FieldTable table(nullptr, field<S, &S::home>("home"), field<S, &S::parts>("parts"),
                                      field<S, &S::pictures>("pictures", {}, picture_name()),
                                      field<S, &S::text>("text"));
        return table;
    }
};

struct WideState : StateOf<WideState, PartState> {
    int text = 0; // hides the other

    static const FieldTable& field_table()
    {
        static const FieldTable table(&PartState::field_table(), field<WideState, &WideState::text>("wide_text"));
        return table;
    }
};

} // namespace

TEST(FieldKey, tells_members_apart_and_finds_them_in_tables_of_derived_states)
{
    const FieldTable& table = WideState::field_table();
    EXPECT_STREQ(table.find(key<&WideState::home>)->name(), "home");
    EXPECT_STREQ(table.find(key<&PartState::text>)->name(), "text");
    EXPECT_STREQ(table.find(key<&WideState::text>)->name(), "wide_text");
    EXPECT_EQ(PartState::field_table().find(key<&WideState::text>), nullptr);
    EXPECT_EQ(table.find(key<&PartState::id>), nullptr) << "a member, but no attribute";
    EXPECT_FALSE(FieldKey());
}

TEST(FieldType, references_are_met_and_changed_wherever_they_stand)
{
    PartState state;
    state.home = {3};
    state.parts = {{4}, {}, {3}};
    QList<quint32> met;
    for (const FieldBase* field : state.fields())
        field->each_reference(std::as_const(state), [&](ObjectRef reference) { met.append(reference.id); });
    EXPECT_EQ(met, (QList<quint32>{3, 4, 0, 3}));
    const IdList before = state.parts;
    for (const FieldBase* field : state.fields())
        field->each_reference(state, [](ObjectRef& reference) { reference.id += 10; });
    EXPECT_EQ(state.home.id, 13u);
    EXPECT_EQ(state.parts, (IdList{{14}, {10}, {13}}));
    EXPECT_EQ(before.first().id, 4u) << "another that shared the list";
}

TEST(FieldType, pictures_in_a_map_follow_a_new_name)
{
    PartState state;
    state.pictures = {{u"Body.normal"_s, u"a.png"_s}, {u"Body.hover"_s, u"b.png"_s}};
    const FieldBase& field = *state.fields().find(key<&PartState::pictures>);
    EXPECT_EQ(field.names(state), (QStringList{u"b.png"_s, u"a.png"_s}));
    field.rename(state, [](const QString& name) { return name == u"a.png" ? u"c.png"_s : name; });
    EXPECT_EQ(state.pictures[u"Body.normal"_s], u"c.png"_s);
    EXPECT_EQ(state.pictures[u"Body.hover"_s], u"b.png"_s);
}

TEST(FieldType, a_reference_and_a_list_of_ids_take_numbers)
{
    PartState state;
    const FieldTable& table = state.fields();
    ASSERT_TRUE(table.find("home")->set(state, qint64(7)).ok());
    ASSERT_TRUE(table.find("parts")->set(state, NumberList{1, 2}).ok());
    EXPECT_FALSE(table.find("parts")->set(state, NumberList{-1}).ok());
    EXPECT_EQ(table.find("home")->get(state), Value(ObjectRef{7}));
    EXPECT_EQ(table.find("parts")->get(state), Value(IdList{{1}, {2}}));
    JsonWriter writer;
    write_state(state, writer);
    EXPECT_EQ(writer.text(), R"({"home":7,"parts":[1,2]})");
}

TEST(FieldType, counts_the_bytes_that_another_state_does_not_share)
{
    PartState state;
    state.text = QString(1000, u'x');
    state.pictures = {{u"a"_s, QString(100, u'y')}, {u"b"_s, QString(100, u'z')}};
    PartState other(state);
    const auto bytes = [&](FieldKey field) { return state.fields().find(field)->kept_bytes(state, other); };
    EXPECT_EQ(bytes(key<&PartState::text>), 0u);
    EXPECT_EQ(bytes(key<&PartState::pictures>), 0u);
    other.text += u'x';
    other.pictures[u"b"_s] = u"w"_s;
    EXPECT_NEAR(double(bytes(key<&PartState::text>)), 2000, 200);
    EXPECT_NEAR(double(bytes(key<&PartState::pictures>)), 400, 200) << "the first picture's name is shared";
}
