#pragma once

#include <QAbstractListModel>

#include <vector>

namespace tarn {

class Journal;

/// The steps of a journal as rows, below one that stands for the state before them all. It asks only for what is new.
class HistoryModel : public QAbstractListModel {
    Q_OBJECT

public:
    explicit HistoryModel(const Journal& journal, QObject* parent = nullptr);

    /// Takes over what changed in the journal.
    void refresh();
    /// The row of the present state.
    int current_row() const { return m_current; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    void drop_gone();
    void add_new();

    const Journal& m_journal;
    std::vector<std::size_t> m_numbers; ///< of the steps that are shown
    int m_current = 0;
};

} // namespace tarn
