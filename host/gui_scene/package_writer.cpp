#include "package_writer.h"

#include "animation/animation_states.h"
#include "core/json_writer.h"
#include "event_manager.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/gui_core.h"
#include "gui_core/gui_event.h"
#include "gui_core/style_state.h"
#include "save_opt.h"
#include "script/config_scene.h"
#include "store/enough_memory.h"
#include "store/scene_text.h"
#include "translations/translation.h"

#include <QSet>

#include <map>
#include <utility>

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

/// What the fields of all objects refer to.
QSet<quint32> referred_to(const SceneSnapshot& scene)
{
    QSet<quint32> named;
    const auto add = [&](ObjectRef reference) { named.insert(reference.id); };
    for (const auto& states : scene.objects)
        for (const StatePtr& state : states)
            for (const FieldBase* field : state->fields().link_fields())
                if (!field->rules().read_only) // What it belongs to, or holds, is not meant.
                    field->each_reference(std::as_const(*state), add);
    return named;
}

/// The selected dialogs with what hangs on them, the menus that these open, and the root dialog without its controls;
/// answers the ids.
QSet<quint32> keep_selected_objects(SceneSnapshot& scene, const CGuiCore& core)
{
    QSet<quint32> kept;
    for (const ObjectKind& kind : core.document().kinds()) {
        auto& states = scene.objects[kind.place];
        if (kind.fixed || kind.part != core.dialog_kind().part || &kind == &core.style_kind())
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
    return kept;
}

/// The functions that events of the objects call for which `wanted` answers true.
QSet<QString> called_functions(const SceneSnapshot& scene, const CGuiCore& core,
                               const std::function<bool(quint32)>& wanted)
{
    QSet<QString> names;
    for (const StatePtr& state : scene.objects[core.document().kind("events")->place]) {
        const auto& event = SceneSnapshot::as<EventState>(state);
        if (wanted(event.control.id))
            names.insert(event.function);
    }
    for (const CDXUTDialog* dialog : core.GetDialogs())
        for (const EventKind& kind : event_kinds())
            if (kind.control_types == 0 && wanted(dialog->id()))
                names.insert(dialog->get_func_str(kind.type));
    return names;
}

/// The functions that attributes of controls and of the items of menus name.
QSet<QString> functions_named(const SceneSnapshot& scene, const CGuiCore& core)
{
    QSet<QString> names;
    for (const char* kind : {"controls", "menu_items"})
        for (const StatePtr& state : scene.objects[core.document().kind(kind)->place])
            for (const FieldBase* field : state->fields().link_fields())
                if (field->rules().function)
                    for (const QString& name : field->names(*state))
                        names.insert(name);
    return names;
}

/// Of the timebars what animates objects that are kept, with those that have any of it.
void keep_animation_of(SceneSnapshot& scene, const CGuiCore& core, const QSet<quint32>& kept)
{
    const auto states = [&](const char* kind) -> std::vector<StatePtr>& {
        return scene.objects[core.document().kind(kind)->place];
    };
    QSet<quint32> parents;
    std::erase_if(states("timer_objects"), [&](const StatePtr& state) {
        const auto& object = SceneSnapshot::as<TimerObjectState>(state);
        if (!kept.contains(object.target.id))
            return true;
        parents << object.id << object.parent.id;
        return false;
    });
    std::erase_if(states("timebars"), [&](const StatePtr& bar) { return !parents.contains(bar->id); });
    for (const char* kind : {"variables", "script_keys", "marks"})
        std::erase_if(states(kind), [&](const StatePtr& child) { return !parents.contains(child->parent.id); });
}

void keep_translations(SceneSnapshot& scene, const CGuiCore& core, const std::function<bool(quint32)>& is_kept)
{
    std::erase_if(scene.objects[core.document().kind("texts")->place],
                  [&](const StatePtr& row) { return !is_kept(SceneSnapshot::as<TranslationState>(row).object.id); });
}

void keep_selected(SceneSnapshot& scene, const CGuiCore& core)
{
    const QSet<quint32> kept = keep_selected_objects(scene, core);
    keep_animation_of(scene, core, kept);
    const auto is_kept = [&](quint32 id) { return kept.contains(id); };
    const QSet<QString> left_out = called_functions(scene, core, std::not_fn(is_kept))
        - called_functions(scene, core, is_kept) - functions_named(scene, core);
    std::erase_if(scene.objects[core.document().kind("events")->place],
                  [&](const StatePtr& event) { return !is_kept(SceneSnapshot::as<EventState>(event).control.id); });
    std::erase_if(scene.objects[core.document().kind("functions")->place], [&](const StatePtr& function) {
        return left_out.contains(SceneSnapshot::as<FunctionState>(function).name);
    });
    keep_translations(scene, core, is_kept);
}

/// By the entries that they have in a package.
std::map<QString, Atlas> atlases_of(const Document& document, const SceneSnapshot& scene)
{
    std::map<QString, Atlas> atlases;
    for (const StatePtr& state : scene.objects[document.kind("styles")->place])
        if (const auto& style = SceneSnapshot::as<StyleState>(state); !style.atlas.is_null())
            atlases.emplace(atlas_entry(style.id), style.atlas);
    return atlases;
}

} // namespace

