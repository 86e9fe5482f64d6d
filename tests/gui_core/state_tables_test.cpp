// What holds for the attributes of every class of the model, whatever they are.

#include "core/field.h"
#include "gui_core/control_class.h"
#include "support/gui_fixture.h"

#include <cmath>
#include <set>

using namespace tarn;
using namespace tarn::test;

namespace {

struct StateClass {
    QByteArray name;
    StatePtr fresh;
};

std::vector<StateClass> all_classes()
{
    Document document;
    CGuiCore core(document);
    std::vector<StateClass> classes{{"CGuiCore", StatePtr(new CoreState)}};
    for (const ObjectKind& kind : document.kinds())
        if (!kind.saves_type && !kind.fixed)
            classes.push_back({kind.key, StatePtr(kind.make_state(-1))});
    for (const ControlClass& row : control_classes())
        if (row.create)
            classes.push_back({row.class_name, StatePtr(row.make_state())});
    return classes;
}

class EveryState : public testing::TestWithParam<StateClass> {
protected:
    StatePtr fresh() const { return StatePtr(GetParam().fresh->clone()); }
    /// Without what is neither set nor saved with the others: lists of children, and what is no value at all.
    std::vector<const FieldBase*> fields() const
    {
        std::vector<const FieldBase*> all;
        for (const FieldBase* field : GetParam().fresh->fields())
            if (!field->rules().children && field->get(*GetParam().fresh).index() != 0)
                all.push_back(field);
        return all;
    }
    const FieldTable& table() const { return GetParam().fresh->fields(); }
};

/// A value that the field may hold and that is not its default.
Value other_value(const FieldBase& field, const ObjectState& state)
{
    const Value now = field.get(state);
    const auto bounded = [&](double number) {
        return std::clamp(number, std::max(field.rules().minimum, -1e9), std::min(field.rules().maximum, 4e9));
    };
    if (const auto* flag = std::get_if<bool>(&now))
        return !*flag;
    if (const auto* whole = std::get_if<qint64>(&now))
        return qint64(bounded(double(*whole) + 1)) != *whole ? qint64(bounded(double(*whole) + 1)) : *whole - 1;
    if (const auto* real = std::get_if<double>(&now))
        return *real + 0.1;
    if (std::holds_alternative<QStringList>(now))
        return QStringList{u"湖"_s, QString(), u"\"\\\n"_s};
    if (std::holds_alternative<NumberList>(now))
        return NumberList{0, 0xff00ff00u, 0xffffffffu};
    if (const auto* reference = std::get_if<ObjectRef>(&now))
        return ObjectRef{reference->id + 1};
    if (std::holds_alternative<TextMap>(now))
        return TextMap{{u"Body.hover"_s, u"湖.png"_s}, {u"\"\\\n"_s, u"a"_s}};
    if (std::holds_alternative<NumberMap>(now))
        return NumberMap{{u"Body.hover"_s, 0xffffffffu}, {u"from later.湖"_s, 1}};
    return u"湖 \U0001F600 \"\\\n"_s;
}

bool is_map(const Value& value)
{
    return std::holds_alternative<TextMap>(value) || std::holds_alternative<NumberMap>(value);
}

bool is_list(const Value& value)
{
    return std::holds_alternative<QStringList>(value) || std::holds_alternative<NumberList>(value) || is_map(value);
}

QByteArray text_of(const ObjectState& state)
{
    JsonWriter writer;
    write_state(state, writer);
    return QByteArray::fromStdString(writer.text());
}

Status read_text(const QByteArray& json, ObjectState& state)
{
    return JsonText("{\"o\":\n" + json + "}", u"scene.json"_s).each_member([&](std::string_view, JsonCursor& cursor) {
        return read_state(state, cursor);
    });
}

/// JSON that is no value of the field.
std::vector<QByteArray> wrong_json(const FieldBase& field, const ObjectState& state)
{
    std::vector<QByteArray> wrong{"null", "[{}]"};
    const Value now = field.get(state);
    if (is_map(now))
        wrong.insert(wrong.end(), {"[]", "{\"a\":null}", "{\"a\":true}"});
    else
        wrong.push_back("{}");
    if (std::holds_alternative<TextMap>(now))
        wrong.insert(wrong.end(), {"{\"a\":1}", "{\"a\":\"b\",\"a\":\"b\"}"});
    if (std::holds_alternative<NumberMap>(now))
        wrong.insert(wrong.end(), {"{\"a\":\"1\"}", "{\"a\":-1}", "{\"a\":1.5}"});
    if (!std::holds_alternative<QStringList>(now))
        wrong.push_back("[\"a\"]");
    if (std::holds_alternative<NumberList>(now))
        wrong.insert(wrong.end(), {"[null]", "[-1]", "[1.5]", "[4294967296]", "[[1]]"});
    if (!std::holds_alternative<QString>(now))
        wrong.push_back("\"5\"");
    if (!std::holds_alternative<bool>(now))
        wrong.push_back("true");
    if (std::holds_alternative<bool>(now) || std::holds_alternative<QString>(now) || is_list(now))
        wrong.push_back("1");
    if (std::holds_alternative<qint64>(now))
        wrong.insert(wrong.end(), {"1.5", "1e99", "99999999999", "9223372036854775808"});
    if (std::holds_alternative<double>(now))
        wrong.insert(wrong.end(), {"1e39", "-1e999", "NaN"});
    return wrong;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Classes, EveryState, testing::ValuesIn(all_classes()),
                         [](const auto& row) { return row.param.name.toStdString(); });

TEST_P(EveryState, has_attributes_of_different_names_that_need_no_escapes)
{
    std::set<std::string> names;
    EXPECT_EQ(table().find(FieldKey()), nullptr);
    for (const FieldBase* field : fields()) {
        const std::string name = field->name();
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"), std::string::npos) << name;
        EXPECT_EQ(table().find(name), field) << name;
        EXPECT_EQ(table().find(field->key()), field) << name << " has another's key";
    }
    EXPECT_EQ(table().find("no_such_name"), nullptr);
}

TEST_P(EveryState, writes_nothing_that_is_as_it_always_is)
{
    // The type tells which class to make; the screen's size is told to whoever reads the text.
    const std::set<std::string> always{"type", "screen_width", "screen_height"};
    const StatePtr state = fresh();
    for (const FieldBase* field : fields())
        EXPECT_NE(field->is_default(*state), always.contains(field->name())) << field->name();
}

TEST_P(EveryState, keeps_every_attribute_through_writing_reading_and_cloning)
{
    for (const FieldBase* field : fields()) {
        const StatePtr state = fresh();
        const Value wanted = other_value(*field, *state);
        ASSERT_TRUE(field->set(*state, wanted).ok()) << field->name();
        state->settle(WrittenFields::whole());
        if (field->is_default(*state))
            continue; // It hangs on others: nothing is selected where there are no items.
        EXPECT_FALSE(field->same(*state, *GetParam().fresh)) << field->name();

        const StatePtr back = fresh();
        const Status status = read_text(text_of(*state), *back);
        ASSERT_TRUE(status.ok()) << status.message().toStdString();
        const StatePtr cloned(state->clone());
        for (const FieldBase* other : fields()) {
            EXPECT_TRUE(other->same(*state, *back)) << field->name() << " through text, " << other->name();
            EXPECT_TRUE(other->same(*state, *cloned)) << field->name() << " by cloning, " << other->name();
        }
        EXPECT_EQ(text_of(*back), text_of(*state));
    }
}

TEST_P(EveryState, copies_one_attribute_and_leaves_the_others)
{
    for (const FieldBase* field : fields()) {
        const StatePtr changed = fresh();
        ASSERT_TRUE(field->set(*changed, other_value(*field, *changed)).ok());
        const StatePtr there = fresh();
        field->copy(*changed, *there);
        EXPECT_EQ(text_of(*there), text_of(*changed)) << field->name();
        EXPECT_LE(field->kept_bytes(*changed, *there), sizeof(QString)) << field->name() << " is shared";
        field->copy(*fresh(), *there);
        EXPECT_EQ(text_of(*there), text_of(*fresh())) << field->name() << " back again";
    }
}

TEST_P(EveryState, refuses_values_of_another_kind_and_stays_as_it_was)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const FieldBase* field : fields()) {
        const StatePtr state = fresh();
        const bool list = is_list(field->get(*state));
        const bool number = !std::holds_alternative<QString>(field->get(*state)) && !list;
        EXPECT_EQ(field->set(*state, QStringList()).ok(), list) << "an empty table may be of any kind";
        std::vector<Value> wrong{Value()};
        if (!list)
            wrong.push_back(NumberList{});
        if (std::holds_alternative<QStringList>(field->get(*state)))
            wrong.insert(wrong.end(), {NumberList{5}, TextMap{{u"a"_s, u"b"_s}}});
        if (std::holds_alternative<TextMap>(field->get(*state)))
            wrong.insert(wrong.end(), {QStringList{u"a"_s}, NumberMap{{u"a"_s, 1}}});
        if (std::holds_alternative<NumberMap>(field->get(*state)))
            wrong.insert(wrong.end(), {NumberList{1}, NumberMap{{u"a"_s, -1}}, NumberMap{{u"a"_s, infinity}}});
        if (std::holds_alternative<NumberList>(field->get(*state)))
            wrong.insert(wrong.end(), {QStringList{u"5"_s}, NumberList{5, -1}, NumberList{infinity}, NumberList{1e10}});
        if (number)
            wrong.insert(wrong.end(), {std::nan(""), infinity, -infinity, u"5"_s, QStringList{u"5"_s}});
        else
            wrong.insert(wrong.end(), {qint64(5), true, 5.0});
        if (std::holds_alternative<qint64>(field->get(*state)))
            wrong.insert(wrong.end(), {1e300, -1e300, qint64(1) << 40});
        if (std::holds_alternative<double>(field->get(*state)))
            wrong.push_back(1e300);
        for (const Value& value : wrong) {
            const Status status = field->set(*state, value);
            EXPECT_FALSE(status.ok()) << field->name() << ", kind " << value.index();
            EXPECT_FALSE(status.message().isEmpty());
        }
        EXPECT_TRUE(field->same(*state, *GetParam().fresh)) << field->name();
    }
}

