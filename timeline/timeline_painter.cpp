#include "timeline_painter.h"

#include "animation/anim_time.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "ruler_ticks.h"
#include "value_curve.h"

#include <QPainterPath>

namespace tarn {

namespace {

constexpr int mark_margin = 6; ///< half the width of the widest mark
constexpr int fault_reach = 4; ///< half the width of its tick
constexpr int label_middle = 10;
constexpr int tick_label_middle = 29;
constexpr int curve_top = 41;
constexpr int curve_bottom = 60;

using TextSize = DevicePainter::TextSize;

class BandPainter {
public:
    BandPainter(DevicePainter& painter, TimelineLook& look, const TimelineView& view)
        : m_painter(painter),
          m_look(look),
          m_colors(look.colors),
          m_view(view),
          m_bar(view.bar()),
          m_width(view.client_width)
    {
    }

    void paint()
    {
        background();
        markers();
        ruler();
        if (!m_bar)
            return;
        value_labels();
        curves();
        keys();
        ease();
        scripts();
        section();
        end_mark();
        faults();
    }

private:
    int column(float time) const { return column_of(m_view.axis, time); }
    CTVar* variable() const
    {
        const CTimerObject* object = m_bar->current_object();
        return object ? object->current_variable() : nullptr;
    }

    /// A small text over what is drawn already.
    void label(double x, double middle, const QString& text, const QColor& color)
    {
        QColor ground = m_colors.background;
        ground.setAlphaF(0.75F);
        m_painter.fill(QRectF(x - 1, middle - 6, m_painter.text_width(text, TextSize::Small) + 2, 12), ground);
        m_painter.text(x, middle, text, color, TextSize::Small);
    }

    void background()
    {
        const int height = m_view.client_height;
        m_painter.fill(QRectF(0, 0, m_width + 1, height + 1), m_colors.background);
        m_painter.fill(QRectF(0, 0, m_width, bands::span_bottom), m_colors.ruler);
        const auto outside = [&](int left, int right) {
            if (left < right)
                m_painter.fill(QRectF(left, 0, right - left, height), m_colors.outside);
        };
        outside(0, std::min(column(0), m_width));
        if (m_bar)
            outside(std::clamp(column(m_bar->get_total_length()) + 1, 0, m_width), m_width);
    }

    void ruler()
    {
        const std::vector<RulerTick> ticks = ruler_ticks(m_view);
        for (const RulerTick& tick : ticks) {
            if (tick.major)
                m_painter.vertical_line(tick.column, bands::span_bottom, m_view.client_height, m_colors.grid);
            m_painter.vertical_line(tick.column, tick.major ? 12 : 17, bands::span_bottom,
                                    tick.major ? m_colors.dim_text : m_colors.line);
        }
        m_painter.horizontal_line(0, m_width, bands::span_bottom, m_colors.line);
        for (const RulerTick& tick : ticks)
            if (tick.major && !is_covered(tick.column))
                m_painter.text(tick.column + 4, tick_label_middle, time_label(tick.time, m_bar), m_colors.dim_text,
                               TextSize::Small);
    }

    /// Flags with their names, and how far those reach that have a length.
    void markers()
    {
        if (!m_bar)
            return;
        for (const CTimeMark* mark : m_bar->marks()) {
            const int x = column(mark->time());
            const int end = column(mark->end());
            const QColor color = QColor::fromRgb(mark->color());
            if (x > m_width || end < -m_width)
                continue;
            if (mark->length() > 0) {
                QColor faint = color;
                faint.setAlphaF(m_colors.dark ? 0.16F : 0.14F);
                m_painter.fill(QRectF(x, bands::span_bottom, end - x, m_view.client_height), faint);
                m_painter.vertical_line(end, bands::span_bottom, bands::cursor_bottom, color);
                m_painter.fill(QRectF(end - 4, bands::scripts_top, 5, 3), color);
                m_painter.fill(QRectF(end - 4, bands::scripts_bottom - 3, 5, 3), color);
            }
            m_painter.vertical_line(x, bands::keys_top, bands::cursor_bottom, color);
            const QString name = m_painter.elided(mark->name(), 140, TextSize::Small);
            const double width = m_painter.text_width(name, TextSize::Small) + 8;
            QPainterPath flag(QPointF(x, tick_label_middle - 7));
            flag.lineTo(x + width, tick_label_middle - 7);
            flag.lineTo(x + width + 4, tick_label_middle);
            flag.lineTo(x + width, tick_label_middle + 7);
            flag.lineTo(x, tick_label_middle + 7);
            flag.closeSubpath();
            m_painter.shape(flag, color);
            m_painter.text(x + 5, tick_label_middle, name, color.lightnessF() > 0.55F ? Qt::black : Qt::white,
                           TextSize::Small);
            m_flags.emplace_back(x, x + int(width) + 4);
        }
    }

