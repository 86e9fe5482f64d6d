#include "translation_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <map>

namespace {

constexpr std::array keys_of_cells{QKeySequence::Delete, QKeySequence::Copy, QKeySequence::Cut, QKeySequence::Paste};

bool can_write(const QModelIndex& cell)
{
    return cell.flags().testFlag(Qt::ItemIsEditable);
}

} // namespace

/// Otherwise the window's commands, which are for the scene, would take these keys.
bool CTranslationView::event(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride || state() == EditingState)
        return QTableView::event(event);
    const auto* pressed = static_cast<const QKeyEvent*>(event);
    if (std::ranges::none_of(keys_of_cells, [&](QKeySequence::StandardKey key) { return pressed->matches(key); }))
        return QTableView::event(event);
    event->accept();
    return true;
}

void CTranslationView::keyPressEvent(QKeyEvent* event)
{
    if (state() == EditingState || !take_key(*event))
        QTableView::keyPressEvent(event);
}

bool CTranslationView::take_key(const QKeyEvent& event)
{
    if (event.matches(QKeySequence::Copy)) {
        copy_cells();
    } else if (event.matches(QKeySequence::Cut)) {
        copy_cells();
        clear_cells();
    } else if (event.matches(QKeySequence::Paste)) {
        paste_cells();
    } else if (event.matches(QKeySequence::Delete)) {
        clear_cells();
    } else {
        return false;
    }
    return true;
}

void CTranslationView::clear_cells()
{
    in_one_step([this] {
        for (const QModelIndex& cell : selectedIndexes())
            if (can_write(cell))
                model()->setData(cell, QString());
    });
}

/// As spreadsheets take them: a tab between cells, a line for each row.
void CTranslationView::copy_cells() const
{
    std::map<int, QStringList> rows;
    QModelIndexList cells = selectedIndexes();
    std::sort(cells.begin(), cells.end());
    for (const QModelIndex& cell : std::as_const(cells))
        rows[cell.row()] << cell.data().toString();
    QStringList lines;
    for (const auto& [row, texts] : rows)
        lines << texts.join(QLatin1Char('\t'));
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

/// From the current cell to the right and down, as far as there are cells.
void CTranslationView::paste_cells()
{
    const QModelIndex first = currentIndex();
    QString text = QGuiApplication::clipboard()->text();
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    if (!first.isValid() || text.isEmpty())
        return;
    in_one_step([&] {
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (qsizetype row = 0; row < lines.size(); ++row) {
            const QStringList texts = QString(lines[row]).remove(QLatin1Char('\r')).split(QLatin1Char('\t'));
            for (qsizetype column = 0; column < texts.size(); ++column)
                if (const QModelIndex cell = first.sibling(first.row() + int(row), first.column() + int(column));
                    cell.isValid() && can_write(cell))
                    model()->setData(cell, texts[column]);
        }
    });
}

QModelIndex CTranslationView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    QModelIndex next = QTableView::moveCursor(action, modifiers);
    if (action != MoveNext && action != MovePrevious)
        return next;
    const int step = action == MoveNext ? 1 : -1;
    const int columns = model()->columnCount();
    int place = next.row() * columns + next.column();
    const int places = model()->rowCount() * columns;
    for (; place >= 0 && place < places; place += step)
        if (const QModelIndex cell = model()->index(place / columns, place % columns); can_write(cell))
            return cell;
    return currentIndex();
}

void CTranslationView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    QTableView::closeEditor(editor, hint);
    if (hint != QAbstractItemDelegate::SubmitModelCache)
        return;
    const QModelIndex below = currentIndex().sibling(currentIndex().row() + 1, currentIndex().column());
    if (below.isValid())
        setCurrentIndex(below);
}
