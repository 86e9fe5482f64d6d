#include "control_clipboard.h"

#include "clipboard_files.h"
#include "control_commands.h"
#include "core/authored.h"
#include "core/field.h"
#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/language.h"
#include "core/utf8.h"
#include "dialog_copies.h"
#include "engine/base_world.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_menu.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/translations/translations.h"
#include "store/enough_memory.h"
#include "world/world_scene.h"
#include "world_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <memory>
#include <tuple>

namespace tarn {

namespace {

constexpr qsizetype max_text = qsizetype(256) << 20; ///< bytes
constexpr std::size_t max_controls = 100'000;
constexpr double paste_step = 10; ///< pixels from a control to its copy in the same place

/// What a clipboard's text holds, not part of the scene.
struct Content {
    std::vector<StatePtr> controls;
    std::vector<StatePtr> objects;     ///< of the world
    QMap<QString, QByteArray> dialogs; ///< the texts of a scene that holds them, by entry of a package
    ClipboardFiles files;
    std::vector<StatePtr> texts;   ///< of the controls, in other languages
    QHash<quint32, QString> menus; ///< names of those that the controls open, by their ids
};

/// What the controls refer to, apart from their dialog.
template <class Visit>
void each_menu(const ObjectState& control, Visit visit)
{
    for (const FieldBase* field : control.fields().link_fields())
        if (!field->rules().read_only && !field->is_default(control))
            field->each_reference(control, visit);
}

void write_menus(JsonWriter& writer, const std::vector<CDXUTControl*>& controls)
{
    QMap<QString, QString> used;
    for (const CDXUTControl* control : controls)
        each_menu(Authored::state(*control), [&](ObjectRef reference) {
            const auto* menu = control->document().find_as<CDXUTMenu>(reference.id);
            if (menu && menu->is_attached())
                used.insert(QString::number(reference.id), menu->name());
        });
    writer.key("menus");
    writer.begin_object();
    for (auto menu = used.begin(); menu != used.end(); ++menu) {
        writer.text_key(menu.key());
        writer.value(menu.value());
    }
    writer.end_object();
}

void write_texts(JsonWriter& writer, const CGuiPlugScene& scene, const std::vector<CDXUTControl*>& controls)
{
    QSet<quint32> ids;
    for (const CDXUTControl* control : controls)
        ids.insert(control->id());
    writer.key("texts");
    writer.begin_array();
    for (const StatePtr& row : scene.translations().rows_of(ids)) {
        writer.new_line();
        write_state(*row, writer);
    }
    writer.end_array();
}

Status read_text(JsonCursor& value, Content& content)
{
    if (content.texts.size() == Translations::max_texts)
        return value.fail(lang(u"译文太多", u"there are too many translations"));
    return read_state(*content.texts.emplace_back(new TranslationState), value);
}

Status read_control(JsonCursor& value, Content& content)
{
    int type = -1;
    if (auto status = value.peek_int("type", type); !status)
        return status;
    StatePtr control(make_control_state(type));
    if (!control)
        return value.fail(lang(u"未知的控件类型 %1", u"the control type %1 is unknown").arg(type));
    if (content.controls.size() == max_controls)
        return value.fail(lang(u"控件太多", u"there are too many controls"));
    auto status = read_state(*control, value);
    content.controls.push_back(std::move(control));
    return status;
}

Status read_content(const ObjectKind& world_kind, const QByteArray& text, Content& content)
{
    if (text.size() > max_text)
        return Status::error(lang(u"内容太大", u"it is too large"));
    int format = 0;
    JsonText json(text, lang(u"剪贴板", u"clipboard"));
    auto status = json.each_member([&](std::string_view key, JsonCursor& value) {
        if (key == "format")
            return value.read(format);
        if (key == "controls")
            return value.each_element([&](JsonCursor& control) { return read_control(control, content); });
        if (key == "objects")
            return value.each_element(
                [&](JsonCursor& object) { return read_world_object(world_kind, object, content.objects); });
        if (key == "dialogs")
            return value.each_member([&](std::string_view name, JsonCursor& part) {
                return part.read_raw(content.dialogs[from_utf8(name)]);
            });
        if (key == "pictures")
            return value.each_member([&](std::string_view name, JsonCursor& file) {
                return read_file(from_utf8(name), file, content.files);
            });
        if (key == "texts")
            return value.each_element([&](JsonCursor& row) { return read_text(row, content); });
        if (key == "menus")
            return value.each_member([&](std::string_view id, JsonCursor& name) {
                return name.read(content.menus[from_utf8(id).toUInt()]);
            });
        QByteArray ignored;
        return value.read_raw(ignored);
    });
    if (!status)
        return status;
    if (format < 1 || format > clipboard_format)
        return Status::error(
            lang(u"它来自其他版本的程序（格式 %1）", u"it comes from another version of the program (format %1)")
                .arg(format));
    if (content.controls.empty() && content.dialogs.isEmpty() && content.objects.empty())
        return Status::error(lang(u"其中没有控件", u"there are no controls in it"));
    return {};
}

/// Menus stay in their scene. Controls that come to another one keep none that is not there under the same id and name.
void keep_own_menus(const CGuiCore& core, Content& content)
{
    const auto keep = [&](ObjectRef& reference) {
        const CDXUTMenu* menu = core.find_menu(reference.id);
        if (!menu || menu->name() != content.menus.value(reference.id))
            reference = {};
    };
    for (StatePtr& control : content.controls)
        for (const FieldBase* field : control->fields())
            if (!field->rules().read_only && !field->is_default(*control))
                field->each_reference(*control, keep);
}

using Place = std::tuple<int, float, float, float, float>;

/// A control of the same type and frame covers another one completely: its copy would not be seen.
Place place_of(const ObjectState& control, double shift)
{
    const auto& s = static_cast<const ControlState&>(control);
    return {s.type, s.x + float(shift), s.y + float(shift), s.width, s.height};
}

/// How far the controls have to be moved aside to be seen.
double free_shift(const Content& content, const CDXUTDialog& dialog)
{
    std::vector<Place> taken;
    for (const CDXUTControl* control : dialog.controls())
        taken.push_back(place_of(Authored::state(*control), 0));
    std::sort(taken.begin(), taken.end());
    const auto covers = [&](double shift) {
        return std::any_of(content.controls.begin(), content.controls.end(), [&](const auto& control) {
            return std::binary_search(taken.begin(), taken.end(), place_of(*control, shift));
        });
    };
    double shift = 0;
    while (covers(shift))
        shift += paste_step;
    return shift;
}

} // namespace

QByteArray clipboard_text(const CGuiPlugScene& scene, const std::vector<CDXUTControl*>& controls)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(clipboard_format);
    writer.key("controls");
    writer.begin_array();
    for (const CDXUTControl* control : controls) {
        writer.new_line();
        write_state(Authored::state(*control), writer);
    }
    writer.end_array();
    write_menus(writer, controls);
    write_texts(writer, scene, controls);
    ClipboardFiles files;
    for (const CDXUTControl* control : controls)
        add_files_of(scene, Authored::state(*control), files);
    write_files(writer, files);
    writer.end_object();
    return QByteArray::fromStdString(writer.text());
}

