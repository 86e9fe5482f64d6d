#include "scrolled_panel.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int least_height = 60; ///< pixels

} // namespace

CScrolledPanel::CScrolledPanel(QWidget* content, QWidget* parent) : QScrollArea(parent)
{
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->installEventFilter(this);
}

int CScrolledPanel::bar_width() const
{
    return verticalScrollBar()->isVisible() ? verticalScrollBar()->sizeHint().width() : 0;
}

QSize CScrolledPanel::sizeHint() const
{
    const QSize content = widget()->sizeHint();
    return {content.width() + bar_width(), content.height()};
}

QSize CScrolledPanel::minimumSizeHint() const
{
    const int width = std::max(widget()->minimumWidth(), widget()->minimumSizeHint().width());
    return {width + bar_width(), least_height};
}

bool CScrolledPanel::eventFilter(QObject* watched, QEvent* event)
{
    const bool is_bar = watched == verticalScrollBar();
    if ((is_bar && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        || (watched == widget() && event->type() == QEvent::LayoutRequest))
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
