#include "state_button.h"

#include "part_painting.h"

#include <QFontMetrics>
#include <QPainter>

#include <utility>

namespace {

constexpr double caption_size = 0.8; ///< of the usual letters: five captions stand side by side
constexpr QSize usual_size(64, 76);  ///< pixels
constexpr int least_width = 32;
constexpr double frame = 2;

} // namespace

CStateButton::CStateButton(QWidget* parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CStateButton::show_parts(const CGuiCore* core, std::vector<tarn::LookPart> parts)
{
    m_core = core;
    m_parts = std::move(parts);
    update();
}

QSize CStateButton::sizeHint() const
{
    return usual_size;
}

QSize CStateButton::minimumSizeHint() const
{
    return {least_width, usual_size.height()};
}

void CStateButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const int line = fontMetrics().height();
    const QRectF picture = QRectF(rect()).adjusted(frame, frame, -frame, -frame - line);
    tarn::paint_contrast(painter, picture);
    if (m_core && isEnabled())
        for (const tarn::LookPart& part : m_parts)
            tarn::paint_part(painter, *m_core, part, picture, devicePixelRatioF());
    const bool stands_out = isChecked() || hasFocus();
    if (stands_out) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), isChecked() ? 2 * frame : frame));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(picture);
    }
    painter.setPen(palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, QPalette::WindowText));
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * caption_size);
    painter.setFont(small);
    painter.drawText(QRect(0, height() - line, width(), line), Qt::AlignCenter,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}
