#include "value_editor.h"

#include "core/edit_limit.h"
#include "core/field.h"
#include "core/language.h"
#include "frame/child_dlg.h"
#include "value_part.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <functional>
#include <utility>

namespace tarn {

namespace {

using Agreement = CommonValue::Agreement;

/// What a field shows of a text that it cannot edit.
QString head_of_long(const QString& text, QChar gap)
{
    constexpr int shown = 500; ///< UTF-16 units
    return cut_text(text, shown) + gap
        + lang(u"（共 %1 个字符，太长，不能在此编辑）", u"(%1 characters, too long to be edited here)")
              .arg(text.size());
}

class TextLine : public ValueEditor {
public:
    explicit TextLine(QLineEdit& widget) : m_widget(widget)
    {
        QObject::connect(&widget, &QLineEdit::textEdited, &widget, [this](const QString& text) { edited(text); });
        QObject::connect(&widget, &QLineEdit::editingFinished, &widget, [this] { finished(); });
    }
    void show(const RowView& view) override
    {
        m_widget.setEnabled(view.enabled);
        m_widget.setPlaceholderText(view.agreement == Agreement::Mixed ? mixed_text() : QString());
        // Setting it puts the cursor at the end.
        const int longest = view.field ? std::min(view.field->rules().max_length, int(longest_edited_line))
                                       : m_widget.maxLength();
        if (longest != m_widget.maxLength())
            m_widget.setMaxLength(longest);
        const QString whole = view.agreement == Agreement::Same ? value_as<QString>(view.value) : QString();
        const bool fits = whole.size() <= longest_edited_line;
        const QString text = fits ? whole : head_of_long(whole, QLatin1Char(' '));
        m_widget.setReadOnly(!fits);
        if (m_widget.text() != text) { // Keeps the cursor otherwise.
            m_widget.setText(text);
            m_widget.setCursorPosition(0);
        }
    }
    bool merges() const override { return true; }

private:
    QLineEdit& m_widget;
};

/// Tells when the focus leaves a widget that has no signal for it. An edit's own popup menu leaves it being edited.
class LeaveWatch : public QObject {
public:
    LeaveWatch(QWidget& widget, std::function<void()> left) : QObject(&widget), m_left(std::move(left))
    {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusOut
            && static_cast<const QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
            m_left();
        return false;
    }

private:
    std::function<void()> m_left;
};

/// A text of several lines, or a list of texts, one a line.
class TextLines : public ValueEditor {
public:
    explicit TextLines(QPlainTextEdit& widget) : m_widget(widget)
    {
        QObject::connect(&widget, &QPlainTextEdit::textChanged, &widget, [this] { edited(value()); });
        new LeaveWatch(widget, [this] { finished(); });
    }
    void show(const RowView& view) override
    {
        const QSignalBlocker quiet(m_widget); // It does not tell the user's changes from others.
        m_is_list = std::holds_alternative<QStringList>(view.value);
        m_widget.setEnabled(view.enabled);
        m_widget.setPlaceholderText(view.agreement == Agreement::Mixed ? mixed_text() : QString());
        const QString whole = view.agreement != Agreement::Same ? QString()
            : m_is_list ? value_as<QStringList>(view.value).join(QLatin1Char('\n'))
                        : value_as<QString>(view.value);
        const bool fits = can_be_edited(whole);
        const QString text = fits ? whole : head_of_long(whole, QLatin1Char('\n'));
        m_widget.setReadOnly(!fits);
        if (m_widget.toPlainText() != text)
            m_widget.setPlainText(text);
    }
    bool merges() const override { return true; }

private:
    Value value() const
    {
        const QString text = m_widget.toPlainText();
        if (!m_is_list)
            return text;
        return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
    }

