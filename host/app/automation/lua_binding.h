#pragma once

#include "automation.h"
#include "lua_values.h"

#include <new>
#include <span>
#include <tuple>

namespace tarn::script {

/// One row of a table of functions: what Lua calls it, the names of its arguments for messages, separated by blanks
/// ("path what"), and the function, made by binding<>.
struct Binding {
    const char* name;
    const char* arguments;
    lua_CFunction function;
};

/// Fills the table on top of the stack.
void set_functions(lua_State* lua, Automation& app, std::span<const Binding> functions);

// Handles -------------------------------------------------------------------------------------------------------------

/// A C++ value that Lua holds. Handle types have `type_name`, what Lua calls the type, and `needed`, what messages call
/// it, and compare with ==.
template <class Handle>
Data to_lua(Handle handle)
{
    return Data::Pusher([handle = std::move(handle)](lua_State* lua) {
        new (lua_newuserdatauv(lua, sizeof(Handle), 0)) Handle(handle);
        luaL_setmetatable(lua, Handle::type_name);
    });
}

template <class Handle>
Handle* handle_at(lua_State* lua, int index)
{
    return static_cast<Handle*>(luaL_testudata(lua, index, Handle::type_name));
}

template <class Handle>
    requires requires
    {
        Handle::type_name;
    }
struct Argument<Handle*> {
    static Result<Handle*> read(lua_State* lua, int index, QLatin1String name)
    {
        if (auto* handle = handle_at<Handle>(lua, index))
            return handle;
        return bad_argument(lua, index, name, Handle::needed);
    }
};

/// Makes the type known to Lua with its methods, whose first argument is called "self".
template <class Handle>
void add_type(lua_State* lua, Automation& app, std::span<const Binding> methods)
{
    luaL_newmetatable(lua, Handle::type_name);
    lua_pushcfunction(lua, [](lua_State* l) {
        static_cast<Handle*>(lua_touserdata(l, 1))->~Handle();
        return 0;
    });
    lua_setfield(lua, -2, "__gc");
    lua_pushcfunction(lua, [](lua_State* l) {
        const auto* a = handle_at<Handle>(l, 1);
        const auto* b = handle_at<Handle>(l, 2);
        lua_pushboolean(l, a && b && *a == *b);
        return 1;
    });
    lua_setfield(lua, -2, "__eq");
    lua_newtable(lua);
    set_functions(lua, app, methods);
    lua_setfield(lua, -2, "__index");
    lua_pop(lua, 1);
}

// Calls ---------------------------------------------------------------------------------------------------------------

namespace detail {

/// The name of the i-th argument of the running function.
QLatin1String argument_name(lua_State* lua, std::size_t i);
Automation& automation_of(lua_State* lua);

/// What a function works with: the program, or the scene's model, which may be missing.
inline Result<Automation*> host_of(Automation& app, const Automation*)
{
    return &app;
}
inline Result<SceneModel*> host_of(Automation& app, const SceneModel*)
{
    return app.model();
}

inline Result<Data> outcome(Result<Data> result)
{
    return result;
}
inline Result<Data> outcome(const Status& status)
{
    return status ? Result<Data>(Data(Data::Several())) : status;
}

template <class R, class Host, class... A, std::size_t... I>
Result<Data> call_with(lua_State* lua, R (*function)(Host&, A...), std::index_sequence<I...>)
{
    Status failure;
    [[maybe_unused]] const auto read = [&]<class T>(std::size_t i, std::optional<T>& slot) {
        auto value = Argument<T>::read(lua, int(i) + 1, argument_name(lua, i));
        if (value)
            slot.emplace(std::move(value.value()));
        else if (failure)
            failure = value.status();
    };
    std::tuple<std::optional<std::decay_t<A>>...> slots;
    (read(I, std::get<I>(slots)), ...);
    if (!failure)
        return failure;
    Automation& app = automation_of(lua);
    const auto host = host_of(app, static_cast<const Host*>(nullptr));
    if (!host)
        return host.status();
    const Automation::CallScope scope(app, lua);
    return outcome(function(*host.value(), *std::get<I>(slots)...));
}

template <class R, class Host, class... A>
Result<Data> call(lua_State* lua, R (*function)(Host&, A...))
{
    return call_with(lua, function, std::index_sequence_for<A...>());
}

/// Calls and answers the number of results; on failure -1 with the message on the stack. Every C++ object is gone by
/// then.
int run(lua_State* lua, Result<Data> (*call)(lua_State*));

} // namespace detail

/// The form in which Lua calls `function`. lua_error() leaves by longjmp, past all destructors: this is the one place
/// that calls it.
template <auto function>
int binding(lua_State* lua)
{
    const int results = detail::run(lua, [](lua_State* l) { return detail::call(l, function); });
    if (results >= 0)
        return results;
    luaL_where(lua, 1);
    lua_insert(lua, -2);
    lua_concat(lua, 2);
    return lua_error(lua);
}

} // namespace tarn::script
