#include "widgets/report_model.h"

#include "widgets/report_list.h"

namespace tarn {

ReportModel::ReportModel(CReportList* list) : QAbstractTableModel(list), m_list(list) {}

void ReportModel::set_items(const std::vector<void*>& items)
{
    beginResetModel();
    m_items = items;
    endResetModel();
}

void ReportModel::reorder(const std::vector<int>& order)
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<void*> sorted(order.size());
    for (size_t i = 0; i < order.size(); ++i)
        sorted[i] = m_items[size_t(order[i])];
    m_items.swap(sorted);

    const QModelIndexList before = persistentIndexList();
    if (!before.isEmpty()) {
        std::vector<int> new_row(order.size());
        for (size_t i = 0; i < order.size(); ++i)
            new_row[size_t(order[i])] = int(i);
        QModelIndexList after;
        for (const QModelIndex& index : before)
            after.append(createIndex(new_row[size_t(index.row())], index.column()));
        changePersistentIndexList(before, after);
    }
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void ReportModel::insert_column(int index, Column column)
{
    beginInsertColumns({}, index, index);
    m_columns.insert(m_columns.begin() + index, std::move(column));
    endInsertColumns();
}

void ReportModel::set_column_title(int index, const QString& title)
{
    m_columns[size_t(index)].title = title;
    Q_EMIT headerDataChanged(Qt::Horizontal, index, index);
}

int ReportModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

int ReportModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant ReportModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return m_list->item_caption(index.row(), index.column());
    if (role == Qt::TextAlignmentRole && m_columns[size_t(index.column())].is_number)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const Column& column = m_columns[size_t(section)];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return column.title;
    if (role == Qt::TextAlignmentRole)
        return int(column.is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextWordWrap;
    return {};
}

bool ReportModel::setData(const QModelIndex& index, const QVariant& value, int)
{
    const QString text = value.toString();
    if (text == m_list->item_caption(index.row(), index.column()))
        return false;
    Q_EMIT m_list->caption_edited(index.row(), index.column(), text);
    return true;
}

Qt::ItemFlags ReportModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index == m_editable ? usual | Qt::ItemIsEditable : usual;
}

} // namespace tarn
