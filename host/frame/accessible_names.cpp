#include "accessible_names.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

namespace tarn {

namespace {

QString plain(QString caption)
{
    caption.remove(QLatin1Char('&'));
    while (caption.endsWith(QLatin1Char(':')) || caption.endsWith(QChar(u'：')) || caption.endsWith(QLatin1Char(' ')))
        caption.chop(1);
    return caption;
}

/// What `item` says of the controls behind it.
QString caption_in(QLayoutItem* item)
{
    const QWidget* widget = item ? item->widget() : nullptr;
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return plain(label->text());
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    return button && button->isCheckable() ? plain(button->text()) : QString();
}

/// In a grid what stands to the left in the row, or above in the column.
QString caption_in_grid(const QGridLayout& grid, int index)
{
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(index, &row, &column, &rows, &columns);
    for (int left = column - 1; left >= 0; --left)
        if (const QString caption = caption_in(grid.itemAtPosition(row, left)); !caption.isEmpty())
            return caption;
    for (int above = row - 1; above >= 0; --above)
        if (const QString caption = caption_in(grid.itemAtPosition(above, column)); !caption.isEmpty())
            return caption;
    return {};
}

QString caption_before(const QLayout& layout, int index)
{
    if (const auto* grid = qobject_cast<const QGridLayout*>(&layout))
        return caption_in_grid(*grid, index);
    for (int before = index - 1; before >= 0; --before)
        if (const QString caption = caption_in(layout.itemAt(before)); !caption.isEmpty())
            return caption;
    return {};
}

bool holds(QLayoutItem& item, const QWidget& widget)
{
    if (item.widget() == &widget)
        return true;
    QLayout* layout = item.layout();
    for (int i = 0; layout && i < layout->count(); ++i)
        if (holds(*layout->itemAt(i), widget))
            return true;
    return false;
}

/// The nearest caption in the layout, or in one of those in it that hold the widget.
QString caption_in_layout(const QLayout* layout, const QWidget& widget)
{
    for (int i = 0; layout && i < layout->count(); ++i) {
        QLayoutItem& item = *layout->itemAt(i);
        if (!holds(item, widget))
            continue;
        const QString inside = caption_in_layout(item.layout(), widget);
        return inside.isEmpty() ? caption_before(*layout, i) : inside;
    }
    return {};
}

QString name_for(const QWidget& widget)
{
    if (!widget.toolTip().isEmpty())
        return widget.toolTip();
    const QWidget* inside = &widget;
    for (const QWidget* holder = widget.parentWidget(); holder; holder = holder->parentWidget()) {
        if (const QString caption = caption_in_layout(holder->layout(), *inside); !caption.isEmpty())
            return caption;
        if (const auto* group = qobject_cast<const QGroupBox*>(holder); group && !group->title().isEmpty())
            return plain(group->title());
        if (!holder->windowTitle().isEmpty())
            return holder->windowTitle();
        inside = holder;
    }
    return {};
}

bool needs_name(const QWidget& widget)
{
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const bool says_itself = button && !button->text().isEmpty();
    return widget.focusPolicy() != Qt::NoFocus && !says_itself && widget.accessibleName().isEmpty();
}

} // namespace

void name_controls(QWidget& form)
{
    for (QWidget* widget : form.findChildren<QWidget*>())
        if (needs_name(*widget))
            if (const QString name = name_for(*widget); !name.isEmpty())
                widget->setAccessibleName(name);
}

} // namespace tarn
