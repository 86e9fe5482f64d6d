#include "gui_plug_scene.h"
#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "core/authored.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "engine/camera_view.h"
#include "engine/scene_selection.h"
#include "font_library.h"
#include "function_names.h"
#include "gui_core/control_class.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "led_by_camera.h"
#include "movie_file.h"
#include "picture_file.h"
#include "picture_release.h"
#include "scene_in_world.h"
#include "scene_movies.h"
#include "scene_overlay.h"
#include "scene_tools.h"
#include "script/gui_script_api.h"
#include "style_library.h"
#include "translations/translations.h"
#include "world/world_object.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <span>

using tarn::CheckBoxState;
using tarn::DialogState;
using tarn::ImageButtonState;
using tarn::key;
using tarn::lang;
using tarn::MapState;
using tarn::PictureState;
using tarn::Status;

namespace {

constexpr std::array button_images{key<&ImageButtonState::image_normal>, key<&ImageButtonState::image_hover>,
                                   key<&ImageButtonState::image_pressed>};
constexpr std::array box_images{key<&CheckBoxState::image_unchecked>, key<&CheckBoxState::image_checked>};
constexpr std::array map_images{key<&MapState::image_map>, key<&MapState::image_surface>, key<&MapState::image_base>};
constexpr std::array picture_images{key<&PictureState::image>};

/// For attributes that take any value of that kind.
void write(tarn::ModelObject& object, tarn::FieldKey key, const tarn::Value& value)
{
    if (const tarn::FieldBase* field = object.fields().find(key))
        (void)object.set_property(*field, value);
}

/// Those that an object's attribute names.
void write_picture(const std::vector<tarn::ModelObject*>& objects, tarn::FieldKey key, const QString& picture,
                   const char* look)
{
    for (tarn::ModelObject* object : objects) {
        const tarn::FieldBase* field = object->fields().find(key);
        tarn::Value value = field ? object->property(*field) : tarn::Value();
        if (auto* pictures = std::get_if<tarn::TextMap>(&value))
            pictures->insert(QLatin1String(look), picture);
        else
            value = picture;
        write(*object, key, value);
    }
}

} // namespace

CGuiPlugScene::CGuiPlugScene() = default;

CGuiPlugScene::~CGuiPlugScene()
{
    if (!m_world)
        return;
    m_world->set_script_api({});
    m_world->begin_edit = nullptr;
    m_world->set_default_mouse_tool(nullptr);
    m_world->set_overlay(nullptr);
}

tarn::SceneEditor& CGuiPlugScene::editor()
{
    return m_tools->editor();
}

void CGuiPlugScene::set_tools(MakeTools make)
{
    m_make_tools = std::move(make);
}

void CGuiPlugScene::join(tarn::Document& document)
{
    m_core = std::make_unique<CGuiCore>(document);
    m_style_library = std::make_unique<tarn::StyleLibrary>(*m_core);
    m_fonts = std::make_unique<tarn::FontLibrary>(*m_core);
    m_events = std::make_unique<CEventManager>(document);
    m_animation = std::make_unique<CAnimationScene>(document);
    m_translations = std::make_unique<tarn::Translations>(document);
    m_animation->set_target_kind(tarn::TimerObjectType::Control, &m_control_target);
    m_animation->set_target_kind(tarn::TimerObjectType::Dialog, &m_dialog_target);
    for (WorldTargetRow& row : m_world_targets)
        m_animation->set_target_kind(row.type, &row.target);
    m_animation->set_listener(&m_timebar_runner);
    if (m_make_tools)
        m_tools = m_make_tools(*this);
}

void CGuiPlugScene::on_world_created(CBaseWorld* world)
{
    m_world = world;
    if (!m_core)
        join(world->document());
    m_in_world = std::make_unique<tarn::SceneInWorld>(*m_core, *world);
    m_movies = std::make_unique<tarn::SceneMovies>(*world, *m_core, *m_fonts);
    m_movies->on_redraw = [world] { world->update_all_views(); };
    m_movies->on_call = [this](CDXUTFlash& movie, const QString& name, const std::vector<tarn::Value>& given) {
        const tarn::ShownWrites writes(document());
        m_runner.call_back(movie, name, given);
        m_runner.deliver();
    };
    for (WorldTargetRow& row : m_world_targets)
        row.target.set_models(&world->models());
    if (m_tools) {
        m_tools->on_world_created(*world);
        world->set_default_mouse_tool(&m_tools->select_tool());
    }
    world->set_script_api(tarn::gui_script_api(*this));
    world->begin_edit = [this](const QString& name) { return begin_script_edit(name); };
    m_overlay = std::make_unique<tarn::SceneOverlay>(*m_core, *m_in_world, *m_movies);
    world->set_overlay(m_overlay.get());
}

