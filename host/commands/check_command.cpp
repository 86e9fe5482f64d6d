#include "command_table.h"
#include "core/json_writer.h"
#include "core/language.h"
#include "core/model_object.h"
#include "gui_core/dxut_control.h"
#include "gui_scene/layout_problems.h"
#include "movies/movie_tools.h"
#include "scene_files.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace tarn {

namespace {

using Problem = SceneModel::Problem;

struct Check {
    QString file;
    std::vector<QSize> sizes; ///< none: the one that the interface was made for
    bool over_time = false;
};

/// A problem, and where an editor finds it.
struct Finding {
    Problem problem;
    quint32 object = 0;
    QString path{};       ///< the file, or one in the folder
    int line = 0;         ///< of that; 0 for none
    bool is_note = false; ///< about the machine, not the interface
};

/// The line of `text` that holds the object, from 1; 0 when it is not found. Saved texts have an object a line.
int line_of(const QByteArray& text, const QByteArray& member)
{
    const qsizetype at = text.indexOf(member);
    return at < 0 ? 0 : int(QByteArrayView(text).first(at).count('\n')) + 1;
}

/// Finds the lines of an unpacked folder that problems are about.
class Places {
public:
    Places(const QString& path, QMap<QString, QByteArray> entries) : m_path(path), m_entries(std::move(entries)) {}

    void find(Finding& finding) const
    {
        finding.path = m_path;
        finding.line = finding.problem.line;
        if (m_entries.isEmpty())
            return;
        const bool is_function = !finding.problem.function.isEmpty();
        const ObjectKind* kind = finding.problem.object ? finding.problem.object->kind() : nullptr;
        const QString entry = is_function ? QStringLiteral("functions.json")
                                          : QLatin1String(kind ? kind->part : "scene.json");
        const QByteArray text = m_entries.value(entry);
        finding.path += QLatin1Char('/') + entry;
        finding.line = is_function ? line_of(text, "\"name\":\"" + finding.problem.function.toUtf8() + '"')
                                   : line_of(text, "{\"id\":" + QByteArray::number(finding.object) + ',');
        if (is_function && finding.problem.line > 0)
            finding.problem.text
                = lang(u"第 %1 行：%2", u"line %1: %2").arg(finding.problem.line).arg(finding.problem.text);
    }

private:
    QString m_path;
    QMap<QString, QByteArray> m_entries; ///< of a folder
};

/// The whole model, with what its functions may call.
struct OpenScene {
    CBaseWorld world;
    CGuiPlugScene scene;

    OpenScene() { scene.on_world_created(&world); }
};

Result<std::vector<Finding>> check_file(const Check& check)
{
    OpenScene open;
    QMap<QString, QByteArray> entries;
    if (QFileInfo(check.file).isDir()) {
        auto read = read_folder_entries(check.file);
        if (!read)
            return read.status();
        entries = std::move(read.value());
        auto content = read_scene(open.scene.gui_core(), entries);
        if (!content)
            return failed_at(check.file, content.status().message());
        open.scene.install(std::move(content.value()));
    } else if (auto status = open.scene.open_scene(check.file); !status) {
        return status;
    }
    auto problems = open.scene.model().problems();
    const auto sizes = check.sizes.empty() ? std::vector{open.scene.gui_core().design_size()} : check.sizes;
    auto layout = find_layout_problems(open.scene, sizes, check.over_time);
    if (!layout)
        return layout.status();
    for (Problem& problem : layout.value())
        problems.push_back(std::move(problem));
    const Places places(check.file, std::move(entries));
    std::vector<Finding> findings;
    for (Problem& problem : problems) {
        Finding finding{.problem = std::move(problem)};
        finding.object = finding.problem.object ? finding.problem.object->id() : 0;
        places.find(finding);
        finding.problem.object = nullptr; // It goes with the scene.
        findings.push_back(std::move(finding));
    }
    const auto& controls = open.scene.gui_core().controls();
    const bool has_movies = std::ranges::any_of(
        controls, [](const CDXUTControl* control) { return control->GetType() == DXUT_CONTROL_FLASH; });
    if (const auto player = MovieTools::find(); has_movies && !player)
        findings.push_back({.problem = {.text = player.status().message()}, .path = check.file, .is_note = true});
    return findings;
}

QString line_of(const Finding& finding)
{
    const Problem& problem = finding.problem;
    QString where = finding.path;
    if (finding.line > 0)
        where += QLatin1Char(':') + QString::number(finding.line);
    const QString severity = finding.is_note ? lang(u"提示", u"note")
        : problem.is_warning                 ? lang(u"警告", u"warning")
                                             : lang(u"错误", u"error");
    const QString place = problem.place.isEmpty() ? QString() : problem.place + QLatin1String(": ");
    return QStringLiteral("%1: %2: %3%4\n").arg(where, severity, place, problem.text);
}

void write_finding(JsonWriter& writer, const Finding& finding)
{
    writer.new_line();
    writer.begin_object();
    writer.key("file");
    writer.value(finding.path);
    writer.key("line");
    writer.value(finding.line);
    writer.key("severity");
    const char* severity = finding.is_note ? "note" : finding.problem.is_warning ? "warning" : "error";
    writer.value(QString::fromLatin1(severity));
    writer.key("id");
    writer.value(finding.object);
    writer.key("place");
    writer.value(finding.problem.place);
    writer.key("function");
    writer.value(finding.problem.function);
    writer.key("text");
    writer.value(finding.problem.text);
    writer.end_object();
}

QString json_of(const std::vector<Finding>& findings)
{
    JsonWriter writer;
    writer.begin_array();
    for (const Finding& finding : findings)
        write_finding(writer, finding);
    writer.new_line();
    writer.end_array();
    writer.text() += '\n';
    return QString::fromStdString(writer.text());
}

Result<std::vector<QSize>> sizes_of(const QStringList& texts)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    constexpr int largest = 16384;
    std::vector<QSize> sizes;
    for (const QString& text : texts) {
        const auto match = form.match(text);
        const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
        if (!match.hasMatch() || size.isEmpty() || size.width() > largest || size.height() > largest)
            return Status::error(
                lang(u"“%1”不是尺寸（例如 1280x720）", u"\"%1\" is not a size (such as 1280x720)").arg(text));
        sizes.push_back(size);
    }
    return sizes;
}

} // namespace

CommandResult run_check(CommandArguments& arguments)
{
    const bool json = arguments.flag("--json");
    const bool over_time = arguments.flag("--over-time");
    const QStringList size_texts = arguments.values("--size");
    const auto files = arguments.operands(1, INT_MAX);
    if (!files)
        return CommandResult::refused(files.status().message());
    const auto sizes = sizes_of(size_texts);
    if (!sizes)
        return CommandResult::refused(sizes.status().message());
    std::vector<Finding> all;
    CommandResult result;
    for (const QString& file : files.value()) {
        auto findings = check_file({file, sizes.value(), over_time});
        if (!findings)
            return CommandResult::refused(findings.status().message());
        for (Finding& finding : findings.value()) {
            if (!finding.problem.is_warning && !finding.is_note)
                result.status = CommandResult::Found;
            if (!json)
                result.output += line_of(finding);
            all.push_back(std::move(finding));
        }
    }
    if (json)
        result.output = json_of(all);
    return result;
}

} // namespace tarn
