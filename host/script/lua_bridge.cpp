#include "lua_bridge.h"
#include "core/authored.h"

#include "core/language.h"
#include "core/utf8.h"

#include <QMap>
#include <QStringEncoder>

#include <cmath>
#include <new>

namespace tarn::lua {

namespace {

const char handle_type = 0;  ///< registry: the metatable of handles
const char handle_cache = 0; ///< registry: handles by their objects, as long as Lua holds them
const char reach_key = 0;    ///< registry: the ScriptReach

struct Handle {
    std::weak_ptr<ModelObject> object;
    quint32 id;
    const char* kind; ///< what the object is called, also when it is gone
};

struct Push {
    lua_State* lua;

    void operator()(std::monostate) const { lua_pushnil(lua); }
    void operator()(bool flag) const { lua_pushboolean(lua, flag); }
    void operator()(qint64 number) const { lua_pushinteger(lua, number); }
    void operator()(double number) const { lua_pushnumber(lua, number); }
    void operator()(const QString& text) const { push_text(lua, text); }
    void operator()(ObjectRef reference) const { lua_pushinteger(lua, reference.id); }
    void operator()(const Value& value) const { std::visit(*this, value); }
    void operator()(const ScriptObject& object) const;
    void operator()(ScriptFunction) const { lua_pushnil(lua); }
    template <class T>
    void operator()(const QMap<QString, T>& map) const
    {
        luaL_checkstack(lua, 8, nullptr);
        lua_createtable(lua, 0, int(map.size()));
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            push_text(lua, entry.key());
            (*this)(entry.value());
            lua_rawset(lua, -3);
        }
    }
    template <class List>
    void operator()(const List& list) const
    {
        luaL_checkstack(lua, 8, nullptr);
        lua_createtable(lua, int(list.size()), 0);
        lua_Integer place = 0;
        for (const auto& item : list) {
            (*this)(item);
            lua_rawseti(lua, -2, ++place);
        }
    }
};

QString say(const ScriptReach& reach, const char16_t* chinese, const char16_t* english)
{
    return reach.in_english ? QString::fromUtf16(english) : lang(chinese, english);
}

const ScriptReach& reach_of(lua_State* lua)
{
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &reach_key);
    const auto* reach = static_cast<const ScriptReach*>(lua_touserdata(lua, -1));
    lua_pop(lua, 1);
    return *reach;
}

const char* kind_of(const ScriptReach& reach, const ModelObject& object)
{
    const auto classes = reach.scene ? reach.scene->classes_of(object) : std::vector<const char*>();
    return classes.empty() ? object.class_name() : classes.front();
}

QString numbered(const char* kind, quint32 id)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(id);
}

void Push::operator()(const ScriptObject& object) const
{
    if (!object) {
        lua_pushnil(lua);
        return;
    }
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &handle_cache);
    if (lua_rawgetp(lua, -1, object.get()) == LUA_TUSERDATA) {
        // The place in memory may have been another object's.
        const auto* known = static_cast<const Handle*>(lua_touserdata(lua, -1));
        if (!known->object.owner_before(object) && !object.owner_before(known->object)) {
            lua_remove(lua, -2);
            return;
        }
    }
    lua_pop(lua, 1);
    const char* kind = kind_of(reach_of(lua), *object);
    new (lua_newuserdatauv(lua, sizeof(Handle), 0)) Handle{object, object->id(), kind};
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &handle_type);
    lua_setmetatable(lua, -2);
    lua_pushvalue(lua, -1);
    lua_rawsetp(lua, -3, object.get());
    lua_remove(lua, -2);
}

/// The table at `index` when each of its elements is a T, which `type` is in Lua. What it says of its length is no
/// measure of what it holds.
template <class T, class Read>
std::optional<Value> read_list(lua_State* lua, int index, int type, ReadBudget& budget, Read read)
{
    QList<T> list;
    const lua_Unsigned count = lua_rawlen(lua, index);
    for (lua_Unsigned i = 1; i <= count; ++i) {
        const bool is_wanted = lua_rawgeti(lua, index, lua_Integer(i)) == type;
        if (is_wanted)
            budget.used += type == LUA_TSTRING ? lua_rawlen(lua, -1) : sizeof(T);
        const bool fits = is_wanted && budget.used <= budget.limit;
        if (fits)
            list.append(read(lua, -1));
        lua_pop(lua, 1);
        if (!fits)
            return std::nullopt;
    }
    return Value(std::move(list));
}

