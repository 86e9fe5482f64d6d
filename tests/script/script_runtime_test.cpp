#include "script_fixture.h"

#include <stdexcept>

using namespace tarn;
using namespace tarn::test;

namespace {

struct LampState : StateOf<LampState> {
    QString name;
    int width = 10;
    bool visible = true;
    float angle = 0;
    QStringList lines;
    TextMap looks;
    QMap<QString, quint32> colors;
    ObjectRef partner;

    static const FieldTable& field_table()
    {
        using S = LampState;
        static const FieldTable table(
            nullptr, field<S, &S::name>("name"), field<S, &S::width>("width", 10, range(0, 500)),
            field<S, &S::visible>("visible", true), field<S, &S::angle>("angle"), field<S, &S::lines>("lines"),
            field<S, &S::looks>("looks"), field<S, &S::colors>("colors"), field<S, &S::partner>("partner"));
        return table;
    }
};

LampState* lamp(quint32 id, const QString& name)
{
    auto* state = new LampState;
    state->id = id;
    state->name = name;
    return state;
}

class Lamp final : public ModelObject {
public:
    Lamp(Document& document, quint32 id, const QString& name) : ModelObject(document, lamp(id, name)) {}
    const char* class_name() const override { return "Lamp"; }
    bool is_attached() const override { return attached; }
    bool attached = true;
};

class Lamps final : public ScriptObjects {
public:
    std::vector<Kind> kinds() const override { return {{"lamp", {u"查找灯", u"finds a lamp"}}}; }
    ScriptObject find(QLatin1String, const QString& name) const override
    {
        for (const auto& lamp : lamps)
            if (std::get<QString>(lamp->property(*lamp->fields().find("name"))) == name)
                return lamp;
        return nullptr;
    }
    ScriptObject find(QLatin1String, quint32 id) const override { return find(id); }
    ScriptObject find(quint32 id) const override
    {
        for (const auto& lamp : lamps)
            if (lamp->id() == id)
                return lamp;
        return nullptr;
    }
    std::vector<const char*> classes_of(const ModelObject&) const override { return {"lamp"}; }

    std::vector<std::shared_ptr<Lamp>> lamps;
};

class RuntimeTest : public ScriptTest {
protected:
    RuntimeTest()
    {
        for (const char16_t* name : {u"red", u"green"})
            m_lamps->lamps.push_back(
                std::make_shared<Lamp>(m_document, quint32(m_lamps->lamps.size() + 5), QString::fromUtf16(name)));
        make(api());
    }

    ScriptApi api()
    {
        const ScriptParameter function{"function", ScriptType::Function};
        return {{
                    {"add",
                     {{"a", ScriptType::Number}, {"b", ScriptType::Integer, {}, true}},
                     {u"相加", u"adds"},
                     [](ScriptCall& call) -> Result<ScriptValue> {
                         return ScriptValue(Value(call.number(0) + (call.has(1) ? double(call.integer(1)) : 0)));
                     }},
                    {"fail", {}, {}, [](ScriptCall&) -> Result<ScriptValue> { return Status::error(u"no light"_s); }},
                    {"explode", {}, {}, [](ScriptCall&) -> Result<ScriptValue> { throw std::runtime_error("boom"); }},
                    {"twice",
                     {function},
                     {},
                     [](ScriptCall& call) -> Result<ScriptValue> {
                         const ScriptValue one[] = {Value(qint64(1))};
                         auto first = call.invoke(call.function(0), one);
                         return first ? call.invoke(call.function(0), one) : first;
                     }},
                    {"delete_lamp",
                     {{"lamp", ScriptType::Object}},
                     {},
                     [this](ScriptCall& call) -> Result<ScriptValue> {
                         std::erase_if(m_lamps->lamps, [&](const auto& lamp) { return lamp.get() == &call.object(0); });
                         return ScriptValue(Value());
                     }},
                    {"lamps",
                     {},
                     {},
                     [this](ScriptCall&) -> Result<ScriptValue> {
                         return ScriptValue(std::vector<ScriptObject>(m_lamps->lamps.begin(), m_lamps->lamps.end()));
                     }},
                    {"trigger",
                     {{"name", ScriptType::Text}},
                     {},
                     [this](ScriptCall& call) -> Result<ScriptValue> {
                         return ScriptValue(Value(told(m_runtime->call(call.text(0)))));
                     }},
                    {"reset",
                     {},
                     {},
                     [this](ScriptCall&) -> Result<ScriptValue> {
                         m_runtime->reset();
                         return ScriptValue(Value());
                     }},
                    {"destroy",
                     {},
                     {},
                     [this](ScriptCall&) -> Result<ScriptValue> {
                         m_runtime.reset();
                         return ScriptValue(Value());
                     }},
                    {"hide",
                     {},
                     {u"隐藏", u"hides it"},
                     [](ScriptCall& call) -> Result<ScriptValue> {
                         ModelObject& lamp = call.object(0);
                         return lamp.set_property(*lamp.fields().find("visible"), Value(false)).ok()
                             ? ScriptValue(Value())
                             : ScriptValue(Value(false));
                     },
                     "lamp"},
                },
                m_lamps};
    }

