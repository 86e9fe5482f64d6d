#pragma once

#include "frame/base_plug_ui.h"
#include "frame/boxes.h"

#include "core/model_changes.h"
#include "engine/base_world.h"
#include "script_messages.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

class CChildDlg;
class CView3D;
class QAction;
class QDockWidget;
class QMenu;
class QStackedWidget;
class QTabBar;
class QToolButton;
class Studio;

namespace tarn {
struct FileHolder;
class RecordingMenu;
class Shortcuts;
} // namespace tarn

/// The program's window: menus, the 3D view with the strip of the active mode above it, the side panel with the tabs of
/// the modes, and the plug-ins' bars.
class MainWindow : public QMainWindow, private tarn::ModelListener {
    Q_OBJECT

public:
    explicit MainWindow(Studio& studio);
    ~MainWindow() override;

    CView3D& view() { return *m_view; }

    /// Activates the mode of that name ("GUI", "Timebar"); false when there is none.
    bool activate_mode(const QString& name);
    QString active_mode() const;
    /// The page that the property bar shows; null when there is no such bar.
    CChildDlg* property_page() const;
    /// The page that the side panel shows; null when there are no modes.
    CChildDlg* side_page() const;

    /// As File > New, Open and Save As do, without asking for the file. Failures are shown in a box; false then. Saving
    /// asks before it replaces a read-only file.
    bool new_file();
    bool open_file(const QString& path);
    bool save_file(const QString& path);
    /// Offers what programs that are gone did not save; true when the author took one.
    bool offer_recovery();
    /// The program is ended from outside.
    void keep_unsaved();
    /// As Edit > Undo and Redo do; false when there was no step.
    bool undo();
    bool redo();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    /// The view shows the scene, so it draws again.
    void model_changed(const tarn::ModelChange&) override;
    void make_menus();
    void make_file_menu();
    void make_edit_menu();
    void make_view_menu();
    void make_help_menu();
    void make_side_panel();
    void make_tool_bar();
    void make_docks();
    QDockWidget* add_page_dock(CChildDlg* page, int template_id, const QString& title, const char* name,
                               Qt::DockWidgetArea area);
    void make_plug_in_windows();
    void on_mode_chosen(int index);
    void update_document();
    void update_edit_menu();
    void fill_recent_files();
    void restore_places();
    void save_places();
    void gather_bottom_docks();
    void reset_layout();
    void make_zoom_menu(QMenu& menu);
    void make_grid_menu(QMenu& menu);
    void show_problem_count(int count);
    QList<QWidget*> panels() const;
    void focus_panel(int step);
    bool takes_drop(const QDropEvent& event) const;

    void toggle_preview();
    void choose_command();
    tarn::Status work(const QString& what, const CBaseWorld::Work& job);
    /// True when it went well; otherwise a box says why not.
    bool report(const tarn::Status& status);
    bool opens_copy(const QString& path, const tarn::FileHolder& holder);
    QString reason_to_ask(const QString& path) const;
    /// Asks what to do with unsaved changes; true when the scene may be given up.
    bool may_discard();
    void ask_and_new();
    void ask_and_open();
    bool ask_and_save();
    bool save();

    Studio& m_studio;
    CView3D* m_view;
    QStackedWidget* m_top_area;
    QStackedWidget* m_side_area = nullptr;
    QTabBar* m_mode_strip = nullptr;
    std::vector<CMyTabDlg*> m_modes;
    QMenu* m_recent_menu = nullptr;
    QDockWidget* m_event_log = nullptr;
    QDockWidget* m_problems = nullptr;
    QToolButton* m_problem_count = nullptr;
    QHash<QWidget*, QPointer<QWidget>> m_last_focus; ///< in a panel that the keyboard left
    QHash<QDockWidget*, Qt::DockWidgetArea> m_usual_areas;
    bool m_shows_preview = false;
    bool m_offered_log = false;
    ScriptMessages m_messages;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QList<QAction*> m_file_actions; ///< those that the tool bar shows
    QAction* m_play = nullptr;
    std::unique_ptr<tarn::Shortcuts> m_shortcuts;
    std::unique_ptr<tarn::RecordingMenu> m_recording;
};
