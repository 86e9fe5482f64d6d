#pragma once

#include "core/language.h"
#include "widgets/theme.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarn {

/// What the program was asked to do.
struct CommandLine {
    enum class Action { Run, Render, Script, PrintAndExit };

    Action action = Action::Run;
    QString file;          ///< to open; empty for a new scene
    QString render_target; ///< of Render
    QSize size;            ///< of Render; empty takes the usual size
    QString script;        ///< of Script
    QStringList script_args;
    bool recovery = false; ///< of Script: what is not saved is kept, as it is without a script
    QString plug_ins;      ///< folder; empty takes the installed one
    std::optional<Language> language;
    std::optional<Theme> theme;

    QString output; ///< of PrintAndExit: what is printed
    int status = 0; ///< of PrintAndExit: 0, or 2 when the command line is wrong
};

/// `arguments` without the program's name.
CommandLine parse_command_line(const QStringList& arguments);

} // namespace tarn
