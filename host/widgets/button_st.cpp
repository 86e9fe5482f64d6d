#include "widgets/button_st.h"

#include "widgets/iconfun.h"
#include "widgets/plain_tip.h"
#include "widgets/theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QToolTip>

#include <cmath>

namespace {

constexpr int margin = 6;
constexpr int icon_only_margin = 3;
constexpr int gap = 4;
constexpr int menu_arrow_width = 10;
constexpr qreal corner = 3;
constexpr qreal readable_contrast = 3;

QColor mixed(const QColor& a, const QColor& b, qreal part_of_b)
{
    const auto mix = [part_of_b](int x, int y) { return int(x + (y - x) * part_of_b + 0.5); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

/// Rounded up: eliding counts parts of pixels too.
int width_of(const QString& text, const QWidget& widget)
{
    return int(std::ceil(QFontMetricsF(widget.font(), &widget).horizontalAdvance(text)));
}

} // namespace

CButtonST::CButtonST(QWidget* parent) : QPushButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setAutoDefault(false);
    setIconSize(QSize(16, 16));
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void CButtonST::SetIcon(int icon_number)
{
    m_icon_number = icon_number;
    setIcon(icon_number > 0 ? iconfun::icon(icon_number) : QIcon());
}

void CButtonST::SetTooltipText(const QString& text)
{
    setToolTip(text);
}

void CButtonST::SetColor(int index, quint32 colorref, bool repaint)
{
    if (index != normal_text_color)
        return;
    m_text_color = (colorref & 0xff) << 16 | (colorref & 0xff00) | (colorref >> 16 & 0xff);
    if (repaint)
        update();
}

void CButtonST::SetCheck(bool checked)
{
    if (!isCheckable()) {
        if (!checked)
            return;
        m_check_is_display = true;
        setCheckable(true);
    }
    // Exclusive groups refuse to uncheck their checked button; the page knows better.
    const bool exclusive = autoExclusive();
    setAutoExclusive(false);
    setChecked(checked);
    setAutoExclusive(exclusive);
}

void CButtonST::nextCheckState()
{
    if (!m_check_is_display)
        QPushButton::nextCheckState();
}

QString CButtonST::plain_text() const
{
    QString plain;
    const QString marked = text();
    for (qsizetype i = 0; i < marked.size(); ++i) {
        if (marked[i] == u'&' && ++i == marked.size())
            break;
        plain += marked[i];
    }
    return plain;
}

CButtonST::Parts CButtonST::parts() const
{
    const bool has_icon = !icon().isNull();
    const bool has_text = !text().isEmpty();
    QRect inner = rect().adjusted(margin, 0, -margin - (menu() ? menu_arrow_width : 0), 0);
    const QSize icon_size = has_icon ? iconSize() : QSize(0, 0);
    Parts result;
    // An icon needs no text where not even a letter of that could be read.
    const bool has_room = inner.width() - icon_size.width() - gap >= fontMetrics().averageCharWidth();
    if (!has_text || (has_icon && !has_room)) {
        result.icon = QRect(QPoint(), icon_size);
        result.icon.moveCenter(inner.center());
        return result;
    }
    const int lead = has_icon ? icon_size.width() + gap : 0;
    const int wanted = lead + width_of(plain_text(), *this);
    if (wanted < inner.width())
        inner.adjust((inner.width() - wanted) / 2, 0, 0, 0);
    result.icon = QRect(QPoint(inner.left(), (height() - icon_size.height()) / 2), icon_size);
    result.text = inner.adjusted(lead, 0, 0, 0);
    return result;
}

bool CButtonST::is_elided() const
{
    return !text().isEmpty() && width_of(plain_text(), *this) > parts().text.width();
}

QString CButtonST::shown_tooltip() const
{
    QStringList lines;
    if (is_elided() && plain_text().size() > 1)
        lines.append(plain_text());
    if (!toolTip().isEmpty() && !lines.contains(toolTip()))
        lines.append(toolTip());
    return lines.join(u'\n');
}

int CButtonST::contents_width() const
{
    const int icon_width = icon().isNull() ? 0 : iconSize().width();
    const int arrow = menu() ? menu_arrow_width : 0;
    if (text().isEmpty())
        return icon_width + 2 * icon_only_margin + arrow;
    return icon_width + (icon_width > 0 ? gap : 0) + width_of(plain_text(), *this) + 2 * margin + arrow;
}

QSize CButtonST::sizeHint() const
{
    ensurePolished();
    const int height = std::max({fontMetrics().height() + 6, iconSize().height() + 2 * icon_only_margin, 22});
    return {std::max(contents_width(), height), height};
}

// Narrow enough for docks; the text is cut short down to this.
QSize CButtonST::minimumSizeHint() const
{
    const QSize size = sizeHint();
    return {std::min(size.width(), size.height() + (icon().isNull() ? 6 : 0)), size.height()};
}

bool CButtonST::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const QString tip = shown_tooltip();
        if (tip.isEmpty())
            event->ignore();
        else
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tarn::plain_tip(tip), this);
        return true;
    }
    return QPushButton::event(event);
}

void CButtonST::changeEvent(QEvent* event)
{
    QPushButton::changeEvent(event);
    const QEvent::Type type = event->type();
    const bool theme_changed = type == QEvent::PaletteChange || type == QEvent::StyleChange
        || type == QEvent::ThemeChange;
    if (theme_changed && m_icon_number > 0)
        SetIcon(m_icon_number);
}

void CButtonST::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paint_frame(painter);
    paint_label(painter);
}

void CButtonST::paint_frame(QPainter& painter) const
{
    const QPalette colors = palette();
    const QColor text = colors.color(QPalette::ButtonText);
    const QColor accent = colors.color(QPalette::Active, QPalette::Highlight);
    const bool hovered = isEnabled() && underMouse();
    QColor fill = colors.color(QPalette::Button);
    QColor edge = mixed(fill, text, 0.22);
    if (isChecked()) {
        fill = mixed(fill, accent, isEnabled() ? 0.38 : 0.15);
        edge = isEnabled() ? accent : mixed(edge, accent, 0.3);
    }
    if (isDown())
        fill = mixed(fill, isChecked() ? accent : text, 0.2);
    else if (hovered)
        fill = mixed(fill, isChecked() ? accent : text, 0.09);
    if (!isEnabled())
        edge = mixed(edge, colors.color(QPalette::Window), 0.5);
    if (hasFocus() || isDefault())
        edge = accent;
    if (isFlat() && !isChecked() && !isDown() && !hovered && !hasFocus())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(edge);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
}

void CButtonST::paint_label(QPainter& painter) const
{
    const Parts place = parts();
    icon().paint(&painter, place.icon, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled,
                 isChecked() ? QIcon::On : QIcon::Off);
    QColor color = palette().color(QPalette::ButtonText);
    if (m_text_color != 0 && isEnabled())
        color = tarn::readable_on(QColor(m_text_color), palette().color(QPalette::Button), readable_contrast);
    painter.setPen(color);
    painter.drawText(place.text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(plain_text(), Qt::ElideRight, place.text.width()));
    if (menu()) {
        QStyleOption arrow;
        arrow.initFrom(this);
        arrow.rect = QRect(width() - margin - menu_arrow_width, (height() - 8) / 2, menu_arrow_width, 8);
        style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter, this);
    }
}
