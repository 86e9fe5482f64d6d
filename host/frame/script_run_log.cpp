#include "script_run_log.h"

#include "widgets/theme.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace tarn {

void ScriptRunLog::add(Kind kind, const QString& text, int line)
{
    if (m_added.size() == most_rows)
        m_added.pop_front();
    m_added.push_back({kind, text, line});
}

void ScriptRunLog::flush()
{
    if (m_added.empty())
        return;
    const auto all = m_rows.size() + m_added.size();
    if (const auto surplus = std::min(m_rows.size(), all - std::min(all, most_rows))) {
        beginRemoveRows({}, 0, int(surplus) - 1);
        m_rows.erase(m_rows.begin(), m_rows.begin() + std::ptrdiff_t(surplus));
        endRemoveRows();
    }
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + m_added.size()) - 1);
    std::move(m_added.begin(), m_added.end(), std::back_inserter(m_rows));
    m_added.clear();
    endInsertRows();
}

void ScriptRunLog::clear()
{
    beginResetModel();
    m_rows.clear();
    m_added.clear();
    endResetModel();
}

int ScriptRunLog::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ScriptRunLog::data(const QModelIndex& index, int role) const
{
    const Row& row = m_rows[std::size_t(index.row())];
    if (role == Qt::DisplayRole)
        return row.text;
    if (role == line_role)
        return row.line;
    if (role != Qt::ForegroundRole || row.kind == Kind::Print)
        return {};
    const QPalette colors = QGuiApplication::palette();
    if (row.kind == Kind::Result)
        return colors.color(QPalette::PlaceholderText);
    return readable_on(QColor(0xe5484d), colors.color(QPalette::Base), 4.5);
}

} // namespace tarn
