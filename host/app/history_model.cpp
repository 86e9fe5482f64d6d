#include "history_model.h"

#include "core/journal.h"
#include "core/language.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace tarn {

HistoryModel::HistoryModel(const Journal& journal, QObject* parent) : QAbstractListModel(parent), m_journal(journal)
{
    refresh();
}

void HistoryModel::refresh()
{
    drop_gone();
    add_new();
    const int before = m_current;
    m_current = int(m_journal.position());
    if (before == m_current)
        return;
    const auto [first, last] = std::minmax({before, m_current});
    Q_EMIT dataChanged(index(first), index(std::min(last, rowCount() - 1)));
}

/// Steps come and go at the end only, so the first that is still there from the end on ends the search.
void HistoryModel::drop_gone()
{
    std::size_t kept = std::min(m_numbers.size(), m_journal.step_count());
    while (kept > 0 && m_numbers[kept - 1] != m_journal.step_number(kept - 1))
        --kept;
    if (kept == m_numbers.size())
        return;
    beginRemoveRows({}, int(kept) + 1, int(m_numbers.size()));
    m_numbers.resize(kept);
    endRemoveRows();
}

void HistoryModel::add_new()
{
    const std::size_t known = m_numbers.size();
    if (known == m_journal.step_count())
        return;
    beginInsertRows({}, int(known) + 1, int(m_journal.step_count()));
    for (std::size_t i = known; i < m_journal.step_count(); ++i)
        m_numbers.push_back(m_journal.step_number(i));
    endInsertRows();
}

int HistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_numbers.size()) + 1;
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const
{
    // Between a change of the journal and refresh() the list may be behind it.
    if (!index.isValid() || std::size_t(index.row()) > m_journal.step_count())
        return {};
    if (role == Qt::DisplayRole) {
        if (index.row() == 0)
            return m_journal.has_dropped() ? lang(u"（更早的步骤已丢弃）", u"(Earlier steps were dropped)")
                                           : lang(u"（开始）", u"(Start)");
        const QString& name = m_journal.step_name(std::size_t(index.row()) - 1);
        return name.isEmpty() ? lang(u"修改", u"Change") : name;
    }
    if (role == Qt::FontRole && index.row() == m_current) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role == Qt::ForegroundRole && index.row() > m_current) // what was undone
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    return {};
}

} // namespace tarn
