#include "wrap_layout.h"

#include <QFrame>
#include <QStyle>

#include <algorithm>
#include <limits>

namespace {

bool is_separator(const QLayoutItem* item)
{
    const auto* frame = qobject_cast<const QFrame*>(const_cast<QLayoutItem*>(item)->widget());
    return frame && frame->frameShape() == QFrame::VLine;
}

} // namespace

WrapLayout::~WrapLayout() = default;

void WrapLayout::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
    invalidate();
}

QLayoutItem* WrapLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[std::size_t(index)].get() : nullptr;
}

QLayoutItem* WrapLayout::takeAt(int index)
{
    if (index < 0 || index >= count())
        return nullptr;
    QLayoutItem* item = m_items[std::size_t(index)].release();
    m_items.erase(m_items.begin() + index);
    return item;
}

/// A separator stands between two items of one row; where the row ends with it, or begins, it is left out.
std::vector<WrapLayout::Row> WrapLayout::rows(int width) const
{
    std::vector<Row> rows(1);
    QLayoutItem* separator = nullptr; // It is known with the next item whether it is needed.
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        if (is_separator(item.get())) {
            separator = item.get();
            continue;
        }
        const QSize size = item->sizeHint();
        const int lead = separator ? separator->sizeHint().width() + spacing() : 0;
        const bool fits = rows.back().width + spacing() + lead + size.width() <= width;
        if (!rows.back().items.empty() && !fits)
            rows.emplace_back();
        Row& row = rows.back();
        if (!row.items.empty()) {
            row.width += spacing() + lead;
            if (separator)
                row.items.push_back(separator);
        }
        separator = nullptr;
        row.items.push_back(item.get());
        row.width += size.width();
        row.height = std::max(row.height, size.height());
    }
    return rows;
}

QSize WrapLayout::with_margins(QSize size) const
{
    return size.grownBy(contentsMargins());
}

int WrapLayout::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    const auto all = rows(width - margins.left() - margins.right());
    int height = int(all.size() - 1) * spacing();
    for (const Row& row : all)
        height += row.height;
    return with_margins(QSize(0, height)).height();
}

QSize WrapLayout::sizeHint() const
{
    const Row row = rows(std::numeric_limits<int>::max() / 2).front();
    return with_margins(QSize(row.width, row.height));
}

QSize WrapLayout::minimumSize() const
{
    QSize largest(0, 0);
    for (const auto& item : m_items)
        largest = largest.expandedTo(item->minimumSize());
    return with_margins(largest);
}

void WrapLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const QRect area = rect.marginsRemoved(contentsMargins());
    const auto all = rows(area.width());
    // Those that stand in no row must not stay where they were.
    for (const auto& item : m_items)
        if (is_separator(item.get()))
            item->setGeometry(QRect());
    int y = area.top();
    for (const Row& row : all) {
        int x = area.left();
        for (QLayoutItem* item : row.items) {
            const int width = std::min(item->sizeHint().width(), area.right() + 1 - x);
            const QRect place(x, y, width, row.height);
            item->setGeometry(QStyle::visualRect(parentWidget()->layoutDirection(), area, place));
            x += width + spacing();
        }
        y += row.height + spacing();
    }
}

void wrap_items_of(QWidget& form)
{
    QLayout* row = form.layout();
    const QMargins margins = row->contentsMargins();
    const int spacing = row->spacing();
    std::vector<QLayoutItem*> items;
    while (QLayoutItem* item = row->takeAt(0))
        items.push_back(item);
    delete row;
    auto* layout = new WrapLayout(&form);
    layout->setContentsMargins(margins);
    layout->setSpacing(spacing);
    for (QLayoutItem* item : items)
        layout->addItem(item);
}
