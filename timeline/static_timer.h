#pragma once

#include "timeline_picture.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

class CBaseWorld;

/// The timeline: shows the current timebar of a scene with its keys, the cursor and what is selected, and lets the author
/// edit them. It is the clock that timebars play by in the editor, too.
class CStaticTimer : public QWidget {
    Q_OBJECT

public:
    explicit CStaticTimer(QWidget* parent = nullptr);
    ~CStaticTimer() override;

    /// Both outlive the timeline; null takes them away.
    void set_scene(CAnimationScene* scene, CBaseWorld* world);
    CTimebar* bar() const { return m_view.bar(); }

    float time_from_pixel(int x) const { return m_view.axis.time_from_pixel(float(x)); }
    float pixel_from_time(float time) const { return m_view.axis.pixel_from_time(time); }
    float current_time() const { return m_view.current_time; }
    /// Moves the cursor, not beyond the end, and what the timebar animates; with the time held (Ctrl at the last press)
    /// the cursor alone.
    void set_current_time(float time);
    /// Scrolls so that the time can be seen.
    void show_time(float time);
    void redraw();

    // About the cursor, which stays in its column.
    void zoom_in();
    void zoom_out();
    float view_origin() const { return m_view.axis.view_origin; }
    void set_view_origin(float seconds);
    float seconds_per_pixel() const { return m_view.axis.seconds_per_pixel; }

    /// Begins to tick for a timebar that was started, until it stops.
    void start_clock();
    void stop_clock();

    const tarn::TimelineView& view() const { return m_view; }
    void clear_selection();

Q_SIGNALS:
    /// Origin or scale are others.
    void view_changed();
    /// The cursor stands elsewhere.
    void time_changed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void play_step();

    tarn::TimelineView m_view;
    tarn::TimelinePicture m_picture;
    CBaseWorld* m_world = nullptr;
    bool m_hold_time = false;
    QBasicTimer m_clock;
    QElapsedTimer m_play_tick; ///< since the last step
};