TEST_P(EveryState, holds_numbers_and_texts_to_the_rules_when_set_and_when_read)
{
    for (const FieldBase* field : fields()) {
        const FieldRules& rules = field->rules();
        const Value now = field->get(*GetParam().fresh);
        for (const double beyond : {rules.minimum - 1, rules.maximum + 1}) {
            if (std::abs(beyond) > 1e9 || std::holds_alternative<QString>(now) || is_list(now))
                continue;
            const StatePtr state = fresh();
            ASSERT_TRUE(field->set(*state, beyond).ok()) << field->name();
            const Value held = field->get(*state);
            const double limit = beyond < rules.minimum ? rules.minimum : rules.maximum;
            EXPECT_EQ(held.index() == 3 ? std::get<double>(held) : double(std::get<qint64>(held)), limit)
                << field->name();
            state->settle(WrittenFields::whole());
            const StatePtr read = fresh();
            ASSERT_TRUE(
                read_text("{\"" + QByteArray(field->name()) + "\":" + QByteArray::number(qint64(beyond)) + "}", *read)
                    .ok());
            EXPECT_TRUE(field->same(*state, *read)) << field->name();
        }
        if (std::holds_alternative<QString>(now) && rules.max_length < 1000) {
            const QString whole(rules.max_length - 1, u'x');
            const StatePtr state = fresh();
            ASSERT_TRUE(field->set(*state, Value(whole + u"\U0001F600"_s)).ok());
            EXPECT_EQ(std::get<QString>(field->get(*state)), whole) << field->name();
            const StatePtr read = fresh();
            ASSERT_TRUE(
                read_text("{\"" + QByteArray(field->name()) + "\":\"" + whole.toUtf8() + "e\xcc\x81\"}", *read).ok());
            EXPECT_EQ(std::get<QString>(field->get(*read)), whole) << field->name();
        }
    }
}

