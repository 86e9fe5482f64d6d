#pragma once

#include "page_base/gui_child_dlg.h"

class CAnimationScene;
class CReportListTimer;
class CTimebar;

/// The list of timebars: creating, choosing, copying, ordering and deleting them. While it is the page in front, the
/// current timebar drives what the scene shows.
class CDlgGuiManagerTimer : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgGuiManagerTimer(QWidget* parent = nullptr);

    /// Entering and leaving the mode of the timebars.
    void on_set_active(bool active) override;
    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

    /// While on, a click beside the rows leaves the current timebar what it is.
    void set_locked(bool on) { m_locked = on; }

Q_SIGNALS:
    /// The author turned to a timebar: what shows it should come to the front.
    void timebar_shown();

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    void connect_list();
    CAnimationScene* animation() const;
    CTimebar* current() const;
    /// Where the list can be changed: null without a current timebar, and while the interface runs.
    CTimebar* editable() const;
    void fill_list();
    void show_current();
    void on_new();
    void choose(CTimebar* bar);
    void on_rename();
    void on_delete();
    void move(bool (CAnimationScene::*how)(CTimebar*));
    void on_copy();
    void on_menu(int row, const QPoint& place);

    CReportListTimer* m_list = nullptr;
    bool m_active = false;
    bool m_locked = false;
};
