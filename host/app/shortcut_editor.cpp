#include "shortcut_editor.h"

#include "command_palette.h"
#include "core/language.h"
#include "frame/boxes.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr QSize usual_size(560, 480);

enum Column : int { column_name, column_keys };

} // namespace

/// Takes the keys that are pressed in it. Tab goes on to the next field and Escape closes the window, as anywhere.
class KeyField : public QLineEdit {
public:
    explicit KeyField(QWidget* parent) : QLineEdit(parent)
    {
        setReadOnly(true);
        setAttribute(Qt::WA_InputMethodEnabled, false);
    }

    std::function<void(const QKeySequence&)> pressed;

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride || is_of_window(*static_cast<QKeyEvent*>(event)))
            return QLineEdit::event(event);
        event->accept();
        return true;
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (is_of_window(*event))
            return QLineEdit::keyPressEvent(event);
        if (!is_modifier(event->key()) && pressed)
            pressed(QKeySequence(event->keyCombination()));
    }
    void contextMenuEvent(QContextMenuEvent*) override {}

private:
    static bool is_of_window(const QKeyEvent& event)
    {
        return event.key() == Qt::Key_Escape || event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    }
};

ShortcutEditor::ShortcutEditor(QWidget* parent, Shortcuts& shortcuts)
    : QDialog(parent),
      m_shortcuts(shortcuts),
      m_search(new QLineEdit(this)),
      m_list(new QTreeWidget(this)),
      m_keys(new KeyField(this)),
      m_told(new QLabel(this))
{
    setObjectName(QStringLiteral("shortcut_editor"));
    setWindowTitle(lang(u"快捷键", u"Shortcuts"));
    make_search();
    make_list();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_list, 1);
    layout->addLayout(make_key_row());
    layout->addWidget(m_told);
    layout->addLayout(make_buttons());
    m_told->setWordWrap(true);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ShortcutEditor::show_chosen);
    connect(m_list, &QTreeWidget::itemActivated, this, [this] { m_keys->setFocus(); });
    show_keys();
    narrow({});
    resize(usual_size);
    m_search->setFocus();
}

void ShortcutEditor::make_search()
{
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(lang(u"命令名称或快捷键的一部分", u"A part of a command's name or keys"));
    m_search->setAccessibleName(lang(u"查找命令", u"Find a command"));
    m_search->setClearButtonEnabled(true);
    connect(m_search, &QLineEdit::textChanged, this, &ShortcutEditor::narrow);
}

void ShortcutEditor::make_list()
{
    m_list->setObjectName(QStringLiteral("commands"));
    m_list->setAccessibleName(lang(u"命令", u"Commands"));
    m_list->setHeaderLabels({lang(u"命令", u"Command"), lang(u"快捷键", u"Keys")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(column_name, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(column_keys, QHeaderView::ResizeToContents);
    for (const Shortcuts::Command& command : m_shortcuts.commands()) {
        auto* row = new QTreeWidgetItem(m_list, {command.path});
        row->setIcon(column_name, row_icon(command.action->icon()));
    }
}

QLayout* ShortcutEditor::make_key_row()
{
    m_keys->setObjectName(QStringLiteral("keys"));
    m_keys->setPlaceholderText(lang(u"在这里按下新的快捷键", u"Press the new keys here"));
    m_keys->pressed = [this](const QKeySequence& keys) { press(keys); };
    auto* label = new QLabel(lang(u"快捷键(&K)：", u"&Keys:"), this);
    label->setBuddy(m_keys);
    m_keys->setAccessibleName(lang(u"快捷键", u"Keys"));
    m_none = new QPushButton(lang(u"无(&N)", u"&None"), this);
    m_none->setObjectName(QStringLiteral("none"));
    connect(m_none, &QPushButton::clicked, this, [this] { set({}); });
    m_reset = new QPushButton(lang(u"恢复默认(&R)", u"&Reset"), this);
    m_reset->setObjectName(QStringLiteral("reset"));
    connect(m_reset, &QPushButton::clicked, this, &ShortcutEditor::reset_chosen);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_keys, 1);
    row->addWidget(m_none);
    row->addWidget(m_reset);
    return row;
}

QLayout* ShortcutEditor::make_buttons()
{
    auto* all = new QPushButton(lang(u"全部恢复默认(&A)", u"Reset &All"), this);
    all->setObjectName(QStringLiteral("reset_all"));
    connect(all, &QPushButton::clicked, this, &ShortcutEditor::reset_all);
    auto* close = new QPushButton(lang(u"关闭", u"Close"), this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    for (QPushButton* button : {m_none, m_reset, all, close})
        button->setAutoDefault(false); // Enter is for the list.
    auto* row = new QHBoxLayout;
    row->addWidget(all);
    row->addStretch();
    row->addWidget(close);
    return row;
}

const Shortcuts::Command* ShortcutEditor::chosen() const
{
    QTreeWidgetItem* row = m_list->currentItem();
    return row && !row->isHidden() ? &m_shortcuts.commands()[std::size_t(m_list->indexOfTopLevelItem(row))] : nullptr;
}

/// Every word has to be in the name or the keys, in any order.
void ShortcutEditor::narrow(const QString& text)
{
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QTreeWidgetItem* first = nullptr;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = m_list->topLevelItem(i);
        const QString all = row->text(column_name) + QLatin1Char(' ') + row->text(column_keys);
        const bool fits = std::all_of(words.begin(), words.end(),
                                      [&](const QString& word) { return all.contains(word, Qt::CaseInsensitive); });
        row->setHidden(!fits);
        if (fits && !first)
            first = row;
    }
    if (QTreeWidgetItem* current = m_list->currentItem(); !current || current->isHidden())
        m_list->setCurrentItem(first);
    show_chosen();
}

/// What differs from the usual keys stands out.
void ShortcutEditor::show_keys()
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const Shortcuts::Command& command = m_shortcuts.commands()[std::size_t(i)];
        QTreeWidgetItem* row = m_list->topLevelItem(i);
        QFont font = m_list->font();
        font.setBold(!m_shortcuts.is_usual(command));
        row->setText(column_keys, text_of_keys(command.action->shortcuts()));
        row->setFont(column_keys, font);
    }
    show_chosen();
}

