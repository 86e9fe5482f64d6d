#include "package_writer.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/gui_core.h"
#include "gui_core/gui_event.h"
#include "save_opt.h"
#include "scene_content.h"

#include "core/json_writer.h"
#include "store/scene_text.h"

#include <QSet>

#include <utility>

namespace tarn {

namespace {

QByteArray manifest_text(const Document& document)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(package_format);
    writer.key("program");
    writer.value(QStringLiteral("tarn-studio " TARN_VERSION));
    writer.key("next_id");
    writer.value(document.state().next_id);
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

void write_scripts(JsonWriter& writer, const SceneParts& scene, bool selection_only)
{
    QSet<QString> left_out;
    if (selection_only)
        left_out = bound_functions(scene, false) - bound_functions(scene, true);
    for (const CDXUTMenu* menu : scene.core.GetMenus())
        for (const CDXUTMenuItem* item : menu->items())
            left_out.remove(item->item_state().function);
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

/// What the fields of all objects refer to.
QSet<quint32> referred_to(const SceneSnapshot& scene)
{
    QSet<quint32> named;
    const auto add = [&](ObjectRef reference) { named.insert(reference.id); };
    for (const auto& states : scene.objects)
        for (const StatePtr& state : states)
            for (const FieldBase* field : state->fields())
                if (!field->rules().read_only) // What it belongs to, or holds, is not meant.
                    field->each_reference(std::as_const(*state), add);
    return named;
}

/// The selected dialogs with what belongs to them, the menus that these open, and the root dialog without its controls.
void keep_selected(SceneSnapshot& scene, const CGuiCore& core)
{
    QSet<quint32> kept;
    for (const ObjectKind& kind : core.document().kinds()) {
        auto& states = scene.objects[kind.place];
        if (kind.fixed)
            continue;
        const QSet<quint32> named = &kind == &core.menu_kind() ? referred_to(scene) : QSet<quint32>();
        std::erase_if(states, [&](const StatePtr& state) {
            return kind.container
                ? !(&kind == &core.menu_kind() ? named.contains(state->id)
                                               : core.selection().contains(core.find_dialog(state->id)))
                : !kept.contains(state->parent.id);
        });
        for (const StatePtr& state : states)
            kept.insert(state->id);
    }
}

} // namespace

QByteArray scene_text(const SceneParts& scene, bool selection_only)
{
    const Document& document = scene.core.document();
    SceneSnapshot objects = document.snapshot();
    if (selection_only)
        keep_selected(objects, scene.core);
    return part_text(document, document.parts().front(), objects, [&](JsonWriter& writer) {
        write_styles(writer, scene.core.core_state());
        write_scripts(writer, scene, selection_only);
    });
}

Status write_package(CPakFile& package, const SceneParts& scene, const CSaveOpt& options)
{
    if (auto status = package.add_file(options.prefix + QStringLiteral("manifest.json"),
                                       manifest_text(scene.core.document()));
        !status)
        return status;
    if (auto status = package.add_file(options.prefix + QStringLiteral("scene.json"),
                                       scene_text(scene, options.selection_only));
        !status)
        return status;
    const auto& files = scene.core.document().files();
    const auto left_out = [&](const QString& name) {
        return !options.with_pictures && name.startsWith(QLatin1String("textures/"));
    };
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (left_out(file.key()))
            continue;
        if (auto status = package.add_file(options.prefix + file.key(), file.value()); !status)
            return status;
    }
    const auto& damaged = scene.core.document().state().damaged;
    for (auto entry = damaged.begin(); entry != damaged.end(); ++entry) {
        if (entry->isNull() || files.contains(entry.key()) || left_out(entry.key()))
            continue;
        if (auto status = package.add_packed(options.prefix + entry.key(), entry.value()); !status)
            return status;
    }
    return {};
}

} // namespace tarn
