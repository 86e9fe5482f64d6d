#include "main_window.h"

#include "core/language.h"
#include "core/res_handle_man.h"
#include "dlg_event_log.h"
#include "dlg_history.h"
#include "dlg_problems.h"
#include "engine/base_world.h"
#include "engine/scene_plug.h"
#include "frame/boxes.h"
#include "frame/child_dlg.h"
#include "frame/control_bar.h"
#include "frame/dlg_group.h"
#include "replay/recording_menu.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"
#include "shortcuts.h"
#include "store/filefun.h"
#include "studio.h"
#include "view/view3d.h"
#include "watched_work.h"
#include "widgets/iconfun.h"
#include "widgets/scrolled_panel.h"

#include <QApplication>
#include <QDockWidget>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

using tarn::lang;
using tarn::boxes::Button;

namespace {

constexpr int warning_icon = 6953;
constexpr QSize usual_size(1440, 900);
constexpr int history_template = 7000;
constexpr int event_log_template = 7010;
constexpr int problems_template = 7020;
constexpr int least_side_panel = 270; ///< pixels

/// The page in front within a window: of a group the one that is shown, otherwise the window itself.
CChildDlg* front_page(QWidget* window)
{
    if (!window)
        return nullptr;
    if (auto* group = window->findChild<CDlgGroup*>())
        return qobject_cast<CChildDlg*>(group->currentWidget());
    return qobject_cast<CChildDlg*>(window);
}

} // namespace

MainWindow::MainWindow(Studio& studio) : m_studio(studio), m_messages(*this, studio)
{
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    m_top_area = new QStackedWidget(centre);
    m_view = new CView3D(studio.world(), centre);
    layout->addWidget(m_top_area);
    layout->addWidget(m_view, 1);
    setCentralWidget(centre);
    if (studio.scene())
        m_view->set_editor(&studio.scene()->editor());
    resize(usual_size);
    setAcceptDrops(true);

    studio.world().document().changes().add_listener(this);
    studio.world().on_redraw = [this] { m_view->schedule_redraw(); };
    studio.world().on_message = [this](const QString& text, const QString& title) { m_messages.post(text, title); };
    studio.world().on_work = [this](const QString& what, const CBaseWorld::Work& job) { return work(what, job); };
    studio.world().on_always_refresh = [this](bool on) { m_view->set_always_refresh(on); };
    connect(m_view, &CView3D::gl_unavailable, this,
            [this](const QString& message) { statusBar()->showMessage(message); });
    connect(&studio, &Studio::autosave_failed, this,
            [this](const QString& message) { statusBar()->showMessage(message); });

    make_side_panel();
    make_plug_in_windows();
    make_docks();
    make_menus();
    connect(&studio, &Studio::document_changed, this, &MainWindow::update_document);
    m_view->set_program_actions(m_recording->actions() << m_play);
    update_document();
    m_shortcuts = std::make_unique<tarn::Shortcuts>(*this);
    restore_places();
    if (!m_modes.empty())
        on_mode_chosen(0);
}

MainWindow::~MainWindow()
{
    m_recording.reset(); // It has the scene's messages.
    m_studio.world().document().changes().remove_listener(this);
    m_studio.world().on_redraw = nullptr;
    m_studio.world().on_message = nullptr;
    m_studio.world().on_work = nullptr;
    m_studio.world().on_always_refresh = nullptr;
    for (CBasePlugUi* plug_in : m_studio.ui_plug_ins())
        plug_in->destroy_windows();
}

void MainWindow::model_changed(const tarn::ModelChange&)
{
    m_view->schedule_redraw();
}

