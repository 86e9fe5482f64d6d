#include "package_writer.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "save_opt.h"

#include "core/json_writer.h"

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

} // namespace

QByteArray scene_text(const CGuiCore& core, bool selection_only)
{
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
    for (const auto& [name, json] : core.core_state().unknown) {
        writer.new_line();
        writer.raw_member(name, view(json));
    }
    writer.new_line();
    writer.end_object();
    writer.text() += '\n';
    return QByteArray::fromStdString(writer.text());
}

Status write_package(CPakFile& package, const CGuiCore& core, const CSaveOpt& options)
{
    if (auto status = package.add_file(options.prefix + QStringLiteral("manifest.json"), manifest_text()); !status)
        return status;
    if (auto status = package.add_file(options.prefix + QStringLiteral("scene.json"),
                                       scene_text(core, options.selection_only));
        !status)
        return status;
    const auto& files = core.core_state().files;
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (!options.with_pictures && file.key().startsWith(QLatin1String("textures/")))
            continue;
        if (auto status = package.add_file(options.prefix + file.key(), file.value()); !status)
            return status;
    }
    return {};
}

} // namespace tarn
