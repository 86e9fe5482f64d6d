#pragma once

#include "core/status.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace tarn {

/// How a command ended, and what it tells.
struct CommandResult {
    enum : int {
        Done = 0,
        Found = 1,   ///< what was looked for: errors, differences, conflicts
        Refused = 2, ///< nothing was done; `errors` says why
    };

    int status = Done;
    QString output{};
    QString errors{}; ///< lines

    static CommandResult refused(const QString& why);
};

/// The arguments of a command: options are taken out by name, what is left are the operands. "--" ends the options. The
/// first thing that is wrong is told by operands().
class CommandArguments {
public:
    explicit CommandArguments(const QStringList& arguments);

    /// Whether the option is there.
    bool flag(const char* name);
    std::optional<QString> value(const char* name);
    QStringList values(const char* name); ///< of an option that may stand there several times
    /// What is no option; fails when there are fewer or more than that.
    Result<QStringList> operands(int least, int most);

private:
    QStringList m_options;  ///< in front of "--"
    QStringList m_operands; ///< behind it
    QString m_fault;
};

struct MergeConflict;
enum class MergeSide;

/// Asks a person about each of the conflicts; none: it was cancelled.
using AskConflicts = std::function<std::optional<std::vector<MergeSide>>(const std::vector<MergeConflict>&)>;
/// Who asks when a command wants a window; null: nobody can.
void set_ask_conflicts(AskConflicts ask);

/// Something that the program does without windows, asked for by its first argument.
struct Command {
    const char* name;        ///< "--check"
    const char* usage;       ///< one line for each form, without the program's name
    const char16_t* chinese; ///< what it does, in a sentence
    const char16_t* english;
    const char16_t* chinese_options; ///< what else there is to know: a line for each
    const char16_t* english_options;
    bool needs_fonts; ///< it lays texts out
    CommandResult (*run)(CommandArguments& arguments);
};

std::span<const Command> commands();
/// The one that `arguments`, those of the program without its name, ask for; null for none. Options that concern all
/// commands may stand in front of its name.
const Command* find_command(const QStringList& arguments);
/// Runs it, or shows its help.
CommandResult run_command(const Command& command, const QStringList& arguments);
/// The command's help as text.
QString help_of(const Command& command);

} // namespace tarn