QString atlas_entry(quint32 style)
{
    return QStringLiteral("styles/%1.png").arg(style);
}

SceneSnapshot content_to_save(const CGuiCore& core, const CSaveOpt& options)
{
    SceneSnapshot scene = core.document().snapshot();
    if (options.selection_only || options.interface_only)
        core.document().leave_out_world(scene);
    // Undo brings back an object with its translations; for who opens the file they are nobody's.
    keep_translations(scene, core, [&](quint32 id) {
        const ModelObject* object = core.document().find(id);
        return object && object->is_attached();
    });
    if (options.selection_only)
        keep_selected(scene, core);
    return scene;
}

std::vector<std::pair<QString, QByteArray>> package_texts(const Document& document, const SceneSnapshot& scene,
                                                          const Progress& progress)
{
    std::vector<std::pair<QString, QByteArray>> texts{{QStringLiteral("manifest.json"), manifest_text(scene)}};
    for (const PackagePart& part : document.parts()) {
        if (!part.required && is_empty(document, part, scene))
            continue;
        QByteArray text = part_text(document, part, scene, progress_of(document, part, progress));
        if (text.isNull())
            return {};
        texts.emplace_back(QLatin1String(part.entry), std::move(text));
    }
    return texts;
}

Status write_package(CPakFile& package, const Document& document, const SceneSnapshot& scene, const CSaveOpt& options,
                     const Progress& progress)
{
    const auto texts = package_texts(document, scene, progress);
    if (texts.empty())
        return stopped();
    for (const auto& [entry, text] : texts)
        if (auto status = package.add_file(options.prefix + entry, text); !status)
            return status;
    const auto atlases = atlases_of(document, scene);
    for (const auto& [entry, atlas] : atlases)
        if (auto status = package.add_file(options.prefix + entry, atlas.png()); !status)
            return status;
    const auto left_out = [&](const QString& name) {
        return atlases.contains(name) || (!options.with_pictures && name.startsWith(QLatin1String("textures/")));
    };
    for (auto file = scene.files.begin(); file != scene.files.end(); ++file) {
        if (left_out(file.key()))
            continue;
        if (auto status = package.add_file(options.prefix + file.key(), file.value()); !status)
            return status;
    }
    for (auto entry = scene.damaged.begin(); entry != scene.damaged.end(); ++entry) {
        if (entry->isNull() || scene.files.contains(entry.key()) || left_out(entry.key()))
            continue;
        if (auto status = package.add_packed(options.prefix + entry.key(), entry.value()); !status)
            return status;
    }
    return {};
}

Status save_package(const QString& path, const Document& document, const SceneSnapshot& scene, const CSaveOpt& options,
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
