#pragma once

#include "page_base/gui_child_dlg.h"

#include <QMap>

#include <utility>

class CAnimationScene;
class CStaticTimer;
class CTimebar;
class CTimerObject;
class QStackedWidget;

namespace tarn {
class KeyTable;
class ModelObject;
class RowNames;
} // namespace tarn

/// The tools around the timeline: which timebar, object and variable it shows, playing, recording, zooming and scrolling.
class CDlgTopTimer : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgTopTimer(QWidget* parent = nullptr);

    // Commands without buttons
    static constexpr int record_key = 6501;
    static constexpr int select_again = 6574; ///< the interface is edited, with the select tool
    void command(int id);

    CStaticTimer* timeline() const { return m_timer; }

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

Q_SIGNALS:
    /// The window is to stay as it is, and with it what it shows; or need not any more.
    void locked(bool on);

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    void resizeEvent(QResizeEvent* event) override;

private:
    void set_up_buttons();
    void fit_captions();
    void set_up_scroll_bar();
    CAnimationScene* animation() const;
    CTimebar* bar() const; ///< the current one; null for none

    // Lists
    void refresh();
    void fill_lists();
    void fill_variables();
    void take_bar();
    void take_time();
    void take_faults();
    void follow_selection();
    void choose_bar(int row);
    void choose_target(int row);
    void choose_variable(int row);

    // Playing
    void on_play_ended();
    void show_playing();
    void go_to_key(bool next);

    // Keys and objects
    void record();
    void release_objects();
    void edit_center();
    void set_auto_record(bool on);
    void show_auto_record();
    void show_key_table(bool on);

    // The time axis
    void zoom(void (CStaticTimer::*how)());
    void scroll_to(int position);
    void update_scroll_bar();
    void show_thumb();

    CStaticTimer* m_timer = nullptr;
    tarn::RowNames* m_names = nullptr;
    tarn::KeyTable* m_table = nullptr;
    QStackedWidget* m_pages = nullptr;
    quint32 m_shown_bar = 0;       ///< id
    quint32 m_followed_object = 0; ///< id of the object that was selected when the target was last set by it
    float m_bar_time = 0;          ///< of the timebar, as the timeline set it last
    float m_shown_length = 0;      ///< of the timebar, when the scroll bar was last set
    bool m_is_locked = false;
    QMap<int, std::pair<QString, int>> m_captions; ///< of buttons, and their widths with them, pixels
};
