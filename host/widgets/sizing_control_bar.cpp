#include "widgets/sizing_control_bar.h"

#include <QMainWindow>
#include <QResizeEvent>

CSizingControlBar::CSizingControlBar(const QString& title, QWidget* parent) : QDockWidget(title, parent) {}

void CSizingControlBar::set_stored_sizes(int horz, int vert)
{
    m_stored = QSize(horz, vert);
    m_has_new_size = true;
    updateGeometry();
    if (isVisible())
        take_stored_size();
}

void CSizingControlBar::take_size_back()
{
    m_has_new_size = true;
    if (isVisible())
        take_stored_size();
}

void CSizingControlBar::show_bar(bool show)
{
    setVisible(show);
    if (show)
        raise();
}

Qt::DockWidgetArea CSizingControlBar::area() const
{
    const auto* window = qobject_cast<const QMainWindow*>(parentWidget());
    if (isFloating() || !window)
        return Qt::NoDockWidgetArea;
    return window->dockWidgetArea(const_cast<CSizingControlBar*>(this));
}

QSize CSizingControlBar::sizeHint() const
{
    QSize size = QDockWidget::sizeHint();
    const Qt::DockWidgetArea where = area();
    const bool at_side = where == Qt::LeftDockWidgetArea || where == Qt::RightDockWidgetArea;
    const bool at_edge = where == Qt::TopDockWidgetArea || where == Qt::BottomDockWidgetArea;
    if (m_stored.width() > 0 && !at_edge)
        size.setWidth(m_stored.width());
    if (m_stored.height() > 0 && !at_side)
        size.setHeight(m_stored.height());
    return size.expandedTo(minimumSizeHint());
}

// The window lays its docks out by their size hints only once; later they have to be resized.
void CSizingControlBar::take_stored_size()
{
    auto* window = qobject_cast<QMainWindow*>(parentWidget());
    const Qt::DockWidgetArea where = area();
    m_has_new_size = false;
    if (!window || where == Qt::NoDockWidgetArea) {
        resize(sizeHint());
        return;
    }
    const bool at_side = where == Qt::LeftDockWidgetArea || where == Qt::RightDockWidgetArea;
    const int length = at_side ? m_stored.width() : m_stored.height();
    if (length > 0)
        window->resizeDocks({this}, {length}, at_side ? Qt::Horizontal : Qt::Vertical);
}

void CSizingControlBar::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    if (m_has_new_size)
        take_stored_size();
}

void CSizingControlBar::resizeEvent(QResizeEvent* event)
{
    QDockWidget::resizeEvent(event);
    Q_EMIT resized_to(event->size());
}
