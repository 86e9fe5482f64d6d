#include "static_timer.h"

#include "animation/animation_scene.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "timeline_hits.h"
#include "timeline_keyboard.h"
#include "timeline_menu.h"
#include "timeline_row_keys.h"
#include "timeline_rows.h"
#include "timeline_tips.h"
#include "widgets/plain_tip.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTimerEvent>
#include <QToolTip>
#include <QWheelEvent>

using namespace tarn;

namespace {

constexpr int clock_period = 10; // milliseconds
constexpr int scroll_period = 50;
constexpr int wheel_step = 120; // of a wheel's angle
constexpr int rows_a_step = 3;

TimelinePoint point_of(const QMouseEvent& event)
{
    return {int(event.position().x()), int(event.position().y()), event.modifiers()};
}

} // namespace

CStaticTimer::CStaticTimer(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_ticks.start();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(lang(u"时间轴", u"Timeline"));
}

CStaticTimer::~CStaticTimer()
{
    set_scene(nullptr, nullptr);
}

void CStaticTimer::set_scene(CAnimationScene* scene, CBaseWorld* world)
{
    m_mouse.cancel();
    if (m_world)
        m_world->document().changes().remove_listener(this);
    m_view.scene = scene;
    m_world = world;
    if (m_world)
        m_world->document().changes().add_listener(this);
    stop_clock();
    clear_selection();
}

void CStaticTimer::set_current_time(float time)
{
    CTimebar* bar = m_view.bar();
    m_view.current_time = bar ? std::min(time, bar->get_total_length()) : time;
    if (bar && !m_hold_time)
        bar->set_current_time(m_view.current_time, 1);
    Q_EMIT time_changed();
}

void CStaticTimer::show_time(float time)
{
    m_view.axis.show(time, width());
    view_moved();
}

void CStaticTimer::redraw()
{
    if (const quint32 bar = m_view.bar() ? m_view.bar()->id() : 0; bar != m_shown_bar) {
        m_shown_bar = bar;
        m_view.selection.clear();
        m_view.range_select = false;
        m_view.hover = {};
    }
    if (m_picture.is_stale(m_view, *this)) {
        update();
        Q_EMIT rows_changed();
    } else
        update(m_picture.overlay_change(m_view, *this));
}

void CStaticTimer::redraw_all()
{
    redraw();
    if (m_world)
        m_world->update_all_views();
}

void CStaticTimer::view_moved()
{
    redraw();
    Q_EMIT view_changed();
}

void CStaticTimer::say(const QString& text)
{
    QToolTip::showText(QCursor::pos(), text, this);
}

void CStaticTimer::model_changed(const ModelChange& change)
{
    if (change.everything)
        m_mouse.cancel();
    const CTimebar* bar = m_view.bar();
    m_view.selection.refresh(bar);
    m_view.hover = {};
    if (bar)
        m_view.current_time = std::min(m_view.current_time, bar->get_total_length());
    redraw();
}

void CStaticTimer::zoom_in()
{
    m_view.axis.zoom_in(m_view.current_time);
    view_moved();
}

void CStaticTimer::zoom_out()
{
    m_view.axis.zoom_out(m_view.current_time);
    view_moved();
}

void CStaticTimer::set_view_origin(float seconds)
{
    m_view.axis.view_origin = seconds;
    redraw();
}

void CStaticTimer::clear_selection()
{
    m_view.selection.clear();
    m_view.range_select = false;
    redraw();
}

void CStaticTimer::start_clock()
{
    m_play_tick.start();
    m_clock.start(clock_period, Qt::PreciseTimer, this);
}

void CStaticTimer::stop_clock()
{
    m_clock.stop();
}

void CStaticTimer::toggle_play()
{
    CTimebar* bar = m_view.bar();
    if (!bar)
        return;
    bar->active_bar(!bar->is_playing());
    bar->is_playing() ? start_clock() : stop_clock();
    Q_EMIT play_toggled();
}

void CStaticTimer::play_step()
{
    CTimebar* bar = m_view.bar();
    if (!bar) {
        stop_clock();
        return;
    }
    bar->frame_move(float(m_play_tick.restart()) / 1000);
    m_view.current_time = bar->current_time();
    if (!bar->is_playing())
        stop_clock();
    redraw();
    m_world->update_all_views();
    Q_EMIT time_changed();
    if (!m_clock.isActive())
        Q_EMIT play_ended();
}

void CStaticTimer::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_clock.timerId())
        play_step();
    else if (event->timerId() == m_scroll_clock.timerId())
        m_mouse.scroll_step();
    else
        QWidget::timerEvent(event);
}

void CStaticTimer::resizeEvent(QResizeEvent* event)
{
    m_view.client_width = width();
    m_view.client_height = height();
    QWidget::resizeEvent(event);
}

void CStaticTimer::paintEvent(QPaintEvent* event)
{
    // Nobody has to ask for what shows another picture.
    if (event->region().boundingRect() != rect() && m_picture.is_stale(m_view, *this))
        update();
    QPainter painter(this);
    m_picture.paint(painter, m_view, *this, event->region());
}

// Mouse --------------------------------------------------------------------------------------------------------------

/// Of the event where the window system tells, of a clock of one's own otherwise.
quint32 CStaticTimer::tick_of(const QMouseEvent& event) const
{
    return quint32(event.timestamp() ? event.timestamp() : quint64(m_ticks.elapsed()));
}

void CStaticTimer::tick_scrolling(bool on)
{
    if (on)
        m_scroll_clock.start(scroll_period, this);
    else
        m_scroll_clock.stop();
}