std::vector<tarn::ModelObject*> CGuiPlugScene::selected_objects() const
{
    if (m_world && m_world->selection().get_last()) {
        const auto objects = m_world->selection().objects();
        return {objects.begin(), objects.end()};
    }
    const tarn::SelectionRecord& selection = m_core->selection();
    if (selection.controls_selected)
        return {selection.controls.begin(), selection.controls.end()};
    return {selection.dialogs.begin(), selection.dialogs.end()};
}

std::shared_ptr<void> CGuiPlugScene::begin_script_edit(const QString& name)
{
    const auto end = [this](tarn::UserAction* action) {
        journal().cancel();
        delete action;
        // Focus and minimised dialogs belong to an interface that runs; undo knows nothing of them.
        if (!m_playing)
            m_core->EnableGui(m_core->selection().editing);
    };
    return std::shared_ptr<tarn::UserAction>(new tarn::UserAction(journal(), name), end);
}

CConfigScene& CGuiPlugScene::functions() const
{
    return m_world->config_scene();
}

void CGuiPlugScene::RemoveDialog(CDXUTDialog* dialog)
{
    if (dialog)
        RemoveDialogs({dialog});
}

void CGuiPlugScene::RemoveDialogs(const std::vector<CDXUTDialog*>& dialogs)
{
    {
        const tarn::UserAction action(journal(), lang(u"删除窗口", u"Remove Dialog"));
        QList<CDXUTControl*> controls;
        for (const CDXUTDialog* dialog : dialogs)
            controls += dialog->controls();
        const tarn::PictureRelease release(*m_core, functions(), controls);
        const tarn::MovieRelease movies(document(), controls);
        const tarn::FontRelease fonts(*m_core, *m_fonts);
        m_core->remove_dialogs(dialogs);
    }
    m_world->broadcast(tarn::ui_scene_changed);
}

void CGuiPlugScene::RemoveCtrl(CDXUTControl* control)
{
    const tarn::UserAction action(journal(), lang(u"删除控件", u"Remove Control"));
    const tarn::PictureRelease release(*m_core, functions(), std::span(&control, control ? 1 : 0));
    const tarn::MovieRelease movies(document(), std::span(&control, control ? 1 : 0));
    const tarn::FontRelease fonts(*m_core, *m_fonts);
    m_core->remove_control(control);
}

void CGuiPlugScene::RemoveCtrls(const std::vector<CDXUTControl*>& controls)
{
    const tarn::UserAction action(journal(), lang(u"删除控件", u"Remove Control"));
    const tarn::PictureRelease release(*m_core, functions(), controls);
    const tarn::MovieRelease movies(document(), controls);
    const tarn::FontRelease fonts(*m_core, *m_fonts);
    m_core->remove_controls(controls);
}

void CGuiPlugScene::RemoveMenu(CDXUTMenu* menu)
{
    if (!menu)
        return;
    const tarn::UserAction action(journal(), lang(u"删除菜单", u"Delete Menu"));
    std::vector<const tarn::ModelObject*> objects(menu->items().begin(), menu->items().end());
    objects.push_back(menu);
    const tarn::PictureRelease release(*m_core, functions(), objects);
    const tarn::FontRelease fonts(*m_core, *m_fonts);
    m_core->remove_menu(menu);
}

void CGuiPlugScene::RemoveMenuItem(CDXUTMenuItem* item)
{
    CDXUTMenu* menu = item ? item->menu() : nullptr;
    if (!menu)
        return;
    const tarn::UserAction action(journal(), lang(u"删除菜单项", u"Remove Menu Item"));
    const tarn::PictureRelease release(*m_core, functions(), menu->items());
    m_core->remove_menu_item(item);
}

Status CGuiPlugScene::set_picture(const std::vector<tarn::ModelObject*>& objects, tarn::FieldKey field,
                                  const QString& path, const char* look)
{
    const tarn::UserAction action(journal(), lang(u"设置图片", u"Set Picture"));
    return m_world->work(lang(u"正在读取图片", u"Taking In a Picture"), [&](const tarn::Progress& progress) -> Status {
        const auto name = tarn::take_picture(*m_core, path, progress);
        if (!name)
            return name.status();
        const tarn::PictureRelease release(*m_core, functions(), objects);
        write_picture(objects, field, name.value(), look);
        return {};
    });
}