TEST_P(EveryState, keeps_members_that_no_attribute_knows_byte_for_byte)
{
    const QByteArray json = "{\"zzz\":{ \"deep\" : [1.50, null, \"\\u6e56\"] },\"new_colour\":\"\\/\",\"x y\\n\":[]}";
    const StatePtr state = fresh();
    ASSERT_TRUE(read_text(json, *state).ok());
    EXPECT_TRUE(text_of(*state).endsWith(json.mid(1))) << text_of(*state).toStdString();
    const StatePtr again = fresh();
    ASSERT_TRUE(read_text(text_of(*state), *again).ok());
    EXPECT_EQ(text_of(*again), text_of(*state));
}

TEST_P(EveryState, reading_refuses_what_is_wrong_and_names_file_line_and_attribute)
{
    for (const FieldBase* field : fields()) {
        const QByteArray name = field->name();
        const StatePtr state = fresh();
        ASSERT_TRUE(field->set(*state, other_value(*field, *state)).ok());
        std::vector<QByteArray> wrong = wrong_json(*field, *state);
        JsonWriter writer;
        field->write(*state, writer);
        const QByteArray good = QByteArray::fromStdString(writer.text());
        wrong.push_back(good + ",\"" + name + "\":" + good); // twice
        for (const QByteArray& json : wrong) {
            const Status status = read_text("{\"" + name + "\":" + json + "}", *fresh());
            EXPECT_FALSE(status.ok()) << name.toStdString() << ": " << json.toStdString();
            EXPECT_TRUE(status.message().startsWith(u"scene.json"_s) && status.message().contains(u'2')
                        && status.message().contains(QString::fromLatin1(name)))
                << status.message().toStdString();
        }
    }
}

