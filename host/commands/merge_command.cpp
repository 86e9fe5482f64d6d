#include "command_table.h"
#include "core/language.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/package_writer.h"
#include "gui_scene/save_opt.h"
#include "scene_files.h"
#include "three_way_merge.h"

namespace tarn {

namespace {

QString line_of(const MergeConflict& conflict)
{
    const auto shown = [](const QString& json) { return json.isNull() ? lang(u"（无）", u"(nothing)") : json; };
    QString what = conflict.place;
    if (!conflict.field.isEmpty())
        what += QLatin1String(", ") + conflict.field;
    if (!conflict.part.isEmpty())
        what += QStringLiteral(" [%1]").arg(conflict.part);
    return lang(u"冲突：%1：原为 %2，我方 %3，对方 %4", u"conflict: %1: was %2, ours %3, theirs %4")
               .arg(what, shown(conflict.base), shown(conflict.ours), shown(conflict.theirs))
        + QLatin1Char('\n');
}

/// Reads what would be written, as the next one who opens it does.
Status check_opens(SceneTables& tables, const SceneSnapshot& scene)
{
    QMap<QString, QByteArray> entries = scene.files;
    for (const auto& [entry, text] : package_texts(tables.document(), scene))
        entries.insert(entry, text);
    return tables.read_entries(std::move(entries)).status();
}

} // namespace

CommandResult run_merge(CommandArguments& arguments)
{
    const bool ours = arguments.flag("--ours");
    const bool theirs = arguments.flag("--theirs");
    const auto output = arguments.value("-o");
    const auto paths = arguments.operands(3, 3);
    if (!paths)
        return CommandResult::refused(paths.status().message());
    if (!output)
        return CommandResult::refused(lang(u"merge：缺少 -o OUT", u"merge: -o OUT is missing"));
    if (ours && theirs)
        return CommandResult::refused(
            lang(u"merge：--ours 与 --theirs 只能取一", u"merge: --ours and --theirs exclude each other"));
    SceneTables tables;
    std::vector<SceneSnapshot> versions;
    for (const QString& path : paths.value()) {
        auto version = tables.read(path);
        if (!version)
            return CommandResult::refused(version.status().message());
        versions.push_back(std::move(version.value()));
    }
    auto merged = merge_versions(tables.document(), std::move(versions[0]), std::move(versions[1]),
                                 std::move(versions[2]), theirs ? MergeSide::Theirs : MergeSide::Ours);
    if (!merged)
        return CommandResult::refused(merged.status().message());
    const SceneSnapshot& scene = merged.value().scene;
    if (auto status = check_opens(tables, scene); !status)
        return CommandResult::refused(status.message());
    if (auto status = save_package(*output, tables.document(), scene, {}, ReadOnly::Keep); !status)
        return CommandResult::refused(status.message());
    CommandResult result;
    for (const MergeConflict& conflict : merged.value().conflicts)
        result.errors += line_of(conflict);
    if (!merged.value().conflicts.empty() && !ours && !theirs)
        result.status = CommandResult::Found;
    return result;
}

} // namespace tarn