    void faults()
    {
        for (const TimeFault& fault : m_view.faults) {
            const double x = column(fault.time) + 0.5;
            QPainterPath tick(QPointF(x - fault_reach, 0));
            tick.lineTo(x + fault_reach, 0);
            tick.lineTo(x, bands::faults_bottom);
            tick.closeSubpath();
            m_painter.shape(tick, m_colors.warning);
        }
    }

    bool is_covered(int tick) const
    {
        constexpr int label_width = 40;
        return std::any_of(m_flags.begin(), m_flags.end(), [=](const std::pair<int, int>& flag) {
            return tick + label_width > flag.first && tick < flag.second;
        });
    }

    void curves()
    {
        if (!variable())
            return;
        const ValueCurves& curves = shown_curves();
        for (std::size_t part = 0; part < curves.parts.size(); ++part) {
            QColor color = curves.parts.size() == 1 ? m_colors.accent : m_colors.parts[part];
            color.setAlphaF(0.75F);
            m_painter.shape(curves.parts[part], Qt::NoBrush, color, 1.2);
        }
    }

    /// The value of each key, with dashes to its place on the curve, where there is room.
    void value_labels()
    {
        const CTVar* shown = variable();
        if (!shown || (shown->type() != VarType::Float && shown->type() != VarType::Int))
            return;
        double free_from = 0;
        for (const KeyStack& key : keys_of_variable()) {
            const KeyValue value = shown->value_at(key.last);
            const QString text = shown->type() == VarType::Int ? QString::asprintf("%d ---", value.as_int())
                                                               : QString::asprintf("%f ---", double(value.part(0)));
            const double left = key.column - m_painter.text_width(text, TextSize::Small);
            if (left < free_from)
                continue;
            label(left, shown_curves().y(number_of_part(value, 0)), text, m_colors.dim_text);
            free_from = key.column + 4;
        }
    }

    std::vector<KeyStack> keys_of_variable() const
    {
        CTVar* shown = variable();
        return key_columns(m_view.axis, {&shown, 1}, 0, m_width).columns;
    }

    const ValueCurves& shown_curves()
    {
        if (!m_curves)
            m_curves = value_curves(m_view, *variable(), QRectF(0, curve_top, m_width, curve_bottom - curve_top));
        return *m_curves;
    }

    void keys()
    {
        const std::vector<CTVar*> variables = m_bar->shown_variables();
        m_look.columns.emplace(m_view.axis, -mark_margin, m_width + mark_margin);
        const KeyColumns keys = m_look.columns->of(variables);
        if (variables.size() == 1)
            paint_held_spans(m_painter, m_colors, *variables.front(), keys.columns, bands::keys_top + 5);
        m_look.key_stamps.draw(m_painter, m_colors, keys.columns, bands::keys_top, KeyStamps::Look::Usual);
        m_look.key_stamps.draw(m_painter, m_colors, selected_columns(m_view, variables, keys.columns), bands::keys_top,
                               KeyStamps::Look::Selected);
        m_look.all_keys.reset();
        if (!m_bar->current_object())
            m_look.all_keys = keys;
    }

    void ease()
    {
        for (const EaseHandle& handle : ease_handles(m_view)) {
            constexpr double middle = (bands::ease_top + bands::ease_bottom) / 2.0;
            m_painter.fill(QRectF(handle.left, middle - 0.5, handle.right - handle.left, 1), m_colors.line);
            const QRectF box(handle.x() - EaseHandle::half_width, bands::ease_top, 2 * EaseHandle::half_width,
                             bands::ease_bottom - bands::ease_top);
            m_painter.fill(box, handle.span.ease == 0 ? m_colors.background : m_colors.accent);
            m_painter.frame(box, m_colors.accent);
        }
    }

    /// A tag on a line, and the function's name up to the next one.
    void scripts()
    {
        std::vector<std::pair<float, int>> shown;
        each_column(m_view.axis, m_bar->script_key_times(), -mark_margin, m_width + mark_margin,
                    [&](float time, int x) { shown.emplace_back(time, x); });
        for (std::size_t i = 0; i < shown.size(); ++i) {
            const auto [time, x] = shown[i];
            script_mark(x, m_view.selection.has_script(time));
            const double room = (i + 1 < shown.size() ? shown[i + 1].second - 8 : x + 200) - (x + 9);
            if (room > 16)
                label(x + 9, bands::scripts_top + 14,
                      m_painter.elided(m_bar->get_script_name(time), room, TextSize::Small), m_colors.script);
        }
    }

