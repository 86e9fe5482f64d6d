#include "row_names.h"

#include "core/language.h"
#include "static_timer.h"
#include "timeline_painter.h"
#include "timeline_tips.h"
#include "widgets/plain_tip.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

namespace tarn {

RowNames::RowNames(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(lang(u"时间轴的行", u"Rows of the Timeline"));
}

void RowNames::set_timeline(CStaticTimer& timeline)
{
    m_timeline = &timeline;
    connect(m_timeline, &CStaticTimer::rows_changed, this, qOverload<>(&QWidget::update));
}

int RowNames::offset() const
{
    return mapTo(window(), QPoint()).y() - m_timeline->mapTo(window(), QPoint()).y();
}

std::optional<RowNameHit> RowNames::name_at(const QPoint& place) const
{
    return m_timeline ? find_row_name(m_timeline->view(), place.x(), place.y() + offset(), width()) : std::nullopt;
}

void RowNames::paintEvent(QPaintEvent*)
{
    if (!m_timeline)
        return;
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    painter.translate(0, std::floor(-offset() * ratio + 0.5));
    DevicePainter device(painter, ratio, font());
    paint_row_names(device, TimelineColors(palette()), m_timeline->view(), width());
}

void RowNames::mousePressEvent(QMouseEvent* event)
{
    const auto hit = name_at(event->pos());
    if (!hit)
        return;
    m_timeline->setFocus();
    if (event->button() == Qt::RightButton)
        m_timeline->pop_name_menu(*hit);
    else if (event->button() == Qt::LeftButton)
        m_timeline->press_name(*hit);
}

void RowNames::mouseDoubleClickEvent(QMouseEvent* event)
{
    const auto hit = name_at(event->pos());
    if (!hit || event->button() != Qt::LeftButton)
        return;
    // The name of an object folds it, too. Of quick clicks on an arrow each counts.
    const bool folds = hit->part == RowPart::Name && hit->row.object && !hit->row.variable;
    m_timeline->press_name({hit->row, folds ? RowPart::Fold : hit->part});
}

void RowNames::wheelEvent(QWheelEvent* event)
{
    if (m_timeline)
        m_timeline->wheel_rows(event->angleDelta().y());
    event->accept();
}

bool RowNames::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto hit = name_at(help->pos());
    QToolTip::showText(help->globalPos(), plain_tip(hit ? row_name_tip(*hit) : QString()), this);
    return true;
}

} // namespace tarn
