#include "package_writer.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/gui_event.h"
#include "save_opt.h"
#include "scene_content.h"

#include "core/json_writer.h"

#include <QSet>

namespace tarn {

namespace {

QByteArray manifest_text()
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(package_format);
    writer.key("program");
    writer.value(QStringLiteral("tarn-studio " TARN_VERSION));
    writer.end_object();
    writer.text() += '\n';
    return QByteArray::fromStdString(writer.text());
}

std::string_view view(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

void write_fields(JsonWriter& writer, const ObjectState& state)
{
    for (const FieldBase* field : state.fields()) {
        if (field->is_default(state))
            continue;
        writer.key(field->name());
        field->write(state, writer);
    }
}

void write_styles(JsonWriter& writer, const CoreState& state)
{
    if (state.styles.isEmpty())
        return;
    writer.new_line();
    writer.key("styles");
    writer.begin_object();
    for (auto style = state.styles.begin(); style != state.styles.end(); ++style) {
        writer.new_line();
        writer.raw_member(style.key(), view(style.value()));
    }
    writer.new_line();
    writer.end_object();
}

/// The functions that belong to the events of what is written, or of what is not.
QSet<QString> bound_functions(const SceneParts& scene, bool written)
{
    const SelectionRecord& selection = scene.core.selection();
    QSet<QString> names;
    for (const auto& event : scene.events.events()) {
        const CDXUTControl* control = scene.core.find_control(event->control);
        if ((control && selection.contains(control->dialog())) == written)
            names.insert(event->function);
    }
    for (const CDXUTDialog* dialog : scene.core.GetDialogs())
        for (const EventKind& kind : event_kinds())
            if (kind.control_types == 0 && selection.contains(dialog) == written)
                names.insert(dialog->get_func_str(kind.type));
    return names;
}

void write_scripts(JsonWriter& writer, const SceneParts& scene, bool selection_only)
{
    QSet<QString> left_out;
    if (selection_only)
        left_out = bound_functions(scene, false) - bound_functions(scene, true);
    if (!scene.functions.functions().empty()) {
        writer.new_line();
        writer.key("functions");
        scene.functions.write(writer, [&](const IFunc& function) { return !left_out.contains(function.name()); });
    }
    if (!scene.events.empty()) {
        writer.new_line();
        writer.key("events");
        scene.events.write(writer, [&](const CGuiEvent& event) {
            const CDXUTControl* control = selection_only ? scene.core.find_control(event.control) : nullptr;
            return !selection_only || (control && scene.core.selection().contains(control->dialog()));
        });
    }
}

} // namespace

QByteArray scene_text(const SceneParts& scene, bool selection_only)
{
    const CGuiCore& core = scene.core;
    QList<CDXUTDialog*> dialogs;
    for (CDXUTDialog* dialog : core.GetDialogs())
        if (!selection_only || core.selection().contains(dialog))
            dialogs.append(dialog);

    JsonWriter writer;
    writer.begin_object();
    writer.new_line();
    write_fields(writer, core.core_state());
    writer.new_line();
    writer.key("root");
    write_state(core.GetRootDialog()->base_state(), writer);
    writer.new_line();
    writer.key("dialogs");
    writer.begin_array();
    for (const CDXUTDialog* dialog : dialogs) {
        writer.new_line();
        write_state(dialog->base_state(), writer);
    }
    writer.new_line();
    writer.end_array();
    writer.new_line();
    writer.key("controls");
    writer.begin_array();
    if (!selection_only)
        dialogs.prepend(core.GetRootDialog());
    for (const CDXUTDialog* dialog : dialogs) {
        for (const CDXUTControl* control : dialog->controls()) {
            writer.new_line();
            write_state(control->base_state(), writer);
        }
    }
    writer.new_line();
    writer.end_array();
    write_styles(writer, core.core_state());
    write_scripts(writer, scene, selection_only);
    for (const auto& [name, json] : core.core_state().unknown) {
        writer.new_line();
        writer.raw_member(name, view(json));
    }
    writer.new_line();
    writer.end_object();
    writer.text() += '\n';
    return QByteArray::fromStdString(writer.text());
}

Status write_package(CPakFile& package, const SceneParts& scene, const CSaveOpt& options)
{
    if (auto status = package.add_file(options.prefix + QStringLiteral("manifest.json"), manifest_text()); !status)
        return status;
    if (auto status = package.add_file(options.prefix + QStringLiteral("scene.json"),
                                       scene_text(scene, options.selection_only));
        !status)
        return status;
    const auto& files = scene.core.core_state().files;
    const auto left_out = [&](const QString& name) {
        return !options.with_pictures && name.startsWith(QLatin1String("textures/"));
    };
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (left_out(file.key()))
            continue;
        if (auto status = package.add_file(options.prefix + file.key(), file.value()); !status)
            return status;
    }
    const auto& damaged = scene.core.core_state().damaged;
    for (auto entry = damaged.begin(); entry != damaged.end(); ++entry) {
        if (entry->isNull() || files.contains(entry.key()) || left_out(entry.key()))
            continue;
        if (auto status = package.add_packed(options.prefix + entry.key(), entry.value()); !status)
            return status;
    }
    return {};
}

} // namespace tarn