    void script_mark(int x, bool selected)
    {
        const double center = x + 0.5;
        QPainterPath tag(QPointF(center - 4.5, bands::scripts_top + 0.5));
        tag.lineTo(center + 4.5, bands::scripts_top + 0.5);
        tag.lineTo(center + 4.5, bands::scripts_top + 9);
        tag.lineTo(center, bands::scripts_top + 14);
        tag.lineTo(center - 4.5, bands::scripts_top + 9);
        tag.closeSubpath();
        m_painter.vertical_line(x, bands::scripts_top + 13, bands::scripts_bottom + 1, m_colors.script);
        m_painter.shape(tag, selected ? m_colors.selected : m_colors.script,
                        selected ? m_colors.selected_edge : m_colors.key_edge);
        const QColor ink = selected ? m_colors.selected_edge : m_colors.background;
        for (const int y : {3, 5, 7})
            m_painter.fill(QRectF(x - 2, bands::scripts_top + y, y == 7 ? 3 : 5, 1), ink);
    }

    /// The band of what is selected, with grips at its ends.
    void section()
    {
        const QRect box = span_box(m_view);
        if (box.isNull())
            return;
        QColor faint = m_colors.selected;
        faint.setAlphaF(0.28F);
        m_painter.fill(box, faint);
        m_painter.fill(QRectF(box.left() - 1, box.top(), 2, box.height()), m_colors.selected);
        m_painter.fill(QRectF(box.right(), box.top(), 2, box.height()), m_colors.selected);
    }

