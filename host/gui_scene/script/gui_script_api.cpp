#include "gui_script_api.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_info_box.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/gui_core.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/scene_movies.h"
#include "world/world_scene.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr const char* control_kind = "control";
constexpr const char* dialog_kind = "dialog";
constexpr const char* menu_kind = "menu";
constexpr const char* menu_item = "menu item";
constexpr const char* timebar_kind = "timebar";
constexpr const char* info_box = "Info";
constexpr const char* map_class = "Map";
constexpr const char* movie_class = "Flash";
constexpr const char* world_kind = "object";
constexpr double farthest = 1e6; ///< pixels

ScriptObject handle(ModelObject* object)
{
    return object ? object->shared_from_this() : nullptr;
}

/// The first object of `all` with a name. Where it was found last is tried first, since scripts ask again and again.
template <class Object, class List>
ModelObject* find_named(QHash<QString, Object*>& found, const List& all, const QString& name)
{
    if (Object* guess = found.value(name); guess && guess->is_attached() && guess->name() == name)
        return guess;
    const auto place = std::find_if(all.begin(), all.end(),
                                    [&name](const Object* object) { return object->name() == name; });
    if (place == all.end())
        return nullptr;
    found.insert(name, *place);
    return *place;
}

class GuiScriptObjects final : public ScriptObjects {
public:
    GuiScriptObjects(CGuiCore& core, CAnimationScene& animation, const WorldScene& world)
        : m_core(core), m_animation(animation), m_world(world)
    {
    }

    std::vector<Kind> kinds() const override
    {
        return {
            {control_kind,
             {u"找出一个控件；同名时为最先创建的", u"finds a control; of several with the name the one made first"}},
            {dialog_kind, {u"找出一个窗口；同名时为最下层的", u"finds a dialog; of several with the name the lowest"}},
            {menu_kind,
             {u"找出一个菜单；同名时为最先创建的", u"finds a menu; of several with the name the one made first"}},
            {timebar_kind,
             {u"找出一个时间轴；同名时为列表中最靠上的",
              u"finds a timebar; of several with the name the one highest in the list"}},
            {world_kind,
             {u"找出三维世界中的一个物体；同名时为列表中的第一个",
              u"finds an object of the 3D world; of several with the name the first in the list"}}};
    }

    ScriptObject find(QLatin1String kind, const QString& name) const override
    {
        // Objects that went with their history may have left their places to others.
        if (m_generation != m_core.document().generation()) {
            m_controls.clear();
            m_dialogs.clear();
            m_menus.clear();
            m_objects.clear();
            m_generation = m_core.document().generation();
        }
        if (kind == QLatin1String(control_kind))
            return handle(find_named(m_controls, m_core.controls(), name));
        if (kind == QLatin1String(menu_kind))
            return handle(find_named(m_menus, m_core.GetMenus(), name));
        if (kind == QLatin1String(timebar_kind))
            return handle(m_animation.SearchTimebarFromName(name));
        if (kind == QLatin1String(world_kind))
            return handle(find_named(m_objects, m_world.objects(), name));
        ModelObject* dialog = find_named(m_dialogs, m_core.GetDialogs(), name);
        const bool is_root = !dialog && m_core.GetRootDialog()->name() == name;
        return handle(is_root ? m_core.GetRootDialog() : dialog);
    }
    ScriptObject find(QLatin1String kind, quint32 id) const override
    {
        if (kind == QLatin1String(control_kind))
            return handle(m_core.find_control(id));
        if (kind == QLatin1String(menu_kind))
            return handle(m_core.find_menu(id));
        if (kind == QLatin1String(timebar_kind))
            return handle(find_attached<CTimebar>(id));
        if (kind == QLatin1String(world_kind))
            return handle(m_world.find(id));
        return handle(id == m_core.GetRootDialog()->id() ? m_core.GetRootDialog() : m_core.find_dialog(id));
    }
    ScriptObject find(quint32 id) const override
    {
        for (const char* kind : {control_kind, dialog_kind, menu_kind})
            if (ScriptObject object = find(QLatin1String(kind), id))
                return object;
        if (ScriptObject item = handle(m_core.find_menu_item(id)))
            return item;
        ModelObject* object = find_attached<ModelObject>(id);
        return object && object->kind() && object->kind()->recorded ? handle(object) : nullptr;
    }

