#include "timeline_rows.h"

#include "animation/t_var.h"
#include "animation/timer_object.h"

namespace tarn {

namespace {

constexpr int reach = 2; // pixels

bool is_shown(const TimelineView& view, const CTimebar& bar, const CTimerObject& object)
{
    const TimelineRowsView& rows = view.rows;
    if (!rows.filter.isEmpty() && !object.name().contains(rows.filter, Qt::CaseInsensitive))
        return false;
    if (!rows.only_selected || bar.current_object() == &object)
        return true;
    const auto& variables = object.variables();
    return std::any_of(variables.begin(), variables.end(),
                       [&](CTVar* variable) { return view.selection.keys().contains(variable); });
}

} // namespace

std::vector<CTVar*> TimelineRow::variables(const CTimebar& bar) const
{
    if (variable)
        return {variable};
    if (object)
        return object->variables();
    std::vector<CTVar*> all;
    for (const CTimerObject* any : bar.objects())
        all.insert(all.end(), any->variables().begin(), any->variables().end());
    return all;
}

std::vector<TimelineRow> timeline_rows(const TimelineView& view)
{
    std::vector<TimelineRow> rows;
    const CTimebar* bar = view.bar();
    if (!bar)
        return rows;
    int top = bands::rows_top - view.rows.scroll;
    const auto add = [&](CTimerObject* object, CTVar* variable) {
        rows.push_back({object, variable, top});
        top += TimelineRow::height;
    };
    add(nullptr, nullptr);
    for (CTimerObject* object : bar->objects()) {
        if (!is_shown(view, *bar, *object))
            continue;
        add(object, nullptr);
        if (view.rows.open.contains(object->id()))
            for (CTVar* variable : object->variables())
                add(object, variable);
    }
    return rows;
}

std::vector<TimelineRow> rows_between(const TimelineView& view, int top, int bottom)
{
    std::vector<TimelineRow> rows = timeline_rows(view);
    const int first = std::max(top, bands::rows_top);
    std::erase_if(rows, [&](const TimelineRow& row) { return row.bottom() <= first || row.top >= bottom; });
    return rows;
}

std::optional<RowHit> find_row(const TimelineView& view, int x, int y)
{
    const std::vector<TimelineRow> rows = rows_between(view, y, y + 1);
    if (rows.empty() || y < bands::rows_top)
        return {};
    RowHit hit{.row = rows.front()};
    const KeyColumns keys = key_columns(view.axis, hit.row.variables(*view.bar()), x - reach, x + reach);
    if (!keys.columns.empty())
        hit.key = keys.columns.back().last;
    return hit;
}

int greatest_scroll(const TimelineView& view)
{
    const std::vector<TimelineRow> rows = timeline_rows(view);
    const int bottom = rows.empty() ? 0 : rows.back().bottom() + view.rows.scroll;
    return std::max(bottom - view.client_height, 0);
}

std::optional<RowNameHit> find_row_name(const TimelineView& view, int x, int y, int width)
{
    const auto hit = find_row(view, 0, y);
    if (!hit)
        return {};
    RowNameHit name{.row = hit->row};
    for (const RowPart part : {RowPart::Fold, RowPart::Lock, RowPart::Mute})
        if (row_part(hit->row, part, width).contains(x, y))
            name.part = part;
    return name;
}

QRect row_part(const TimelineRow& row, RowPart part, int width)
{
    constexpr int size = 16;
    constexpr int margin = 2;
    if (!row.object || row.variable || part == RowPart::Name)
        return {};
    const int from_right = part == RowPart::Lock ? 1 : 2;
    const int x = part == RowPart::Fold ? margin : width - from_right * size - margin;
    return {x, row.top + (TimelineRow::height - size) / 2, size, size};
}

} // namespace tarn
