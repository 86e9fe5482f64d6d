#include "command_table.h"
#include "core/language.h"
#include "core/progress.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/package_writer.h"
#include "gui_scene/save_opt.h"
#include "scene_files.h"
#include "three_way_merge.h"

#include <QHash>

namespace tarn {

namespace {

/// `side`: whose value is taken without a question; none: it is a conflict.
QString line_of(const MergeConflict& conflict, std::optional<MergeSide> side)
{
    const auto shown = [](const QString& json) { return json.isNull() ? lang(u"（无）", u"(nothing)") : json; };
    QString what = conflict.place;
    if (!conflict.field.isEmpty())
        what += QLatin1String(", ") + conflict.field;
    if (!conflict.part.isEmpty())
        what += QStringLiteral(" [%1]").arg(conflict.part);
    const QString verdict = !side  ? lang(u"冲突", u"conflict")
        : *side == MergeSide::Ours ? lang(u"取我方", u"ours taken")
                                   : lang(u"取对方", u"theirs taken");
    return lang(u"%1：%2：原为 %3，我方 %4，对方 %5", u"%1: %2: was %3, ours %4, theirs %5")
               .arg(verdict, what, shown(conflict.base), shown(conflict.ours), shown(conflict.theirs))
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

AskConflicts& ask_conflicts()
{
    static AskConflicts ask;
    return ask;
}

/// What conflicts are known by from one merge to the next.
QString name_of(const MergeConflict& conflict)
{
    const QString place = conflict.object ? QString::number(conflict.object) : conflict.place;
    return QStringList{place, conflict.field, conflict.part}.join(QChar::Null);
}

/// Merges again after each answer: what was chosen may lead to other conflicts.
Result<MergedScene> merge_as_asked(SceneTables& tables, const std::vector<SceneSnapshot>& versions)
{
    QHash<QString, MergeSide> chosen;
    for (;;) {
        auto merged = merge_versions(
            tables.document(), versions[0], versions[1], versions[2],
            [&](const MergeConflict& conflict) { return chosen.value(name_of(conflict), MergeSide::Ours); });
        if (!merged)
            return merged;
        std::vector<MergeConflict> open;
        for (const MergeConflict& conflict : merged.value().conflicts)
            if (!chosen.contains(name_of(conflict)))
                open.push_back(conflict);
        if (open.empty())
            return merged;
        const auto sides = ask_conflicts()(open);
        if (!sides)
            return stopped();
        for (std::size_t i = 0; i < open.size(); ++i)
            chosen.insert(name_of(open[i]), (*sides)[i]);
    }
}

struct MergeWish {
    bool ours;
    bool theirs;
    bool window;
    std::optional<QString> output;
};

/// Null when all goes together.
QString fault_of(const MergeWish& wish)
{
    if (!wish.output)
        return lang(u"merge：缺少 -o OUT", u"merge: -o OUT is missing");
    if (int(wish.ours) + int(wish.theirs) + int(wish.window) > 1)
        return lang(u"merge：--ours、--theirs 与 --window 只能取一",
                    u"merge: --ours, --theirs and --window exclude each other");
    if (wish.window && !ask_conflicts())
        return lang(u"merge：--window 需要显示器", u"merge: --window needs a display");
    return {};
}

} // namespace

void set_ask_conflicts(AskConflicts ask)
{
    ask_conflicts() = std::move(ask);
}

CommandResult run_merge(CommandArguments& arguments)
{
    const MergeWish wish{arguments.flag("--ours"), arguments.flag("--theirs"), arguments.flag("--window"),
                         arguments.value("-o")};
    const auto paths = arguments.operands(3, 3);
    if (!paths)
        return CommandResult::refused(paths.status().message());
    if (const QString fault = fault_of(wish); !fault.isNull())
        return CommandResult::refused(fault);
    SceneTables tables;
    std::vector<SceneSnapshot> versions;
    for (const QString& path : paths.value()) {
        auto version = tables.read(path);
        if (!version)
            return CommandResult::refused(version.status().message());
        versions.push_back(std::move(version.value()));
    }
    auto merged = wish.window
        ? merge_as_asked(tables, versions)
        : merge_versions(tables.document(), std::move(versions[0]), std::move(versions[1]), std::move(versions[2]),
                         wish.theirs ? MergeSide::Theirs : MergeSide::Ours);
    if (!merged && is_stopped(merged.status()))
        return {.status = CommandResult::Found,
                .errors = lang(u"已取消，未写出任何文件。\n", u"Cancelled; nothing was written.\n")};
    if (!merged)
        return CommandResult::refused(merged.status().message());
    const SceneSnapshot& scene = merged.value().scene;
    if (auto status = check_opens(tables, scene); !status)
        return CommandResult::refused(status.message());
    if (auto status = save_package(*wish.output, tables.document(), scene, {}, ReadOnly::Keep); !status)
        return CommandResult::refused(status.message());
    CommandResult result;
    if (wish.window)
        return result;
    const bool is_decided = wish.ours || wish.theirs;
    const auto side = is_decided ? std::optional(wish.ours ? MergeSide::Ours : MergeSide::Theirs) : std::nullopt;
    for (const MergeConflict& conflict : merged.value().conflicts)
        (is_decided ? result.output : result.errors) += line_of(conflict, side);
    if (!merged.value().conflicts.empty() && !is_decided)
        result.status = CommandResult::Found;
    return result;
}

} // namespace tarn
