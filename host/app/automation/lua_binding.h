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
    requires requires
    {
        Handle::type_name;
    }
struct Argument<Handle*> {
    static constexpr const char* needed = Handle::needed;
    static std::optional<Handle*> read(lua_State* lua, int index)
    {
        auto* handle = static_cast<Handle*>(luaL_testudata(lua, index, Handle::type_name));
        return handle ? std::optional(handle) : std::nullopt;
    }
};

namespace detail {

template <class Handle>
int destroy(lua_State* lua)
{
    static_cast<Handle*>(lua_touserdata(lua, 1))->~Handle();
    return 0;
}

template <class Handle>
int are_equal(lua_State* lua)
{
    const auto a = Argument<Handle*>::read(lua, 1);
    const auto b = Argument<Handle*>::read(lua, 2);
    lua_pushboolean(lua, a && b && **a == **b);
    return 1;
}

} // namespace detail

/// Makes the type known to Lua with its methods, whose first argument is called "self".
template <class Handle>
void add_type(lua_State* lua, Automation& app, std::span<const Binding> methods)
{
    luaL_newmetatable(lua, Handle::type_name);
    lua_pushcfunction(lua, detail::destroy<Handle>);
    lua_setfield(lua, -2, "__gc");
    lua_pushcfunction(lua, detail::are_equal<Handle>);
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

int push_result(lua_State* lua, const Data& data);
int push_result(lua_State* lua, const Several& several);

template <class R>
struct ResultOf {
    static int push(lua_State* lua, const R& result) { return push_result(lua, result); }
    static Status status(const R&) { return {}; }
};
template <>
struct ResultOf<Status> {
    static int push(lua_State*, const Status&) { return 0; }
    static Status status(const Status& status) { return status; }
};
template <class T>
struct ResultOf<Result<T>> {
    static int push(lua_State* lua, const Result<T>& result) { return push_result(lua, result.value()); }
    static Status status(const Result<T>& result) { return result.status(); }
};

template <class R, class... A, std::size_t... I>
Status call_with(lua_State* lua, R (*function)(Automation&, A...), std::index_sequence<I...>, int& pushed)
{
    Status failure;
    [[maybe_unused]] const auto read = [&]<class T>(std::size_t i, std::optional<T>& slot) {
        const int index = int(i) + 1;
        slot = Argument<T>::read(lua, index);
        if (!slot && failure)
            failure = bad_argument(lua, index, argument_name(lua, i), Argument<T>::needed);
    };
    std::tuple<std::optional<std::decay_t<A>>...> slots;
    (read(I, std::get<I>(slots)), ...);
    if (!failure)
        return failure;
    Automation& app = automation_of(lua);
    const Automation::CallScope scope(app, lua);
    const R result = function(app, *std::get<I>(slots)...);
    if (Status status = ResultOf<R>::status(result); !status)
        return app.take_box_failure(status);
    if (Status status = app.take_box_failure({}); !status)
        return status;
    pushed = ResultOf<R>::push(lua, result);
    return {};
}

/// Answers the number of results; on failure -1 with the message on the stack. Every C++ object is gone by then.
template <class R, class... A>
int call(lua_State* lua, R (*function)(Automation&, A...))
{
    int pushed = 0;
    const Status status = call_with(lua, function, std::index_sequence_for<A...>(), pushed);
    if (status)
        return pushed;
    Data(status.message()).push(lua);
    return -1;
}

} // namespace detail

/// The form in which Lua calls `function`. lua_error() leaves by longjmp, past all destructors: this is the one place
/// that calls it.
template <auto function>
int binding(lua_State* lua)
{
    const int results = detail::call(lua, function);
    if (results >= 0)
        return results;
    luaL_where(lua, 1);
    lua_insert(lua, -2);
    lua_concat(lua, 2);
    return lua_error(lua);
}

} // namespace tarn::script