    std::vector<const char*> classes_of(const ModelObject& object) const override
    {
        if (const auto* control = dynamic_cast<const CDXUTControl*>(&object))
            return {control_class(control->GetType())->name_stem, control_kind};
        if (dynamic_cast<const CDXUTMenu*>(&object))
            return {menu_kind};
        if (dynamic_cast<const CDXUTMenuItem*>(&object))
            return {menu_item};
        if (dynamic_cast<const CTimebar*>(&object))
            return {timebar_kind};
        if (dynamic_cast<const WorldObject*>(&object))
            return {world_kind};
        if (dynamic_cast<const CDXUTDialog*>(&object))
            return {dialog_kind};
        return {object.class_name()};
    }

    QStringList field_names() const override
    {
        QStringList names;
        const auto add_names = [&names](const FieldTable& fields) {
            for (const FieldBase* field : fields)
                names.append(QString::fromLatin1(field->name()));
        };
        add_names(DialogState::field_table());
        add_names(MenuState::field_table());
        add_names(MenuItemState::field_table());
        add_names(TimebarState::field_table());
        for (const WorldTypeRow& type : world_types())
            add_names(StatePtr(m_world.object_kind().make_state(int(type.type)))->fields());
        for (const ControlClass& type : control_classes())
            add_names(StatePtr(type.make_state())->fields());
        return names;
    }

private:
    /// Of timebars and what belongs to them.
    template <class Object>
    Object* find_attached(quint32 id) const
    {
        auto* object = m_core.document().find_as<Object>(id);
        return object && object->is_attached() ? object : nullptr;
    }

    CGuiCore& m_core;
    CAnimationScene& m_animation;
    const WorldScene& m_world;
    mutable quint64 m_generation = 0;
    mutable QHash<QString, CDXUTControl*> m_controls;
    mutable QHash<QString, CDXUTDialog*> m_dialogs;
    mutable QHash<QString, CDXUTMenu*> m_menus;
    mutable QHash<QString, WorldObject*> m_objects;
};

CDXUTControl& control_of(const ScriptCall& call)
{
    return static_cast<CDXUTControl&>(call.object(0));
}

CDXUTDialog& dialog_of(const ScriptCall& call)
{
    return static_cast<CDXUTDialog&>(call.object(0));
}

const ScriptValue nothing = Value();

/// A verb that does something and answers nothing.
template <class Work>
auto doing(Work work)
{
    return [work](ScriptCall& call) -> Result<ScriptValue> {
        work(call);
        return nothing;
    };
}

template <class Object>
Result<ScriptValue> move(ScriptCall& call, Object& object)
{
    const double x = call.number(1);
    const double y = call.number(2);
    if (!(std::abs(x) <= farthest && std::abs(y) <= farthest))
        return Status::error(lang(u"位置超出范围", u"the place is out of range"));
    using Place = decltype(object.rect().x() + 0);
    if constexpr (std::is_same_v<Place, int>)
        object.SetLocation(int(std::lround(x)), int(std::lround(y)));
    else
        object.SetLocation(float(x), float(y));
    return nothing;
}

const std::vector<ScriptParameter> place_parameters{
    {"x", ScriptType::Number, {u"左边的位置，像素", u"the left edge, pixels"}},
    {"y", ScriptType::Number, {u"上边的位置，像素", u"the top edge, pixels"}},
};

