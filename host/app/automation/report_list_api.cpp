#include "report_list_api.h"

#include "control_kinds.h"
#include "user_input.h"
#include "widgets/report_list.h"

#include <algorithm>

namespace tarn::script {

namespace {

constexpr int empty_space = -1;

Result<CReportList*> report_list(const Result<QWidget*>& widget, const ControlHandle& control)
{
    if (!widget)
        return widget.status();
    if (auto* list = qobject_cast<CReportList*>(widget.value()))
        return list;
    const QString kind = QLatin1String(kind_of(*widget.value()).name);
    return control.error(QStringLiteral("is %1 and has no rows").arg(kind));
}

QString missing_row(int row)
{
    return QStringLiteral("has no row %1").arg(row);
}

/// A place on the list's viewport where a click hits the cell, or no cell for row -1.
Result<QPointF> place_of(CReportList& list, const ControlHandle& control, int row, int column)
{
    const QRect viewport = list.viewport()->rect();
    if (row == empty_space) {
        list.scrollToBottom();
        const QPoint corner = viewport.bottomRight() - QPoint(2, 2);
        if (list.indexAt(corner).isValid())
            return control.error(QStringLiteral("shows no empty space"));
        return QPointF(corner);
    }
    if (row < 0 || row >= list.row_count())
        return control.error(missing_row(row));
    if (column < 0 || column >= list.column_captions().size())
        return control.error(QStringLiteral("has no column %1").arg(column));
    const QModelIndex cell = list.model()->index(row, column);
    list.scrollTo(cell);
    const QRect shown = list.visualRect(cell) & viewport;
    if (shown.isEmpty())
        return control.error(QStringLiteral("does not show column %1").arg(column));
    return QPointF(shown.center());
}

/// Clicks one cell.
Status click_at(const ControlHandle& control, int row, int column, Qt::KeyboardModifiers modifiers)
{
    const auto list = report_list(usable(control), control);
    if (!list)
        return list.status();
    const auto place = place_of(*list.value(), control, row, column);
    if (!place)
        return place.status();
    input::click(*list.value()->viewport(), place.value(), modifiers);
    return {};
}

} // namespace

Result<Data> rows(Automation&, ControlHandle* self)
{
    const auto list = report_list(alive(*self), *self);
    if (!list)
        return list.status();
    Data::List all;
    const auto column_count = int(list.value()->column_captions().size());
    for (int row = 0; row < list.value()->row_count(); ++row) {
        Data::List cells;
        for (int column = 0; column < column_count; ++column)
            cells.push_back(list.value()->item_caption(row, column));
        all.push_back(std::move(cells));
    }
    return Data(std::move(all));
}

Result<Data> columns(Automation&, ControlHandle* self)
{
    const auto list = report_list(alive(*self), *self);
    return list ? Result<Data>(list.value()->column_captions()) : list.status();
}

Result<Data> icons(Automation&, ControlHandle* self)
{
    const auto list = report_list(alive(*self), *self);
    if (!list)
        return list.status();
    Data::List all;
    for (int row = 0; row < list.value()->row_count(); ++row)
        all.push_back(list.value()->icon_index(row));
    return Data(std::move(all));
}

Result<Data> selected_rows(Automation&, ControlHandle* self)
{
    const auto list = report_list(alive(*self), *self);
    if (!list)
        return list.status();
    QList<QModelIndex> selected = list.value()->selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    return Data(list_of(selected, [](const QModelIndex& index) { return Data(index.row()); }));
}

Status select_rows(Automation& app, ControlHandle* self, std::vector<int> wanted)
{
    if (wanted.empty())
        wanted.push_back(empty_space);
    Qt::KeyboardModifiers modifiers;
    for (const int row : wanted) {
        if (auto status = click_at(*self, row, 0, modifiers); !status)
            return status;
        app.settle();
        modifiers = Qt::ControlModifier;
    }
    return {};
}

Status click_cell(Automation& app, ControlHandle* self, int row, int column, const std::optional<QString>& mods)
{
    const auto modifiers = read_modifiers(mods);
    if (!modifiers)
        return modifiers.status();
    auto status = click_at(*self, row, column, modifiers.value());
    app.settle();
    return status;
}

Status double_click_row(Automation& app, ControlHandle* self, int row)
{
    const auto list = report_list(usable(*self), *self);
    if (!list)
        return list.status();
    const auto place = place_of(*list.value(), *self, row, 0);
    if (!place)
        return place.status();
    input::double_click(*list.value()->viewport(), place.value());
    app.settle();
    return {};
}

Status drag_row(Automation& app, ControlHandle* self, int row, int onto, const QString& place)
{
    const auto list = report_list(usable(*self), *self);
    if (!list)
        return list.status();
    if (place != QLatin1String("above") && place != QLatin1String("below"))
        return Status::error(QStringLiteral("bad argument \"place\": a row is dropped \"above\" or \"below\" another"));
    const auto from = place_of(*list.value(), *self, row, 0);
    const auto to = place_of(*list.value(), *self, onto, 0);
    if (!from || !to)
        return from ? to.status() : from.status();
    const int side = list.value()->rowHeight(onto) / 4;
    const QPointF end = to.value() + QPointF(0, place == QLatin1String("above") ? -side : side);
    QWidget& viewport = *list.value()->viewport();
    input::mouse(viewport, QEvent::MouseButtonPress, from.value(), Qt::LeftButton, Qt::LeftButton);
    input::mouse(viewport, QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton);
    input::mouse(viewport, QEvent::MouseButtonRelease, end, Qt::LeftButton, {});
    app.settle();
    return {};
}

Result<Data> cell_icons(Automation&, ControlHandle* self, int row, int column)
{
    const auto list = report_list(alive(*self), *self);
    if (!list)
        return list.status();
    Data::List all;
    for (const CReportList::CellIcon& icon : list.value()->cell_icons_at(row, column))
        all.push_back(Data::Record{{"icon", qint64(icon.number)}, {"tip", icon.tip}});
    return Data(std::move(all));
}

Status click_icon(Automation& app, ControlHandle* self, int row, int column, int icon)
{
    const auto list = report_list(usable(*self), *self);
    if (!list)
        return list.status();
    if (const auto place = place_of(*list.value(), *self, row, column); !place)
        return place.status();
    const QRect rect = list.value()->cell_icon_rect(row, column, icon) & list.value()->viewport()->rect();
    if (rect.isEmpty())
        return self->error(QStringLiteral("has no icon %1 in that cell").arg(icon));
    input::click(*list.value()->viewport(), rect.center());
    app.settle();
    return {};
}

} // namespace tarn::script
