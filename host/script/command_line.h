#pragma once

#include <QStringList>

namespace tarn {

/// A line that calls one function: `name(a, b)`, or a method of an object, `control("Start"):move(x, y)`. Parameters are
/// expressions of Lua; without parentheses, `name a b`, blanks separate them, too.
struct CommandLine {
    QString call;             ///< what stands before the parameters
    QStringList parameters;   ///< as they were written
    bool is_complete = false; ///< quotes and brackets are closed, and nothing stands behind the call

    static CommandLine parse(const QString& line);
    QString text() const;
    /// Names that stand in the parameters for values, each once: neither functions nor fields nor words of Lua.
    QStringList names() const;
    /// The names replaced by others, as a line again.
    QString renamed(const QString& name, const QString& new_name) const;
    /// The call as a function of Lua that takes the values of `variables`. `is_function`: what is called is a function of
    /// the scene.
    QString lua(const QStringList& variables, bool is_function) const;
};

/// As a text in quotes.
QString lua_quoted(const QString& text);

} // namespace tarn
