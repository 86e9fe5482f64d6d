#include "command_table.h"
#include "core/language.h"
#include "scene_files.h"

#include <QFileInfo>

namespace tarn {

CommandResult run_pack(CommandArguments& arguments)
{
    const auto paths = arguments.operands(2, 2);
    if (!paths)
        return CommandResult::refused(paths.status().message());
    const QString& folder = paths.value()[0];
    const QString& file = paths.value()[1];
    const auto entries = read_folder_entries(folder);
    if (!entries)
        return CommandResult::refused(entries.status().message());
    SceneTables tables;
    if (const auto content = tables.read_entries(entries.value()); !content)
        return CommandResult::refused(failed_at(folder, content.status().message()).message());
    if (auto status = write_package_entries(tables.document(), file, entries.value()); !status)
        return CommandResult::refused(status.message());
    return {};
}

CommandResult run_unpack(CommandArguments& arguments)
{
    const bool replace = arguments.flag("--replace");
    const auto paths = arguments.operands(2, 2);
    if (!paths)
        return CommandResult::refused(paths.status().message());
    const auto entries = read_package_entries(paths.value()[0]);
    if (!entries)
        return CommandResult::refused(entries.status().message());
    if (!entries.value().contains(QStringLiteral("manifest.json")))
        return CommandResult::refused(
            failed_at(paths.value()[0], lang(u"这不是界面文件包", u"this is no package of an interface")).message());
    if (auto status = write_folder_entries(paths.value()[1], entries.value(), replace); !status)
        return CommandResult::refused(status.message());
    return {};
}

} // namespace tarn
