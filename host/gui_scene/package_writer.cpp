#include "package_writer.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/gui_event.h"
#include "save_opt.h"
#include "scene_content.h"

#include "core/json_writer.h"
#include "store/enough_memory.h"
#include "store/scene_text.h"

#include <QSet>

namespace tarn {

namespace {

QByteArray manifest_text(const SceneSnapshot& scene)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(package_format);
    writer.key("program");
    writer.value(QStringLiteral("tarn-studio " TARN_VERSION));
    writer.key("next_id");
    writer.value(scene.next_id);
    writer.end_object();
    writer.text() += '\n';
    return QByteArray::fromStdString(writer.text());
}

std::string_view view(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
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

void write_scripts(JsonWriter& writer, const SceneContent& scene)
{
    if (!scene.functions->functions().empty()) {
        writer.new_line();
        writer.key("functions");
        scene.functions->write(writer, [](const IFunc&) { return true; });
    }
    if (!scene.events.empty()) {
        writer.new_line();
        writer.key("events");
        scene.events.write(writer, [](const CGuiEvent&) { return true; });
    }
}

/// Functions and events are no states that could be shared: the copy gets its own, which share their texts.
void copy_scripts(SceneContent& copy, const SceneParts& scene, bool selection_only)
{
    QSet<QString> left_out;
    if (selection_only)
        left_out = bound_functions(scene, false) - bound_functions(scene, true);
    for (const FuncPtr& function : scene.functions.functions())
        if (!left_out.contains(function->name()))
            (void)copy.functions->add_function(function->copy(function->name(), function->text()), false);
    std::vector<CGuiEvent> events;
    for (const auto& event : scene.events.events()) {
        const CDXUTControl* control = selection_only ? scene.core.find_control(event->control) : nullptr;
        if (!selection_only || (control && scene.core.selection().contains(control->dialog())))
            events.push_back(*event);
    }
    copy.events.attach(std::move(events));
}

/// The selected dialogs with what belongs to them, and the root dialog without its controls.
void keep_selected(SceneSnapshot& scene, const CGuiCore& core)
{
    QSet<quint32> kept;
    for (const ObjectKind& kind : core.document().kinds()) {
        auto& states = scene.objects[kind.place];
        if (kind.fixed)
            continue;
        std::erase_if(states, [&](const StatePtr& state) {
            return kind.container ? !core.selection().contains(core.find_dialog(state->id))
                                  : !kept.contains(state->parent.id);
        });
        for (const StatePtr& state : states)
            kept.insert(state->id);
    }
}

} // namespace

SceneContent copy_of(const SceneParts& scene, bool selection_only)
{
    SceneContent copy;
    copy.objects = scene.core.document().snapshot();
    if (selection_only)
        keep_selected(copy.objects, scene.core);
    copy_scripts(copy, scene, selection_only);
    return copy;
}

namespace {

QByteArray text_of(const Document& document, const SceneContent& scene, const Progress& progress)
{
    const auto write_more = [&](JsonWriter& writer) {
        write_styles(writer, SceneSnapshot::as<CoreState>(scene.objects.containers.front()));
        write_scripts(writer, scene);
    };
    return part_text(document, document.parts().front(), scene.objects, write_more, progress);
}

} // namespace

QByteArray scene_text(const SceneParts& scene, bool selection_only)
{
    return text_of(scene.core.document(), copy_of(scene, selection_only), {});
}

Status write_package(CPakFile& package, const Document& document, const SceneContent& scene, const CSaveOpt& options,
                     const Progress& progress)
{
    if (auto status = package.add_file(options.prefix + QStringLiteral("manifest.json"), manifest_text(scene.objects));
        !status)
        return status;
    const QByteArray text = text_of(document, scene, progress);
    if (text.isNull())
        return stopped();
    if (auto status = package.add_file(options.prefix + QStringLiteral("scene.json"), text); !status)
        return status;
    const auto& files = scene.objects.files;
    const auto left_out = [&](const QString& name) {
        return !options.with_pictures && name.startsWith(QLatin1String("textures/"));
    };
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (left_out(file.key()))
            continue;
        if (auto status = package.add_file(options.prefix + file.key(), file.value()); !status)
            return status;
    }
    const auto& damaged = scene.objects.damaged;
    for (auto entry = damaged.begin(); entry != damaged.end(); ++entry) {
        if (entry->isNull() || files.contains(entry.key()) || left_out(entry.key()))
            continue;
        if (auto status = package.add_packed(options.prefix + entry.key(), entry.value()); !status)
            return status;
    }
    return {};
}

Status save_package(const QString& path, const Document& document, const SceneContent& scene, const CSaveOpt& options,
                    ReadOnly read_only, const Progress& progress)
{
    return with_enough_memory([&] {
        CPakFile package;
        auto status = package.create(path);
        if (status)
            status = write_package(package, document, scene, options, progress.part(0, 0.5));
        return status ? package.close(read_only, progress.part(0.5, 1)) : status;
    });
}

} // namespace tarn
