#include "timeline_edits.h"

#include "animation/ease.h"
#include "animation/key_track.h"
#include "animation/t_var.h"
#include "core/journal.h"
#include "core/language.h"
#include "frame/boxes.h"
#include "frame/str_input.h"
#include "timeline_host.h"
#include "timeline_view.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

// How far off the timeline what is dropped is deleted.
constexpr int off_above = 100;
constexpr int off_below = 160;
constexpr int off_under_bottom = 96;

} // namespace

bool is_off_timeline(const TimelineView& view, int y)
{
    return y < -off_above || y > std::max(off_below, view.client_height + off_under_bottom);
}

bool has_section(const TimelineView& view)
{
    return view.range_select && view.range_begin() < view.range_end();
}

void select_range(TimelineView& view)
{
    view.range_select = has_section(view);
    const CTimebar* bar = view.bar();
    if (!view.range_select || !bar)
        return;
    KeySelection keys;
    for (CTVar* variable : bar->shown_variables())
        variable->keys().each_time(view.range_begin(), view.range_end(),
                                   [&](qsizetype, float time) { keys[variable].push_back(time); });
    std::vector<float> scripts = bar->script_key_times();
    std::erase_if(scripts, [&](float time) { return time < view.range_begin() || time > view.range_end(); });
    view.selection.set_keys(std::move(keys));
    view.selection.set_scripts(std::move(scripts));
}

// Deleting -----------------------------------------------------------------------------------------------------------

void remove_section(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    CTimebar* bar = view.bar();
    if (!bar || !has_section(view)
        || !boxes::confirm(host.owner(), lang(u"是否删除选择区域的时间段？", u"Delete the selected timebar section?")))
        return;
    const float begin = view.range_begin();
    const float length = view.range_end() - begin;
    {
        const UserAction action(bar->journal(), lang(u"删除时间段", u"Remove Section"));
        if (!bar->remove_region(begin, begin + length))
            return;
        bar->set_total_length(std::max(bar->get_total_length() - length, 0.f));
    }
    view.range_select = false;
    view.selection.refresh(bar);
    host.set_current_time(begin);
}

namespace {

QString question(Deleted what)
{
    switch (what) {
    case Deleted::Keys: return lang(u"是否删除被选择的关键帧？", u"Remove Seletede Key frames?");
    case Deleted::Scripts: return lang(u"是否删除被选择的脚本？", u"Remove Seletede Script?");
    case Deleted::All: break;
    }
    return lang(u"是否删除所有选择的脚本和关键帧？", u"Remove All Scripts and Key frames?");
}

bool holds_first_key(const KeySelection& keys)
{
    return std::any_of(keys.begin(), keys.end(),
                       [](const auto& entry) { return entry.first->keys().find(entry.second.front()) == 0; });
}

} // namespace

void delete_selected(TimelineHost& host, Deleted what)
{
    TimelineView& view = host.timeline();
    CTimebar* bar = view.bar();
    if (!bar || !boxes::confirm(host.owner(), question(what)))
        return;
    if (has_section(view)) {
        remove_section(host);
        return;
    }
    bool holds_first = false;
    {
        const UserAction action(bar->journal(),
                                what == Deleted::Scripts ? lang(u"删除脚本", u"Delete Script")
                                                         : lang(u"删除关键帧", u"Delete Keys"));
        if (what != Deleted::Scripts) {
            holds_first = holds_first_key(view.selection.keys());
            bar->remove_keys(view.selection.keys());
        }
        if (what != Deleted::Keys)
            bar->remove_script_keys(view.selection.scripts());
    }
    view.selection.refresh(bar);
    host.redraw_all();
    if (holds_first)
        tell_first_not_removed(host);
}

Deleted selected_kinds(const TimelineSelection& selection)
{
    return selection.scripts().empty() ? Deleted::Keys
        : selection.keys().empty()     ? Deleted::Scripts
                                       : Deleted::All;
}

void delete_selected(TimelineHost& host)
{
    const TimelineSelection& selection = host.timeline().selection;
    if (!selection.is_empty())
        delete_selected(host, selected_kinds(selection));
}

void tell(TimelineHost& host, const QString& text)
{
    boxes::message(host.owner(), {.text = text, .title = lang(u"时间轴", u"Timeline")});
}

void tell_first_not_removed(TimelineHost& host)
{
    tell(host, lang(u"不能删除第一个关键帧！", u"First key can not be removed!"));
}

void tell_first_not_moved(TimelineHost& host)
{
    tell(host, lang(u"不能移动第一个关键帧！", u"First key can not be moved!"));
}

void tell_script_is_there(TimelineHost& host)
{
    tell(host, lang(u"无法移动到此处，已经有脚本存在!", u"There is a script here already!"));
}

// Asking -------------------------------------------------------------------------------------------------------------

std::optional<QString> ask_text(TimelineHost& host, const QString& prompt, const QString& initial)
{
    QString answer;
    if (!PopDlgStrInput(host.owner(), prompt, lang(u"时间轴", u"Timeline"), initial, answer))
        return {};
    answer = answer.trimmed();
    return answer.isEmpty() ? std::nullopt : std::optional(answer);
}

namespace {

TimeUnit unit_of(TimelineHost& host)
{
    const CTimebar* bar = host.timeline().bar();
    return bar ? bar->time_unit() : TimeUnit::seconds();
}

/// No answer for what is no number.
std::optional<float> time_in(const QString& text, const TimeUnit& unit)
{
    bool is_number = false;
    const double number = QLocale::c().toDouble(text, &is_number);
    return is_number && std::isfinite(number) ? std::optional(unit.time_of(std::clamp(number, -1e9, 1e9)))
                                              : std::nullopt;
}

} // namespace

std::optional<float> ask_time(TimelineHost& host, float initial)
{
    const CTimebar* bar = host.timeline().bar();
    const TimeUnit unit = unit_of(host);
    const auto text = ask_text(host,
                               unit.is_frames() ? lang(u"请输入需要定位的帧数", u"Input a target frame")
                                                : lang(u"请输入需要定位的时间", u"Input a target point"),
                               QString::number(unit.number_of(initial), 'g', 7));
    const auto time = text ? time_in(*text, unit) : std::nullopt;
    if (!time)
        return {};
    return std::clamp(*time, 0.f, bar ? bar->get_total_length() : max_time);
}

std::optional<float> ask_length(TimelineHost& host)
{
    const TimeUnit unit = unit_of(host);
    const auto text = ask_text(host,
                               unit.is_frames()
                                   ? lang(u"请输入新插入的时间段帧长", u"Input the length of new insert frames")
                                   : lang(u"请输入新插入的时间段时长", u"Input the length of new insert time"));
    const auto length = text ? time_in(*text, unit) : std::nullopt;
    return length && *length >= 0 ? length : std::nullopt;
}

std::optional<float> ask_ease_number(TimelineHost& host, float initial)
{
    const auto text = ask_text(host, lang(u"请输入松紧值", u"Ease"), QString::number(double(initial)));
    bool is_number = false;
    const float ease = text ? text->toFloat(&is_number) : 0;
    return is_number && ease == ease ? std::optional(std::clamp(ease, -Ease::limit, Ease::limit)) : std::nullopt;
}

std::optional<int> ask_group(TimelineHost& host, const QString& prompt)
{
    const auto text = ask_text(host, prompt);
    bool is_number = false;
    const int group = text ? text->toInt(&is_number) : 0;
    return is_number && group >= Key::no_group && group <= Key::max_group ? std::optional(group) : std::nullopt;
}

} // namespace tarn
