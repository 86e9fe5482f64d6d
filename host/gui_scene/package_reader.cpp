#include "package_reader.h"

#include "core/json_reader.h"
#include "core/language.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_radio_button.h"
#include "package_writer.h"
#include "store/pak_file.h"
#include "tex_path_info.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr quint32 root_id = 1;
const QString manifest_name = QStringLiteral("manifest.json");
const QString scene_name = QStringLiteral("scene.json");

QString twice(const QString& name)
{
    return lang(u"\"%1\" 出现了两次", u"\"%1\" appears twice").arg(name);
}

/// One read of scene.json.
class SceneReader {
public:
    explicit SceneReader(CGuiCore& core) : m_core(core), m_state(new CoreState)
    {
        m_state->next_id = 2;
        m_content.gui.root = core.make_dialog();
    }

    Status read(QByteArray text);
    SceneContent take(const QMap<QString, QByteArray>& files);

private:
    Status read_member(std::string_view key, JsonCursor& value);
    Status claim_key(std::string_view key, const JsonCursor& place);
    Status read_dialog(JsonCursor& value);
    Status read_control(JsonCursor& value);
    Status read_styles(JsonCursor& value);
    Status claim_id(quint32 id, const JsonCursor& place);
    Status link();

    CGuiCore& m_core;
    QExplicitlySharedDataPointer<CoreState> m_state;
    SceneContent m_content;
    QHash<quint32, CDXUTDialog*> m_dialogs;
    QSet<quint32> m_ids;
    quint32 m_highest = root_id;
    QSet<QByteArray> m_keys;
};

Status SceneReader::claim_id(quint32 id, const JsonCursor& place)
{
    if (id == 0 || id > CGuiCore::max_id)
        return place.fail(lang(u"缺少有效的 \"id\"", u"a valid \"id\" is missing"));
    if (m_ids.contains(id))
        return place.fail(lang(u"编号 %1 出现了两次", u"the id %1 appears twice").arg(id));
    m_ids.insert(id);
    m_highest = std::max(m_highest, id);
    return {};
}

Status SceneReader::claim_key(std::string_view key, const JsonCursor& place)
{
    const QByteArray name(key.data(), qsizetype(key.size()));
    if (m_keys.contains(name))
        return place.fail(twice(QString::fromUtf8(name)));
    m_keys.insert(name);
    return {};
}

Status SceneReader::read_dialog(JsonCursor& value)
{
    auto dialog = m_core.make_dialog();
    if (auto status = dialog->load_state(value); !status)
        return status;
    if (auto status = claim_id(dialog->id(), value); !status)
        return status;
    m_dialogs.insert(dialog->id(), dialog.get());
    m_content.gui.dialogs.push_back(std::move(dialog));
    return {};
}

Status SceneReader::read_control(JsonCursor& value)
{
    int type = -1;
    if (auto status = value.peek_int("type", type); !status)
        return status;
    auto control = m_core.make_control(type);
    if (!control)
        return value.fail(lang(u"未知的控件类型 %1", u"the control type %1 is unknown").arg(type));
    if (auto status = control->load_state(value); !status)
        return status;
    if (auto status = claim_id(control->id(), value); !status)
        return status;
    m_content.gui.controls.push_back(std::move(control));
    return {};
}

Status SceneReader::read_styles(JsonCursor& value)
{
    return value.each_member([this](std::string_view key, JsonCursor& style) {
        const QString name = QString::fromUtf8(key.data(), qsizetype(key.size()));
        if (m_state->styles.contains(name))
            return style.fail(twice(name));
        QByteArray json;
        auto status = style.read_raw(json);
        m_state->styles.insert(name, json);
        return status;
    });
}

Status SceneReader::read_member(std::string_view key, JsonCursor& value)
{
    if (auto status = claim_key(key, value); !status)
        return status;
    if (key == "root")
        return m_content.gui.root->load_state(value);
    if (key == "dialogs")
        return value.each_element([this](JsonCursor& dialog) { return read_dialog(dialog); });
    if (key == "controls")
        return value.each_element([this](JsonCursor& control) { return read_control(control); });
    if (key == "styles")
        return read_styles(value);
    if (key == "functions")
        return m_content.functions->read(value);
    if (key == "events")
        return m_content.events.read(value);
    if (const FieldBase* field = CoreState::field_table().find(key))
        return field->read(*m_state, value);
    QByteArray json;
    auto status = value.read_raw(json);
    m_state->unknown.append({QString::fromUtf8(key.data(), qsizetype(key.size())), json});
    return status;
}

