// The menu of the timeline's rows, and double clicks there.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/menufun.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/gui_child_dlg.h"
#include "timeline_clipboard.h"
#include "timeline_commands.h"
#include "timeline_drag.h"
#include "timeline_edits.h"
#include "timeline_host.h"
#include "timeline_menu.h"
#include "timeline_row_keys.h"
#include "timeline_snap.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr float eased = 70;

// What a command needs -----------------------------------------------------------------------------------------------

bool always(const TimelinePlace&)
{
    return true;
}
bool with_keys(const TimelinePlace& place)
{
    return place.bar && !place.view.selection.keys().empty();
}
bool with_items(const TimelinePlace& place)
{
    return place.bar && !place.view.selection.is_empty();
}
bool on_object(const TimelinePlace& place)
{
    return place.row && place.row->row.object;
}
bool on_script_object(const TimelinePlace& place)
{
    return on_object(place) && place.row->row.object->type() == TimerObjectType::Script;
}
bool on_variable(const TimelinePlace& place)
{
    return place.row && place.row->row.variable;
}
bool with_section(const TimelinePlace& place)
{
    return place.bar && has_section(place.view);
}
bool with_section_or_items(const TimelinePlace& place)
{
    return with_section(place) || with_items(place);
}

bool can_paste(const TimelinePlace& place)
{
    return place.bar && clipboard_has_keys();
}
bool loops(const TimelinePlace& place)
{
    return place.bar && place.bar->has_loop();
}
bool with_section_or_loop(const TimelinePlace& place)
{
    return with_section(place) || loops(place);
}

std::vector<CTimeMark*> marks_at_cursor(const TimelinePlace& place)
{
    std::vector<CTimeMark*> marks;
    for (CTimeMark* mark : place.bar->marks())
        if (mark->time() <= place.view.current_time && place.view.current_time <= mark->end())
            marks.push_back(mark);
    return marks;
}
bool with_marks(const TimelinePlace& place)
{
    return place.bar && !marks_at_cursor(place).empty();
}

/// What was selected last; null for none.
ModelObject* selected_object(const TimelinePlace& place)
{
    CGuiPlugScene* scene = place.host.world() ? find_gui_scene(*place.host.world()) : nullptr;
    const auto objects = scene ? scene->selected_objects() : std::vector<ModelObject*>();
    return objects.empty() ? nullptr : objects.back();
}
bool on_target(const TimelinePlace& place)
{
    return on_object(place) && place.row->row.object->target_object();
}
void select_target(TimelinePlace& place)
{
    CGuiPlugScene* scene = place.host.world() ? find_gui_scene(*place.host.world()) : nullptr;
    if (!scene)
        return;
    ModelObject* target = place.row->row.object->target_object();
    if (const Status selected = scene->model().select({target}); !selected)
        return tell(place.host, selected.message());
    place.host.world()->broadcast(ui_selection_changed);
    place.host.redraw_all();
}
bool can_retarget(const TimelinePlace& place)
{
    const ModelObject* selected = on_object(place) && !on_script_object(place) ? selected_object(place) : nullptr;
    return selected && place.view.scene->type_for(*selected) == place.row->row.object->type()
        && place.row->row.object->target().id != selected->id();
}

void toggle_muted(TimelinePlace& place)
{
    press_row_name(place.host, {place.row->row, RowPart::Mute});
}

bool is_muted(const TimelinePlace& place)
{
    return on_object(place) && place.view.scene->is_muted(place.row->row.object->id());
}

bool is_solo(const TimelinePlace& place)
{
    return on_object(place) && place.view.scene->is_solo(place.row->row.object->id());
}

void toggle_solo(TimelinePlace& place)
{
    place.view.scene->set_solo(place.row->row.object->id(), !is_solo(place));
    place.host.redraw_all();
}

// Keys ---------------------------------------------------------------------------------------------------------------

template <float ease>
void set_ease(TimelinePlace& place)
{
    ease_selected(place.host, ease);
}

template <void (*command)(TimelineHost&)>
void run(TimelinePlace& place)
{
    command(place.host);
}