    std::shared_ptr<Lamps> m_lamps = std::make_shared<Lamps>();
};

} // namespace

TEST_F(RuntimeTest, errors_tell_function_and_line_wherever_they_arise)
{
    const std::pair<QString, QString> cases[] = {
        {u"local a = {}\nlocal b = a.x.y"_s, u"Script \"main\", line 2: attempt to index a nil value (field 'x')"_s},
        {u"\n\nif"_s, u"Script \"main\", line 3: unexpected symbol near <eof>"_s},
        {u"\nfail()"_s, u"Script \"main\", line 2: no light"_s},
        {u"\nexplode()"_s, u"Script \"main\", line 2: the program failed here: boom"_s},
        {u"\nerror({})"_s, u"table: "_s},
        {u"\nerror()"_s, u"Script \"main\", line 2: nil"_s},
        {u"\nwhile true do end"_s, u"Script \"main\", line 2: the script was stopped: it ran too long"_s},
        {u"coroutine.wrap(function()\n error('deep') end)()"_s, u"Script \"main\", line 2: deep"_s},
        {u"\n\nlocal s = 'x' while true do s = s .. s end"_s,
         u"Script \"main\", line 3: the script was stopped: a text"_s},
        {u"add('x')"_s, u"line 1: add: the argument \"a\" has to be a number, not string"_s},
        {u"add(1, 2.5)"_s, u"\"b\" has to be a whole number"_s},
        {u"add(1, 2, 3)"_s, u"too many arguments (at most 2)"_s},
        {u"call('helper')"_s, u"Script \"helper: 中\", line 2: inner"_s},
        {u"call('none')"_s, u"Script \"main\", line 1: there is no script function named \"none\""_s},
    };
    define(u"helper: 中"_s, u"\nerror('inner')"_s);
    define(u"helper"_s, u"return call('helper: 中')"_s);
    for (const auto& [text, message] : cases)
        EXPECT_TRUE(told(text).contains(message)) << told(text).toStdString() << "\n" << message.toStdString();
    EXPECT_EQ(told(m_runtime->call(u"none"_s)), u"Script \"none\": there is no script function named \"none\""_s);
}

TEST_F(RuntimeTest, values_come_back_as_they_went_in)
{
    define(u"echo"_s, u"local a = ... return a"_s);
    const Value values[] = {Value(),
                            Value(true),
                            Value(qint64(1) << 60),
                            Value(0.1),
                            Value(u"中文 \0 text"_s),
                            Value(u"x"_s.repeated(5000)),
                            Value(QStringList{u"a"_s, u""_s})};
    for (const Value& value : values) {
        const ScriptValue arguments[] = {value};
        EXPECT_EQ(m_runtime->call(u"echo"_s, arguments).value, value);
    }
    EXPECT_EQ(told(u"return {1, {}}"_s), u"none"_s) << "such a table has no form outside";
    EXPECT_EQ(told(u"return select('#', ...)"_s), u"0"_s);
    const ScriptValue arguments[] = {ScriptObject(m_lamps->lamps[0]), Value(qint64(2))};
    define(u"sized"_s, u"local lamp, n = ... lamp.width = n return lamp.name"_s);
    EXPECT_EQ(told(m_runtime->call(u"sized"_s, arguments)), u"red"_s);
}