Status CGuiPlugScene::SetControlTexture(const QString& path, int)
{
    const tarn::UserAction action(journal(), lang(u"设置图片", u"Set Picture"));
    for (CDXUTControl* control : m_core->selection().controls) {
        const bool is_picture = control->GetType() == DXUT_CONTROL_PICTURE;
        const auto elements = tarn::style_elements(control->GetType());
        if (!is_picture && elements.empty())
            continue;
        const QByteArray look = is_picture ? QByteArray()
                                           : tarn::look_name(elements.front(), tarn::VisualState::Normal).toLatin1();
        const tarn::FieldKey field = is_picture ? key<&PictureState::image> : key<&tarn::ControlExtras::style_images>;
        if (auto status = set_picture({control}, field, path, look.constData()); !status)
            return status;
    }
    return {};
}

void CGuiPlugScene::clear_picture(const std::vector<tarn::ModelObject*>& objects, tarn::FieldKey field,
                                  const char* look)
{
    const tarn::UserAction action(journal(), lang(u"清除图片", u"Clear Picture"));
    const tarn::PictureRelease release(*m_core, functions(), objects);
    write_picture(objects, field, {}, look);
}

Status CGuiPlugScene::set_buttonst_img(const std::vector<tarn::ModelObject*>& buttons, int state, const QString& path)
{
    return set_picture(buttons, button_images[std::size_t(state)], path);
}

Status CGuiPlugScene::set_checkbox_img(const std::vector<tarn::ModelObject*>& boxes, int state, const QString& path)
{
    return set_picture(boxes, box_images[std::size_t(state)], path);
}

Status CGuiPlugScene::set_map_img(const std::vector<tarn::ModelObject*>& maps, int slot, const QString& path)
{
    return set_picture(maps, map_images[std::size_t(slot)], path);
}

Status CGuiPlugScene::set_imgctrl_img(const std::vector<tarn::ModelObject*>& pictures, int slot, const QString& path)
{
    return set_picture(pictures, picture_images[std::size_t(slot)], path);
}

Status CGuiPlugScene::set_Flashctrl_swf(CDXUTFlash& flash, const QString& source, bool is_local)
{
    const tarn::UserAction action(journal(), lang(u"设置影片", u"Set Movie"));
    QString name = source;
    if (is_local) {
        const auto taken = tarn::take_movie(document(), source);
        if (!taken)
            return taken.status();
        name = taken.value();
    }
    CDXUTFlash* const one = &flash;
    const tarn::MovieRelease release(document(), std::span(&one, 1));
    write(flash, key<&tarn::FlashState::source>, name);
    write(flash, key<&tarn::FlashState::source_local>, is_local);
    return {};
}

void CGuiPlugScene::switch_ctrl_dialog()
{
    tarn::SelectionRecord& selection = m_core->selection();
    selection.controls_selected = !selection.controls_selected;
    m_world->broadcast(tarn::ui_scene_changed);
}

void CGuiPlugScene::switch_ctrl_dialog(CDXUTControl* control, CDXUTDialog* dialog)
{
    const tarn::UserAction action(journal(), lang(u"切换控件窗口", u"Switch Dialog"));
    m_core->move_control_to(control, dialog);
}

void CGuiPlugScene::switch_ctrl_dialog(const std::vector<CDXUTControl*>& controls, CDXUTDialog* dialog)
{
    const tarn::UserAction action(journal(), lang(u"切换控件窗口", u"Switch Dialog"));
    m_core->move_controls_to(controls, dialog);
}

void CGuiPlugScene::SetMTFunction(int kind, int type)
{
    if (m_playing || (kind == 2 && !tarn::control_class(type)))
        return;
    m_function = kind;
    m_function_type = kind == 2 ? type : -1;
    if (kind == 0) {
        m_world->api_reset_mt();
        m_create_tool.reset();
        return;
    }
    auto tool = m_tools->create_tool(kind == 1 ? tarn::SceneTools::new_dialog : type);
    m_world->set_mouse_tool(tool.get());
    m_create_tool = std::move(tool);
}

void CGuiPlugScene::disarm()
{
    if (m_function != 0)
        SetMTFunction(0, 0);
}

tarn::Result<double> CGuiPlugScene::show_time(const QString& timebar, double time)
{
    const auto& bars = m_animation->bars();
    CTimebar* bar = !timebar.isEmpty() ? m_animation->SearchTimebarFromName(timebar)
        : bars.empty()                 ? nullptr
                                       : bars.front();
    if (!bar)
        return Status::error(timebar.isEmpty() ? lang(u"界面没有时间轴", u"the interface has no timebar")
                                               : lang(u"没有时间轴“%1”", u"there is no timebar \"%1\"").arg(timebar));
    m_animation->set_current_bar(bar);
    m_animation->set_editing(true);
    bar->set_current_time(float(time));
    m_animation->show_frame();
    return double(bar->get_total_length());
}

