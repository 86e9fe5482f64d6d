#include "look_clipboard.h"

#include "clipboard_files.h"
#include "core/authored.h"
#include "core/field.h"
#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/language.h"
#include "core/utf8.h"
#include "gui_core/control_class.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/look_fields.h"
#include "gui_scene/font_library.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/picture_release.h"
#include "selection_edit.h"
#include "store/enough_memory.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSet>

#include <memory>

namespace tarn {

namespace {

constexpr int look_format = 1;                       ///< newer ones are refused
constexpr qsizetype max_text = qsizetype(256) << 20; ///< bytes

/// What a clipboard's text holds: a control of the type that was copied, which has nothing but the look.
struct CopiedLook {
    StatePtr control;
    ClipboardFiles files;
};

Status read_control(JsonCursor& value, CopiedLook& look)
{
    int type = -1;
    if (auto status = value.peek_int("type", type); !status)
        return status;
    look.control = StatePtr(make_control_state(type));
    if (!look.control)
        return value.fail(lang(u"未知的控件类型 %1", u"the control type %1 is unknown").arg(type));
    return read_state(*look.control, value);
}

Status read_look(const QByteArray& text, CopiedLook& look)
{
    if (text.size() > max_text)
        return Status::error(lang(u"内容太大", u"it is too large"));
    int format = 0;
    auto status
        = JsonText(text, lang(u"剪贴板", u"clipboard")).each_member([&](std::string_view key, JsonCursor& value) {
              if (key == "format")
                  return value.read(format);
              if (key == "look")
                  return read_control(value, look);
              if (key == "pictures")
                  return value.each_member([&](std::string_view name, JsonCursor& file) {
                      return read_file(from_utf8(name), file, look.files);
                  });
              QByteArray ignored;
              return value.read_raw(ignored);
          });
    if (!status)
        return status;
    if (format < 1 || format > look_format)
        return Status::error(
            lang(u"它来自其他版本的程序（格式 %1）", u"it comes from another version of the program (format %1)")
                .arg(format));
    return look.control ? Status() : Status::error(lang(u"其中没有外观", u"there is no look in it"));
}

/// The names, before the dot, of the elements that both types have.
QSet<QString> common_elements(int a, int b)
{
    const auto names = [](int type) {
        QSet<QString> all;
        for (const StyleElement& element : style_elements(type))
            all.insert(QLatin1String(element.name));
        return all;
    };
    return names(a) & names(b);
}

/// Of a map by look_name(): the entries of elements that are `common` from the copied one, the others as they were.
template <class Map>
Map mixed(const Map& present, const Map& copied, const QSet<QString>& common)
{
    const auto is_common = [&](const QString& name) { return common.contains(name.section(QLatin1Char('.'), 0, 0)); };
    Map all = present;
    all.removeIf([&](const auto& entry) { return is_common(entry.key()); });
    for (auto entry = copied.begin(); entry != copied.end(); ++entry)
        if (is_common(entry.key()))
            all.insert(entry.key(), entry.value());
    return all;
}

bool is_by_element(FieldKey field)
{
    return field == key<&ControlExtras::style_images> || field == key<&ControlExtras::style_colors>;
}

/// What `control` has for the attribute when it takes on the look; monostate where it has nothing to take.
Value pasted(const CDXUTControl& control, const FieldBase& field, const ControlState& look)
{
    const FieldBase* copied = look.fields().find(field.key());
    if (!copied)
        return {};
    const Value value = copied->get(look);
    if (control.GetType() == look.type)
        return value;
    if (!is_by_element(field.key()))
        return has_styled_text(control.GetType()) && has_styled_text(look.type) ? value : Value();
    const QSet<QString> common = common_elements(control.GetType(), look.type);
    const Value present = Authored::property(control, field);
    if (const auto* pictures = std::get_if<TextMap>(&present))
        return mixed(*pictures, std::get<TextMap>(value), common);
    return mixed(std::get<NumberMap>(present), std::get<NumberMap>(value), common);
}

void take_look(CDXUTControl& control, const ControlState& look)
{
    for (const FieldKey key : look_fields) {
        const FieldBase* field = control.fields().find(key);
        const Value value = field ? pasted(control, *field, look) : Value();
        if (!std::holds_alternative<std::monostate>(value))
            (void)control.set_property(*field, value);
    }
}

const QMimeData* clipboard()
{
    return QGuiApplication::clipboard()->mimeData();
}

} // namespace

QByteArray look_text(const CGuiPlugScene& scene, const CDXUTControl& control)
{
    const StatePtr look(make_control_state(control.GetType()));
    const ObjectState& authored = Authored::state(control);
    for (const FieldKey key : look_fields)
        if (const FieldBase* field = look->fields().find(key))
            field->copy(authored, *look);
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(look_format);
    writer.key("look");
    write_state(*look, writer);
    ClipboardFiles files;
    add_files_of(scene, *look, files);
    write_files(writer, files);
    writer.end_object();
    return QByteArray::fromStdString(writer.text());
}

Status paste_look_text(CGuiPlugScene& scene, const QByteArray& text)
{
    CopiedLook look;
    if (auto status = with_enough_memory([&] { return read_look(text, look); }); !status)
        return Status::error(lang(u"剪贴板中的外观无法粘贴：%1", u"The look in the clipboard cannot be pasted: %1")
                                 .arg(status.message()));
    const auto& controls = scene.gui_core().selection().controls;
    {
        const UserAction action(scene.journal(), lang(u"粘贴外观", u"Paste Look"));
        const PictureRelease pictures(scene.gui_core(), scene.functions(), controls);
        const FontRelease fonts(scene.gui_core(), scene.fonts());
        std::vector<StatePtr> states{look.control};
        take_files(scene, states, look.files);
        for (CDXUTControl* control : controls)
            take_look(*control, static_cast<const ControlState&>(*states.front()));
    }
    notify_properties(scene);
    return {};
}

bool clipboard_has_look()
{
    return clipboard() && clipboard()->hasFormat(QLatin1String(look_mime_type));
}

void copy_look(const CGuiPlugScene& scene)
{
    const CDXUTControl* control = scene.gui_core().selection().current_control;
    if (!control)
        return;
    auto data = std::make_unique<QMimeData>();
    data->setData(QLatin1String(look_mime_type), look_text(scene, *control));
    QGuiApplication::clipboard()->setMimeData(data.release());
}

Status paste_look(CGuiPlugScene& scene)
{
    return clipboard() ? paste_look_text(scene, clipboard()->data(QLatin1String(look_mime_type))) : Status();
}

} // namespace tarn
