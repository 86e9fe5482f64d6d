// Editors through which values are picked rather than typed: choices, lists of texts, colours.

#include "core/field.h"
#include "frame/child_dlg.h"
#include "pop_dlg_color.h"
#include "value_editor.h"
#include "value_part.h"
#include "widgets/color_swatch.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

using Agreement = CommonValue::Agreement;

/// A combo box whose entries stand for 0, 1, 2...
class Choice : public ValueEditor {
public:
    explicit Choice(QComboBox& widget) : m_widget(widget)
    {
        QObject::connect(&widget, &QComboBox::activated, &widget, [this](int index) { edited(qint64(index)); });
    }
    void show(const RowView& view) override
    {
        m_widget.setEnabled(view.enabled);
        m_widget.setPlaceholderText(view.agreement == Agreement::Mixed ? mixed_text() : QString());
        m_widget.setCurrentIndex(view.agreement == Agreement::Same ? int(number_of(view.value)) : -1);
    }

private:
    QComboBox& m_widget;
};

/// A combo box whose entries stand for values of any kind. One that is not among them any more is listed last.
class ValueChoice : public ValueEditor {
public:
    explicit ValueChoice(QComboBox& widget) : m_widget(widget)
    {
        QObject::connect(&widget, &QComboBox::activated, &widget, [this](int index) {
            if (index >= 0 && index < int(m_items.size()))
                edited(m_items[std::size_t(index)].value);
        });
    }
    void show(const RowView& view) override
    {
        m_widget.setEnabled(view.enabled);
        m_widget.setPlaceholderText(view.agreement == Agreement::Mixed ? mixed_text() : QString());
        if (view.agreement != Agreement::Same) {
            m_widget.setCurrentIndex(-1);
            return;
        }
        std::vector<ChoiceItem> items = view.choices;
        auto shown = std::find_if(items.begin(), items.end(),
                                  [&](const ChoiceItem& item) { return item.value == view.value; });
        if (shown == items.end())
            shown = items.insert(items.end(), {view.value, missing_text(view.value)});
        const int row = int(shown - items.begin());
        list(std::move(items));
        m_widget.setCurrentIndex(row);
    }

private:
    static QString missing_text(const Value& value)
    {
        const auto* name = std::get_if<QString>(&value);
        return name ? *name : QString::number(number_of(value));
    }
    void list(std::vector<ChoiceItem> items)
    {
        if (items == m_items)
            return; // An open list stays as it is.
        m_items = std::move(items);
        m_widget.clear();
        for (const ChoiceItem& item : m_items)
            m_widget.addItem(item.text);
    }

    QComboBox& m_widget;
    std::vector<ChoiceItem> m_items;
};

/// A colour with alpha, chosen in CPopDlgColor.
class ColorEditor : public ValueEditor {
public:
    ColorEditor(CColorSwatch& widget, const FieldRow& row) : m_widget(widget), m_blank(row.blank_color)
    {
        widget.set_color(0xffffffff);
        QObject::connect(&widget, &CColorSwatch::clicked, &widget, [this] { open(); });
    }
    void show(const RowView& view) override
    {
        m_widget.setEnabled(view.enabled);
        if (view.agreement != Agreement::None)
            m_widget.set_color(quint32(number_of(view.value)));
    }

private:
    void open() const
    {
        const quint32 present = m_widget.argb();
        CPopDlgColor picker(present ? present : m_blank);
        if (picker.do_modal(&m_widget) == 1)
            edited(qint64(picker.color()));
        else if (on_abandoned)
            on_abandoned();
    }

    CColorSwatch& m_widget;
    quint32 m_blank;
};

/// A list of texts, one of which is chosen and can be changed in an edit beside it.
class TextList : public ValueEditor {
public:
    TextList(QListWidget& list, const CChildDlg& page, const ListControls& controls)
        : m_list(list),
          m_edit(qobject_cast<QLineEdit*>(page.control(controls.edit))),
          m_remove(qobject_cast<QAbstractButton*>(page.control(controls.remove))),
          m_add(qobject_cast<QAbstractButton*>(page.control(controls.add))),
          m_up(qobject_cast<QAbstractButton*>(page.control(controls.up))),
          m_down(qobject_cast<QAbstractButton*>(page.control(controls.down))),
          m_paste(qobject_cast<QAbstractButton*>(page.control(controls.paste))),
          m_new_text(controls.new_text)
    {
        QObject::connect(&list, &QListWidget::currentRowChanged, &list, [this](int row) { chosen(row); });
        if (m_edit) {
            QObject::connect(m_edit, &QLineEdit::textEdited, &list, [this](const QString& text) { rename(text); });
            QObject::connect(m_edit, &QLineEdit::editingFinished, &list, [this] { finished(); });
        }
        on_click(m_add, [this] { add(); });
        on_click(m_remove, [this] { remove(); });
        on_click(m_up, [this] { move(-1); });
        on_click(m_down, [this] { move(1); });
        on_click(m_paste, [this] { paste(); });
    }
    void show(const RowView& view) override
    {
        const QSignalBlocker quiet(m_list); // It does not tell the user's choice from others.
        const bool known = view.enabled && view.agreement == Agreement::Same;
        m_texts = known ? value_as<QStringList>(view.value) : QStringList();
        const int row = view.chosen >= 0 ? view.chosen : m_list.currentRow();
        m_list.setEnabled(known);
        fill();
        m_list.setCurrentRow(std::min(row, int(m_texts.size()) - 1));
        const int longest = view.field ? std::min(view.field->rules().max_length, longest_line) : longest_line;
        if (m_edit && m_edit->maxLength() != longest) // It would take the selection out of the text.
            m_edit->setMaxLength(longest);
        for (QAbstractButton* button : {m_add, m_paste})
            if (button)
                button->setEnabled(known);
        show_chosen();
    }
    bool merges() const override { return m_is_typing; }

private:
    static constexpr int longest_line = 32767; ///< what an edit takes unless it is told otherwise

