#pragma once

#include <QAbstractTableModel>
#include <QPersistentModelIndex>

#include <vector>

class CReportList;

namespace tarn {

/// The rows of a CReportList as Qt's views want them. It holds pointers only; every caption is asked of the list at
/// the moment somebody wants to see it.
class ReportModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Column {
        QString title;
        int share = 1;
        bool is_number = false;
    };

    explicit ReportModel(CReportList* list);

    const std::vector<void*>& items() const { return m_items; }
    const std::vector<Column>& columns() const { return m_columns; }

    void set_items(const std::vector<void*>& items);
    /// Puts the rows into another order: order[i] is the old index of the row that comes to stand at i.
    void reorder(const std::vector<int>& order);
    void insert_column(int index, Column column);
    void set_column_title(int index, const QString& title);
    /// The one cell that can be edited now; an invalid index for none.
    void set_editable(const QModelIndex& cell) { m_editable = cell; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    CReportList* m_list;
    std::vector<void*> m_items;
    std::vector<Column> m_columns;
    QPersistentModelIndex m_editable;
};

} // namespace tarn