void first_to_cursor(TimelinePlace& place)
{
    move_first_to(place.host, place.view.current_time);
}

void last_to_cursor(TimelinePlace& place)
{
    move_last_to(place.host, place.view.current_time);
}

void toggle_ripple(TimelinePlace& place)
{
    place.view.ripple = !place.view.ripple;
}

bool ripples(const TimelinePlace& place)
{
    return place.view.ripple;
}

// Objects and variables ----------------------------------------------------------------------------------------------

void tell_content(const TimelinePlace& place)
{
    if (place.host.world())
        place.host.world()->broadcast(ui_timebar_content);
}

void make_variable(TimelinePlace& place)
{
    const std::vector<boxes::MenuItem> types = {{.id = 32789, .text = lang(u"整数(INT)", u"Whole Number (INT)")},
                                                {.id = 32783, .text = lang(u"浮点数(FLOAT)", u"Number (FLOAT)")},
                                                {.id = 32784, .text = lang(u"坐标(VEC)", u"Vector (VEC)")},
                                                {.id = 32785, .text = lang(u"颜色(DWORD)", u"Color (DWORD)")},
                                                {.id = 32787, .text = lang(u"矩阵(MAT)", u"Matrix (MAT)")}};
    constexpr VarType values[] = {VarType::Int, VarType::Float, VarType::Vec, VarType::Color, VarType::Mat};
    const int chosen = menufun::pop_menu(place.host.owner(), types);
    const auto type = std::find_if(types.begin(), types.end(),
                                   [=](const boxes::MenuItem& item) { return chosen != 0 && item.id == chosen; });
    if (type == types.end())
        return;
    KeyValue value(values[type - types.begin()]);
    const auto text = ask_text(place.host, lang(u"请输入变量的初始值", u"Init Variable"), value.to_text());
    if (!text || !KeyValue::from_text(value.type(), *text, value))
        return;
    CTimerObject* object = place.row->row.object;
    const UserAction action(place.bar->journal(), lang(u"添加变量", u"Add Variable"));
    if (CTVar* variable = object->create_var(value.type())) {
        variable->set_key_value(0, value);
        object->set_current_variable(variable);
        place.view.rows.open.insert(object->id());
        tell_content(place);
    }
}

void remove_variable(TimelinePlace& place)
{
    CTVar* variable = place.row->row.variable;
    if (!boxes::confirm(
            place.host.owner(),
            lang(u"是否删除变量“%1”及其关键帧？", u"Delete the variable \"%1\" and its keys?").arg(variable->name())))
        return;
    variable->object()->remove_var(variable);
    tell_content(place);
}

void remove_object(TimelinePlace& place)
{
    CTimerObject* object = place.row->row.object;
    if (!boxes::confirm(place.host.owner(),
                        lang(u"是否从时间轴中移除“%1”及其关键帧？", u"Remove \"%1\" and its keys from the timebar?")
                            .arg(object->name())))
        return;
    place.bar->remove_obj(object);
    tell_content(place);
}

void retarget(TimelinePlace& place)
{
    const UserAction action(place.bar->journal(), lang(u"更换目标", u"Change Target"));
    place.row->row.object->set_target({selected_object(place)->id()});
    tell_content(place);
}

// Marks and the view -------------------------------------------------------------------------------------------------

/// Over the selected section, where there is one.
void make_mark(TimelinePlace& place)
{
    const auto name = ask_text(place.host, lang(u"请输入标记名称", u"Input a mark's name"), lang(u"标记", u"Mark"));
    if (!name)
        return;
    const bool has_length = has_section(place.view);
    const float begin = has_length ? place.view.range_begin() : place.view.current_time;
    place.bar->create_mark(begin, has_length ? place.view.range_end() - begin : 0, *name);
}

/// The selected section; without one the whole timebar plays again.
void toggle_loop(TimelinePlace& place)
{
    const UserAction action(place.bar->journal(), lang(u"循环区间", u"Loop Range"));
    if (has_section(place.view))
        place.bar->set_loop(place.view.range_begin(), place.view.range_end());
    else
        place.bar->set_loop(0, 0);
}