QByteArray clipboard_text_of_dialogs(const CGuiPlugScene& scene)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(clipboard_format);
    writer.key("dialogs");
    writer.begin_object();
    const ToldDialogs told = told_selected_dialogs(scene);
    for (auto text = told.texts.begin(); text != told.texts.end(); ++text)
        writer.raw_member(text.key(), {text->constData(), std::size_t(text->size())});
    writer.end_object();
    ClipboardFiles files;
    for (const CDXUTDialog* dialog : selected_dialogs(scene.gui_core())) {
        add_files_of(scene, Authored::state(*dialog), files);
        for (const CDXUTControl* control : dialog->controls())
            add_files_of(scene, Authored::state(*control), files);
    }
    write_files(writer, files);
    writer.end_object();
    return QByteArray::fromStdString(writer.text());
}

namespace {

void paste_controls(CGuiPlugScene& scene, Content& content)
{
    CGuiCore& core = scene.gui_core();
    CDXUTDialog* current = core.selection().current_dialog;
    CDXUTDialog& home = current ? *current : *core.GetRootDialog();
    const double shift = free_shift(content, home);
    std::vector<CDXUTControl*> pasted;
    {
        const UserAction action(scene.journal(), lang(u"粘贴控件", u"Paste Control"));
        take_files(scene, content.controls, content.files);
        keep_own_menus(core, content);
        QHash<quint32, quint32> ids;
        for (const auto& control : content.controls)
            if (CDXUTControl* copy = add_copy(core, *control, home, {shift, shift})) {
                pasted.push_back(copy);
                ids.insert(control->id, copy->id());
            }
        scene.translations().take_rows(content.texts, ids);
        core.ClearCtrlSelection();
        core.SelectControls(pasted);
    }
    tell_new_controls(scene);
}

} // namespace

Status paste_text(CGuiPlugScene& scene, const QByteArray& text)
{
    Content content;
    const ObjectKind& world_kind = scene.world()->objects().object_kind();
    auto status = with_enough_memory([&] { return read_content(world_kind, text, content); });
    if (status && !content.dialogs.isEmpty())
        status = add_dialogs(scene, {content.dialogs, content.files}, lang(u"粘贴窗口", u"Paste Dialog"));
    else if (status && !content.controls.empty())
        paste_controls(scene, content);
    if (status && !content.objects.empty())
        paste_world_objects(scene, content.objects, content.files);
    if (status)
        return {};
    return Status::error(
        lang(u"剪贴板中的内容无法粘贴：%1", u"What is in the clipboard cannot be pasted: %1").arg(status.message()));
}

void copy_to_clipboard(const QByteArray& text)
{
    auto data = std::make_unique<QMimeData>();
    data->setData(QLatin1String(clipboard_mime_type), text);
    QGuiApplication::clipboard()->setMimeData(data.release());
}

bool clipboard_has_objects()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(QLatin1String(clipboard_mime_type));
}

Status paste_clipboard(CGuiPlugScene& scene)
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data ? paste_text(scene, data->data(QLatin1String(clipboard_mime_type))) : Status();
}

} // namespace tarn
