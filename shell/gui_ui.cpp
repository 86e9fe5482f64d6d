#include "gui_ui.h"

#include "core/language.h"
#include "core/res_handle_man.h"
#include "dlg_tool_main.h"
#include "dlg_top_table.h"
#include "frame/dlg_group.h"
#include "manager/dlg_style_manager.h"
#include "manager/dlg_translations.h"
#include "page_bar.h"
#include "prop_bar.h"
#include "timeline/dlg_gui_manager_timer.h"
#include "timeline/dlg_top_timer.h"
#include "timer_control_bar.h"
#include "widgets/iconfun.h"
#include "world_pages/dlg_world.h"

#include <QAction>
#include <QMainWindow>

#include <algorithm>

using tarn::lang;

namespace {

// Templates and icons of the modes.
constexpr int template_tool_main = 6001;
constexpr int template_top_table = 6103;
constexpr int template_timebar_list = 6564;
constexpr int template_world = 7100;
constexpr int template_translations = 7300;

constexpr QSize prop_bar_size(230, 500);
constexpr QSize world_bar_size(260, 500);
constexpr QSize translation_bar_size(800, 240);
constexpr QSize timer_bar_size(800, 240);

/// Both bars have the same number in the frame; their places are remembered by name.
constexpr int bar_identifier = 59424;

template <class Window>
void destroy(Window*& window)
{
    delete window;
    window = nullptr;
}

std::unique_ptr<CMyTabDlg> make_tab(const char* name, const QString& title, int first_icon, int second_icon,
                                    CChildDlg* top, CChildDlg* side)
{
    auto tab = std::make_unique<CMyTabDlg>();
    tab->name = QLatin1String(name);
    tab->title = title;
    tab->first_icon = first_icon;
    tab->second_icon = second_icon;
    tab->top_window = top;
    tab->side_window = side;
    return tab;
}

void set_up_bar(CMyControlBar& bar, const char* name, QSize size, Qt::DockWidgetAreas areas)
{
    bar.setObjectName(QLatin1String(name));
    bar.setProperty("identifier", bar_identifier);
    bar.set_stored_sizes(size.width(), size.height());
    bar.setAllowedAreas(areas);
}

} // namespace

CGuiUI::~CGuiUI()
{
    destroy_windows();
}

