#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "timeline_painter.h"
#include "type_icons.h"

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
        const KeyColumns keys = key_columns(m_view.axis, variables, -mark_margin, m_view.client_width + mark_margin);
        if (row.variable)
            paint_held_spans(m_painter, m_colors, *row.variable, keys.columns, row.middle() - 1);
        KeyStamps& stamps = row.variable ? m_look.small_stamps : m_look.key_stamps;
        const int top = row.middle() - (row.variable ? 5 : 6);
        stamps.draw(m_painter, m_colors, keys.columns, top, KeyStamps::Look::Usual);
        stamps.draw(m_painter, m_colors, selected_columns(m_view, variables, keys.columns), top,
                    KeyStamps::Look::Selected);
        name(row);
        lock(row);
    }

private:
    QRectF box(const TimelineRow& row) const { return QRectF(0, row.top, m_view.client_width, row_height); }
    bool is_current(const TimelineRow& row) const
    {
        return row.object && row.object == m_bar.current_object()
            && (!row.variable || row.variable == row.object->current_variable());
    }

    bool has_keyboard(const TimelineRow& row) const
    {
        return m_view.rows.focus_object == (row.object ? row.object->id() : 0)
            && m_view.rows.focus_variable == (row.variable ? row.variable->id() : 0);
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
        if (has_keyboard(row))
            m_painter.fill(QRectF(0, row.top, 3, row_height - 1), m_colors.accent);
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

    /// Over the keys, on a ground through which they can be seen.
    void name(const TimelineRow& row)
    {
        constexpr int indent = 24;
        const int left = row_part(m_view, row, RowPart::Fold).left();
        const bool broken = row.object && !row.variable && row.object->is_broken();
        const QString text = name_of(row);
        const int text_left = !row.object ? 8 : row.variable ? indent + 16 : indent + 18;
        const double right = text_left + m_painter.text_width(text) + 6;
        const int ground_left = row.object && !row.variable ? left : row.variable ? indent + 10 : 4;
        QColor ground = m_colors.background;
        ground.setAlphaF(0.8F);
        m_painter.fill(QRectF(ground_left, row.top + 1, right - ground_left, row_height - 3), ground);
        const QColor ink = broken ? m_colors.warning : row.variable ? m_colors.dim_text : m_colors.text;
        if (row.object && !row.variable) {
            arrow(row);
            icon(row, indent, broken);
        }
        m_painter.text(text_left, row.middle() - 0.5, text, ink);
    }

    static QString name_of(const TimelineRow& row)
    {
        if (!row.object)
            return lang(u"全部", u"All");
        if (row.variable) {
            const auto channel = row.variable->channel();
            return channel ? lang(channel_row(*channel).chinese, channel_row(*channel).english) : row.variable->name();
        }
        const QString name = row.object->name();
        if (row.object->is_broken())
            return lang(u"%1（目标已删除）", u"%1 (target is gone)").arg(row.object->get_type_name());
        return name.isEmpty() ? row.object->get_type_name() : name;
    }

    void arrow(const TimelineRow& row)
    {
        if (row.object->variables().empty())
            return;
        const QPointF center = QRectF(row_part(m_view, row, RowPart::Fold)).center();
        const bool open = m_view.rows.open.contains(row.object->id());
        QPainterPath path;
        if (open) {
            path.moveTo(center + QPointF(-4, -2));
            path.lineTo(center + QPointF(4, -2));
            path.lineTo(center + QPointF(0, 3));
        } else {
            path.moveTo(center + QPointF(-2, -4));
            path.lineTo(center + QPointF(-2, 4));
            path.lineTo(center + QPointF(3, 0));
        }
        path.closeSubpath();
        m_painter.shape(path, m_colors.dim_text);
    }

    void icon(const TimelineRow& row, int x, bool broken)
    {
        const QColor color = m_colors.of_type(row.object->type());
        const int top = row.top + (row_height - 13) / 2;
        m_painter.shape(type_icon(row.object->type()).translated(x, top), Qt::NoBrush, color, 1.2);
        if (!broken)
            return;
        QPainterPath cross;
        cross.moveTo(x + 1, top + 1);
        cross.lineTo(x + 11, top + 11);
        m_painter.shape(cross, Qt::NoBrush, m_colors.warning, 2);
    }

    void lock(const TimelineRow& row)
    {
        if (!row.object || row.variable || !m_view.rows.locked.contains(row.object->id()))
            return;
        const QRectF box = row_part(m_view, row, RowPart::Lock);
        const QPointF center = box.center();
        m_painter.fill(box, m_colors.background);
        QPainterPath bow;
        bow.addRoundedRect(QRectF(center.x() - 2.5, center.y() - 5.5, 5, 7), 2.5, 2.5);
        m_painter.shape(bow, Qt::NoBrush, m_colors.text, 1.4);
        m_painter.fill(QRectF(center.x() - 4, center.y() - 1, 8, 6), m_colors.text);
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
