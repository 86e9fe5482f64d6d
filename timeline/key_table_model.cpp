#include "key_table_model.h"

#include "animation/t_var.h"
#include "core/language.h"
#include "key_table_edit.h"

#include <algorithm>
#include <limits>

namespace tarn {

void KeyTableModel::show(CTimebar* bar, const std::vector<CTVar*>& variables)
{
    const qsizetype before = rowCount();
    const bool same = bar == m_bar && variables == m_variables;
    KeyRows rows;
    rows.set(variables, m_order, m_descending);
    if (same && rows.size() == before) {
        m_rows = std::move(rows);
        if (before > 0)
            Q_EMIT dataChanged(index(0, 0), index(int(before) - 1, key_column_count - 1));
        return;
    }
    beginResetModel();
    m_bar = bar;
    m_variables = variables;
    m_rows = std::move(rows);
    endResetModel();
}

int KeyTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(std::min<qsizetype>(m_rows.size(), std::numeric_limits<int>::max()));
}

int KeyTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : key_column_count;
}

QVariant KeyTableModel::data(const QModelIndex& index, int role) const
{
    const KeyPlace place = index.isValid() ? this->place(index.row()) : KeyPlace();
    if (!place.variable)
        return {};
    const auto column = KeyColumn(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return key_text(*m_bar, place, column);
    case Qt::TextAlignmentRole:
        return int(column == KeyColumn::Time || column == KeyColumn::Ease ? Qt::AlignRight | Qt::AlignVCenter
                                                                          : Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return column == KeyColumn::Time && !is_key_editable(place, column)
            ? lang(u"变量的第一个关键帧不能移动", u"The first key of a variable stays where it is")
            : QVariant();
    default: return {};
    }
}

bool KeyTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    return role == Qt::EditRole && on_edit && on_edit(index, value.toString());
}

QVariant KeyTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return key_column_title(KeyColumn(section));
    return {};
}

Qt::ItemFlags KeyTableModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const KeyPlace place = index.isValid() ? this->place(index.row()) : KeyPlace();
    return place.variable && is_key_editable(place, KeyColumn(index.column())) ? flags | Qt::ItemIsEditable : flags;
}

void KeyTableModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= key_column_count)
        return;
    m_order = KeyColumn(column);
    m_descending = order == Qt::DescendingOrder;
    Q_EMIT layoutAboutToBeChanged();
    m_rows.set(m_variables, m_order, m_descending);
    Q_EMIT layoutChanged();
}

} // namespace tarn
