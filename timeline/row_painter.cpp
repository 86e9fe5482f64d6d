#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "timeline_painter.h"

#include <utility>

namespace tarn {

namespace {

constexpr int mark_margin = 6;
constexpr int row_height = TimelineRow::height;

class RowPainter {
public:
    RowPainter(DevicePainter& painter, TimelineLook& look, const TimelineView& view, const DrivenConflicts& conflicts)
        : m_painter(painter),
          m_look(look),
          m_colors(look.colors),
          m_view(view),
          m_bar(*view.bar()),
          m_conflicts(conflicts)
    {
    }

    void paint(const TimelineRow& row, bool odd)
    {
        background(row, odd);
        const std::vector<CTVar*> variables = row.variables(m_bar);
        if (row.object)
            extent(row, variables);
        const KeyColumns keys = !row.object && m_look.all_keys ? *std::exchange(m_look.all_keys, {})
                                                               : m_look.columns->of(variables);
        if (row.variable)
            paint_held_spans(m_painter, m_colors, *row.variable, keys.columns, row.middle() - 1);
        KeyStamps& stamps = row.variable ? m_look.small_stamps : m_look.key_stamps;
        const int top = row.middle() - (row.variable ? 5 : 6);
        stamps.draw(m_painter, m_colors, keys.columns, top, KeyStamps::Look::Usual);
        stamps.draw(m_painter, m_colors, selected_columns(m_view, variables, keys.columns), top,
                    KeyStamps::Look::Selected);
    }

private:
    QRectF box(const TimelineRow& row) const { return QRectF(0, row.top, m_view.client_width, row_height); }
    bool is_current(const TimelineRow& row) const
    {
        return row.object && row.object == m_bar.current_object()
            && (!row.variable || row.variable == row.object->current_variable());
    }

    void background(const TimelineRow& row, bool odd)
    {
        const auto cover = [&](QColor color, float part) {
            color.setAlphaF(part);
            m_painter.fill(box(row), color);
        };
        if (odd)
            cover(m_colors.text, m_colors.dark ? 0.025F : 0.03F);
        if (!row.object)
            cover(m_colors.text, 0.05F);
        if (is_current(row))
            cover(m_colors.accent, m_colors.dark ? 0.2F : 0.13F);
        m_painter.horizontal_line(0, m_view.client_width, row.bottom() - 1, m_colors.grid);
    }

    /// From the first to the last key; hatched where another timebar drives the same.
    void extent(const TimelineRow& row, const std::vector<CTVar*>& variables)
    {
        float begin = max_time;
        float end = -1;
        for (const CTVar* variable : variables)
            if (const KeyTrack& keys = variable->keys(); !keys.is_empty()) {
                begin = std::min(begin, keys.first_time());
                end = std::max(end, keys.time(keys.size() - 1));
            }
        if (end < begin)
            return;
        const auto band = [&](float from, float to) {
            const int left = std::max(column_of(m_view.axis, from), -mark_margin);
            const int right = std::min(column_of(m_view.axis, to) + 1, m_view.client_width + mark_margin);
            return QRectF(left, row.top + 3, std::max(right - left, 0), row_height - 7);
        };
        QColor color = m_colors.of_type(row.object->type());
        color.setAlphaF(row.variable ? 0.12F : 0.26F);
        m_painter.fill(band(begin, end), color);
        for (const DrivenSpan& span : row.variable ? m_conflicts.of(*row.variable) : m_conflicts.of(*row.object))
            m_painter.fill(band(0, span.end),
                           QBrush(span.other_wins ? m_colors.warning : m_colors.dim_text, Qt::BDiagPattern));
    }

    DevicePainter& m_painter;
    TimelineLook& m_look;
    const TimelineColors& m_colors;
    const TimelineView& m_view;
    const CTimebar& m_bar;
    const DrivenConflicts& m_conflicts;
};

} // namespace

void paint_rows(DevicePainter& painter, TimelineLook& look, const TimelineView& view)
{
    const std::vector<TimelineRow> rows = rows_between(view, bands::rows_top, view.client_height);
    if (rows.empty())
        return;
    const DrivenConflicts conflicts(view.scene);
    RowPainter row_painter(painter, look, view, conflicts);
    painter.clip(QRectF(0, bands::rows_top, view.client_width, std::max(view.client_height - bands::rows_top, 0)));
    painter.horizontal_line(0, view.client_width, rows.front().top - 1, look.colors.line);
    for (const TimelineRow& row : rows)
        row_painter.paint(row, (row.top + view.rows.scroll - bands::rows_top) / row_height % 2);
    if (!view.rows.box.isNull()) {
        QColor ground = look.colors.accent;
        ground.setAlphaF(0.15F);
        painter.fill(view.rows.box, ground);
        painter.frame(view.rows.box, look.colors.accent);
    }
    painter.unclip();
    painter.horizontal_line(0, view.client_width, bands::rows_top - 1, look.colors.line);
}

} // namespace tarn
