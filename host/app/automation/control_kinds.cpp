#include "control_kinds.h"

#include "frame/script_edit.h"
#include "user_input.h"
#include "widgets/report_list.h"
#include "widgets/super_edit.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTextEdit>
#include <QTreeWidget>

namespace tarn::script {

namespace {

template <class Widget>
const Widget& as(const QWidget& widget)
{
    return *qobject_cast<const Widget*>(&widget);
}

template <class Widget>
Widget& as(QWidget& widget)
{
    return *qobject_cast<Widget*>(&widget);
}

template <class Widget>
QString text_of(const QWidget& widget)
{
    return as<Widget>(widget).text();
}

template <class Edit>
QString plain_text_of(const QWidget& widget)
{
    return as<Edit>(widget).toPlainText();
}

QWidget* itself(QWidget& widget)
{
    return &widget;
}

QWidget* line_edit_of(QWidget& widget)
{
    return widget.findChild<QLineEdit*>();
}

// Combo boxes ---------------------------------------------------------------------------------------------------------

QStringList combo_items(const QWidget& widget)
{
    QStringList items;
    const auto& box = as<QComboBox>(widget);
    for (int i = 0; i < box.count(); ++i)
        items.append(box.itemText(i));
    return items;
}

bool choose_in_combo(QWidget& widget, int index)
{
    auto& box = as<QComboBox>(widget);
    const QModelIndex entry = box.model()->index(index, box.modelColumn(), box.rootModelIndex());
    if (!(entry.flags() & Qt::ItemIsEnabled))
        return false;
    // Opened, gone to with the arrow keys, and confirmed.
    input::focus(box);
    box.showPopup();
    box.view()->setCurrentIndex(entry);
    input::key(*box.view(), Qt::Key_Return);
    return true;
}

// List boxes ----------------------------------------------------------------------------------------------------------

QStringList list_items(const QWidget& widget)
{
    QStringList items;
    const auto& list = as<QListView>(widget);
    for (int i = 0; i < list.model()->rowCount(list.rootIndex()); ++i)
        items.append(list.model()->index(i, list.modelColumn(), list.rootIndex()).data().toString());
    return items;
}

int list_index(const QWidget& widget)
{
    return as<QListView>(widget).currentIndex().row();
}

bool choose_in_list(QWidget& widget, int index)
{
    auto& list = as<QListView>(widget);
    const QModelIndex entry = list.model()->index(index, list.modelColumn(), list.rootIndex());
    if (!(entry.flags() & Qt::ItemIsEnabled))
        return false;
    list.scrollTo(entry);
    input::click(*list.viewport(), list.visualRect(entry).center());
    return true;
}

// Trees ---------------------------------------------------------------------------------------------------------------

/// The rows as they stand when all are unfolded.
QList<QTreeWidgetItem*> tree_rows(const QWidget& widget)
{
    QList<QTreeWidgetItem*> rows;
    for (QTreeWidgetItemIterator row(const_cast<QTreeWidget*>(&as<QTreeWidget>(widget))); *row; ++row)
        rows.append(*row);
    return rows;
}

QStringList tree_items(const QWidget& widget)
{
    QStringList items;
    for (const QTreeWidgetItem* row : tree_rows(widget))
        items.append(row->text(0));
    return items;
}

int tree_index(const QWidget& widget)
{
    return int(tree_rows(widget).indexOf(as<QTreeWidget>(widget).currentItem()));
}

bool choose_in_tree(QWidget& widget, int index)
{
    auto& tree = as<QTreeWidget>(widget);
    QTreeWidgetItem* row = tree_rows(widget)[index];
    if (row->isDisabled())
        return false;
    tree.scrollToItem(row);
    input::click(*tree.viewport(), tree.visualItemRect(row).center());
    return true;
}

// Tab strips ----------------------------------------------------------------------------------------------------------

QStringList tab_texts(const QWidget& widget)
{
    QStringList items;
    const auto& tabs = as<QTabBar>(widget);
    for (int i = 0; i < tabs.count(); ++i)
        items.append(tabs.tabText(i));
    return items;
}

bool choose_tab(QWidget& widget, int index)
{
    auto& tabs = as<QTabBar>(widget);
    if (!tabs.isTabEnabled(index) || !tabs.rect().contains(tabs.tabRect(index).center()))
        return false;
    input::click(tabs, tabs.tabRect(index).center());
    return true;
}

// From the special to the general: the first fitting row counts.
const ControlKind kinds[] = {
    {&CReportList::staticMetaObject, "a report list", false},
    {.type = &CSuperEdit::staticMetaObject,
     .name = "a numeric edit",
     .text = text_of<QAbstractSpinBox>,
     .editor = line_edit_of},
    {.type = &QAbstractSpinBox::staticMetaObject,
     .name = "a spin box",
     .text = text_of<QAbstractSpinBox>,
     .editor = line_edit_of},
    {.type = &QAbstractButton::staticMetaObject, .name = "a button", .text = text_of<QAbstractButton>},
    {&QComboBox::staticMetaObject, "a combo box", false,
     [](const QWidget& widget) { return as<QComboBox>(widget).currentText(); }, line_edit_of, combo_items,
     [](const QWidget& widget) { return as<QComboBox>(widget).currentIndex(); }, choose_in_combo},
    {&QListView::staticMetaObject, "a list box", false, nullptr, nullptr, list_items, list_index, choose_in_list},
    {&QTreeWidget::staticMetaObject, "a tree", false, nullptr, nullptr, tree_items, tree_index, choose_in_tree},
    {&QTabBar::staticMetaObject, "a tab strip", false, nullptr, nullptr, tab_texts,
     [](const QWidget& widget) { return as<QTabBar>(widget).currentIndex(); }, choose_tab},
    {.type = &QLineEdit::staticMetaObject, .name = "an edit field", .text = text_of<QLineEdit>, .editor = itself},
    {.type = &QPlainTextEdit::staticMetaObject,
     .name = "a text field",
     .text = plain_text_of<QPlainTextEdit>,
     .editor = itself},
    {.type = &QTextEdit::staticMetaObject, .name = "a text field", .text = plain_text_of<QTextEdit>, .editor = itself},
    {.type = &CScriptEdit::staticMetaObject,
     .name = "a script editor",
     .text = [](const QWidget& widget) { return as<CScriptEdit>(widget).script(); },
     .editor = itself},
    {.type = &QLabel::staticMetaObject, .name = "a label", .text = text_of<QLabel>},
    {.type = &QGroupBox::staticMetaObject,
     .name = "a group box",
     .text = [](const QWidget& widget) { return as<QGroupBox>(widget).title(); }},
    {.type = &QWidget::staticMetaObject, .name = "a plain widget"},
};

/// The indicator of a check or radio button, which may be much smaller than the widget.
QRect indicator_of(const QAbstractButton& button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    const bool is_radio = qobject_cast<const QRadioButton*>(&button);
    return button.style()->subElementRect(is_radio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator,
                                          &option, &button);
}

} // namespace

const ControlKind& kind_of(const QWidget& widget)
{
    const ControlKind* kind = std::begin(kinds);
    while (!widget.metaObject()->inherits(kind->type))
        ++kind;
    return *kind;
}

void click_widget(QWidget& widget)
{
    if (qobject_cast<QCheckBox*>(&widget) || qobject_cast<QRadioButton*>(&widget)) {
        input::click(widget, indicator_of(as<QAbstractButton>(widget)).center());
        return;
    }
    const QPoint place = widget.rect().center();
    QWidget* under = widget.childAt(place);
    QWidget& target = under ? *under : widget;
    input::click(target, target.mapFrom(&widget, place));
}

} // namespace tarn::script