std::vector<ScriptVerb> control_verbs(CGuiPlugScene& scene)
{
    CGuiCore& core = scene.gui_core();
    return {
        {"show",
         {},
         {u"显示控件", u"shows the control"},
         doing([](ScriptCall& c) { control_of(c).SetVisible(true); }),
         control_kind},
        {"hide",
         {},
         {u"隐藏控件", u"hides the control"},
         doing([](ScriptCall& c) { control_of(c).SetVisible(false); }),
         control_kind},
        {"move",
         place_parameters,
         {u"移动控件，位置相对于窗口", u"moves the control within its dialog"},
         [](ScriptCall& call) { return move(call, control_of(call)); },
         control_kind},
        {"focus",
         {},
         {u"让控件得到键盘输入", u"lets the control have the keyboard"},
         doing([&core](ScriptCall& c) { core.set_focused(&control_of(c)); }),
         control_kind},
        {"remove",
         {},
         {u"删除控件", u"removes the control"},
         doing([&core](ScriptCall& c) { core.remove_control(&control_of(c)); }),
         control_kind},
        {"add_line",
         {{"text", ScriptType::Text, {u"一行文本", u"a line of text"}}},
         {u"在信息显示框末尾添加一行", u"adds a line at the end of the info box"},
         doing([](ScriptCall& c) { static_cast<CDXUTInfoBox&>(c.object(0)).AddString(c.text(1)); }),
         info_box},
        {"hot_spot",
         {},
         {u"导航图上最后出现、消失或被点击的热点的名称",
          u"the name of the hot spot that came, went or was clicked last"},
         [](ScriptCall& c) -> Result<ScriptValue> {
             return ScriptValue(static_cast<CDXUTMap&>(c.object(0)).last_spot());
         },
         map_class},
    };
}

CDXUTFlash& flash_of(const ScriptCall& call)
{
    return static_cast<CDXUTFlash&>(call.object(0));
}

/// A verb of a movie, which has to play.
template <class Work>
auto asking(CGuiPlugScene& scene, Work work)
{
    return [&scene, work](ScriptCall& call) -> Result<ScriptValue> {
        if (!work(scene.movies(), call))
            return Status::error(lang(u"影片没有在播放", u"the movie does not play"));
        return nothing;
    };
}

std::vector<ScriptVerb> movie_verbs(CGuiPlugScene& scene)
{
    const auto call = [](SceneMovies& movies, ScriptCall& c) {
        std::vector<Value> given;
        for (std::size_t i = 2; i < c.arguments().size(); ++i) {
            const auto* value = std::get_if<Value>(&c.arguments()[i]);
            given.push_back(value ? *value : Value());
        }
        return movies.call(flash_of(c), c.text(1), given);
    };
    return {
        {"call",
         {{"name", ScriptType::Text, {u"影片提供的函数的名称", u"what the movie offers it as"}}},
         {u"调用影片提供的函数，其后的参数交给影片；不等待结果",
          u"calls a function of the movie with the arguments that follow; its result is not waited for"},
         asking(scene, call),
         movie_class,
         true},
        {"play",
         {},
         {u"让影片的时间轴继续播放", u"lets the movie's timeline run"},
         asking(scene, [](SceneMovies& m, ScriptCall& c) { return m.run(flash_of(c), true); }),
         movie_class},
        {"stop",
         {},
         {u"让影片的时间轴停住", u"stops the movie's timeline"},
         asking(scene, [](SceneMovies& m, ScriptCall& c) { return m.run(flash_of(c), false); }),
         movie_class},
        {"goto_frame",
         {{"frame", ScriptType::Integer, {u"帧，从 1 开始", u"the frame, from 1 on"}}},
         {u"转到影片的一帧并停在那里；经过的帧的脚本也会运行",
          u"goes to a frame of the movie and stops there; scripts of the frames passed on the way run, too"},
         asking(scene,
                [](SceneMovies& m, ScriptCall& c) {
                    return m.go_to_frame(flash_of(c), int(std::clamp<qint64>(c.integer(1), 1, 16000)));
                }),
         movie_class},
    };
}

