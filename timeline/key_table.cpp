#include "key_table.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "core/field.h"
#include "core/language.h"
#include "frame/boxes.h"
#include "key_table_edit.h"
#include "key_table_model.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t most_followed = 10'000; ///< selected keys that are looked for again when rows move about
constexpr int most_told = 5;                  ///< lines that a box shows
constexpr int wide_column = 180;              ///< pixels

enum Command : int { command_copy = 1, command_paste, command_remove, command_go_to };

/// The keys that the table has of its own, before the commands of the Edit menu.
bool is_own_key(const QKeyEvent& event)
{
    return event.matches(QKeySequence::Copy) || event.matches(QKeySequence::Paste)
        || event.matches(QKeySequence::Delete) || event.matches(QKeySequence::SelectAll);
}

} // namespace

KeyTable::KeyTable(QWidget* parent) : QTableView(parent), m_model(new KeyTableModel(this))
{
    setModel(m_model);
    setAccessibleName(lang(u"关键帧表", u"Key Table"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setSortIndicator(int(KeyColumn::Time), Qt::AscendingOrder);
    horizontalHeader()->setStretchLastSection(true);
    for (const KeyColumn column : {KeyColumn::Object, KeyColumn::Variable, KeyColumn::Content})
        setColumnWidth(int(column), wide_column);
    setSortingEnabled(true);
    m_model->on_edit = [this](const QModelIndex& index, const QString& text) { return edit(index, text); };
}

KeyTable::~KeyTable() = default;

void KeyTable::set_scene(CAnimationScene* scene)
{
    m_scene = scene;
    refresh();
}

CTimebar* KeyTable::bar() const
{
    return m_scene ? m_scene->current_bar() : nullptr;
}

void KeyTable::refresh()
{
    if (!isVisible()) {
        m_model->show(nullptr, {}); // What it would show may go meanwhile.
        return;
    }
    m_model->show(bar(), bar() ? bar()->shown_variables() : std::vector<CTVar*>());
}

void KeyTable::follow(const ModelChange& change)
{
    if (isVisible() && (change.everything || change.is_of_structure() || change.is_of(key<&VarState::keys>)))
        refresh();
}

void KeyTable::showEvent(QShowEvent* event)
{
    QTableView::showEvent(event);
    refresh();
}

bool KeyTable::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && is_own_key(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

void KeyTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::Paste))
        paste();
    else if (event->matches(QKeySequence::Delete))
        remove();
    else if (event->key() == Qt::Key_Return && event->modifiers() == Qt::ControlModifier)
        go_to_current();
    else
        QTableView::keyPressEvent(event);
}

void KeyTable::contextMenuEvent(QContextMenuEvent* event)
{
    const bool any = selectionModel()->hasSelection();
    boxes::Menu menu{.items = {{.id = command_copy, .text = lang(u"复制", u"Copy"), .enabled = any},
                               {.id = command_paste, .text = lang(u"粘贴", u"Paste"), .enabled = bar() != nullptr},
                               {.id = command_remove, .text = lang(u"删除", u"Delete"), .enabled = any},
                               {},
                               {.id = command_go_to,
                                .text = lang(u"转到此时间", u"Go to This Time"),
                                .enabled = currentIndex().isValid()}},
                     .place = event->globalPos()};
    switch (boxes::menu(this, menu)) {
    case command_copy: copy(); break;
    case command_paste: paste(); break;
    case command_remove: remove(); break;
    case command_go_to: go_to_current(); break;
    default: break;
    }
}

std::vector<KeyPlace> KeyTable::selected_keys() const
{
    std::vector<std::pair<int, int>> spans; // Of many selected rows there are few.
    for (const QItemSelectionRange& range : selectionModel()->selection())
        spans.emplace_back(range.top(), range.bottom());
    std::sort(spans.begin(), spans.end());
    std::vector<KeyPlace> keys;
    for (const auto& [first, last] : spans)
        for (int row = first; row <= last; ++row)
            if (const KeyPlace place = m_model->place(row); place.variable)
                keys.push_back(place);
    return keys;
}

bool KeyTable::edit(const QModelIndex& index, const QString& text)
{
    const auto column = KeyColumn(index.column());
    const KeyPlace place = m_model->place(index.row());
    if (!bar() || !place.variable)
        return false;
    std::vector<KeyPlace> keys{place};
    if (selectionModel()->isSelected(index))
        keys = selected_keys();
    std::erase_if(keys, [column](const KeyPlace& key) { return !is_key_editable(key, column); });
    KeySelection now = edit_keys(*bar(), keys, column, text);
    if (now.empty() && keys.size() > 1) // A time of its own is for the key alone in which it was typed.
        now = edit_keys(*bar(), {place}, column, text);
    if (now.empty())
        return false;
    refresh();
    select(now);
    return true;
}

void KeyTable::select(const KeySelection& keys)
{
    QItemSelection selection;
    int first = -1;
    std::size_t count = 0;
    for (const auto& [variable, times] : keys)
        for (const float time : times) {
            const int row = ++count <= most_followed ? int(m_model->rows().row_of(variable, time)) : -1;
            if (row < 0)
                continue;
            selection.select(m_model->index(row, 0), m_model->index(row, key_column_count - 1));
            first = first < 0 ? row : std::min(first, row);
        }
    if (first < 0)
        return;
    selectionModel()->setCurrentIndex(m_model->index(first, std::max(currentIndex().column(), 0)),
                                      QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    scrollTo(m_model->index(first, 0));
}

void KeyTable::copy() const
{
    if (bar() && selectionModel()->hasSelection())
        QGuiApplication::clipboard()->setText(text_of_keys(*bar(), selected_keys()));
}

void KeyTable::paste()
{
    const QString text = QGuiApplication::clipboard()->text();
    if (!bar() || text.isEmpty())
        return;
    const PastedKeys pasted = paste_keys(*bar(), text);
    refresh();
    if (pasted.refused.isEmpty())
        return;
    boxes::error(this,
                 lang(u"粘贴了 %1 个关键帧。以下行不是此时间轴中对象的关键帧（时间、对象、变量、值、松紧）：\n%2",
                      u"%1 keys were pasted. These lines are no keys of objects in this timebar (time, object, "
                      u"variable, value, ease):\n%2")
                     .arg(pasted.written)
                     .arg(pasted.refused.mid(0, most_told).join(QLatin1Char('\n'))));
}

void KeyTable::remove()
{
    KeySelection keys;
    for (const KeyPlace& place : selected_keys())
        keys[place.variable].push_back(place.time());
    for (auto& [variable, times] : keys)
        std::sort(times.begin(), times.end());
    if (bar() && bar()->remove_keys(keys))
        refresh();
}

void KeyTable::go_to_current()
{
    if (currentIndex().isValid() && m_model->place(currentIndex().row()).variable)
        Q_EMIT time_chosen(m_model->place(currentIndex().row()).time());
}

} // namespace tarn