Status SceneReader::link()
{
    auto& root = static_cast<DialogState&>(m_content.gui.root->raw_state());
    if (root.id == 0)
        root.id = root_id;
    root.caption_shown = false;
    root.frame_shown = false;
    if (root.id != root_id || m_ids.contains(root_id))
        return Status::error(
            lang(u"%1：编号 1 只能属于根窗口。", u"%1: the id 1 belongs to the root dialog alone.").arg(scene_name));
    m_dialogs.insert(root_id, m_content.gui.root.get());
    for (const auto& control : m_content.gui.controls) {
        const auto& s = static_cast<const ControlState&>(control->base_state());
        CDXUTDialog* dialog = m_dialogs.value(s.dialog.id);
        if (!dialog)
            return Status::error(lang(u"%1：控件 %2（“%3”）所属的窗口 %4 不存在。",
                                      u"%1: control %2 (\"%3\") belongs to dialog %4, which does not exist.")
                                     .arg(scene_name)
                                     .arg(s.id)
                                     .arg(s.name)
                                     .arg(s.dialog.id));
        static_cast<DialogState&>(dialog->raw_state()).controls.append(control.get());
    }
    keep_one_checked(m_content.gui.controls);
    // An id is not issued again while an event still names it.
    for (const auto& event : m_content.events.events()) {
        if (event->control > CGuiCore::max_id)
            return Status::error(
                lang(u"%1：事件的控件编号 %2 无效。", u"%1: an event names the control %2, which is no valid id.")
                    .arg(scene_name)
                    .arg(event->control));
        m_highest = std::max(m_highest, event->control);
    }
    // Nobody makes that many objects: it is not true, and would leave no ids for new ones.
    if (m_state->next_id > CGuiCore::max_id / 2)
        m_state->next_id = 0;
    m_state->next_id = std::max(m_state->next_id, m_highest + 1);
    return {};
}

Status SceneReader::read(QByteArray text)
{
    JsonText json(std::move(text), scene_name);
    auto status = json.each_member([this](std::string_view key, JsonCursor& value) { return read_member(key, value); });
    return status ? link() : status;
}

/// Pictures that are named but not in the package may lie beside it.
void add_loose_pictures(const GuiContent& content, QMap<QString, QByteArray>& files)
{
    for (const auto& control : content.controls) {
        for (const FieldBase* field : control->fields()) {
            for (const QString& name : field->pictures(control->base_state())) {
                if (files.contains(texture_entry(name)))
                    continue;
                const QByteArray loose = CTexPathInfo::find_loose(name);
                if (!loose.isEmpty())
                    files.insert(texture_entry(name), loose);
            }
        }
    }
}

SceneContent SceneReader::take(const QMap<QString, QByteArray>& files)
{
    m_state->files = files;
    add_loose_pictures(m_content.gui, m_state->files);
    m_content.gui.core = StatePtr(m_state.data());
    return std::move(m_content);
}

Status check_manifest(QByteArray text)
{
    int format = 0;
    bool told = false;
    JsonText json(std::move(text), manifest_name);
    auto status = json.each_member([&](std::string_view key, JsonCursor& value) {
        if (key == "format")
            return std::exchange(told, true) ? value.fail(twice(QStringLiteral("format"))) : value.read(format);
        QByteArray ignored;
        return value.read_raw(ignored);
    });
    if (!status)
        return status;
    if (format > package_format)
        return Status::error(lang(u"它由更新版本的程序保存（格式 %1，本程序支持到 %2），请升级本程序",
                                  u"it was saved by a newer version of the program (format %1; this one reads up to "
                                  u"%2). Use the newer version to open it")
                                 .arg(format)
                                 .arg(package_format));
    if (format < 1)
        return Status::error(lang(u"%1 中缺少格式版本", u"%1 does not tell the format's version").arg(manifest_name));
    return {};
}

} // namespace

Result<SceneContent> read_content(QByteArray manifest, QByteArray scene, const QMap<QString, QByteArray>& files,
                                  CGuiCore& core)
{
    if (auto status = check_manifest(std::move(manifest)); !status)
        return status;
    SceneReader reader(core);
    if (auto status = reader.read(std::move(scene)); !status)
        return status;
    return reader.take(files);
}

Result<SceneContent> read_package(const CPakFile& package, CGuiCore& core)
{
    auto manifest = package.read_file(manifest_name);
    if (!manifest)
        return manifest.status();
    auto scene = package.read_file(scene_name);
    if (!scene)
        return scene.status();
    QMap<QString, QByteArray> files;
    for (const QString& name : package.names()) {
        if (name == manifest_name || name == scene_name || name.endsWith(QLatin1Char('/')))
            continue;
        auto content = package.read_file(name);
        if (!content)
            return content.status();
        files.insert(name, std::move(content.value()));
    }
    auto content = read_content(std::move(manifest.value()), std::move(scene.value()), files, core);
    if (content)
        return content;
    return Status::error(lang(u"无法载入文件包 %1：%2", u"The package %1 cannot be loaded: %2")
                             .arg(package.path(), content.status().message()));
}

} // namespace tarn
