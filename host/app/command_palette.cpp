#include "command_palette.h"

#include "automation/page_handles.h"
#include "core/language.h"

#include <QAction>
#include <QCoreApplication>
#include <QDockWidget>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr int largest_icon = 64; ///< pixels of a row
constexpr QSize usual_size(520, 360);
constexpr int deepest_menu = 8;

/// The text of an action without the marks of its keys.
QString plain(const QString& text)
{
    QString name = text;
    static const QRegularExpression mark_behind(QStringLiteral("\\(&[^&]\\)"));
    name.remove(mark_behind);
    const QString kept(QChar::Null);
    return name.replace(QLatin1String("&&"), kept).remove(QLatin1Char('&')).replace(kept, QLatin1String("&"));
}

/// A box that is ticked, or a field of a colour, is an attribute and no command; a button of an action is in the menus.
bool is_command(const QAbstractButton& button)
{
    return qobject_cast<const QPushButton*>(&button);
}

QString name_of(const QAbstractButton& button)
{
    const QString name = button.accessibleName().isEmpty() ? button.text() : button.accessibleName();
    return plain(name.isEmpty() ? button.toolTip() : name).section(QLatin1Char('\n'), 0, 0);
}

/// The title of the panel that the button stands in.
QString panel_of(const QAbstractButton& button)
{
    for (const QWidget* at = button.parentWidget(); at; at = at->parentWidget())
        if (qobject_cast<const QDockWidget*>(at))
            return at->windowTitle();
    return lang(u"工具", u"Tools");
}

void collect(const QList<QAction*>& actions, const QString& path, int depth, std::vector<NamedAction>& found)
{
    for (QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible() || action->text().isEmpty())
            continue;
        const QString name = path + plain(action->text());
        if (!action->menu()) {
            found.push_back({name, action});
            continue;
        }
        if (depth == deepest_menu)
            continue;
        Q_EMIT action->menu()->aboutToShow(); // Some are filled only then.
        collect(action->menu()->actions(), name + QStringLiteral(" > "), depth + 1, found);
    }
}

} // namespace

std::vector<NamedAction> actions_in_menus(const QWidget& window)
{
    std::vector<NamedAction> found;
    if (const auto* bar = window.findChild<QMenuBar*>())
        collect(bar->actions(), {}, 0, found);
    return found;
}

std::vector<NamedAction> buttons_in_view(const QMainWindow& window)
{
    std::vector<NamedAction> found;
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        const QString name = name_of(*button);
        if (is_command(*button) && name.size() > 1 && script::is_shown(*button))
            found.push_back({panel_of(*button) + QStringLiteral(" > ") + name, nullptr, button});
    }
    return found;
}

void run(const NamedAction& action)
{
    if (action.action)
        action.action->trigger();
    else if (action.button)
        action.button->click();
}

QString text_of_keys(const QList<QKeySequence>& keys)
{
    return QKeySequence::listToString(keys, QKeySequence::NativeText).replace(QLatin1String("; "), QLatin1String(", "));
}

QIcon row_icon(const QIcon& icon)
{
    if (!icon.isNull())
        return icon;
    QPixmap clear(largest_icon, largest_icon);
    clear.fill(Qt::transparent);
    return clear;
}

CommandPalette::CommandPalette(QWidget* parent, const std::vector<NamedAction>& actions)
    : QDialog(parent),
      m_actions(actions),
      m_filter(new QLineEdit(this)),
      m_list(new QTreeWidget(this)),
      m_none(new QLabel(lang(u"没有这样的命令。", u"No command has such a name."), this))
{
    setObjectName(QStringLiteral("command_palette"));
    setWindowTitle(lang(u"命令", u"Commands"));
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setAccessibleName(lang(u"查找命令", u"Find a command"));
    m_filter->setPlaceholderText(lang(u"输入命令名称的一部分", u"Type a part of a command's name"));
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);
    m_list->setObjectName(QStringLiteral("commands"));
    m_list->setAccessibleName(lang(u"命令", u"Commands"));
    m_list->setColumnCount(2);
    m_list->setRootIsDecorated(false);
    m_list->setHeaderHidden(true);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_list->setFocusPolicy(Qt::NoFocus);
    for (const NamedAction& named : m_actions) {
        const QAction* action = named.action;
        auto* row = new QTreeWidgetItem(m_list, {named.path, action ? text_of_keys(action->shortcuts()) : QString()});
        row->setIcon(0, row_icon(action ? action->icon() : named.button->icon()));
        row->setDisabled(!(action ? action->isEnabled() : named.button->isEnabled()));
        if (action ? action->isChecked() : named.button->isChecked())
            row->setText(1, QStringLiteral("✓ ") + row->text(1));
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_none);
    layout->addWidget(m_list);
    connect(m_filter, &QLineEdit::textChanged, this, &CommandPalette::narrow);
    connect(m_list, &QTreeWidget::itemActivated, this, &QDialog::accept);
    connect(m_list, &QTreeWidget::itemClicked, this, &QDialog::accept);
    resize(usual_size);
    narrow({});
}

/// Every word has to be in the name, in any order; what begins with the text comes first by standing selected.
void CommandPalette::narrow(const QString& text)
{
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QTreeWidgetItem* first = nullptr;
    bool any = false;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = m_list->topLevelItem(i);
        const QString name = row->text(0);
        const bool fits = std::all_of(words.begin(), words.end(),
                                      [&](const QString& word) { return name.contains(word, Qt::CaseInsensitive); });
        row->setHidden(!fits);
        const bool begins = name.section(QLatin1String(" > "), -1).startsWith(text, Qt::CaseInsensitive);
        const bool first_begins = first
            && first->text(0).section(QLatin1String(" > "), -1).startsWith(text, Qt::CaseInsensitive);
        any = any || fits;
        if (fits && !row->isDisabled() && (!first || (begins && !first_begins)))
            first = row;
    }
    m_none->setVisible(!any);
    m_list->setCurrentItem(first);
    if (first)
        m_list->scrollToItem(first);
}

const NamedAction* CommandPalette::chosen() const
{
    QTreeWidgetItem* row = m_list->currentItem();
    return row && !row->isHidden() ? &m_actions[std::size_t(m_list->indexOfTopLevelItem(row))] : nullptr;
}

/// The keyboard stays in the field and moves the list from there.
bool CommandPalette::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (chosen())
            accept();
        return true;
    }
    if (key != Qt::Key_Up && key != Qt::Key_Down && key != Qt::Key_PageUp && key != Qt::Key_PageDown)
        return QDialog::eventFilter(watched, event);
    QCoreApplication::sendEvent(m_list, event);
    return true;
}

} // namespace tarn