void MainWindow::make_side_panel()
{
    auto* dock = new QDockWidget(lang(u"对象面板", u"Objects"), this);
    dock->setObjectName(QStringLiteral("side_panel"));
    auto* inside = new QWidget(dock);
    auto* layout = new QVBoxLayout(inside);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    m_mode_strip = new QTabBar(inside);
    m_mode_strip->setExpanding(false);
    m_side_area = new QStackedWidget(inside);
    m_side_area->setMinimumWidth(least_side_panel);
    layout->addWidget(m_mode_strip);
    auto* scrolled = new CScrolledPanel(m_side_area, inside);
    scrolled->setMinimumWidth(least_side_panel + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    layout->addWidget(scrolled, 1);
    dock->setWidget(inside);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    // The side panel and the property bar keep the window's full height.
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
}

QDockWidget* MainWindow::add_page_dock(CChildDlg* page, int template_id, const QString& title, const char* name,
                                       Qt::DockWidgetArea area)
{
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(QLatin1String(name));
    {
        const CResHandleMan resources(QStringLiteral(":/app"));
        page->Create(template_id, dock);
    }
    dock->setWidget(page);
    addDockWidget(area, dock);
    dock->hide();
    // Asked for, it comes before those that share its place.
    connect(dock->toggleViewAction(), &QAction::triggered, dock, &QWidget::raise);
    return dock;
}

void MainWindow::make_docks()
{
    add_page_dock(new CDlgHistory(m_studio), history_template, lang(u"历史记录", u"History"), "history",
                  Qt::LeftDockWidgetArea);
    auto* log = new CDlgEventLog(m_studio);
    m_event_log = add_page_dock(log, event_log_template, lang(u"事件日志", u"Event Log"), "event_log",
                                Qt::BottomDockWidgetArea);
    auto* list = new CDlgProblems(m_studio);
    m_problems = add_page_dock(list, problems_template, lang(u"问题", u"Problems"), "problems",
                               Qt::BottomDockWidgetArea);
    tabifyDockWidget(m_event_log, m_problems);
    // What ran well is no reason to take room from the view; once is enough for who closed it.
    connect(log, &CDlgEventLog::spoken, this, [this] {
        if (std::exchange(m_offered_log, true))
            return;
        m_event_log->show();
        m_event_log->raise();
    });
    m_problem_count = new QToolButton(this);
    m_problem_count->setAutoRaise(true);
    m_problem_count->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_problem_count->setToolTip(lang(u"显示问题列表", u"Shows the list of problems"));
    m_problem_count->setAccessibleName(lang(u"问题", u"Problems"));
    m_problem_count->hide();
    statusBar()->addPermanentWidget(m_problem_count);
    connect(m_problem_count, &QToolButton::clicked, this, [this] {
        m_problems->show();
        m_problems->raise();
    });
    connect(list, &CDlgProblems::counted, this, &MainWindow::show_problem_count);
    connect(list, &CDlgProblems::time_wanted, this, [this](quint32 timebar, float time) {
        activate_mode(QStringLiteral("Timebar"));
        m_studio.scene()->model().show_time(timebar, time);
        m_studio.world().broadcast(tarn::ui_timebars_changed);
    });
}

void MainWindow::make_plug_in_windows()
{
    for (CBasePlugUi* plug_in : m_studio.ui_plug_ins()) {
        // The bars come first: the windows of the modes are given pointers to them.
        plug_in->create_control_bars(this);
        plug_in->create_tab_windows(m_top_area, m_side_area);
        for (const auto& mode : plug_in->mode_tabs()) {
            m_modes.push_back(mode.get());
            m_mode_strip->addTab(iconfun::icon(mode->first_icon), mode->title);
            m_side_area->addWidget(mode->side_window);
            if (mode->top_window)
                m_top_area->addWidget(mode->top_window);
        }
    }
    m_mode_strip->updateGeometry(); // A tab bar that is not shown yet does not tell its layout that it grew.
    connect(m_mode_strip, &QTabBar::currentChanged, this, &MainWindow::on_mode_chosen);
}

void MainWindow::on_mode_chosen(int index)
{
    if (index < 0 || index >= int(m_modes.size()))
        return;
    const CMyTabDlg& mode = *m_modes[std::size_t(index)];
    for (int i = 0; i < int(m_modes.size()); ++i) {
        const CMyTabDlg& tab = *m_modes[std::size_t(i)];
        m_mode_strip->setTabIcon(i, iconfun::icon(i == index ? tab.second_icon : tab.first_icon));
        // First all others are left.
        for (CChildDlg* window : {tab.top_window, tab.side_window})
            if (window && i != index)
                window->on_set_active(false);
    }
    m_side_area->setCurrentWidget(mode.side_window);
    m_top_area->setVisible(mode.top_window != nullptr);
    if (mode.top_window)
        m_top_area->setCurrentWidget(mode.top_window);
    // The property bar belongs to both modes, the timeline bar to the one of the timebars.
    for (CBasePlugUi* plug_in : m_studio.ui_plug_ins())
        for (CMyControlBar* bar : plug_in->control_bars())
            if (bar->follows_modes)
                bar->show_bar(bar->allowedAreas().testFlag(Qt::RightDockWidgetArea)
                              || mode.name == QLatin1String("Timebar"));
    for (CChildDlg* window : {mode.top_window, mode.side_window})
        if (window)
            window->on_set_active(true);
    m_studio.world().broadcast(tarn::ui_mode_entered);
}

bool MainWindow::activate_mode(const QString& name)
{
    for (int i = 0; i < int(m_modes.size()); ++i) {
        if (m_modes[std::size_t(i)]->name != name)
            continue;
        m_mode_strip->setCurrentIndex(i);
        return true;
    }
    return false;
}

QString MainWindow::active_mode() const
{
    const int index = m_mode_strip->currentIndex();
    return index >= 0 && index < int(m_modes.size()) ? m_modes[std::size_t(index)]->name : QString();
}

CChildDlg* MainWindow::property_page() const
{
    for (CBasePlugUi* plug_in : m_studio.ui_plug_ins())
        for (CMyControlBar* bar : plug_in->control_bars())
            if (bar->follows_modes && bar->allowedAreas().testFlag(Qt::RightDockWidgetArea))
                return front_page(bar);
    return nullptr;
}

CChildDlg* MainWindow::side_page() const
{
    return front_page(m_side_area->currentWidget());
}

void MainWindow::show_problem_count(int count)
{
    m_problem_count->setIcon(iconfun::icon(warning_icon));
    m_problem_count->setText(count == 1 ? lang(u"1 个问题", u"1 problem")
                                        : lang(u"%1 个问题", u"%1 problems").arg(count));
    m_problem_count->setVisible(count > 0);
}

// What is shown ---------------------------------------------------------------------------------------------------------------

void MainWindow::update_document()
{
    const QString& path = m_studio.file_name();
    const QString name = path.isEmpty() ? lang(u"未命名", u"Untitled") : filefun::get_pure_filename(path, 1);
    const QString copy = m_studio.is_copy() ? lang(u" [副本]", u" [Copy]") : QString();
    const QString playing = m_studio.is_playing() ? lang(u" [预览]", u" [Preview]") : QString();
    setWindowTitle(QStringLiteral("%1[*]%2%3 - Tarn studio").arg(name, copy, playing));
    setWindowModified(m_studio.is_changed());
    update_edit_menu();
    m_view->set_preview(m_studio.is_playing());
    const bool begins = m_studio.is_playing() && !m_shows_preview;
    m_shows_preview = m_studio.is_playing();
    if (begins)
        m_view->setFocus();
}

/// Scripts stand still while something is read or written.
tarn::Status MainWindow::work(const QString& what, const CBaseWorld::Work& job)
{
    m_studio.world().scripts().set_paused(true);
    auto status = do_watched(this, what, job);
    m_studio.world().scripts().set_paused(false);
    return status;
}

// A text that is being edited in the view becomes a step of its own first.

bool MainWindow::undo()
{
    m_view->finish_text();
    return m_studio.undo();
}

bool MainWindow::redo()
{
    m_view->finish_text();
    return m_studio.redo();
}

void MainWindow::toggle_preview()
{
    m_view->finish_text();
    m_studio.set_playing(!m_studio.is_playing());
}
