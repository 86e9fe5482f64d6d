#include "edit_menu.h"

#include "engine/scene_plug.h"
#include "frame/edit_commands.h"
#include "studio.h"
#include "view/view3d.h"
#include "widgets/iconfun.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>

namespace {

/// Whether the keys mean something to the widget itself.
bool keeps_keys(const QObject* widget, const QKeySequence& keys)
{
    if (qobject_cast<const QAbstractItemView*>(widget))
        return keys == QKeySequence(QKeySequence::SelectAll);
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget)
        || qobject_cast<const QPlainTextEdit*>(widget) || qobject_cast<const QTextEdit*>(widget);
}

/// A field with nothing of its own to undo, such as an empty search, leaves the key to the program.
bool leaves_undo(const QObject* target, const QKeyEvent& event)
{
    const auto* line = qobject_cast<const QLineEdit*>(target);
    return line
        && ((event.matches(QKeySequence::Undo) && !line->isUndoAvailable())
            || (event.matches(QKeySequence::Redo) && !line->isRedoAvailable()));
}

} // namespace

EditMenu::EditMenu(Studio& studio, CView3D& view, QMenu& menu) : QObject(&menu), m_studio(studio), m_view(view)
{
    m_pending.setSingleShot(true);
    connect(&m_pending, &QTimer::timeout, this, &EditMenu::refresh);
    if (!studio.scene())
        return;
    add_commands(menu);
    view.keys_of = [this](const tarn::EditCommand& command) {
        const auto found = std::find_if(m_actions.begin(), m_actions.end(), [&](const QAction* action) {
            return action->objectName() == QLatin1String(command.key);
        });
        return found == m_actions.end() ? QList<QKeySequence>{command.keys} : (*found)->shortcuts();
    };
    studio.world().add_listener(this);
    connect(&studio, &Studio::document_changed, this, [this] { m_pending.start(); });
    connect(QApplication::clipboard(), &QClipboard::dataChanged, this, [this] { m_pending.start(); });
    connect(&menu, &QMenu::aboutToShow, this, &EditMenu::refresh);
    qApp->installEventFilter(this);
    refresh();
}

EditMenu::~EditMenu()
{
    m_studio.world().remove_listener(this);
}

void EditMenu::add_commands(QMenu& menu)
{
    for (const tarn::EditCommand& command : m_studio.scene()->editor().commands()) {
        if (command.begins_group)
            menu.addSeparator();
        QAction* action = menu.addAction(command.name);
        if (command.icon)
            action->setIcon(iconfun::icon(command.icon));
        action->setShortcut(command.keys);
        action->setObjectName(QLatin1String(command.key));
        connect(action, &QAction::triggered, this, [this, id = command.id] { run(id); });
        m_actions.push_back(action);
    }
}

void EditMenu::refresh()
{
    const auto commands = m_studio.scene()->editor().commands();
    for (std::size_t i = 0; i < std::min(commands.size(), m_actions.size()); ++i)
        m_actions[i]->setEnabled(commands[i].enabled);
}

void EditMenu::run(int id)
{
    m_view.finish_text();
    tarn::SceneEditor& editor = m_studio.scene()->editor();
    for (const tarn::EditCommand& command : editor.commands())
        if (command.id == id && command.enabled)
            tarn::run_edit_command(m_view.window(), editor, command);
}

/// Escape gives up what is about to be created wherever the focus is in the window.
bool EditMenu::cancels_creation(const QObject* target, const QKeyEvent& event) const
{
    const auto* widget = qobject_cast<const QWidget*>(target);
    return event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier && m_studio.scene() && widget
        && widget->window() == m_view.window() && m_studio.scene()->editor().cancel_creation();
}

/// Enter on the button that armed a creation, or in the view, makes the object without the mouse.
bool EditMenu::creates_armed(const QObject* target, const QKeyEvent& event) const
{
    const auto* button = qobject_cast<const QAbstractButton*>(target);
    const bool is_place = target == &m_view || (button && button->isChecked() && button->window() == m_view.window());
    const bool is_enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    return is_enter && is_place && !event.isAutoRepeat() && m_studio.scene()
        && m_studio.scene()->editor().create_armed();
}

bool EditMenu::eventFilter(QObject* target, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        return cancels_creation(target, key) || creates_armed(target, key);
    }
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    if (leaves_undo(target, *static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return true;
    }
    const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
    const bool ours = std::any_of(m_actions.begin(), m_actions.end(),
                                  [&](const QAction* action) { return action->shortcuts().contains(keys); });
    if (!ours || !keeps_keys(target, keys))
        return false;
    event->accept();
    return true;
}
