#include "widgets/super_edit.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyleOptionSpinBox>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace {

constexpr int pixels_per_step = 3;

// 0.1 + 0.2 is to show, and be kept, as 0.3.
double without_noise(double number)
{
    return QString::number(number, 'g', 12).toDouble();
}

} // namespace

CSuperEdit::CSuperEdit(QWidget* parent) : QAbstractSpinBox(parent)
{
    // Not WheelFocus: scrolling a page must not change the numbers that pass under the mouse.
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(lineEdit(), &QLineEdit::textEdited, this, &CSuperEdit::on_text_edited);
    connect(this, &QAbstractSpinBox::editingFinished, this, &CSuperEdit::commit);
}

void CSuperEdit::set_range(double min, double max, double step)
{
    if (!std::isfinite(min) || !std::isfinite(max) || !std::isfinite(step))
        return;
    std::tie(m_min, m_max) = std::minmax(min, max);
    m_step = step > 0 ? step : 1;
    if (m_value && replace_value(held(*m_value)))
        show_value();
    update();
}

void CSuperEdit::set_format_string(const QString& printf_format)
{
    m_format = tarn::NumberFormat::from_printf(printf_format).value_or(tarn::NumberFormat::general());
    if (!m_is_typing)
        show_value();
}

bool CSuperEdit::set_pos(double pos)
{
    if (!std::isfinite(pos))
        return false;
    pos = held(pos);
    // What is typed goes to the object and comes back from there, perhaps through a 32-bit float. Showing it anew
    // would turn "1." into "1" under the user's hands.
    const bool is_echo = m_is_typing && shows_same(pos);
    const bool changed = replace_value(pos);
    if (!is_echo)
        show_value();
    return changed;
}

bool CSuperEdit::set_empty()
{
    if (!m_value && m_is_typing)
        return false; // The text on the way to a number stays.
    const bool changed = replace_value(std::nullopt);
    show_value();
    return changed;
}

double CSuperEdit::get_pos() const
{
    return m_value.value_or(held(0));
}

double CSuperEdit::held(double pos) const
{
    return std::clamp(pos, m_min, m_max);
}

bool CSuperEdit::shows_same(double pos) const
{
    return m_value && (*m_value == pos || float(*m_value) == float(pos));
}

bool CSuperEdit::replace_value(std::optional<double> value)
{
    if (value == m_value)
        return false;
    m_value = value;
    Q_EMIT value_changed();
    return true;
}

void CSuperEdit::show_value()
{
    m_is_typing = false;
    m_sum.reset();
    const QString text = m_value ? m_format.text(*m_value) : QString();
    if (lineEdit()->text() != text)
        lineEdit()->setText(text);
    update();
}

void CSuperEdit::on_text_edited(const QString& text)
{
    m_is_typing = true;
    m_sum = tarn::parse_sum(text);
    const std::optional<double> typed = m_sum && m_sum->change ? std::nullopt : tarn::parse_number(text);
    if (!typed)
        return;
    m_sum.reset();
    take_typed(*typed);
}

void CSuperEdit::take_typed(double typed)
{
    replace_value(held(m_is_truncating ? m_format.truncated(typed) : m_format.rounded(typed)));
    Q_EMIT text_changed_by_user(get_pos());
}

// Half of a sum is a sum, too: "+1" on the way to "+10". So it counts only when the editing ends.
bool CSuperEdit::take_sum(bool by_enter)
{
    const std::optional<tarn::Sum> sum = std::exchange(m_sum, std::nullopt);
    if (!sum || isReadOnly())
        return false;
    const bool tells = sum->change && m_tells_changes;
    if (tells)
        Q_EMIT changed_by(*sum, by_enter);
    else
        take_typed(sum->of(get_pos()));
    return tells;
}

void CSuperEdit::commit()
{
    take_sum(false);
    show_value();
    Q_EMIT editing_finished();
}

void CSuperEdit::clear()
{
    set_empty();
}

void CSuperEdit::stepBy(int steps)
{
    take_step_from(get_pos(), steps);
}

void CSuperEdit::take_step_from(double pos, double steps)
{
    const bool changed = replace_value(held(without_noise(pos + steps * m_step)));
    show_value();
    if (changed)
        Q_EMIT text_changed_by_user(get_pos());
}

QAbstractSpinBox::StepEnabled CSuperEdit::stepEnabled() const
{
    if (isReadOnly())
        return StepNone;
    StepEnabled enabled = StepNone;
    if (!m_value || *m_value < m_max)
        enabled |= StepUpEnabled;
    if (!m_value || *m_value > m_min)
        enabled |= StepDownEnabled;
    return enabled;
}

QValidator::State CSuperEdit::validate(QString& input, int&) const
{
    if (tarn::parse_number(input) || tarn::parse_sum(input))
        return QValidator::Acceptable;
    return tarn::may_become_sum(input) ? QValidator::Intermediate : QValidator::Invalid;
}

void CSuperEdit::keyPressEvent(QKeyEvent* event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !isReadOnly()) {
        if (!take_sum(true) && m_value)
            Q_EMIT entered(get_pos());
    }
    QAbstractSpinBox::keyPressEvent(event);
}

void CSuperEdit::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QAbstractSpinBox::wheelEvent(event);
    else
        event->ignore();
}

void CSuperEdit::mousePressEvent(QMouseEvent* event)
{
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    const QPoint pos = event->position().toPoint();
    const QStyle::SubControl hit = style()->hitTestComplexControl(QStyle::CC_SpinBox, &option, pos, this);
    const bool on_arrow = hit == QStyle::SC_SpinBoxUp || hit == QStyle::SC_SpinBoxDown;
    m_drag.reset();
    if (on_arrow && event->button() == Qt::LeftButton && !isReadOnly())
        m_drag = Drag{pos.x(), get_pos()};
    QAbstractSpinBox::mousePressEvent(event);
}

void CSuperEdit::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_drag || !(event->buttons() & Qt::LeftButton)) {
        QAbstractSpinBox::mouseMoveEvent(event);
        return;
    }
    const int distance = event->position().toPoint().x() - m_drag->from_x;
    if (!m_drag->is_moving) {
        if (std::abs(distance) < QApplication::startDragDistance())
            return;
        m_drag->is_moving = true;
        // Ends the repeating of the arrow that was pressed.
        QAbstractSpinBox::mouseReleaseEvent(event);
        setCursor(Qt::SizeHorCursor);
    }
    take_step_from(m_drag->from_pos, distance / pixels_per_step);
}

void CSuperEdit::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_drag && m_drag->is_moving)
        unsetCursor();
    m_drag.reset();
    QAbstractSpinBox::mouseReleaseEvent(event);
}

QSize CSuperEdit::size_for(int digits) const
{
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    const QFontMetrics metrics = fontMetrics();
    const int width = metrics.horizontalAdvance(QString(digits, u'0')) + 6;
    const QSize text(width, lineEdit()->sizeHint().height());
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text, this);
}

QSize CSuperEdit::sizeHint() const
{
    return size_for(7);
}

QSize CSuperEdit::minimumSizeHint() const
{
    return size_for(4);
}