TEST_F(RuntimeTest, objects_are_read_and_written_through_their_fields)
{
    EXPECT_EQ(told(u"local l = lamp('red') l.width = 30 l:set('angle', 1.5) l.lines = {'a', 'b'} "
                   "return l.width + l:get('angle') .. #l.lines"_s),
              u"31.52"_s);
    EXPECT_EQ(
        told(u"local l = lamp('red') l.looks = {['Body.hover'] = 'a'} l.colors = {x = 7, y = 0} "
             "local c = l.colors l.looks = {} return tostring(c.x == 7) .. tostring(c.y) .. tostring(next(l.looks))"_s),
        u"truenilnil"_s);
    EXPECT_EQ(told(u"lamp(5).width = 900 return lamp('red').width"_s), u"500"_s);
    EXPECT_EQ(told(u"lamp('red').partner = lamp('green') return lamp('red').partner.name"_s), u"green"_s);
    EXPECT_EQ(told(u"return lamp('red').partner == lamp(6) and lamps()[2] == lamp(6) and lamp('blue') == nil"_s),
              u"true"_s);
    EXPECT_EQ(told(u"lamp('red'):hide() return lamp('red').visible"_s), u"false"_s);
    EXPECT_EQ(told(u"return tostring(lamp('red'))"_s), u"lamp 5"_s);
    const std::pair<QString, QString> wrong[] = {{u"return lamp(5).colour"_s, u"lamp 5 has no property \"colour\""_s},
                                                 {u"lamp(5).colour = 1"_s, u"has no property \"colour\""_s},
                                                 {u"lamp(5).width = 'x'"_s, u"lamp 5, property \"width\""_s},
                                                 {u"lamp(5).width = 0/0"_s, u"property \"width\""_s},
                                                 {u"lamp(5).looks = {a = 1}"_s, u"a table of texts by name"_s},
                                                 {u"lamp(5).looks = {a = 'x', b = {}}"_s, u"cannot take such"_s},
                                                 {u"lamp(5).lines = {1, {}}"_s, u"cannot take such a value"_s},
                                                 {u"local t = {} for i = 1, 2e3 do t[i] = ('x'):rep(1e3) end\n"
                                                  "pcall(function() lamp(5).lines = t end)"_s,
                                                  u"line 2: the script was stopped: the texts of a list"_s},
                                                 {u"lamp(5).hide()"_s, u"\"self\" has to be an object"_s},
                                                 {u"lamp(5).get({}, 'width')"_s, u"an object is needed"_s},
                                                 {u"setmetatable(lamp(5), {})"_s, u"table expected"_s}};
    for (const auto& [text, message] : wrong)
        EXPECT_TRUE(told(text).contains(message)) << told(text).toStdString();
}

TEST_F(RuntimeTest, a_handle_of_a_deleted_object_says_so_and_never_means_another)
{
    EXPECT_TRUE(
        told(u"kept = lamp('red') delete_lamp(kept)\nreturn kept.width"_s).contains(u"line 2: lamp 5 was deleted"_s));
    m_lamps->lamps.push_back(std::make_shared<Lamp>(m_document, 9, u"new"_s));
    EXPECT_TRUE(told(u"local new = lamp('new') return kept.name"_s).contains(u"lamp 5 was deleted"_s));
    EXPECT_EQ(told(u"return lamp('new').name"_s), u"new"_s);
    EXPECT_TRUE(told(u"kept:hide()"_s).contains(u"deleted"_s));
    EXPECT_EQ(told(u"return tostring(kept)"_s), u"deleted lamp 5"_s);
    m_lamps->lamps[0]->attached = false;
    EXPECT_TRUE(told(u"return lamp('green').name"_s).contains(u"deleted"_s));
}

TEST_F(RuntimeTest, verbs_can_call_functions_of_the_script_within_its_limits)
{
    EXPECT_EQ(told(u"local n = 0 twice(function(i) n = n + i end) return n"_s), u"2"_s);
    EXPECT_EQ(told(u"twice(function()\nerror('inside') end)"_s), u"Script \"main\", line 2: inside"_s);
    EXPECT_TRUE(run(u"while true do pcall(twice, function() while true do end end) end"_s).error->stopped);
    EXPECT_TRUE(told(u"twice(function() wait(1) end)"_s).contains(u"wait cannot be used here"_s));
    EXPECT_EQ(told(u"local l = lamp('red') twice(function() if lamp('red') then delete_lamp(l) end end) return 1"_s),
              u"1"_s);
}