    template <class Do>
    void on_click(QAbstractButton* button, Do what)
    {
        if (button)
            QObject::connect(button, &QAbstractButton::clicked, &m_list, what);
    }
    void fill()
    {
        while (m_list.count() > m_texts.size())
            delete m_list.takeItem(m_list.count() - 1);
        for (int row = 0; row < m_texts.size(); ++row) {
            if (row == m_list.count())
                m_list.addItem(m_texts[row]);
            else if (m_list.item(row)->text() != m_texts[row])
                m_list.item(row)->setText(m_texts[row]);
        }
    }
    void show_chosen()
    {
        const int row = m_list.currentRow();
        const auto enable = [](QAbstractButton* button, bool on) {
            if (button)
                button->setEnabled(on);
        };
        enable(m_remove, row >= 0);
        enable(m_up, row > 0);
        enable(m_down, row >= 0 && row + 1 < m_texts.size());
        if (!m_edit)
            return;
        m_edit->setEnabled(row >= 0);
        const QString text = m_texts.value(row);
        if (m_edit->text() != text) // Keeps the cursor otherwise.
            m_edit->setText(text);
    }
    void chosen(int row)
    {
        show_chosen();
        if (on_chosen)
            on_chosen(row);
        begin_rename();
    }
    void begin_rename()
    {
        if (!m_edit || m_list.currentRow() < 0)
            return;
        m_edit->setFocus();
        m_edit->selectAll();
    }
    void tell(bool typing)
    {
        m_is_typing = typing;
        edited(m_texts);
    }
    /// Tells of `texts` of which the one at `row` is chosen from now on.
    void tell(const QStringList& texts, int row)
    {
        m_is_typing = false;
        m_texts = texts;
        if (on_edited)
            on_edited({.value = m_texts, .chosen = row});
        const QSignalBlocker quiet(m_list); // That is told already.
        m_list.setCurrentRow(std::min(row, m_list.count() - 1));
        show_chosen();
    }
    void rename(const QString& text)
    {
        const int row = m_list.currentRow();
        if (row < 0 || row >= m_texts.size())
            return;
        m_texts[row] = text;
        m_list.item(row)->setText(text);
        tell(true);
    }
    void add()
    {
        QStringList texts = m_texts;
        texts.append(m_new_text ? m_new_text() : QString());
        tell(texts, int(texts.size()) - 1);
        begin_rename();
    }
    void paste()
    {
        const QStringList lines = QApplication::clipboard()->text().split(QRegularExpression(QStringLiteral("[\r\n]+")),
                                                                          Qt::SkipEmptyParts);
        if (lines.isEmpty())
            return;
        const int row = m_list.currentRow() < 0 ? int(m_texts.size()) : m_list.currentRow() + 1;
        QStringList texts = m_texts.mid(0, row);
        texts += lines;
        texts += m_texts.mid(row);
        tell(texts, row + int(lines.size()) - 1);
    }
    void move(int by)
    {
        const int row = m_list.currentRow();
        const int other = row + by;
        if (row < 0 || row >= m_texts.size() || other < 0 || other >= m_texts.size())
            return;
        QStringList texts = m_texts;
        texts.swapItemsAt(row, other);
        tell(texts, other);
    }
    void remove()
    {
        const int row = m_list.currentRow();
        if (row < 0 || row >= m_texts.size())
            return;
        QStringList texts = m_texts;
        texts.removeAt(row);
        tell(texts, std::min(row, int(texts.size()) - 1));
    }

    QListWidget& m_list;
    QLineEdit* m_edit;
    QAbstractButton* m_remove;
    QAbstractButton* m_add;
    QAbstractButton* m_up;
    QAbstractButton* m_down;
    QAbstractButton* m_paste;
    QString (*m_new_text)();
    QStringList m_texts;
    bool m_is_typing = false;
};

} // namespace

std::unique_ptr<ValueEditor> make_picking_editor(const CChildDlg& page, const FieldRow& row)
{
    QWidget* widget = page.control(row.control);
    if (auto* swatch = qobject_cast<CColorSwatch*>(widget))
        return std::make_unique<ColorEditor>(*swatch, row);
    if (auto* list = qobject_cast<QListWidget*>(widget))
        return std::make_unique<TextList>(*list, page, row.list);
    auto* box = qobject_cast<QComboBox*>(widget);
    if (!box)
        return nullptr;
    return row.choices ? std::unique_ptr<ValueEditor>(std::make_unique<ValueChoice>(*box))
                       : std::make_unique<Choice>(*box);
}

} // namespace tarn