std::vector<ScriptVerb> dialog_verbs(CGuiPlugScene& scene)
{
    CGuiCore& core = scene.gui_core();
    const auto restore = [](ScriptCall& call) {
        dialog_of(call).SetVisible(true);
        dialog_of(call).set_minimized(false);
    };
    const auto remove = [&core](ScriptCall& call) -> Result<ScriptValue> {
        if (dialog_of(call).is_root())
            return Status::error(lang(u"根窗口不能删除", u"the root dialog cannot be removed"));
        core.remove_dialog(&dialog_of(call));
        return nothing;
    };
    const auto controls = [](ScriptCall& call) -> Result<ScriptValue> {
        std::vector<ScriptObject> list;
        for (CDXUTControl* control : dialog_of(call).controls())
            list.push_back(handle(control));
        return ScriptValue(std::move(list));
    };
    return {
        {"show",
         {},
         {u"显示窗口", u"shows the dialog"},
         doing([](ScriptCall& c) { dialog_of(c).SetVisible(true); }),
         dialog_kind},
        {"hide",
         {},
         {u"隐藏窗口", u"hides the dialog"},
         doing([](ScriptCall& c) { dialog_of(c).SetVisible(false); }),
         dialog_kind},
        {"close",
         {},
         {u"关闭窗口", u"closes the dialog"},
         doing([](ScriptCall& c) { dialog_of(c).SetVisible(false); }),
         dialog_kind},
        {"minimise",
         {},
         {u"最小化窗口", u"reduces the dialog to its caption bar"},
         doing([](ScriptCall& c) { dialog_of(c).set_minimized(true); }),
         dialog_kind},
        {"restore", {}, {u"还原窗口", u"shows the whole dialog again"}, doing(restore), dialog_kind},
        {"raise",
         {},
         {u"把窗口置于其他窗口之上并激活", u"puts the dialog above the others and makes it the active one"},
         doing([&core](ScriptCall& c) { core.activate(dialog_of(c)); }),
         dialog_kind},
        {"move",
         place_parameters,
         {u"移动窗口", u"moves the dialog on the screen"},
         [](ScriptCall& call) { return move(call, dialog_of(call)); },
         dialog_kind},
        {"controls",
         {},
         {u"窗口的所有控件，从最下层起", u"all controls of the dialog, from the lowest layer"},
         controls,
         dialog_kind},
        {"remove", {}, {u"删除窗口及其控件", u"removes the dialog and its controls"}, remove, dialog_kind},
    };
}

CDXUTMenu& menu_of(const ScriptCall& call)
{
    return static_cast<CDXUTMenu&>(call.object(0));
}

std::vector<ScriptVerb> menu_verbs(CGuiPlugScene& scene)
{
    CGuiCore& core = scene.gui_core();
    const auto pop = [&core](ScriptCall& call) -> Result<ScriptValue> {
        if (core.selection().editing)
            return Status::error(lang(u"菜单只能在界面运行时弹出", u"a menu opens only while the interface runs"));
        QPointF place = core.live().mouse;
        if (call.has(1))
            place.setX(call.number(1));
        if (call.has(2))
            place.setY(call.number(2));
        if (!(std::abs(place.x()) <= farthest && std::abs(place.y()) <= farthest))
            return Status::error(lang(u"位置超出范围", u"the place is out of range"));
        core.pop_menu(menu_of(call), place);
        return nothing;
    };
    const auto items = [](ScriptCall& call) -> Result<ScriptValue> {
        std::vector<ScriptObject> list;
        for (CDXUTMenuItem* item : menu_of(call).items())
            list.push_back(handle(item));
        return ScriptValue(std::move(list));
    };
    const auto item = [](ScriptCall& call) -> Result<ScriptValue> {
        for (CDXUTMenuItem* candidate : menu_of(call).items())
            if (candidate->item_state().text == call.text(1))
                return ScriptValue(handle(candidate));
        return ScriptValue(ScriptObject());
    };
    return {
        {"pop",
         {{"x",
           ScriptType::Number,
           {u"左上角的位置，像素；缺省为鼠标处", u"its corner, pixels; the mouse's place without"},
           true},
          {"y", ScriptType::Number, {u"左上角的位置，像素", u"its corner, pixels"}, true}},
         {u"在屏幕上弹出菜单", u"opens the menu on the screen"},
         pop,
         menu_kind},
        {"close",
         {},
         {u"关闭打开的菜单", u"closes the menu that is open"},
         doing([&core](ScriptCall&) { core.close_menu(); }),
         menu_kind},
        {"items",
         {},
         {u"菜单的所有项，子菜单的项在其上级之后", u"all items, those of a submenu behind the item that opens it"},
         items,
         menu_kind},
        {"item",
         {{"text", ScriptType::Text, {u"菜单项的文本", u"its text"}}},
         {u"找出第一个文本相同的菜单项", u"finds the first item with that text"},
         item,
         menu_kind},
    };
}