TEST_F(RuntimeTest, functions_call_each_other_with_arguments_results_and_a_limit)
{
    define(u"sum"_s, u"local a, b = ... return a + b, 'second'"_s);
    EXPECT_EQ(told(u"local s, t = call('sum', 2, 3) return s .. t"_s), u"5second"_s);
    EXPECT_TRUE(told(u"return call('main')"_s).contains(u"too deeply (at most 50 levels)"_s));
    EXPECT_EQ(told(u"for i = 1, 200 do pcall(call, 'sum', {}) end return call('sum', 1, 1)"_s), u"2"_s)
        << "failed calls do not count as open";
    define(u"again"_s, u"return trigger('again')"_s);
    EXPECT_TRUE(told(m_runtime->call(u"again"_s)).contains(u"too deeply"_s));
    define(u"loop"_s, u"while true do end"_s);
    EXPECT_TRUE(run(u"while true do trigger('loop') end"_s).error->stopped);
}

TEST_F(RuntimeTest, a_text_that_is_tried_stands_in_for_its_function_until_reset)
{
    define(u"f"_s, u"return 'kept'"_s);
    define(u"calls"_s, u"return call('f')"_s);
    EXPECT_EQ(told(m_runtime->call(u"calls"_s)), u"kept"_s);
    const auto changes = m_functions.changes();
    ASSERT_TRUE(m_runtime->try_text(u"f"_s, u"return 'tried'"_s));
    EXPECT_EQ(told(m_runtime->call(u"calls"_s)), u"tried"_s);
    EXPECT_FALSE(m_runtime->try_text(u"f"_s, QString(IFunc::max_text + 1, u' ')));
    EXPECT_EQ(told(m_runtime->call(u"f"_s)), u"tried"_s);
    ASSERT_TRUE(m_runtime->try_text(u"f"_s, u"return = 1"_s));
    EXPECT_FALSE(m_runtime->call(u"f"_s).ok());
    ASSERT_TRUE(m_runtime->try_text(u"calls"_s, u"return 'other ' .. call('f')"_s));
    EXPECT_EQ(told(m_runtime->call(u"calls"_s)), u"other kept"_s);
    EXPECT_EQ(m_functions.changes(), changes);
    m_runtime->reset();
    EXPECT_EQ(told(m_runtime->call(u"calls"_s)), u"kept"_s);
}

TEST_F(RuntimeTest, a_changed_text_is_used_at_once_and_globals_last_until_reset)
{
    EXPECT_EQ(told(u"n = (n or 0) + 1 return n"_s), u"1"_s);
    EXPECT_EQ(told(u"n = n + 1 return n"_s), u"2"_s);
    (void)m_functions.find_function(u"main"_s)->set_text(u"return 'changed'"_s);
    EXPECT_EQ(told(m_runtime->call(u"main"_s)), u"changed"_s);
    m_runtime->reset();
    EXPECT_EQ(told(u"return n"_s), u"none"_s);
}

TEST_F(RuntimeTest, waiting_calls_go_on_in_the_order_of_their_times)
{
    m_runtime->tick(10);
    define(u"late"_s, u"wait(2) print('late', time())"_s);
    define(u"early"_s, u"for i = 1, 2 do pcall(wait, 1) print('early', i) end error('end')"_s);
    EXPECT_TRUE(m_runtime->call(u"late"_s).suspended);
    EXPECT_TRUE(m_runtime->call(u"early"_s).suspended);
    for (const double now : {10.5, 11.0, 12.5})
        m_runtime->tick(now);
    EXPECT_EQ(m_printed.join(u';'), u"early\t1;late\t12.5;early\t2"_s);
    EXPECT_EQ(m_errors.join(u';'), u"Script \"early\", line 1: end"_s);
    EXPECT_EQ(m_runtime->suspended(), 0u);
}

TEST_F(RuntimeTest, calls_that_waited_tell_their_end_even_when_a_reset_drops_them)
{
    std::vector<std::pair<quint64, QString>> ended;
    m_runtime->on_ended = [&](quint64 call, const ScriptResult& result) {
        ended.emplace_back(call, result.suspended ? u"dropped"_s : told(result));
    };
    m_runtime->on_print = [&](const QString&) { m_runtime->reset(); };
    define(u"answers"_s, u"wait(1) return 5"_s);
    define(u"resets"_s, u"wait(2) print()"_s);
    define(u"sleeps"_s, u"wait(3)"_s);
    EXPECT_EQ(m_runtime->call(u"main"_s).call, 0u);
    const quint64 answers = m_runtime->call(u"answers"_s).call;
    const quint64 resets = m_runtime->call(u"resets"_s).call;
    const quint64 sleeps = m_runtime->call(u"sleeps"_s).call;
    m_runtime->tick(1);
    EXPECT_EQ(ended, (decltype(ended){{answers, u"5"_s}}));
    m_runtime->tick(2.5);
    EXPECT_EQ(ended, (decltype(ended){{answers, u"5"_s}, {sleeps, u"dropped"_s}, {resets, u"dropped"_s}}));
    EXPECT_GT(m_runtime->call(u"sleeps"_s).call, sleeps) << "no number comes again";
}

