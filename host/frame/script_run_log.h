#pragma once

#include <QAbstractListModel>

#include <deque>

namespace tarn {

/// What runs of a script said, line by line; of many lines the last ones.
class ScriptRunLog : public QAbstractListModel {
    Q_OBJECT

public:
    enum class Kind { Print, Result, Error };
    /// Of a row: the line of the script that it is about, from 0; -1 when there is none.
    static constexpr int line_role = Qt::UserRole;
    static constexpr std::size_t most_rows = 1000;

    using QAbstractListModel::QAbstractListModel;

    /// The row is shown by the next flush(): scripts have little time, and printing is part of it.
    void add(Kind kind, const QString& text, int line = -1);
    void flush();
    void clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Row {
        Kind kind;
        QString text;
        int line;
    };

    std::deque<Row> m_rows;
    std::deque<Row> m_added;
};

} // namespace tarn