/// The table at `index` when all its keys are texts and each of its elements is a T.
template <class T, class Read>
std::optional<Value> read_map(lua_State* lua, int index, int type, ReadBudget& budget, Read read)
{
    QMap<QString, T> map;
    lua_pushnil(lua);
    while (lua_next(lua, index)) {
        const bool is_wanted = lua_type(lua, -2) == LUA_TSTRING && lua_type(lua, -1) == type;
        if (is_wanted)
            budget.used += lua_rawlen(lua, -2) + (type == LUA_TSTRING ? lua_rawlen(lua, -1) : sizeof(T));
        if (!is_wanted || budget.used > budget.limit) {
            lua_pop(lua, 2);
            return std::nullopt;
        }
        map.insert(read_text(lua, -2), read(lua, -1));
        lua_pop(lua, 1);
    }
    return Value(std::move(map));
}

/// What the first entry of a table that is no list holds; LUA_TNONE for an empty table.
int type_in_map(lua_State* lua, int index)
{
    lua_pushnil(lua);
    if (!lua_next(lua, index))
        return LUA_TNONE;
    const int type = lua_type(lua, -1);
    lua_pop(lua, 2);
    return type;
}

std::optional<Value> read_table(lua_State* lua, int index, ReadBudget& budget)
{
    if (!lua_checkstack(lua, 4))
        return std::nullopt;
    const auto number = [](lua_State* l, int at) { return lua_tonumber(l, at); };
    if (lua_rawlen(lua, index) == 0) {
        const int type = type_in_map(lua, index);
        if (type == LUA_TSTRING)
            return read_map<QString>(lua, index, type, budget, read_text);
        if (type != LUA_TNONE)
            return read_map<double>(lua, index, LUA_TNUMBER, budget, number);
    }
    const bool numbers = lua_rawgeti(lua, index, 1) == LUA_TNUMBER;
    lua_pop(lua, 1);
    if (!numbers)
        return read_list<QString>(lua, index, LUA_TSTRING, budget, read_text);
    return read_list<double>(lua, index, LUA_TNUMBER, budget, number);
}

const Handle* handle_at(lua_State* lua, int index)
{
    if (lua_type(lua, index) != LUA_TUSERDATA || !lua_getmetatable(lua, index))
        return nullptr;
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &handle_type);
    const bool is_ours = lua_rawequal(lua, -1, -2);
    lua_pop(lua, 2);
    return is_ours ? static_cast<const Handle*>(lua_touserdata(lua, index)) : nullptr;
}

ScriptObject alive(const Handle& handle)
{
    ScriptObject object = handle.object.lock();
    return object && object->is_attached() ? object : nullptr;
}

int destroy(lua_State* lua)
{
    static_cast<Handle*>(lua_touserdata(lua, 1))->~Handle();
    return 0;
}

/// Written as `tostring` does; other values stay.
Value text_of_number(const Value& value)
{
    if (const auto* whole = std::get_if<qint64>(&value))
        return QString::number(*whole);
    if (const auto* real = std::get_if<double>(&value)) {
        const QString text = QString::number(*real, 'g', 14);
        return text.contains(QLatin1Char('.')) || text.contains(QLatin1Char('e')) || !std::isfinite(*real)
            ? text
            : text + QStringLiteral(".0");
    }
    return value;
}

} // namespace

// Values --------------------------------------------------------------------------------------------------------------

void push_text(lua_State* lua, const QString& text)
{
    constexpr qsizetype short_text = 80;
    constexpr qsizetype bytes_per_unit = 3;
    char bytes[short_text * bytes_per_unit];
    luaL_Buffer buffer;
    const bool is_short = text.size() <= short_text;
    char* const begin = is_short ? bytes : luaL_buffinitsize(lua, &buffer, std::size_t(text.size() * bytes_per_unit));
    char* end = begin;
    {
        // Gone before Lua is called again: an error of Lua's jumps over destructors.
        QStringEncoder encoder(QStringEncoder::Utf8);
        end = encoder.appendToBuffer(begin, text);
    }
    if (is_short)
        lua_pushlstring(lua, begin, std::size_t(end - begin));
    else
        luaL_pushresultsize(&buffer, std::size_t(end - begin));
}

void push(lua_State* lua, const ScriptValue& value)
{
    std::visit(Push{lua}, value);
}

QString read_text(lua_State* lua, int index)
{
    return from_utf8(bytes_of(lua, index));
}

std::string_view bytes_of(lua_State* lua, int index)
{
    std::size_t size = 0;
    const char* bytes = lua_tolstring(lua, index, &size);
    return {bytes, size};
}