void remove_marks(TimelinePlace& place)
{
    if (!boxes::confirm(place.host.owner(), lang(u"是否删除标记？", u"Delete the mark?")))
        return;
    const UserAction action(place.bar->journal(), lang(u"删除标记", u"Delete Mark"));
    for (CTimeMark* mark : marks_at_cursor(place))
        place.bar->remove_mark(mark);
}

void toggle_only_selected(TimelinePlace& place)
{
    place.view.rows.only_selected = !place.view.rows.only_selected;
    place.host.redraw_all();
}

bool shows_only_selected(const TimelinePlace& place)
{
    return place.view.rows.only_selected;
}

/// Chosen again, the menu's entry brings back all objects.
void toggle_filter(TimelinePlace& place)
{
    QString& filter = place.view.rows.filter;
    if (filter.isEmpty())
        filter = ask_text(place.host, lang(u"只显示名称中包含以下文字的对象", u"Show objects whose names contain"))
                     .value_or(QString());
    else
        filter.clear();
    place.host.redraw_all();
}

bool is_filtered(const TimelinePlace& place)
{
    return !place.view.rows.filter.isEmpty();
}

void show_help(TimelinePlace& place)
{
    tell(place.host,
         lang(u"上部：单击定位时间；Ctrl 只移动光标；Shift 拖动选择时间段\n"
              u"拖动关键帧、脚本、标记、松紧控制点或终点；拖出时间轴：删除\n"
              u"所选范围的两端：拉伸　拖动时按住 Shift：后续帧跟随；Alt：切换捕捉\n"
              u"下部：单击、框选关键帧；Shift 加选，Ctrl 增减；双击：修改值、展开\n"
              u"Ctrl+滚轮：缩放　滚轮、中键：滚动\n"
              u"上下键：行　左右键：关键帧（Shift 加选）　回车：修改\n"
              u", 和 .：上一帧、下一帧　Alt+左右键：移动一帧\n"
              u"Home、End：起点、终点　空格：播放　Esc：取消拖动或选择\n"
              u"Ctrl+C/X/V/D/A：复制、剪切、粘贴、副本、全选　Delete：删除",
              u"Above: click to go to a time; Ctrl moves the cursor alone; drag with Shift to select a section\n"
              u"Drag keys, scripts, marks, ease handles or the end; drop them off the timeline to delete them\n"
              u"Ends of what is selected: stretch. While dragging, Shift: later keys follow; Alt: snap or not\n"
              u"Below: click keys or draw a frame around them; Shift adds, Ctrl toggles; double-click: value, unfold\n"
              u"Ctrl + wheel: zoom. Wheel and middle button: scroll\n"
              u"Up, Down: rows. Left, Right: keys (Shift adds). Enter: edit\n"
              u"Comma, period: one frame back or on. Alt + Left, Right: move by a frame\n"
              u"Home, End: begin and end. Space: play. Esc: drop a drag or the selection\n"
              u"Ctrl+C/X/V/D/A: copy, cut, paste, duplicate, all. Delete: delete"));
}

