#pragma once

#include "core/language.h"
#include "widgets/theme.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarn {

/// "light" or "dark"; nothing for any other word.
std::optional<Theme> theme_named(const QString& word);

/// What a picture shows.
struct PictureOptions {
    QSize screen;                ///< that the interface is laid out on, pixels; empty: as large as the picture
    QString dialog;              ///< shown alone; empty: all that there is
    QString timebar;             ///< of the times; empty: the first one
    std::optional<double> from;  ///< seconds; none: the interface as it was made
    std::optional<double> until; ///< none: one picture
    double rate = 25;            ///< pictures a second from `from` to `until`
};

/// What the program was asked to do.
struct CommandLine {
    enum class Action { Run, Render, Play, Replay, Script, PrintAndExit };

    Action action = Action::Run;
    QString file;           ///< to open; empty for a new scene
    QString render_target;  ///< of Render
    QString texts;          ///< of Render and Play: a language of the scene; empty takes the texts as they were written
    QSize size;             ///< of Render and Play; empty takes the usual size
    PictureOptions picture; ///< of Render
    bool full_screen = false; ///< of Play
    QString input_script;     ///< of Replay; of Play where input is recorded, empty for nowhere
    QString script;           ///< of Script
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