TEST_F(RuntimeTest, waits_have_limits_and_end_with_reset_or_their_owner)
{
    for (const char16_t* wrong : {u"wait(-1)", u"wait(0/0)", u"wait(1e9)", u"wait('1')", u"wait()",
                                  u"coroutine.wrap(function() wait(1) end)()"})
        EXPECT_FALSE(run(QString::fromUtf16(wrong)).ok());
    define(u"waits"_s, u"wait(1) print(lamp('red').name)"_s);
    for (int i = 0; i < 1000; ++i)
        ASSERT_TRUE(m_runtime->call(u"waits"_s).suspended);
    EXPECT_TRUE(told(m_runtime->call(u"waits"_s)).contains(u"too many scripts are waiting"_s));
    m_runtime->reset();
    EXPECT_EQ(m_runtime->suspended(), 0u);

    EXPECT_TRUE(m_runtime->call(u"waits"_s, {}, m_lamps->lamps[0]).suspended);
    EXPECT_TRUE(m_runtime->call(u"waits"_s, {}, m_lamps->lamps[1]).suspended);
    m_lamps->lamps.pop_back();
    m_runtime->tick(5);
    EXPECT_EQ(m_printed, QStringList{u"red"_s});
    EXPECT_TRUE(m_errors.isEmpty());
}

TEST_F(RuntimeTest, a_wait_cannot_be_used_to_run_for_ever_or_be_resumed_by_a_script)
{
    define(u"spins"_s, u"while true do wait(0) end"_s);
    define(u"loops"_s, u"wait(0) while true do end"_s);
    EXPECT_TRUE(m_runtime->call(u"spins"_s).suspended);
    EXPECT_TRUE(m_runtime->call(u"loops"_s).suspended);
    m_runtime->tick(1);
    m_runtime->tick(1);
    EXPECT_EQ(m_runtime->suspended(), 1u);
    EXPECT_EQ(m_errors.size(), 1);
    define(u"stores"_s, u"thread = coroutine.running() wait(1)"_s);
    EXPECT_TRUE(m_runtime->call(u"stores"_s).suspended);
    EXPECT_EQ(told(u"return tostring(coroutine.resume(thread)) .. coroutine.status(thread) .. "
                   "tostring(pcall(coroutine.close, thread))"_s),
              u"falsenormalfalse"_s);
}

TEST_F(RuntimeTest, verbs_may_delete_what_is_running)
{
    EXPECT_TRUE(run(u"n = 1 reset() n = 2 print('on')"_s).error->stopped);
    EXPECT_EQ(told(u"return n"_s), u"none"_s);
    EXPECT_TRUE(run(u"pcall(destroy) print('on')"_s).error->stopped);
    EXPECT_EQ(m_runtime, nullptr);
    EXPECT_TRUE(m_printed.isEmpty());
    make(api());
    define(u"waits"_s, u"wait(1) destroy() print('on')"_s);
    EXPECT_TRUE(m_runtime->call(u"waits"_s).suspended);
    EXPECT_TRUE(m_runtime->call(u"waits"_s).suspended);
    m_runtime->tick(2);
    EXPECT_EQ(m_runtime, nullptr);
    EXPECT_TRUE(m_printed.isEmpty());
}

TEST_F(RuntimeTest, the_table_of_verbs_tells_everything_that_can_be_called)
{
    QStringList names;
    for (const ScriptVerb& verb : m_runtime->verbs()) {
        names << QLatin1String(verb.name);
        if (verb.of || names.back() == u"fail"_s)
            continue;
        EXPECT_EQ(told(u"return type(%1)"_s.arg(names.back())), u"function"_s) << verb.name;
    }
    EXPECT_TRUE(names.join(u' ').startsWith(u"print time wait call random get set lamp add"_s))
        << names.join(u' ').toStdString();
}

TEST_F(RuntimeTest, a_text_is_checked_without_running_it)
{
    EXPECT_TRUE(ScriptRuntime::check(u"while true do end"_s).empty());
    const auto errors = ScriptRuntime::check(u"local a\nlocal = 1"_s);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].line, 2);
    EXPECT_EQ(errors[0].message, u"<name> expected near '='"_s);
}
