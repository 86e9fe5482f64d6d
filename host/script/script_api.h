#pragma once

#include "core/model_object.h"
#include "core/status.h"
#include "core/value.h"

#include <functional>
#include <memory>
#include <span>
#include <variant>
#include <vector>

namespace tarn {

class ScriptCall;

/// A text in both languages of the program.
struct ScriptText {
    const char16_t* chinese = u"";
    const char16_t* english = u"";

    QString text() const; ///< in the program's language
};

/// A Lua function that a verb was given. It can be called while the verb runs, not later.
struct ScriptFunction {
    int index; ///< of the verb's argument
};

using ScriptObject = std::shared_ptr<ModelObject>;

/// What passes between scripts and the host. A null ScriptObject is nil.
using ScriptValue = std::variant<Value, ScriptObject, std::vector<ScriptObject>, ScriptFunction>;

enum class ScriptType { Any, Bool, Integer, Number, Text, TextOrNumber, Object, Function };

struct ScriptParameter {
    const char* name;
    ScriptType type = ScriptType::Any;
    ScriptText about = {};
    bool optional = false; ///< nil, or nothing, may be given
};

/// One row of the table of what scripts can call. Documentation, completion and call tips read the same rows.
struct ScriptVerb {
    const char* name;
    std::vector<ScriptParameter> parameters{}; ///< without the object of a method
    ScriptText about = {};
    /// Called with arguments that were checked against the parameters. Null where the runtime does it itself.
    std::function<Result<ScriptValue>(ScriptCall&)> run = {};
    /// A method of the objects of this class; null: a global function.
    const char* of = nullptr;
    bool more = false; ///< takes any number of further arguments
};

/// The scene's objects as scripts find them.
class ScriptObjects {
public:
    virtual ~ScriptObjects() = default;

    /// A kind of object that scripts can ask for: the global function `name` finds one by its name or id.
    struct Kind {
        const char* name; ///< "control"
        ScriptText about;
    };
    virtual std::vector<Kind> kinds() const = 0;
    /// Null when there is none.
    virtual ScriptObject find(QLatin1String kind, const QString& name) const = 0;
    virtual ScriptObject find(QLatin1String kind, quint32 id) const = 0;
    /// The object of any kind that a field of another refers to.
    virtual ScriptObject find(quint32 id) const = 0;
    /// The classes whose methods the object has, the most special first; the first names it in messages. The texts
    /// live as long as the program.
    virtual std::vector<const char*> classes_of(const ModelObject& object) const = 0;
    /// What the editor of scripts offers after an object's dot: the names of all fields of all classes, in any order.
    virtual QStringList field_names() const { return {}; }
};

/// Which objects a Lua state can find, and how it tells failures.
struct ScriptReach {
    const ScriptObjects* scene = nullptr; ///< names the objects and finds what they refer to; null: nobody does
    bool in_english = false;              ///< whatever the program's language
    bool reads_authored = false;          ///< fields read as the author made them, not as they are shown
};

/// One call of a verb.
class ScriptCall {
public:
    virtual ~ScriptCall() = default;

    virtual std::span<const ScriptValue> arguments() const = 0; ///< a method's object is the first
    /// Calls a function that is among the arguments. It fails when the function raises an error, or the script was
    /// stopped; the verb should then return the failure.
    virtual Result<ScriptValue> invoke(const ScriptFunction& function, std::span<const ScriptValue> arguments) = 0;

    bool has(std::size_t i) const;
    bool flag(std::size_t i) const { return std::get<bool>(value(i)); }
    qint64 integer(std::size_t i) const { return std::get<qint64>(value(i)); }
    double number(std::size_t i) const;
    QString text(std::size_t i) const { return std::get<QString>(value(i)); }
    const Value& value(std::size_t i) const { return std::get<Value>(arguments()[i]); }
    ModelObject& object(std::size_t i) const { return *std::get<ScriptObject>(arguments()[i]); }
    const ScriptFunction& function(std::size_t i) const { return std::get<ScriptFunction>(arguments()[i]); }
};

/// What the scripts of a scene can reach. The runtime adds what needs no scene: print, wait, call, time, random, and
/// get and set of every object.
struct ScriptApi {
    std::vector<ScriptVerb> verbs;
    std::shared_ptr<const ScriptObjects> objects; ///< null: there are none
};

} // namespace tarn
