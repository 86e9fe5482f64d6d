#include "static_timer.h"

#include "animation/animation_scene.h"
#include "core/language.h"
#include "engine/base_world.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTimerEvent>

using namespace tarn;

namespace {

constexpr int clock_period = 10; // milliseconds

} // namespace

CStaticTimer::CStaticTimer(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(lang(u"时间轴", u"Timeline"));
}

CStaticTimer::~CStaticTimer() = default;

void CStaticTimer::set_scene(CAnimationScene* scene, CBaseWorld* world)
{
    m_view.scene = scene;
    m_world = world;
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
    redraw();
    Q_EMIT view_changed();
}

void CStaticTimer::redraw()
{
    if (m_picture.is_stale(m_view, *this))
        update();
    else
        update(m_picture.overlay_change(m_view, *this));
}

void CStaticTimer::zoom_in()
{
    m_view.axis.zoom_in(m_view.current_time);
    redraw();
    Q_EMIT view_changed();
}

void CStaticTimer::zoom_out()
{
    m_view.axis.zoom_out(m_view.current_time);
    redraw();
    Q_EMIT view_changed();
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
}

void CStaticTimer::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_clock.timerId())
        play_step();
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