void CGuiUI::create_control_bars(QMainWindow* frame)
{
    m_prop_bar = new CPropBar(lang(u"Gui属性", u"Gui Property"), frame);
    m_timer_bar = new CTimerControlBar(lang(u"时间轴", u"Timebar"), frame);

    set_up_bar(*m_prop_bar, "CPropBar", prop_bar_size, Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_prop_bar->create_pages();
    frame->addDockWidget(Qt::RightDockWidgetArea, m_prop_bar);
    add_control_bar(m_prop_bar);

    set_up_bar(*m_timer_bar, "CTimerControlBar", timer_bar_size, Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    m_timer_bar->create_page();
    frame->addDockWidget(Qt::BottomDockWidgetArea, m_timer_bar);
    add_control_bar(m_timer_bar);

    create_world_bar(frame);
    create_translation_bar(frame);
    m_prop_bar->show_bar(false);
    m_timer_bar->set_owner_frame(frame);
    m_timer_bar->show_bar(false);
}

/// Hidden at first; shown, it shares the place of the program's own panel at the left.
void CGuiUI::create_world_bar(QMainWindow* frame)
{
    m_world_bar = new CPageBar(lang(u"世界", u"World"), frame);
    m_world_bar->follows_modes = false;
    set_up_bar(*m_world_bar, "CWorldBar", world_bar_size, Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_world_bar->hold(new CDlgWorld, template_world);
    const auto docks = frame->findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
    const auto panel = std::find_if(docks.begin(), docks.end(), [frame](QDockWidget* dock) {
        return frame->dockWidgetArea(dock) == Qt::LeftDockWidgetArea;
    });
    frame->addDockWidget(Qt::LeftDockWidgetArea, m_world_bar);
    if (panel != docks.end())
        frame->tabifyDockWidget(*panel, m_world_bar);
    m_world_bar->hide();
    QObject::connect(m_world_bar->toggleViewAction(), &QAction::triggered, m_world_bar, &QWidget::raise);
    add_control_bar(m_world_bar);
}

/// Hidden at first; shown, it shares the place of the program's lists below the view.
void CGuiUI::create_translation_bar(QMainWindow* frame)
{
    m_translation_bar = new CPageBar(lang(u"译文", u"Translations"), frame);
    m_translation_bar->follows_modes = false;
    set_up_bar(*m_translation_bar, "CTranslationBar", translation_bar_size,
               Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    m_translation_bar->hold(new CDlgTranslations, template_translations);
    frame->addDockWidget(Qt::BottomDockWidgetArea, m_translation_bar);
    m_translation_bar->hide();
    QObject::connect(m_translation_bar->toggleViewAction(), &QAction::triggered, m_translation_bar, &QWidget::raise);
    add_control_bar(m_translation_bar);
}

void CGuiUI::create_tab_windows(QWidget* top_parent, QWidget* side_parent)
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_tool_main = new CDlgToolMain;
    m_tool_main->Create(template_tool_main, side_parent);
    m_top_table = new CDlgTopTable;
    m_top_table->Create(template_top_table, top_parent);
    m_timer_bar->linked_page_index = -1;
    m_timebar_list = new CDlgGuiManagerTimer;
    m_timebar_list->Create(template_timebar_list, side_parent);

    add_mode_tab(make_tab("GUI", lang(u"高级界面", u"GUI"), 6104, 6074, m_top_table, m_tool_main));
    add_mode_tab(make_tab("Timebar", lang(u"时间轴", u"Timebar"), 6073, 6075, nullptr, m_timebar_list));

    m_top_table->set_tool_main(m_tool_main);
    m_top_table->set_prop_bar(m_prop_bar);
    connect_styles();
    connect_timeline();
    add_commands();
}

void CGuiUI::connect_styles()
{
    QObject::connect(&m_tool_main->style_manager(), &CDlgStyleManager::design_page_wanted, m_prop_bar,
                     [this](int index) { m_prop_bar->group().show_wnd_by_index(index); });
}

void CGuiUI::connect_timeline()
{
    QObject::connect(m_timebar_list, &CDlgGuiManagerTimer::timebar_shown, m_prop_bar, [this] {
        m_prop_bar->group().show_wnd_by_id(CPropBar::page_timer);
        m_timer_bar->show_bar(true);
    });
    QObject::connect(&m_timer_bar->page(), &CDlgTopTimer::locked, m_timebar_list, [this](bool on) {
        m_timer_bar->set_locked(on);
        m_timebar_list->set_locked(on);
    });
}

void CGuiUI::add_commands()
{
    struct Command {
        int id;
        const char* name; ///< of the author's own keys in the settings
        const char16_t* chinese;
        const char16_t* english;
        Qt::Key keys;
        int icon;
    };
    static constexpr Command commands[] = {
        {CDlgTopTimer::record_key, "record_key", u"记录关键帧(&K)", u"Record &Key", Qt::Key_F9, 6487},
        {CDlgTopTimer::select_again, "select_tool", u"选择工具(&S)", u"&Select Tool", Qt::Key_F8, 6162},
    };
    for (const Command& command : commands) {
        auto* action = new QAction(iconfun::icon(command.icon), lang(command.chinese, command.english), m_timer_bar);
        action->setShortcut(command.keys);
        action->setObjectName(QLatin1String(command.name));
        QObject::connect(action, &QAction::triggered, &m_timer_bar->page(),
                         [this, id = command.id] { m_timer_bar->page().command(id); });
        add_menu_action(action);
    }
    auto* find = new QAction(lang(u"查找属性(&F)", u"&Find Property"), m_prop_bar);
    find->setObjectName(QStringLiteral("find_property"));
    find->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_F);
    QObject::connect(find, &QAction::triggered, m_prop_bar, &CPropBar::search);
    add_menu_action(find);
}

void CGuiUI::destroy_windows()
{
    clear_windows();
    destroy(m_tool_main);
    destroy(m_top_table);
    destroy(m_prop_bar);
    destroy(m_timer_bar);
    destroy(m_translation_bar);
    destroy(m_world_bar);
    destroy(m_timebar_list);
}

QString CGuiUI::get_plug_group()
{
    return QStringLiteral("TARN-CORE-UI-Plugins");
}

QString CGuiUI::get_plug_name()
{
    return lang(u"TARN内部UI插件", u"TARN-GUI-UI");
}
