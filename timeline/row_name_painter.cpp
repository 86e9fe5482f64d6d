#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "timeline_painter.h"
#include "timer_object_text.h"
#include "type_icons.h"

namespace tarn {

namespace {

constexpr int row_height = TimelineRow::height;
constexpr int indent = 20; ///< of icons; texts of variables stand as far in as those of objects

QString name_of(const TimelineRow& row)
{
    if (!row.object)
        return lang(u"全部", u"All");
    if (row.variable)
        return variable_text(*row.variable);
    if (row.object->is_broken())
        return lang(u"%1（目标已删除）", u"%1 (target is gone)").arg(row.object->get_type_name());
    const QString name = row.object->name();
    return name.isEmpty() ? row.object->get_type_name() : name;
}

class RowNamePainter {
public:
    RowNamePainter(DevicePainter& painter, const TimelineColors& colors, const TimelineView& view, int width)
        : m_painter(painter), m_colors(colors), m_view(view), m_bar(*view.bar()), m_width(width)
    {
    }

    void paint(const TimelineRow& row)
    {
        background(row);
        const bool is_object = row.object && !row.variable;
        const bool broken = is_object && row.object->is_broken();
        if (is_object) {
            arrow(row);
            icon(row, broken);
            lock(row);
            mute(row);
        }
        const int left = row.object ? indent + 18 : 8;
        const int right = is_object ? row_part(row, RowPart::Mute, m_width).left() : m_width;
        m_painter.text(left, row.middle() - 0.5, m_painter.elided(name_of(row), right - left - 2),
                       broken                               ? m_colors.warning
                           : row.variable || is_silent(row) ? m_colors.dim_text
                                                            : m_colors.text);
    }

private:
    bool is_current(const TimelineRow& row) const
    {
        return row.object && row.object == m_bar.current_object()
            && (!row.variable || row.variable == row.object->current_variable());
    }
    bool has_focus(const TimelineRow& row) const
    {
        return m_view.rows.focus_object && row.object && row.object->id() == m_view.rows.focus_object
            && (row.variable ? row.variable->id() : 0) == m_view.rows.focus_variable;
    }

    void background(const TimelineRow& row)
    {
        QColor color = is_current(row) ? m_colors.accent : m_colors.text;
        color.setAlphaF(is_current(row) ? (m_colors.dark ? 0.2F : 0.13F) : row.object ? 0 : 0.05F);
        m_painter.fill(QRectF(0, row.top, m_width, row_height), color);
        m_painter.horizontal_line(0, m_width, row.bottom() - 1, m_colors.grid);
        if (has_focus(row))
            m_painter.fill(QRectF(0, row.top, 3, row_height - 1), m_colors.accent);
    }

    void arrow(const TimelineRow& row)
    {
        if (row.object->variables().empty())
            return;
        const QPointF center = QRectF(row_part(row, RowPart::Fold, m_width)).center();
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

    void icon(const TimelineRow& row, bool broken)
    {
        const QColor color = m_colors.of_type(row.object->type());
        const int top = row.top + (row_height - 13) / 2;
        m_painter.shape(type_icon(row.object->type()).translated(indent, top), Qt::NoBrush, color, 1.2);
        if (!broken)
            return;
        QPainterPath cross;
        cross.moveTo(indent + 1, top + 1);
        cross.lineTo(indent + 11, top + 11);
        m_painter.shape(cross, Qt::NoBrush, m_colors.warning, 2);
    }

    /// Open and pale where the object can be edited.
    void lock(const TimelineRow& row)
    {
        const bool is_locked = m_view.rows.locked.contains(row.object->id());
        QColor color = m_colors.text;
        color.setAlphaF(is_locked ? 1 : 0.25F);
        const QPointF center = row_part(row, RowPart::Lock, m_width).center();
        QPainterPath bow;
        bow.addRoundedRect(QRectF(center.x() - (is_locked ? 2.5 : 5.5), center.y() - 5.5, 5, 7), 2.5, 2.5);
        m_painter.shape(bow, Qt::NoBrush, color, 1.4);
        m_painter.fill(QRectF(center.x() - 4, center.y() - 1, 8, 6), color);
    }

    bool is_silent(const TimelineRow& row) const { return row.object && m_view.scene->is_silent(*row.object); }

    /// An eye, pale as long as the object takes part; crossed out where it is muted, filled where it is solo.
    void mute(const TimelineRow& row)
    {
        const bool is_muted = m_view.scene->is_muted(row.object->id());
        const bool is_solo = m_view.scene->is_solo(row.object->id());
        QColor color = is_solo ? m_colors.accent : m_colors.text;
        color.setAlphaF(is_muted || is_solo ? 1 : 0.25F);
        const QPointF center = QRectF(row_part(row, RowPart::Mute, m_width)).center();
        QPainterPath eye;
        eye.moveTo(center + QPointF(-6, 0));
        eye.quadTo(center + QPointF(0, -7), center + QPointF(6, 0));
        eye.quadTo(center + QPointF(0, 7), center + QPointF(-6, 0));
        m_painter.shape(eye, is_solo ? QBrush(color) : QBrush(Qt::NoBrush), color, 1.3);
        QPainterPath inside;
        if (is_muted) {
            inside.moveTo(center + QPointF(-5, 5));
            inside.lineTo(center + QPointF(5, -5));
        } else {
            inside.addEllipse(center, 1.5, 1.5);
        }
        m_painter.shape(inside, Qt::NoBrush, is_solo ? m_colors.background : color, 1.6);
    }

    DevicePainter& m_painter;
    const TimelineColors& m_colors;
    const TimelineView& m_view;
    const CTimebar& m_bar;
    int m_width;
};

} // namespace

void paint_row_names(DevicePainter& painter, const TimelineColors& colors, const TimelineView& view, int width)
{
    painter.fill(QRectF(0, bands::rows_top, width, std::max(view.client_height - bands::rows_top, 0)),
                 colors.background);
    painter.horizontal_line(0, width, bands::rows_top - 1, colors.line);
    const std::vector<TimelineRow> rows = rows_between(view, bands::rows_top, view.client_height);
    if (rows.empty())
        return;
    painter.clip(QRectF(0, bands::rows_top, width, std::max(view.client_height - bands::rows_top, 0)));
    RowNamePainter names(painter, colors, view, width);
    for (const TimelineRow& row : rows)
        names.paint(row);
    painter.unclip();
}

} // namespace tarn
