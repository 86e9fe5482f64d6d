#include "command_table.h"
#include "core/language.h"
#include "diff_words.h"
#include "scene_files.h"

namespace tarn {

namespace {

/// What git gives in the place of a file that is not there.
bool is_nothing(const QString& path)
{
    return path == QLatin1String("/dev/null") || path == QLatin1String("nul");
}

Result<SceneChanges> compare_files(SceneTables& tables, const QString& before, const QString& after, bool may_lack)
{
    const auto read = [&](const QString& path) -> Result<SceneSnapshot> {
        return may_lack && is_nothing(path) ? tables.document().empty_scene() : tables.read(path);
    };
    const auto old = read(before);
    if (!old)
        return old.status();
    const auto now = read(after);
    if (!now)
        return now.status();
    return compare_scenes(tables.document(), old.value(), now.value());
}

/// Seven arguments: the path, then file, hash and mode of the old version and of the new one.
CommandResult run_for_git(CommandArguments& arguments)
{
    const auto given = arguments.operands(7, 9);
    if (!given)
        return CommandResult::refused(given.status().message());
    const QString& path = given.value()[0];
    SceneTables tables;
    const auto changes = compare_files(tables, given.value()[1], given.value()[4], true);
    CommandResult result{.output = path + QLatin1Char('\n')};
    // Git gives up on all files when this fails for one.
    QString words = changes ? words_of(changes.value()) : changes.status().message() + QLatin1Char('\n');
    words.chop(1);
    for (const QString& line : words.split(QLatin1Char('\n')))
        result.output += QStringLiteral("    ") + line + QLatin1Char('\n');
    return result;
}

} // namespace

CommandResult run_diff(CommandArguments& arguments)
{
    if (arguments.flag("--git"))
        return run_for_git(arguments);
    const bool json = arguments.flag("--json");
    const auto paths = arguments.operands(2, 2);
    if (!paths)
        return CommandResult::refused(paths.status().message());
    SceneTables tables;
    const auto changes = compare_files(tables, paths.value()[0], paths.value()[1], false);
    if (!changes)
        return CommandResult::refused(changes.status().message());
    return {.status = changes.value().is_empty() ? CommandResult::Done : CommandResult::Found,
            .output = json ? json_of(changes.value()) : words_of(changes.value())};
}

} // namespace tarn
