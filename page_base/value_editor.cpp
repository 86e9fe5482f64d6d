#include "value_editor.h"

#include "core/field.h"
#include "core/language.h"
#include "field_row.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QComboBox>
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

QString mixed_text()
{
    return lang(u"<不一致>", u"<mixed>");
}

/// The value as a T; a fresh one when it is of another kind.
template <class T>
T as(const Value& value)
{
    const T* held = std::get_if<T>(&value);
    return held ? *held : T();
}

double number_of(const Value& value)
{
    if (const auto* whole = std::get_if<qint64>(&value))
        return double(*whole);
    return as<double>(value);
}

class TextLine : public ValueEditor {
public:
    explicit TextLine(QLineEdit& widget) : m_widget(widget)
    {
        QObject::connect(&widget, &QLineEdit::textEdited, &widget, [this](const QString& text) { edited(text); });
        QObject::connect(&widget, &QLineEdit::editingFinished, &widget, [this] { finished(); });
    }
    void show(const CommonValue& common) override
    {
        m_widget.setEnabled(common.agreement != Agreement::None);
        m_widget.setPlaceholderText(common.agreement == Agreement::Mixed ? mixed_text() : QString());
        // Setting it puts the cursor at the end.
        if (common.field && common.field->rules().max_length != m_widget.maxLength())
            m_widget.setMaxLength(common.field->rules().max_length);
        const QString text = common.agreement == Agreement::Same ? as<QString>(common.value) : QString();
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
    void show(const CommonValue& common) override
    {
        const QSignalBlocker quiet(m_widget); // It does not tell the user's changes from others.
        m_is_list = std::holds_alternative<QStringList>(common.value);
        m_widget.setEnabled(common.agreement != Agreement::None);
        m_widget.setPlaceholderText(common.agreement == Agreement::Mixed ? mixed_text() : QString());
        const QString text = common.agreement != Agreement::Same ? QString()
            : m_is_list                                          ? as<QStringList>(common.value).join(QLatin1Char('\n'))
                                                                 : as<QString>(common.value);
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
    void show(const CommonValue& common) override
    {
        const bool mixed = common.agreement == Agreement::Mixed;
        m_widget.setEnabled(common.agreement != Agreement::None);
        m_widget.setTristate(mixed);
        m_widget.setCheckState(mixed                              ? Qt::PartiallyChecked
                                   : number_or_flag(common.value) ? Qt::Checked
                                                                  : Qt::Unchecked);
    }

private:
    static bool number_or_flag(const Value& value) { return as<bool>(value) || number_of(value) != 0; }

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
    void show(const CommonValue& common) override
    {
        m_widget.setEnabled(common.agreement != Agreement::None);
        m_widget.setChecked(common.agreement == Agreement::Same && number_of(common.value) == m_option);
    }

private:
    QAbstractButton& m_widget;
    int m_option;
};

class NumberEdit : public ValueEditor {
public:
    NumberEdit(CSuperEdit& widget, const FieldRow& row) : m_widget(widget), m_look(row.number)
    {
        widget.set_format_string(QLatin1String(m_look.format));
        const auto signal = row.gate == Gate::OnEnter ? &CSuperEdit::entered : &CSuperEdit::text_changed_by_user;
        QObject::connect(&widget, signal, &widget, [this](double pos) { edited(pos); });
        QObject::connect(&widget, &CSuperEdit::editing_finished, &widget, [this] { finished(); });
    }
    void show(const CommonValue& common) override
    {
        m_widget.setEnabled(common.agreement != Agreement::None);
        if (common.field && common.field != m_field) {
            m_field = common.field;
            const FieldRules& rules = m_field->rules();
            m_widget.set_range(std::max(rules.minimum, m_look.minimum), std::min(rules.maximum, m_look.maximum),
                               m_look.step);
        }
        if (common.agreement == Agreement::Same)
            m_widget.set_pos(number_of(common.value));
        else
            m_widget.set_empty();
        // There is no room for words.
        m_widget.findChild<QLineEdit*>()->setPlaceholderText(common.agreement == Agreement::Mixed ? QStringLiteral("…")
                                                                                                  : QString());
    }
    bool merges() const override { return true; }

private:
    CSuperEdit& m_widget;
    NumberLook m_look;
    const FieldBase* m_field = nullptr; ///< whose range the edit has
};

/// A combo box whose entries stand for 0, 1, 2...
class Choice : public ValueEditor {
public:
    explicit Choice(QComboBox& widget) : m_widget(widget)
    {
        QObject::connect(&widget, &QComboBox::activated, &widget, [this](int index) { edited(qint64(index)); });
    }
    void show(const CommonValue& common) override
    {
        m_widget.setEnabled(common.agreement != Agreement::None);
        m_widget.setCurrentIndex(common.agreement == Agreement::Same ? int(number_of(common.value)) : -1);
    }

private:
    QComboBox& m_widget;
};

} // namespace

std::unique_ptr<ValueEditor> make_value_editor(QWidget& widget, const FieldRow& row)
{
    if (auto* button = qobject_cast<QAbstractButton*>(&widget); button && row.option)
        return std::make_unique<OptionButton>(*button, *row.option);
    if (auto* box = qobject_cast<QCheckBox*>(&widget))
        return std::make_unique<CheckMark>(*box);
    if (auto* edit = qobject_cast<CSuperEdit*>(&widget))
        return std::make_unique<NumberEdit>(*edit, row);
    if (auto* edit = qobject_cast<QLineEdit*>(&widget))
        return std::make_unique<TextLine>(*edit);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget))
        return std::make_unique<TextLines>(*edit);
    if (auto* box = qobject_cast<QComboBox*>(&widget))
        return std::make_unique<Choice>(*box);
    return nullptr;
}

} // namespace tarn