void ShortcutEditor::show_chosen()
{
    const Shortcuts::Command* command = chosen();
    m_keys->setText(command ? text_of_keys(command->action->shortcuts()) : QString());
    m_keys->setEnabled(command);
    m_none->setEnabled(command && !command->action->shortcuts().isEmpty());
    m_reset->setEnabled(command && !m_shortcuts.is_usual(*command));
    m_told->setText(!command || m_shortcuts.is_usual(*command) ? QString()
                        : command->usual.isEmpty()
                        ? lang(u"默认没有快捷键。", u"By default it has no keys.")
                        : lang(u"默认：%1", u"Default: %1").arg(text_of_keys(command->usual)));
}

void ShortcutEditor::press(const QKeySequence& keys)
{
    if (!chosen())
        return;
    if (const QString why_not = reason_against(keys); !why_not.isEmpty())
        m_told->setText(QStringLiteral("%1: %2").arg(keys.toString(QKeySequence::NativeText), why_not));
    else
        set(keys);
}

/// Tells who has the keys, and lets the author choose.
bool ShortcutEditor::may_take(const QList<QKeySequence>& keys, const Shortcuts::Command& command)
{
    for (const QKeySequence& one : keys) {
        const Shortcuts::Command* holder = m_shortcuts.holder_of(one);
        if (!holder || holder->action == command.action)
            continue;
        const boxes::Message question{
            .text = lang(u"%1 现在属于“%2”。\n改为“%3”的快捷键？",
                         u"%1 belongs to \"%2\" now.\nGive it to \"%3\" instead?")
                        .arg(one.toString(QKeySequence::NativeText), holder->path, command.path),
            .title = windowTitle(),
            .buttons = {boxes::Button::Yes, boxes::Button::No}};
        if (boxes::message(this, question) != boxes::Button::Yes)
            return false;
    }
    return true;
}

void ShortcutEditor::set(const QKeySequence& keys)
{
    const Shortcuts::Command* command = chosen();
    if (!command || !may_take({keys}, *command))
        return;
    m_shortcuts.set_keys(*command, keys);
    show_keys();
}

void ShortcutEditor::reset_chosen()
{
    const Shortcuts::Command* command = chosen();
    if (!command || !may_take(command->usual, *command))
        return;
    m_shortcuts.reset(*command);
    show_keys();
}

void ShortcutEditor::reset_all()
{
    if (!boxes::confirm(this, lang(u"所有快捷键恢复默认？", u"Reset the keys of all commands?"), windowTitle()))
        return;
    m_shortcuts.reset_all();
    show_keys();
}

} // namespace tarn