    QPlainTextEdit& m_widget;
    bool m_is_list = false;
};

class CheckMark : public ValueEditor {
public:
    explicit CheckMark(QCheckBox& widget) : m_widget(widget)
    {
        QObject::connect(&widget, &QCheckBox::clicked, &widget, [this] {
            // The third state is one that only a selection has; the first click turns all of it on.
            if (m_widget.checkState() == Qt::PartiallyChecked)
                m_widget.setCheckState(Qt::Checked);
            m_widget.setTristate(false);
            edited(m_widget.isChecked());
        });
    }
    void show(const RowView& view) override
    {
        const bool mixed = view.agreement == Agreement::Mixed;
        m_widget.setEnabled(view.enabled);
        m_widget.setTristate(mixed);
        m_widget.setCheckState(mixed ? Qt::PartiallyChecked : number_of(view.value) ? Qt::Checked : Qt::Unchecked);
    }

private:
    QCheckBox& m_widget;
};

/// One of several buttons, each of which stands for a value.
class OptionButton : public ValueEditor {
public:
    OptionButton(QAbstractButton& widget, int option) : m_widget(widget), m_option(option)
    {
        widget.setCheckable(true);
        QObject::connect(&widget, &QAbstractButton::clicked, &widget, [this] {
            m_widget.setChecked(true); // A click on the chosen one leaves it chosen.
            edited(qint64(m_option));
        });
    }
    void show(const RowView& view) override
    {
        m_widget.setEnabled(view.enabled);
        m_widget.setChecked(view.agreement == Agreement::Same && number_of(view.value) == m_option);
    }

private:
    QAbstractButton& m_widget;
    int m_option;
};

class NumberEdit : public ValueEditor {
public:
    NumberEdit(CSuperEdit& widget, const FieldRow& row)
        : m_widget(widget), m_step(row.number.step), m_on_enter(row.gate == Gate::OnEnter)
    {
        widget.set_telling_changes(true);
        const auto signal = m_on_enter ? &CSuperEdit::entered : &CSuperEdit::text_changed_by_user;
        QObject::connect(&widget, signal, &widget, [this](double pos) { edited(pos); });
        QObject::connect(&widget, &CSuperEdit::changed_by, &widget, [this](const Sum& sum, bool by_enter) {
            if ((by_enter || !m_on_enter) && on_edited)
                on_edited({.change = sum});
        });
        QObject::connect(&widget, &CSuperEdit::editing_finished, &widget, [this] { finished(); });
    }
    void show(const RowView& view) override
    {
        m_widget.setEnabled(view.enabled);
        if (view.format && m_format != view.format) {
            m_format = view.format;
            m_widget.set_format_string(QLatin1String(m_format));
        }
        // Limits without room between them leave the range as it was, where the number fits in.
        const double number = number_of(view.value);
        const bool stays = view.limits.minimum == view.limits.maximum && m_widget.get_min() <= number
            && number <= m_widget.get_max();
        if (view.field && !stays
            && (m_widget.get_min() != view.limits.minimum || m_widget.get_max() != view.limits.maximum))
            m_widget.set_range(view.limits.minimum, view.limits.maximum, m_step);
        if (view.agreement == Agreement::Same)
            m_widget.set_pos(number_of(view.value));
        else
            m_widget.set_empty();
        // There is no room for words.
        m_widget.findChild<QLineEdit*>()->setPlaceholderText(view.agreement == Agreement::Mixed ? QStringLiteral("…")
                                                                                                : QString());
    }
    bool merges() const override { return true; }
    bool keeps_undo() const override { return m_on_enter && m_widget.is_typing(); }

private:
    CSuperEdit& m_widget;
    double m_step;
    bool m_on_enter;
    QByteArray m_format;
};

} // namespace

QString mixed_text()
{
    return lang(u"<不一致>", u"<mixed>");
}

std::unique_ptr<ValueEditor> make_value_editor(const CChildDlg& page, const FieldRow& row)
{
    QWidget* widget = page.control(row.control);
    if (auto* button = qobject_cast<QAbstractButton*>(widget); button && row.option)
        return std::make_unique<OptionButton>(*button, *row.option);
    if (auto* box = qobject_cast<QCheckBox*>(widget))
        return std::make_unique<CheckMark>(*box);
    if (auto* edit = qobject_cast<CSuperEdit*>(widget))
        return std::make_unique<NumberEdit>(*edit, row);
    if (auto* edit = qobject_cast<QLineEdit*>(widget))
        return std::make_unique<TextLine>(*edit);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(widget))
        return std::make_unique<TextLines>(*edit);
    return make_picking_editor(page, row);
}

} // namespace tarn
