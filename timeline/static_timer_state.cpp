// What automation asks the timeline.

#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "static_timer.h"
#include "timeline_rows.h"

#include <algorithm>

std::vector<float> CStaticTimer::selected_keys() const
{
    std::vector<float> all;
    for (const auto& [variable, times] : m_view.selection.keys())
        all.insert(all.end(), times.begin(), times.end());
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

CStaticTimer::HoverTimes CStaticTimer::hover_times() const
{
    const tarn::TimelineHover& hover = m_view.hover;
    return {hover.key, hover.script, hover.point, hover.extra, hover.other};
}

std::optional<std::pair<float, float>> CStaticTimer::range() const
{
    if (!m_view.range_select)
        return std::nullopt;
    return std::pair(m_view.range_anchor, m_view.current_time);
}

std::optional<std::pair<int, int>> CStaticTimer::row(const tarn::ModelObject& object,
                                                     const tarn::ModelObject* variable) const
{
    for (const tarn::TimelineRow& row : tarn::rows_between(m_view, tarn::bands::rows_top, height()))
        if (row.object == &object && row.variable == variable)
            return std::pair(row.top, tarn::TimelineRow::height);
    return std::nullopt;
}