CTimebar& timebar_of(const ScriptCall& call)
{
    return static_cast<CTimebar&>(call.object(0));
}

Result<ScriptValue> value_of_variable(ScriptCall& call)
{
    const CTimebar& bar = timebar_of(call);
    for (const CTimerObject* object : bar.objects())
        if (object->type() == TimerObjectType::Script)
            for (const CTVar* variable : object->variables())
                if (variable->name() == call.text(1))
                    return ScriptValue(variable->value_at(bar.current_time()).to_value());
    return nothing;
}

std::vector<ScriptVerb> timebar_verbs()
{
    return {
        {"play",
         {},
         {u"播放时间轴", u"plays the timebar"},
         doing([](ScriptCall& c) { timebar_of(c).active_bar(1); }),
         timebar_kind},
        {"stop",
         {},
         {u"停止时间轴，保留其最后的值", u"stops the timebar, which leaves its last values"},
         doing([](ScriptCall& c) { timebar_of(c).active_bar(0); }),
         timebar_kind},
        {"seek",
         {{"time", ScriptType::Number, {u"时间，秒", u"the time, seconds"}}},
         {u"转到一个时间", u"goes to a time"},
         doing([](ScriptCall& c) { timebar_of(c).set_current_time(float(c.number(1))); }),
         timebar_kind},
        {"speed",
         {{"factor", ScriptType::Number, {u"倍数，1/8 到 8", u"the factor, 1/8 to 8"}}},
         {u"改变播放速度", u"changes how fast it plays"},
         doing([](ScriptCall& c) { timebar_of(c).set_speed(float(c.number(1))); }),
         timebar_kind},
        {"value",
         {{"name", ScriptType::Text, {u"变量的名称", u"the variable's name"}}},
         {u"脚本对象的变量现在的值", u"what a variable of its script objects has now"},
         value_of_variable,
         timebar_kind},
    };
}

ScriptVerb message_verb(CGuiPlugScene& scene)
{
    return {"message",
            {{"text", ScriptType::Text, {u"消息的内容", u"what it says"}},
             {"title", ScriptType::Text, {u"标题", u"its title"}, true}},
            {u"显示一个消息框；脚本不等待它关闭", u"shows a message; the script does not wait until it is closed"},
            doing([&scene](ScriptCall& call) {
                CBaseWorld* world = scene.world();
                if (world && world->on_message)
                    world->on_message(call.text(0), call.has(1) ? call.text(1) : QString());
            })};
}

} // namespace

std::shared_ptr<const ScriptObjects> gui_script_objects(CGuiCore& core, CAnimationScene& animation,
                                                        const WorldScene& world)
{
    return std::make_shared<GuiScriptObjects>(core, animation, world);
}

ScriptApi gui_script_api(CGuiPlugScene& scene)
{
    ScriptApi api{{message_verb(scene)},
                  gui_script_objects(scene.gui_core(), scene.animation(), scene.world()->objects())};
    for (const auto& verbs :
         {control_verbs(scene), movie_verbs(scene), dialog_verbs(scene), menu_verbs(scene), timebar_verbs()})
        api.verbs.insert(api.verbs.end(), verbs.begin(), verbs.end());
    return api;
}

} // namespace tarn
