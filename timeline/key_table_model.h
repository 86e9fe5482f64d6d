#pragma once

#include "key_rows.h"

#include <QAbstractTableModel>

#include <functional>

class CTimebar;

namespace tarn {

/// Keys of a timebar as Qt's views want them. Nothing is kept of the keys: what a cell says is asked when it is shown.
class KeyTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Shows the keys of the variables as they are now; null and none show nothing.
    void show(CTimebar* bar, const std::vector<CTVar*>& variables);
    /// Without a variable when the key is gone, and the table does not know yet.
    KeyPlace place(int row) const { return m_rows.at(row); }
    const KeyRows& rows() const { return m_rows; }
    /// The author typed `text` into a cell. Answers whether anything came of it.
    std::function<bool(const QModelIndex&, const QString& text)> on_edit;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    CTimebar* m_bar = nullptr;
    std::vector<CTVar*> m_variables;
    KeyRows m_rows;
    KeyColumn m_order = KeyColumn::Time;
    bool m_descending = false;
};

} // namespace tarn
