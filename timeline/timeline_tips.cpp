#include "timeline_tips.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "driven_conflicts.h"
#include "script/config_scene.h"
#include "timeline_hits.h"
#include "timeline_rows.h"
#include "timer_object_text.h"

namespace tarn {

namespace {

/// The time, and what each of the variables has there that has a key.
QString key_tip(const CTimebar& bar, const std::vector<CTVar*>& variables, float time)
{
    constexpr int most_lines = 8;
    QStringList lines{time_label(time, &bar)};
    for (const CTVar* variable : variables) {
        const qsizetype key = variable->keys().find(time);
        if (key < 0)
            continue;
        if (lines.size() > most_lines) {
            lines << QStringLiteral("…");
            break;
        }
        QString line = lang(u"%1 · %2：%3", u"%1 · %2: %3")
                           .arg(variable->object()->name(), variable_text(*variable),
                                CTVar::get_string_from_var(variable->keys().value(key)));
        if (const float ease = variable->keys().ease(key); ease != 0)
            line += lang(u"，松紧 %1", u", ease %1").arg(qRound(ease));
        lines << line;
    }
    return lines.join(u'\n');
}

QString script_tip(const TimelineView& view, float time)
{
    const QString function = view.bar()->get_script_name(time);
    const CConfigScene* functions = view.scene->functions();
    const QString missing = functions && functions->find_function(function)
        ? QString()
        : lang(u"（没有这个函数）", u" (no such function)");
    return time_label(time, view.bar()) + u'\n' + function + missing;
}

QString mark_tip(const CTimebar& bar, float begin, float end)
{
    for (const CTimeMark* mark : bar.marks())
        if (mark->time() == begin || mark->end() == end)
            return mark->length() > 0
                ? QStringLiteral("%1\n%2 – %3")
                      .arg(mark->name(), time_label(mark->time(), &bar), time_label(mark->end(), &bar))
                : mark->name() + u'\n' + time_label(mark->time(), &bar);
    return {};
}

QString band_tip(const TimelineView& view, const CTimebar& bar, int x, int y)
{
    if (const auto faults = faults_at(view, x, y); !faults.empty()) {
        QStringList lines;
        for (const TimeFault& fault : faults)
            lines << fault.text;
        return lines.join(u'\n');
    }
    const TimelineHover hover = find_hover(view, x, y);
    if (hover.script >= 0)
        return script_tip(view, hover.script);
    if (hover.ease)
        return lang(u"松紧 %1", u"Ease %1").arg(qRound(hover.ease->ease));
    if (hover.key >= 0)
        return key_tip(bar, bar.shown_variables(), hover.key);
    if (hover.extra >= 0 || hover.other >= 0)
        return mark_tip(bar, hover.extra, hover.other);
    if (hover.end_mark)
        return lang(u"总长 %1", u"Length %1").arg(time_label(bar.get_total_length(), &bar));
    return {};
}

QString conflict_tip(const TimelineView& view, const TimelineRow& row, float time)
{
    const DrivenConflicts conflicts(view.scene);
    for (const DrivenSpan& span : row.variable ? conflicts.of(*row.variable) : conflicts.of(*row.object))
        if (time <= span.end)
            return span.other_wins
                ? lang(u"“%1”也驱动这里，并且优先（在列表中更靠上）",
                       u"\"%1\" drives this too, and wins: it stands higher in the list")
                      .arg(span.other->name())
                : lang(u"“%1”也驱动这里，但本时间轴优先（在列表中更靠上）",
                       u"\"%1\" drives this too, but this timebar wins: it stands higher in the list")
                      .arg(span.other->name());
    return {};
}

QString row_tip(const CTimebar& bar, const RowHit& hit)
{
    return hit.key >= 0 ? key_tip(bar, hit.row.variables(bar), hit.key) : QString();
}

} // namespace

QString row_name_tip(const RowNameHit& hit)
{
    if (hit.part == RowPart::Lock)
        return lang(u"锁定：不编辑它的关键帧", u"Lock: its keys are not edited");
    if (hit.part == RowPart::Mute)
        return lang(u"静音：编辑时不驱动它的目标，预览不受影响",
                    u"Mute: it drives nothing while you edit; a preview is not changed");
    if (hit.row.object && hit.row.object->is_broken())
        return lang(u"目标已删除；可在右键菜单中指定另一个目标", u"The target is gone; the menu gives it another one");
    return {};
}

QString timeline_tip(const TimelineView& view, int x, int y)
{
    const CTimebar* bar = view.bar();
    if (!bar)
        return {};
    const auto hit = find_row(view, x, y);
    if (!hit)
        return band_tip(view, *bar, x, y);
    QStringList lines{row_tip(*bar, *hit)};
    if (hit->row.object)
        lines << conflict_tip(view, hit->row, view.axis.time_from_pixel(float(x)));
    lines.removeAll(QString());
    return lines.join(u'\n');
}

} // namespace tarn
