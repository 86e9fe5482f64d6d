#pragma once

#include "lua_bridge.h"
#include "sandbox.h"
#include "script_runtime.h"

#include <QHash>

#include <deque>
#include <map>

class CConfigScene;

namespace tarn::scene_script {

/// What one call of a verb needs. It stands here and not on the stack, where an error of Lua would jump over it.
struct Frame {
    std::vector<ScriptValue> arguments;
    ScriptValue result;
    QString message;       ///< of a failure
    QString script_error;  ///< of a function of the script that the verb called
    bool on_stack = false; ///< the result is on Lua's stack already
};

/// A call of a scene function, from its begin to its end.
struct Call {
    QString name;
    quint64 number = 0; ///< of all calls of the runtime
    lua_State* thread = nullptr;
    int reference = LUA_NOREF; ///< keeps the thread
    bool has_owner = false;
    std::weak_ptr<ModelObject> owner{};
    double wait_seconds = -1; ///< what the function asked for when it yielded
    Sandbox::Depth depth{};
};

/// A sandbox that knows the scene: compiled functions, calls that run and that wait, verbs and handles of objects.
class Machine final : public Sandbox, public std::enable_shared_from_this<Machine> {
public:
    Machine(ScriptRuntime& runtime, CConfigScene& functions, const ScriptApi& api,
            std::shared_ptr<const std::vector<ScriptVerb>> verbs, const ScriptLimits& limits);
    ~Machine();

    static Machine& of(lua_State* lua) { return static_cast<Machine&>(Sandbox::of(lua)); }
    /// The runtime has given it up: what runs is stopped, nothing new begins.
    void abandon();
    /// Null once it was given up.
    ScriptRuntime* runtime() const { return m_runtime; }
    const ScriptReach& reach() const { return m_reach; }

    ScriptResult call(const QString& name, std::span<const ScriptValue> arguments, const ScriptObject& owner);
    ScriptResult call_text(const QString& name, const QString& text, std::span<const ScriptValue> arguments,
                           const ScriptObject& owner);
    void tick(double now);
    std::size_t suspended() const { return m_waiting.size() + m_due.size(); }
    /// Their numbers, with that of the call that tick() goes on with now.
    std::vector<quint64> suspended_calls() const;

    /// Runs the text in place of that of the table's function of the name from now on.
    void try_text(const QString& name, const QString& text);
    /// The registry's reference of the compiled function, or why there is none.
    Result<int> compiled(const QString& name, ScriptError& error);

    Frame& open_frame();
    void close_frame();
    /// Does what stands between a script and the host: `work` raises nothing of Lua's, answers whether it went well and
    /// leaves result or message in the frame.
    static int run_frame(lua_State* lua, bool (*work)(Machine&, lua_State*, Frame&));

    /// As lua::read(), at the script's cost. A list that is too long stops the script.
    std::optional<ScriptValue> read(lua_State* lua, int index);
    /// Pushes the method of the object's classes whose name is at `key`; answers whether there is one.
    bool push_method(lua_State* lua, const ModelObject& object, int key) const;

private:
    class Running;
    struct Compiled {
        quint64 revision = 0;   ///< of the function, 0 for none; a text that is tried has a revision of its own
        quint64 checked_at = 0; ///< the table's count of changes
        int reference = LUA_NOREF;
    };
    struct Start;

    void open_api();
    void open_objects(lua_State* lua);
    Result<int> compile(const QString& name, const QString& text);
    Result<int> compiled_text(const QString& name, const QString& text, ScriptError& error);
    using Compile = std::function<Result<int>(ScriptError& error)>;
    ScriptResult run_call(const QString& name, const Compile& compile, std::span<const ScriptValue> arguments,
                          const ScriptObject& owner);
    QByteArray label_of(const QString& name);
    bool take_thread(Call& call);
    void give_back(Call& call, bool usable);
    ScriptResult resume(std::unique_ptr<Call> call, Start* start);
    void suspend(std::unique_ptr<Call> call);
    void go_on(std::unique_ptr<Call> call);
    void tell_end(quint64 call, const ScriptResult& result) const;
    ScriptError error_of(const Call& call, int status);
    QString take_error_text(lua_State* thread);
    void locate(lua_State* thread, ScriptError& error) const;
    static int begin_call(lua_State* lua);

    ScriptRuntime* m_runtime;
    CConfigScene* m_functions;
    std::shared_ptr<const ScriptObjects> m_objects;
    ScriptReach m_reach{.scene = m_objects.get()};
    std::shared_ptr<const std::vector<ScriptVerb>> m_verbs;
    std::map<std::string_view, int> m_methods; ///< the table of each class

    struct Tried {
        QString name; ///< null: nothing is tried
        QString text;
    } m_tried;
    QHash<QString, Compiled> m_compiled;
    QHash<QString, int> m_compiled_texts; ///< the references of texts that no function has
    QHash<QByteArray, QString> m_names;   ///< of functions by the labels of their chunks

    std::vector<std::pair<lua_State*, int>> m_idle; ///< threads for calls, with their references
    std::multimap<double, std::unique_ptr<Call>> m_waiting;
    std::multimap<double, std::unique_ptr<Call>> m_due; ///< of the tick under way
    quint64 m_resumed = 0;                              ///< the call that the tick goes on with; 0 for none
    std::deque<Frame> m_frames;
    std::size_t m_open_frames = 0;
    int m_nested = 0; ///< calls under way, one inside the other
};

/// What an error's message says of its place, "label:line: message", taken apart; false when it says nothing.
bool split_place(const QString& text, QByteArray& label, int& line, QString& message);

std::vector<ScriptVerb> builtin_verbs(const ScriptObjects* objects, const std::shared_ptr<QRandomGenerator>& random);
/// Puts the rows that need the machine itself (wait, call) into the table of globals on top.
void open_builtins(lua_State* lua);
/// Checks the arguments of the verb whose row is the first upvalue, and runs it.
int call_verb(lua_State* lua);

} // namespace tarn::scene_script