constexpr TimelineCommand separator{};
constexpr TimelineCommand commands[] = {
    {33001, u"剪切", u"Cut", with_keys, run<cut_selected>},
    {33002, u"复制", u"Copy", with_keys, run<copy_selected>},
    {33003, u"粘贴到光标处", u"Paste at Cursor", can_paste, run<paste_at_cursor>},
    {33004, u"在光标处生成副本", u"Duplicate at Cursor", with_keys, run<duplicate_at_cursor>},
    {33005, u"删除", u"Delete", with_items, run<delete_selected>},
    separator,
    {33011, u"全选", u"Select All", nullptr, run<select_all>},
    {33012, u"反选", u"Invert Selection", nullptr, run<invert_selection>},
    {33013, u"选择光标之前", u"Select Before Cursor", nullptr, run<select_before_cursor>},
    {33014, u"选择光标之后", u"Select After Cursor", nullptr, run<select_after_cursor>},
    separator,
    {33021, u"松紧：匀速", u"Ease: Even", with_keys, set_ease<0.f>},
    {33022, u"松紧：先慢后快", u"Ease: Slow, Then Fast", with_keys, set_ease<eased>},
    {33023, u"松紧：先快后慢", u"Ease: Fast, Then Slow", with_keys, set_ease<-eased>},
    {33024, u"松紧...", u"Ease...", with_keys, run<ask_ease_of_selected>},
    separator,
    {33031, u"设置时间...", u"Set Time...", with_items, run<ask_time_of_selected>},
    {33032, u"设置值...", u"Set Value...", with_keys, run<ask_value_of_selected>},
    {33033, u"首帧移到光标", u"Move First to Cursor", with_items, first_to_cursor},
    {33034, u"末帧移到光标", u"Move Last to Cursor", with_items, last_to_cursor},
    {33035, u"镜像", u"Mirror", with_items, run<mirror_selected>},
    {33036, u"移动时后续帧跟随", u"Later Keys Follow", nullptr, toggle_ripple, ripples},
    separator,
    {33041, u"添加变量...", u"Add Variable...", on_script_object, make_variable},
    {33042, u"删除变量...", u"Delete Variable...", on_variable, remove_variable},
    {33043, u"移除对象...", u"Remove Object...", on_object, remove_object},
    {33044, u"目标改为所选对象", u"Animate the Selected Object Instead", can_retarget, retarget},
    {33047, u"选择目标", u"Select the Target", on_target, select_target},
    {33045, u"静音", u"Mute", on_object, toggle_muted, is_muted},
    {33046, u"独奏", u"Solo", on_object, toggle_solo, is_solo},
    separator,
    {33051, u"在此添加标记...", u"Add Mark Here...", nullptr, make_mark},
    {33052, u"删除此处标记...", u"Delete Mark Here...", with_marks, remove_marks},
    {33053, u"循环播放所选时间段", u"Loop the Selected Section", with_section_or_loop, toggle_loop, loops},
    separator,
    {33061, u"显示全部", u"Show All", nullptr, run<fit_all>},
    {33062, u"显示所选", u"Show Selected", with_section_or_items, run<fit_selected>},
    {33063, u"只显示当前对象和所选关键帧的对象", u"Only the Current Object and Selected Keys", nullptr,
     toggle_only_selected, shows_only_selected},
    {33064, u"按名称筛选对象...", u"Only Objects Named...", nullptr, toggle_filter, is_filtered},
    separator,
    {33071, u"鼠标与按键...", u"Mouse and Keys...", always, show_help},
};

void pop_menu_of(TimelineHost& host, const std::optional<RowHit>& hit, float time)
{
    TimelineView& view = host.timeline();
    if (hit) {
        focus_row(view, hit->row);
        const KeySelection keys = hit->key >= 0 ? keys_at(view, hit->row, hit->key) : KeySelection();
        if (!keys.empty() && !holds_all(view.selection, keys))
            combine(view.selection, keys, {});
    }
    TimelinePlace place{host, view, view.bar(), {}, time, hit};
    pop_commands(place, commands);
}

} // namespace

void pop_row_menu(TimelineHost& host, const TimelinePoint& point)
{
    TimelineView& view = host.timeline();
    view.selection.refresh(view.bar());
    pop_menu_of(host, find_row(view, point.x, point.y), view.axis.time_from_pixel(float(point.x)));
}

void pop_row_menu(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    view.selection.refresh(view.bar());
    const auto row = focused_row(view);
    pop_menu_of(host, row ? std::optional(RowHit{.row = *row}) : std::nullopt, view.current_time);
}

void double_click_rows(TimelineHost& host, const TimelinePoint& point)
{
    TimelineView& view = host.timeline();
    const auto hit = find_row(view, point.x, point.y);
    if (!hit)
        return;
    if (hit->key >= 0)
        edit_row_key(host, hit->row, hit->key);
    else if (hit->row.variable)
        edit_row_key(host, hit->row, TimelineSnap(view)(view.axis.time_from_pixel(float(point.x)), point.modifiers));
    else
        toggle_fold(view, hit->row);
    host.redraw_all();
}

} // namespace tarn
