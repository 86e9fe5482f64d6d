// The menu of the timeline's bands, and what its commands do.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "dlg_key_frame.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/cmd_test.h"
#include "frame/menufun.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/dlg_function_pick.h"
#include "page_base/gui_child_dlg.h"
#include "timeline_edits.h"
#include "timeline_hits.h"
#include "timeline_host.h"
#include "timeline_menu.h"
#include "timeline_snap.h"

#include <QWidget>

#include <algorithm>

namespace tarn {

namespace {

// What a command needs -----------------------------------------------------------------------------------------------

bool always(const TimelinePlace&)
{
    return true;
}
bool on_script(const TimelinePlace& place)
{
    return place.bar && place.hover.script >= 0;
}
bool off_script(const TimelinePlace& place)
{
    return place.bar && place.hover.script < 0;
}
bool on_key(const TimelinePlace& place)
{
    return place.bar && place.hover.key >= 0;
}
bool on_section(const TimelinePlace& place)
{
    return place.bar && has_section(place.view);
}
bool on_script_or_section(const TimelinePlace& place)
{
    return on_script(place) || on_section(place) || (place.bar && !place.view.selection.scripts().empty());
}
bool on_key_or_section(const TimelinePlace& place)
{
    return on_key(place) || on_section(place) || (place.bar && !place.view.selection.keys().empty());
}
bool with_keys(const TimelinePlace& place)
{
    return on_key(place) || (place.bar && !place.view.selection.keys().empty());
}

/// Makes the key under the mouse the selection when it is not selected already.
void select_hovered_key(TimelinePlace& place)
{
    TimelineSelection& selection = place.view.selection;
    if (place.hover.key < 0 || selection.has_key_at(place.hover.key))
        return;
    selection.clear();
    for (CTVar* variable : place.bar->shown_variables())
        if (variable->keys().find(place.hover.key) >= 0)
            selection.add_key(variable, place.hover.key);
}

// Time and script keys -----------------------------------------------------------------------------------------------

void go_to_time(TimelinePlace& place)
{
    if (const auto time = ask_time(place.host, place.view.current_time)) {
        place.host.set_current_time(*time);
        place.host.show_time(*time);
    }
}

/// Answers where the script key stands, -1 where there can be none. Without a name it has a function of its own.
float insert_script_at(const TimelineView& view, CTimebar& bar, float time, const QString& function)
{
    const UserAction action(bar.journal(), lang(u"插入脚本", u"Insert Script"));
    const float snapped = std::min(TimelineSnap(view)(time, {}), bar.get_total_length());
    return bar.insert_script_key(snapped, function) && bar.create_script_function(snapped) ? snapped : -1;
}

void insert_script(TimelinePlace& place)
{
    CConfigScene* functions = place.view.scene->functions();
    if (!functions)
        return;
    const auto name = CDlgFunctionPick(*functions, {}).do_modal(place.host.owner());
    if (!name)
        return;
    insert_script_at(place.view, *place.bar, place.time, *name);
}

void remove_script(TimelinePlace& place)
{
    if (has_section(place.view)) {
        remove_section(place.host);
        return;
    }
    TimelineSelection& selection = place.view.selection;
    if (place.hover.script >= 0 && !selection.has_script(place.hover.script)) {
        selection.clear();
        selection.add_script(place.hover.script);
    }
    delete_selected(place.host, Deleted::Scripts);
}

void edit_hovered_script(TimelinePlace& place)
{
    edit_script(place.host, place.hover.script);
}

void move_script_to(TimelinePlace& place)
{
    const auto time = ask_time(place.host, place.hover.script);
    if (!time || *time == place.hover.script)
        return;
    if (!place.bar->change_key_time(KeyKind::Script, place.hover.script, *time))
        tell_script_is_there(place.host);
    place.view.selection.refresh(place.bar);
}

// Keys ---------------------------------------------------------------------------------------------------------------

void record(TimelinePlace& place)
{
    record_keys(place.host);
}

void remove_keys(TimelinePlace& place)
{
    if (has_section(place.view)) {
        remove_section(place.host);
        return;
    }
    select_hovered_key(place);
    delete_selected(place.host, Deleted::Keys);
}

/// The variable whose key at that time is meant: the first that has one, of those that the bands show.
CTVar* variable_with_key(const CTimebar& bar, float time)
{
    const std::vector<CTVar*> shown = bar.shown_variables();
    const auto found = std::find_if(shown.begin(), shown.end(),
                                    [=](const CTVar* variable) { return variable->keys().find(time) >= 0; });
    return found == shown.end() ? nullptr : *found;
}

/// For all that the object has at that time; models have it for each of their keys.
bool edit_as_model(TimelineHost& host, const CTVar& variable, float time)
{
    CTimerObject* object = variable.object();
    return variable.channel() && object && open_key_dialog(host, *object, time);
}

void edit_key(TimelinePlace& place)
{
    CTVar* variable = variable_with_key(*place.bar, place.hover.key);
    if (variable && !edit_as_model(place.host, *variable, place.hover.key))
        ask_key_value(place.host, *variable, place.hover.key, lang(u"请输入关键帧的变量值", u"Input key value."));
}

void move_key_to(TimelinePlace& place)
{
    const std::vector<CTVar*> shown = place.bar->shown_variables();
    const auto is_movable = [&](const CTVar* variable) { return variable->is_movable(place.hover.key); };
    if (std::none_of(shown.begin(), shown.end(), is_movable)) {
        tell_first_not_moved(place.host);
        return;
    }
    const auto time = ask_time(place.host, place.hover.key);
    if (!time || *time == place.hover.key)
        return;
    if (!place.bar->change_key_time(KeyKind::Key, place.hover.key, *time))
        tell_first_not_moved(place.host);
    place.view.selection.refresh(place.bar);
}

// Sections -----------------------------------------------------------------------------------------------------------

void remove_region(TimelinePlace& place)
{
    if (!boxes::confirm(place.host.owner(),
                        lang(u"该操作将会删除区域内所有关键帧和脚本，确定删除？",
                             u"All KeyFrames and Scripts in selected section will be deleted! "
                             u"Continue?")))
        return;
    const float begin = place.view.range_begin();
    place.bar->remove_region(begin, place.view.range_end());
    place.view.range_select = false;
    place.view.selection.refresh(place.bar);
    place.host.set_current_time(begin);
}

void insert_time(TimelinePlace& place)
{
    const auto length = ask_length(place.host);
    if (length && *length > 0 && !place.bar->insert_time(place.view.current_time, *length))
        boxes::error(place.host.owner(), lang(u"时间轴不能更长。", u"The timebar cannot become longer."));
    place.view.selection.refresh(place.bar);
}

void insert_bar(TimelinePlace& place)
{
    const auto name = ask_text(place.host, lang(u"请输入时间轴名称", u"Input a timebar's name"));
    if (!name)
        return;
    const CTimebar* other = place.view.scene->SearchTimebarFromName(*name);
    if (!other || other == place.bar) {
        tell(place.host, QStringLiteral("无法插入时间轴自身！请选择不同的时间轴,或检查时间轴名称是否重复。"));
        return;
    }
    if (!place.bar->insert_timerbar(place.view.current_time, *other))
        boxes::error(place.host.owner(), lang(u"时间轴不能更长。", u"The timebar cannot become longer."));
    place.view.selection.refresh(place.bar);
}

void move_point_to(TimelinePlace& place)
{
    if (place.hover.point < 0) {
        tell(place.host, lang(u"请选择一个控制点（左右两个端点)", u"Please select a target point"));
        return;
    }
    const auto time = ask_time(place.host, place.hover.point);
    if (!time)
        return;
    if (place.hover.point == place.view.current_time)
        place.host.set_current_time(*time);
    else
        place.view.range_anchor = *time;
    select_range(place.view);
}

// Groups -------------------------------------------------------------------------------------------------------------

QString group_prompt()
{
    return lang(u"请输入关键帧集编号", u"Input group number");
}

std::vector<float> times_of(const KeySelection& keys)
{
    std::vector<float> times;
    for (const auto& [variable, of_variable] : keys)
        times.insert(times.end(), of_variable.begin(), of_variable.end());
    std::sort(times.begin(), times.end());
    return times;
}

void go_to_group(TimelinePlace& place, bool first)
{
    const auto group = ask_group(place.host, group_prompt());
    const std::vector<float> times = group ? times_of(place.bar->keys_of_group(*group)) : std::vector<float>();
    if (times.empty())
        return;
    const float time = first ? times.front() : times.back();
    place.host.set_current_time(time);
    place.host.show_time(time);
}

void go_to_first_of_group(TimelinePlace& place)
{
    go_to_group(place, true);
}

void go_to_last_of_group(TimelinePlace& place)
{
    go_to_group(place, false);
}

void record_group(TimelinePlace& place)
{
    select_hovered_key(place);
    if (const auto group = ask_group(place.host, group_prompt()))
        place.bar->set_key_group(place.view.selection.keys(), *group);
}

void select_group(TimelinePlace& place)
{
    if (const auto group = ask_group(place.host, lang(u"请输入要选择的关键帧集编号", u"Input selected group number")))
        place.view.selection.set_keys(place.bar->keys_of_group(*group));
}

constexpr TimelineCommand separator{};
constexpr TimelineCommand commands[] = {
    {32828, u"时间轴定位", u"Go to Time...", always, go_to_time},
    separator,
    {32798, u"插入脚本", u"Insert Script...", off_script, insert_script},
    {32800, u"删除脚本", u"Delete Script", on_script_or_section, remove_script},
    {32801, u"编辑脚本", u"Edit Script...", on_script, edit_hovered_script},
    {32820, u"脚本定位时间", u"Move Script to Time...", on_script, move_script_to},
    separator,
    {32815, u"记录关键帧", u"Record Key", nullptr, record},
    {32826, u"删除关键帧", u"Delete Key", on_key_or_section, remove_keys},
    {32827, u"编辑关键帧", u"Edit Key...", on_key, edit_key},
    {32819, u"关键帧定位时间", u"Move Key to Time...", on_key, move_key_to},
    {32839, u"删除时间段", u"Delete Section", on_section, remove_region},
    {32829, u"时间轴插入时间", u"Insert Time...", nullptr, insert_time},
    {32832, u"插入时间轴...", u"Insert Timebar...", nullptr, insert_bar},
    separator,
    {32821, u"控制点定位", u"Move Section End to Time...", on_section, move_point_to},
    {32830, u"关键帧集首定位", u"Go to First Key of Group...", nullptr, go_to_first_of_group},
    {32823, u"关键帧集尾定位", u"Go to Last Key of Group...", nullptr, go_to_last_of_group},
    {32824, u"记录目标关键帧集", u"Record Key Group...", with_keys, record_group},
    {32825, u"选择目标关键帧集", u"Select Key Group...", nullptr, select_group},
};

bool is_enabled(const TimelineCommand& command, const TimelinePlace& place)
{
    return command.is_enabled ? command.is_enabled(place) : place.bar != nullptr;
}

} // namespace

void pop_commands(TimelinePlace& place, std::span<const TimelineCommand> commands)
{
    std::vector<boxes::MenuItem> items;
    for (const TimelineCommand& command : commands)
        items.push_back(command.id ? boxes::MenuItem{.id = command.id,
                                                     .text = lang(command.chinese, command.english),
                                                     .enabled = is_enabled(command, place),
                                                     .checked = command.is_checked && command.is_checked(place)}
                                   : boxes::MenuItem{});
    const int chosen = menufun::pop_menu(place.host.owner(), items);
    const auto command = std::find_if(commands.begin(), commands.end(),
                                      [=](const TimelineCommand& row) { return chosen != 0 && row.id == chosen; });
    if (command == commands.end() || !is_enabled(*command, place))
        return;
    command->run(place);
    place.host.redraw_all();
}

void pop_band_menu(TimelineHost& host, const TimelinePoint& point)
{
    TimelineView& view = host.timeline();
    view.selection.refresh(view.bar());
    view.hover = find_hover(view, point.x, point.y);
    TimelinePlace place{host, view, view.bar(), view.hover, view.axis.time_from_pixel(float(point.x))};
    pop_commands(place, commands);
}

void double_click_bands(TimelineHost& host, const TimelinePoint& point)
{
    TimelineView& view = host.timeline();
    CTimebar* bar = view.bar();
    view.hover = find_hover(view, point.x, point.y);
    const TimelineHover hover = view.hover;
    if (!bar)
        return;
    if (hover.key >= 0) {
        CTVar* variable = variable_with_key(*bar, hover.key);
        if (variable && !edit_as_model(host, *variable, hover.key))
            ask_key_value(host, *variable, hover.key, lang(u"请输入关键帧的变量值", u"Input a key value"));
    } else if (hover.script >= 0) {
        edit_script(host, hover.script);
    } else if (CTimeMark* mark = bar->mark_at(hover.extra)) {
        if (const auto name = ask_text(host, lang(u"请输入标记名称", u"Input a mark's name"), mark->name()))
            mark->set_name(*name);
    } else if (hover.ease) {
        ask_ease(host, *hover.ease);
    } else if (point.y >= bands::scripts_top && point.y <= bands::scripts_bottom) {
        const float time = insert_script_at(view, *bar, view.axis.time_from_pixel(float(point.x)), {});
        if (time >= 0)
            edit_script(host, time);
    }
    host.redraw_all();
}

void ask_key_value(TimelineHost& host, CTVar& variable, float time, const QString& prompt)
{
    const auto text = ask_text(host, prompt, CTVar::get_string_from_var(variable.value_at(time)));
    KeyValue value(variable.type());
    if (!text || !variable.get_var_from_string(*text, value))
        return;
    variable.set_key_value(time, value);
    variable.update_value();
}

bool open_key_dialog(TimelineHost& host, CTimerObject& object, float time)
{
    if (!host.world() || !has_key_dialog(object.type()))
        return false;
    std::vector<CObjKey> keys{{object, time}};
    for (const auto& [variable, times] : host.timeline().selection.keys())
        for (const float other : times) {
            const auto is_known = [&, timer = variable->object()](const CObjKey& key) {
                return &key.object() == timer && key.time() == other;
            };
            if (variable->channel() && variable->object() && has_key_dialog(variable->object()->type())
                && std::none_of(keys.begin(), keys.end(), is_known))
                keys.emplace_back(*variable->object(), other);
        }
    CDlgKeyFrame::do_modal(host.owner(), *host.world(), keys);
    return true;
}

void ask_ease(TimelineHost& host, const EaseSpan& span)
{
    const float ease = span.variable ? span.variable->get_ease(span.end)
        : span.object                ? span.object->get_ease(span.end)
                                     : 0;
    const auto wanted = ask_ease_number(host, ease);
    if (!wanted)
        return;
    const UserAction action(host.timeline().bar()->journal(), lang(u"松紧值", u"Ease"));
    if (span.variable)
        span.variable->set_key_ease(span.end, *wanted);
    else if (span.object)
        span.object->set_key_ease(span.end, *wanted);
}

void edit_script(TimelineHost& host, float time)
{
    CTimebar* bar = host.timeline().bar();
    if (bar->create_script_function(time))
        CDlgCmdTest::do_modal(bar->get_script_name(time), host.world(), host.owner(), -1);
}

void record_keys(TimelineHost& host)
{
    const TimelineView& view = host.timeline();
    CGuiPlugScene* scene = host.world() ? find_gui_scene(*host.world()) : nullptr;
    if (!view.bar() || !scene || !scene->gui_core().selection().editing)
        return;
    // After a move of the cursor that kept the pose, the timebar stands elsewhere.
    view.bar()->set_current_time(view.current_time, 0);
    view.bar()->record_selection(scene->selected_objects());
}

} // namespace tarn