TEST(ControlClasses, those_that_can_be_made_are_what_their_row_says)
{
    Document document;
    CGuiCore core(document);
    int last = -1;
    for (const ControlClass& row : control_classes()) {
        EXPECT_GT(row.type, last) << "by ascending number";
        last = row.type;
        EXPECT_FALSE(GetControlTypeName(row.type).isEmpty());
        const CDXUTControl* control = core.create_control(row.type, core.GetRootDialog(), {});
        EXPECT_EQ(control->GetType(), row.type);
        EXPECT_STREQ(control->class_name(), row.class_name);
    }
    for (const int unused : {-1, 7, 12, 14, 15, 20})
        EXPECT_TRUE(GetControlTypeName(unused).isEmpty() && !core.create_control(unused, core.GetRootDialog(), {}))
            << unused;
}

TEST(ReadOnlyAttributes, are_refused_to_automation)
{
    Document document;
    CGuiCore core(document);
    CDXUTDialog* dialog = core.create_dialog({0, 0, 100, 100});
    CDXUTControl* control = core.create_control(DXUT_CONTROL_BUTTON, dialog, {0, 0, 10, 10});
    EXPECT_FALSE(set(*dialog, "id", qint64(7)).ok());
    EXPECT_FALSE(set(*dialog, "control_ids", NumberList()).ok());
    for (const char* name : {"id", "type", "dialog"})
        EXPECT_FALSE(set(*control, name, qint64(7)).ok()) << name;
    EXPECT_EQ(core.find_control(control->id()), control);
}