void CStaticTimer::show_mouse_cursor()
{
    if (m_pan)
        setCursor(Qt::ClosedHandCursor);
    else if (m_mouse.is_down())
        setCursor(m_mouse.cursor());
    else if (m_view.hover.point >= 0)
        setCursor(Qt::SizeAllCursor);
    else if (m_view.hover.end_mark || m_view.hover.ease || m_view.hover.other >= 0)
        setCursor(Qt::SizeHorCursor);
    else
        unsetCursor();
}

void CStaticTimer::mousePressEvent(QMouseEvent* event)
{
    const TimelinePoint point = point_of(*event);
    if (event->button() == Qt::LeftButton && !m_mouse.is_down())
        m_mouse.press(point, tick_of(*event));
    else if (event->button() == Qt::RightButton && !m_mouse.is_down())
        point.y < bands::rows_top ? pop_band_menu(*this, point) : pop_row_menu(*this, point);
    else if (event->button() == Qt::MiddleButton && point.y >= bands::rows_top)
        m_pan = event->pos();
    show_mouse_cursor();
}

void CStaticTimer::mouseMoveEvent(QMouseEvent* event)
{
    // The release went elsewhere.
    if (m_mouse.is_down() && !(event->buttons() & Qt::LeftButton))
        m_mouse.cancel();
    if (m_pan)
        pan(*event);
    else
        m_mouse.move(point_of(*event), tick_of(*event));
    show_mouse_cursor();
}

void CStaticTimer::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_mouse.release(point_of(*event));
    else if (event->button() == Qt::MiddleButton)
        m_pan.reset();
    show_mouse_cursor();
}

void CStaticTimer::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    const TimelinePoint point = point_of(*event);
    point.y < bands::rows_top ? double_click_bands(*this, point) : double_click_rows(*this, point);
}

void CStaticTimer::pan(const QMouseEvent& event)
{
    const QPoint way = event.pos() - *m_pan;
    m_pan = event.pos();
    m_view.axis.view_origin = std::max(m_view.axis.view_origin - m_view.axis.seconds(float(way.x())), 0.f);
    scroll_rows(-way.y());
    view_moved();
}

void CStaticTimer::scroll_rows(int pixels)
{
    m_view.rows.scroll = std::clamp(m_view.rows.scroll + pixels, 0, greatest_scroll(m_view));
    redraw();
}

void CStaticTimer::wheel_rows(int delta)
{
    scroll_rows(-delta * rows_a_step * TimelineRow::height / wheel_step);
}

void CStaticTimer::press_name(const RowNameHit& hit)
{
    press_row_name(*this, hit);
}

void CStaticTimer::pop_name_menu(const RowNameHit& hit)
{
    focus_row(m_view, hit.row);
    pop_row_menu(*this);
}

void CStaticTimer::zoom_at(int x, bool out)
{
    const float time = m_view.axis.time_from_pixel(float(x));
    if (out)
        m_view.axis.zoom_out(time);
    else
        m_view.axis.zoom_in(time);
    m_view.axis.view_origin = std::max(m_view.axis.view_origin, 0.f);
    view_moved();
}

void CStaticTimer::wheelEvent(QWheelEvent* event)
{
    const int delta = event->angleDelta().y();
    if (event->modifiers() & Qt::ControlModifier) {
        if (delta != 0)
            zoom_at(int(event->position().x()), delta < 0);
        return;
    }
    if (m_mouse.is_down()) {
        if (delta > 0)
            m_view.axis.double_scale();
        else
            m_view.axis.halve_scale();
        view_moved();
    } else if (event->position().y() >= bands::rows_top) {
        wheel_rows(delta);
        return;
    }
    QWidget::wheelEvent(event);
}

void CStaticTimer::contextMenuEvent(QContextMenuEvent* event)
{
    // The mouse has its menu from the press on.
    if (event->reason() == QContextMenuEvent::Keyboard && !m_mouse.is_down())
        pop_row_menu(*this);
}

// Keys, and what ends a drag -----------------------------------------------------------------------------------------

void CStaticTimer::keyPressEvent(QKeyEvent* event)
{
    if (m_mouse.is_down()) {
        if (event->key() == Qt::Key_Escape)
            m_mouse.cancel();
        show_mouse_cursor();
        return;
    }
    if (!press_key(*this, event->key(), event->modifiers()))
        QWidget::keyPressEvent(event);
}

bool CStaticTimer::event(QEvent* event)
{
    // The program's shortcuts leave alone what the timeline does with the key.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (m_mouse.is_down() ? key->key() == Qt::Key_Escape : takes_key(key->key(), key->modifiers())) {
            event->accept();
            return true;
        }
    }
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString tip = m_mouse.is_down() ? QString() : timeline_tip(m_view, help->x(), help->y());
        QToolTip::showText(help->globalPos(), plain_tip(tip), this);
        return true;
    }
    if (event->type() == QEvent::UngrabMouse || event->type() == QEvent::WindowDeactivate) {
        m_mouse.cancel();
        m_pan.reset();
    }
    return QWidget::event(event);
}

void CStaticTimer::leaveEvent(QEvent* event)
{
    if (!m_mouse.is_down()) {
        m_view.hover = {};
        redraw();
    }
    QWidget::leaveEvent(event);
}

void CStaticTimer::hideEvent(QHideEvent* event)
{
    m_mouse.cancel();
    QWidget::hideEvent(event);
}

void CStaticTimer::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        m_mouse.cancel();
    QWidget::changeEvent(event);
}