    void end_mark()
    {
        const QRect box = end_box(m_view, *m_bar);
        if (box.left() <= m_width && box.right() >= 0)
            paint_end_mark(m_painter, m_colors, box, false);
        m_painter.vertical_line(box.left(), bands::span_bottom, m_view.client_height, m_colors.end_box);
    }

public:
    static void paint_end_mark(DevicePainter& painter, const TimelineColors& colors, const QRect& box, bool lit)
    {
        painter.fill(box, lit ? colors.end_box_lit : colors.end_box);
        painter.frame(box, lit ? colors.text : colors.dim_text);
        QPainterPath triangle(QPointF(box.left() + 10, 25));
        triangle.lineTo(box.left() + 16, 31);
        triangle.lineTo(box.left() + 10, 37);
        triangle.closeSubpath();
        painter.shape(triangle, QColor::fromRgba(TimelineColors::end_triangle));
    }

private:
    DevicePainter& m_painter;
    TimelineLook& m_look;
    const TimelineColors& m_colors;
    const TimelineView& m_view;
    CTimebar* m_bar;
    int m_width;
    std::optional<ValueCurves> m_curves;
    std::vector<std::pair<int, int>> m_flags; ///< from where to where names of markers reach
};

} // namespace

void paint_bands(DevicePainter& painter, TimelineLook& look, const TimelineView& view)
{
    BandPainter(painter, look, view).paint();
}

std::vector<KeyStack> selected_columns(const TimelineView& view, const std::vector<CTVar*>& variables,
                                       const std::vector<KeyStack>& columns)
{
    std::vector<KeyStack> selected;
    if (columns.empty() || view.selection.keys().empty())
        return selected;
    std::vector<int> found;
    for (CTVar* variable : variables)
        if (const auto times = view.selection.keys().find(variable); times != view.selection.keys().end())
            each_column(view.axis, times->second, columns.front().column, columns.back().column,
                        [&](float, int column) { found.push_back(column); });
    std::sort(found.begin(), found.end());
    for (const KeyStack& column : columns)
        if (std::binary_search(found.begin(), found.end(), column.column))
            selected.push_back(column);
    return selected;
}

void paint_held_spans(DevicePainter& painter, const TimelineColors& colors, const CTVar& variable,
                      const std::vector<KeyStack>& columns, int middle)
{
    constexpr int least_span = 14; // pixels; in a narrower one the marks cover it
    for (std::size_t i = 1; i < columns.size(); ++i) {
        const KeyStack& from = columns[i - 1];
        const KeyStack& to = columns[i];
        if (to.column - from.column < least_span)
            continue;
        const bool held = variable.steps() || variable.value_at(from.last) == variable.value_at(to.first);
        const double half = held ? 2 : 0;
        painter.fill(QRectF(from.column, middle - half, to.column - from.column, held ? 5 : 1),
                     held ? colors.held : colors.line);
    }
}

void paint_overlay(DevicePainter& painter, const TimelineLook& look, const TimelineView& view)
{
    const TimelineColors& colors = look.colors;
    const CTimebar* bar = view.bar();
    const auto ring = [&](float time, int top, int bottom) {
        if (time < 0)
            return;
        const int x = column_of(view.axis, time);
        painter.frame(QRectF(x - 6, top, 13, bottom - top), colors.accent);
    };
    ring(view.hover.key, bands::keys_top - 1, bands::keys_bottom + 1);
    ring(view.hover.extra, bands::keys_top - 1, bands::keys_bottom + 1);
    ring(view.hover.point, bands::keys_top - 1, bands::keys_bottom + 1);
    ring(view.hover.script, bands::scripts_top - 1, bands::scripts_bottom + 1);
    ring(view.hover.other, bands::scripts_top - 1, bands::scripts_bottom + 1);
    if (view.hover.ease) {
        const EaseHandle handle = ease_handle(view.axis, *view.hover.ease);
        painter.frame(QRectF(handle.x() - 5, bands::ease_top - 2, 10, 10), colors.text);
    }
    if (view.hover.end_mark && bar)
        BandPainter::paint_end_mark(painter, colors, end_box(view, *bar), true);

    const auto cursor = [&](float time, QRgb rgb, int bottom) {
        const QColor color = QColor::fromRgba(rgb);
        const int x = column_of(view.axis, time);
        painter.vertical_line(x, bands::label_bottom, bottom, color);
        const QString text = time_label(time, bar);
        const QRect box = label_box(x, int(std::ceil(painter.text_width(text))), view.client_width);
        painter.fill(box, colors.background);
        painter.frame(box, color);
        painter.text(box.left() + 3, label_middle, text, colors.text);
    };
    if (const QRect& box = view.rows.box; !box.isNull()) {
        QColor faint = colors.accent;
        faint.setAlphaF(0.15F);
        painter.fill(box, faint);
        painter.frame(box, colors.accent);
    }
    const int bottom = std::max(int(bands::cursor_bottom), view.client_height);
    if (view.range_select) {
        QColor faint = QColor::fromRgba(TimelineColors::anchor);
        faint.setAlphaF(colors.dark ? 0.16F : 0.22F);
        painter.fill(range_box(view), faint);
        cursor(view.range_anchor, TimelineColors::anchor, bands::cursor_bottom);
        for (const float point : {view.range_begin(), view.range_end()}) {
            const int x = column_of(view.axis, point);
            painter.fill(QRectF(x - 2, bands::label_bottom, 5, 3), colors.text);
        }
    }
    cursor(view.current_time, TimelineColors::cursor, bottom);
}

std::vector<QRect> overlay_boxes(const DevicePainter& painter, const TimelineView& view)
{
    std::vector<QRect> boxes;
    const CTimebar* bar = view.bar();
    const auto cursor = [&](float time) {
        const int x = column_of(view.axis, time);
        const int width = int(std::ceil(painter.text_width(time_label(time, bar))));
        boxes.push_back(label_box(x, width, view.client_width));
        boxes.emplace_back(x - 2, bands::label_bottom, 5, std::max(view.client_height, int(bands::cursor_bottom)));
    };
    const auto ring = [&](float time, int top, int bottom) {
        if (time >= 0)
            boxes.emplace_back(column_of(view.axis, time) - 6, top, 13, bottom - top);
    };
    cursor(view.current_time);
    if (view.range_select) {
        cursor(view.range_anchor);
        boxes.push_back(range_box(view));
    }
    for (const float time : {view.hover.key, view.hover.extra, view.hover.point})
        ring(time, bands::keys_top - 1, bands::keys_bottom + 1);
    for (const float time : {view.hover.script, view.hover.other})
        ring(time, bands::scripts_top - 1, bands::scripts_bottom + 1);
    if (view.hover.ease)
        boxes.emplace_back(int(ease_handle(view.axis, *view.hover.ease).x()) - 6, bands::ease_top - 2, 13, 10);
    if (view.hover.end_mark && bar)
        boxes.push_back(end_box(view, *bar));
    if (!view.rows.box.isNull())
        boxes.push_back(view.rows.box);
    return boxes;
}

} // namespace tarn