std::optional<Value> read_plain(lua_State* lua, int index, ReadBudget& budget)
{
    switch (lua_type(lua, index)) {
    case LUA_TNIL:
    case LUA_TNONE: return Value();
    case LUA_TBOOLEAN: return Value(lua_toboolean(lua, index) != 0);
    case LUA_TNUMBER:
        if (lua_isinteger(lua, index))
            return Value(qint64(lua_tointeger(lua, index)));
        return Value(double(lua_tonumber(lua, index)));
    case LUA_TSTRING: budget.used += lua_rawlen(lua, index); return Value(read_text(lua, index));
    case LUA_TTABLE: return read_table(lua, lua_absindex(lua, index), budget);
    default: return std::nullopt;
    }
}

std::optional<ScriptValue> read(lua_State* lua, int index, ReadBudget& budget)
{
    if (lua_type(lua, index) == LUA_TFUNCTION)
        return ScriptFunction{lua_absindex(lua, index)};
    if (lua_type(lua, index) == LUA_TUSERDATA) {
        QString message;
        ScriptObject object = object_at(lua, index, message);
        return object ? std::optional<ScriptValue>(std::move(object)) : std::nullopt;
    }
    auto value = read_plain(lua, index, budget);
    return value ? std::optional<ScriptValue>(std::move(*value)) : std::nullopt;
}

// Handles -------------------------------------------------------------------------------------------------------------

void open_objects(lua_State* lua, const ScriptReach& reach)
{
    lua_pushlightuserdata(lua, const_cast<ScriptReach*>(&reach));
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &reach_key);

    lua_newtable(lua);
    lua_newtable(lua);
    lua_pushliteral(lua, "v");
    lua_setfield(lua, -2, "__mode");
    lua_setmetatable(lua, -2);
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &handle_cache);

    lua_newtable(lua);
    lua_pushcfunction(lua, destroy);
    lua_setfield(lua, -2, "__gc");
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_pushliteral(lua, "object");
    lua_setfield(lua, -2, "__name");
    lua_pushvalue(lua, -1);
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &handle_type);
}

ScriptObject object_at(lua_State* lua, int index, QString& message)
{
    const Handle* handle = handle_at(lua, index);
    ScriptObject object = handle ? alive(*handle) : nullptr;
    if (handle && !object)
        message = say(reach_of(lua), u"%1 已被删除", u"%1 was deleted").arg(numbered(handle->kind, handle->id));
    return object;
}

QString describe_handle(lua_State* lua, int index)
{
    const Handle* handle = handle_at(lua, index);
    if (!handle)
        return {};
    const QString name = numbered(handle->kind, handle->id);
    return alive(*handle) ? name : say(reach_of(lua), u"已删除的 %1", u"deleted %1").arg(name);
}

// Fields --------------------------------------------------------------------------------------------------------------

QString called(const ScriptReach& reach, const ModelObject& object)
{
    return numbered(kind_of(reach, object), object.id());
}

Status no_field(const ScriptReach& reach, const ModelObject& object, std::string_view name)
{
    return Status::error(
        say(reach, u"%1 没有属性“%2”", u"%1 has no property \"%2\"").arg(called(reach, object), from_utf8(name)));
}

ScriptValue read_field(const ScriptReach& reach, const ModelObject& object, const FieldBase& field)
{
    Value value = reach.reads_authored ? tarn::Authored::property(object, field) : object.property(field);
    const auto* reference = std::get_if<ObjectRef>(&value);
    if (!reference)
        return value;
    return reach.scene ? reach.scene->find(reference->id) : ScriptObject();
}

Status write_field(const ScriptReach& reach, ModelObject& object, std::string_view name, const ScriptValue& value)
{
    const FieldBase* field = object.fields().find(name);
    if (!field)
        return no_field(reach, object, name);
    const auto about = [&](const QString& what) {
        return Status::error(say(reach, u"%1 的属性“%2”：%3", u"%1, property \"%2\": %3")
                                 .arg(called(reach, object), QString::fromLatin1(field->name()), what));
    };
    if (field->rules().read_only)
        return about(say(reach, u"只能读取", u"it can only be read"));
    const auto* plain = std::get_if<Value>(&value);
    const auto* referred = std::get_if<ScriptObject>(&value);
    if (!plain && !referred)
        return about(say(reach, u"不能接受这种值", u"it cannot take such a value"));
    Value wanted = plain ? *plain : Value(qint64((*referred)->id()));
    // As everywhere in the language, a number stands for its text.
    if (std::holds_alternative<QString>(object.property(*field)))
        wanted = text_of_number(wanted);
    const auto status = object.set_property(*field, wanted);
    return status ? status : about(status.message());
}

} // namespace tarn::lua
