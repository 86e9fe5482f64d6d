#pragma once

#include "script/script_api.h"

#include <QStringList>

#include <vector>

class CBaseWorld;
class QWidget;

namespace tarn {

/// Something that a command line can call: a function of the scene, a verb, or a method of a kind of objects.
struct StrCommand {
    QString name;
    QStringList kinds{}; ///< of the objects that have the method; none: it is no method
    bool is_function = false;
    std::vector<ScriptParameter> parameters{};
    QStringList parameter_names{}; ///< in their order; for functions as their texts name what they are given
    QString about{};
    bool takes_more = false;

    QString caption() const; ///< "control:show"
};

/// The scene's functions by their order, then the verbs.
std::vector<StrCommand> str_commands(CBaseWorld& world);

/// Why the line cannot be called; empty when it can.
QString refusal_of_command(CBaseWorld& world, const QString& line);

} // namespace tarn

/// Takes a command line apart: what is called, with the object it is called of, and the parameters as they were written.
void g_seperate_cmd_line_with_pars(const QString& line, QString& command, QStringList& parameters);
/// The place of what is called among str_commands(); -1 when there is nothing of the kind.
int get_cmd_id_from_str(const QString& command, CBaseWorld& world);
/// Lets the author choose what is called (`id` to begin with, -1 for none) and fill in a field for each parameter. `names`
/// are those of variables. What cannot be called is refused. False when it was cancelled; `line` stays then.
bool g_edit_str_cmd(QWidget* owner, CBaseWorld& world, int id, const QString& command, const QStringList& parameters,
                    const QStringList& names, QString& line);