tarn::Result<QRectF> CGuiPlugScene::show_alone(const QString& dialog, QSize screen)
{
    const auto& all = m_core->GetDialogs();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const CDXUTDialog* each) { return each->name() == dialog; });
    if (found == all.end())
        return Status::error(lang(u"没有窗口“%1”", u"there is no dialog \"%1\"").arg(dialog));
    const tarn::ShownWrites writes(document());
    for (CDXUTDialog* each : all)
        write(*each, key<&DialogState::visible>, each == *found);
    for (CDXUTControl* control : m_core->GetRootDialog()->controls())
        write(*control, key<&tarn::ControlState::visible>, false);
    m_core->set_screen_size(screen);
    return (*found)->outer_rect();
}

void CGuiPlugScene::prepare_picture(QSize screen)
{
    m_core->set_screen_size(screen);
    m_movies->update();
}

bool CGuiPlugScene::awaits_picture() const
{
    return m_movies->awaits_picture();
}

void CGuiPlugScene::play(bool on)
{
    if (on == m_playing)
        return;
    if (on) {
        SetMTFunction(0, 0);
        document().clear_shown(); // The pose of a timebar that is edited is not what runs.
    } else {
        m_runner.end();
        document().clear_shown();
        m_animation->set_running(false);
    }
    m_playing = on;
    m_core->EnableGui(!on);
    if (on) {
        if (!m_language.isEmpty())
            show_language();
        m_last_advance = 0;
        m_runner.begin();
        m_animation->set_running(true);
    }
    m_in_world->play(on);
    m_movies->play(on);
    m_world->camera_view().show_axes(!on);
    m_world->set_mouse_tool(on ? &m_tools->play_tool() : &m_tools->select_tool());
}

void CGuiPlugScene::set_language(const QString& language)
{
    if (std::exchange(m_language, language) == language || !m_playing)
        return;
    show_language();
}

Status CGuiPlugScene::show_texts(const QString& language)
{
    const QStringList& languages = m_translations->languages();
    if (!languages.contains(language))
        return Status::error(
            lang(u"场景没有语言 %1（有：%2）", u"the scene has no language %1 (it has: %2)")
                .arg(language, languages.isEmpty() ? lang(u"无", u"none") : languages.join(QStringLiteral(", "))));
    m_language = language;
    show_language();
    return {};
}

void CGuiPlugScene::show_language()
{
    const tarn::ShownWrites writes(document());
    m_translations->show(m_language);
}

void CGuiPlugScene::advance(double now)
{
    if (!m_playing)
        return;
    const tarn::ShownWrites writes(document());
    m_runner.advance(now);
    const bool animates = m_animation->frame_move(float(now - std::exchange(m_last_advance, now)));
    const bool is_led = m_world && tarn::lead_by_camera(*m_animation, m_world->camera());
    const bool moves = m_in_world->advance(now) || is_led;
    if ((m_core->advance(now) || animates || moves) && m_world)
        m_world->update_all_views();
}

std::optional<tarn::TextureBinding> CGuiPlugScene::SearchTexbindByDialog(const CDXUTDialog* dialog) const
{
    if (!dialog || dialog->dialog_state().bind_texture.isEmpty())
        return std::nullopt;
    const tarn::DialogState& s = dialog->dialog_state();
    return tarn::TextureBinding{s.bind_texture, s.bind_color, s.bind_mouse};
}

void CGuiPlugScene::create_texture_dialog_bind(CDXUTDialog* dialog, const QString& texture)
{
    const tarn::UserAction action(journal(), lang(u"绑定贴图", u"Bind Texture"));
    write(*dialog, key<&DialogState::bind_texture>, texture);
}

void CGuiPlugScene::remove_tex_binder(CDXUTDialog* dialog)
{
    const tarn::UserAction action(journal(), lang(u"取消绑定贴图", u"Remove Texture Binding"));
    const tarn::DialogState unbound;
    write(*dialog, key<&DialogState::bind_texture>, unbound.bind_texture);
    write(*dialog, key<&DialogState::bind_color>, qint64(unbound.bind_color));
    write(*dialog, key<&DialogState::bind_mouse>, unbound.bind_mouse);
}

void CGuiPlugScene::remove_deletectrl_GUI_scripts()
{
    if (!check_not_playing())
        return; // What a running interface lost comes back after the preview.
    QSet<QString> orphans;
    m_events->remove_if([&](const CGuiEvent& event) {
        const bool gone = !m_core->find_control(event.control());
        if (gone && event.function() == CEventManager::new_function_name(event.control(), event.type()))
            orphans.insert(event.function());
        return gone;
    });
    for (const QString& function : tarn::named_functions(document()))
        orphans.remove(function);
    for (const QString& function : std::as_const(orphans))
        functions().del_function(function);
}
