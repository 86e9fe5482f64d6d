#pragma once

#include "core/model_changes.h"
#include "frame/timeline_state.h"
#include "timeline_host.h"
#include "timeline_mouse.h"
#include "timeline_picture.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

class CBaseWorld;

/// The timeline: shows the current timebar of a scene with its keys, the cursor and what is selected, and lets the author
/// edit them. It is the clock that timebars play by in the editor, too.
class CStaticTimer : public QWidget,
                     public tarn::TimelineState,
                     private tarn::TimelineHost,
                     private tarn::ModelListener {
    Q_OBJECT

public:
    explicit CStaticTimer(QWidget* parent = nullptr);
    ~CStaticTimer() override;

    /// Both outlive the timeline; null takes them away.
    void set_scene(CAnimationScene* scene, CBaseWorld* world);
    CTimebar* bar() const { return m_view.bar(); }

    float time_from_pixel(int x) const override { return m_view.axis.time_from_pixel(float(x)); }
    float pixel_from_time(float time) const override { return m_view.axis.pixel_from_time(time); }
    float current_time() const override { return m_view.current_time; }
    /// Moves the cursor, not beyond the end, and what the timebar animates; with the time held (Ctrl at the last press)
    /// the cursor alone.
    void set_current_time(float time) override;
    void show_time(float time) override;
    void redraw() override;

    // About the cursor, which stays in its column.
    void zoom_in();
    void zoom_out();
    float view_origin() const override { return m_view.axis.view_origin; }
    void set_view_origin(float seconds);
    float seconds_per_pixel() const override { return m_view.axis.seconds_per_pixel; }

    /// Begins to tick for a timebar that was started, until it stops.
    void start_clock();
    void stop_clock();
    /// Starts or stops the timebar.
    void toggle_play() override;

    // The names of the rows, which stand beside the timeline
    void press_name(const tarn::RowNameHit& hit);
    void pop_name_menu(const tarn::RowNameHit& hit);
    void wheel_rows(int delta); ///< eighths of a degree

    const tarn::TimelineView& view() const { return m_view; }
    /// Of the current timebar, ascending in time.
    void set_faults(std::vector<tarn::TimeFault> faults) { m_view.faults = std::move(faults); }
    void clear_selection();
    /// The number of the drag that is under way; -1 when none is, or one that moves the cursor only.
    int drag_mode() const override { return m_mouse.drag_mode(); }

    // For automation
    std::vector<float> selected_keys() const override;
    std::vector<float> selected_scripts() const override { return m_view.selection.scripts(); }
    HoverTimes hover_times() const override;
    std::optional<std::pair<float, float>> range() const override;
    std::optional<std::pair<int, int>> row(const tarn::ModelObject& object,
                                           const tarn::ModelObject* variable) const override;
    QString label(float time) const override { return tarn::time_label(time, m_view.bar()); }
    void say(const QString& text) override;

Q_SIGNALS:
    /// Origin or scale are others.
    void view_changed();
    /// The cursor stands elsewhere.
    void time_changed();
    void play_toggled();
    /// The rows are others, or are to look otherwise.
    void rows_changed();
    /// The timebar came to its end.
    void play_ended();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    // For drags, commands and keys
    tarn::TimelineView& timeline() override { return m_view; }
    CBaseWorld* world() const override { return m_world; }
    QWidget* owner() override { return this; }
    void hold_time(bool on) override { m_hold_time = on; }
    void view_moved() override;
    void redraw_all() override;
    void tick_scrolling(bool on) override;
    void model_changed(const tarn::ModelChange& change) override;

    void play_step();
    void pan(const QMouseEvent& event);
    void zoom_at(int x, bool out);
    void scroll_rows(int pixels);
    quint32 tick_of(const QMouseEvent& event) const;
    void show_mouse_cursor();

    tarn::TimelineView m_view;
    tarn::TimelinePicture m_picture;
    CBaseWorld* m_world = nullptr;
    bool m_hold_time = false;
    quint32 m_shown_bar = 0; ///< whose keys are selected
    tarn::TimelineMouse m_mouse{*this};
    std::optional<QPoint> m_pan; ///< where the middle button was last, while it moves the rows
    QElapsedTimer m_ticks;
    QBasicTimer m_scroll_clock;
    QBasicTimer m_clock;
    QElapsedTimer m_play_tick; ///< since the last step
};
