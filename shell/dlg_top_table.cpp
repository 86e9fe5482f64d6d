#include "dlg_top_table.h"

#include "core/language.h"
#include "design/align_selection.h"
#include "design/dlg_manager_align.h"
#include "dlg_tool_main.h"
#include "engine/base_world.h"
#include "frame/dlg_group.h"
#include "gui_scene/gui_plug_scene.h"
#include "prop_bar.h"
#include "widgets/button_st.h"
#include "widgets/wrap_layout.h"

#include <QTabBar>

using tarn::Dimension;
using tarn::Edge;
using tarn::lang;
using tarn::ViewAids;

namespace {

enum Tab : int { tab_dialog, tab_control, tab_style, tab_menu };

enum Id : int {
    id_tabs = 6000,
    id_ruler = 6159,
    id_snap = 6555,
    id_coordinates = 6161,
    id_guide_lines = 6163,
    id_selection_mode = 6162,
};

constexpr int template_align = 6365;

/// Of the form: what they hold changes the interface, which is not for while it runs.
constexpr QLatin1String arranging_groups[] = {
    QLatin1String("align"),
    QLatin1String("size"),
    QLatin1String("distribution"),
    QLatin1String("screen"),
};

} // namespace

/// The switch of an aid that works only while the rulers are shown.
struct CDlgTopTable::AidSwitch {
    int id;
    quint32 ViewAids::*flag;
    bool is_drawn; ///< in the views
};

constexpr CDlgTopTable::AidSwitch CDlgTopTable::needing_rulers[] = {
    {id_snap, &ViewAids::snap, false},
    {id_coordinates, &ViewAids::coordinate_display, true},
    {id_guide_lines, &ViewAids::guide_lines, true},
};

CDlgTopTable::CDlgTopTable(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgTopTable"), parent) {}

void CDlgTopTable::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    for (auto control = controls().begin(); control != controls().end(); ++control)
        if (auto* icon_button = qobject_cast<CButtonST*>(*control)) {
            icon_button->SetIcon(control.key());
            icon_button->setAccessibleName(icon_button->toolTip());
        }
    wrap_items_of(*layout()->itemAt(0)->widget());
    init_tabs();
    init_arranging();
    init_switches();
}

void CDlgTopTable::init_tabs()
{
    auto* tabs = control_as<QTabBar>(id_tabs);
    tabs->addTab(lang(u"窗口", u"Dialog"));
    tabs->addTab(lang(u"控件", u"Control"));
    tabs->addTab(lang(u"风格", u"Style"));
    tabs->addTab(lang(u"菜单", u"Menu"));
    tabs->setExpanding(false);
    connect(tabs, &QTabBar::currentChanged, this, [this](int index) { on_tab(index); });
}

void CDlgTopTable::init_arranging()
{
    m_align = new CDlgManagerAlign;
    m_align->Create(template_align, this);
    m_align->hide();

    const auto add = [this](int id, auto arrange) {
        on_click(id, [this, arrange] {
            arrange();
            show_arranged();
        });
    };
    add(6150, [this] { m_align->align(Edge::Left); });
    add(6151, [this] { m_align->align(Edge::MiddleX); });
    add(6152, [this] { m_align->align(Edge::Right); });
    add(6153, [this] { m_align->align(Edge::Top); });
    add(6084, [this] { m_align->align(Edge::MiddleY); });
    add(6154, [this] { m_align->align(Edge::Bottom); });
    add(6155, [this] { m_align->match(Dimension::Width); });
    add(6505, [this] { m_align->match(Dimension::Height); });
    add(6088, [this] { m_align->match(Dimension::Both); });
    add(6089, [this] { m_align->distribute(Qt::Horizontal); });
    add(6090, [this] { m_align->distribute(Qt::Vertical); });

    add(6552, [this] { align_to_area(Edge::Left); });
    add(6554, [this] { align_to_area(Edge::Right); });
    add(6518, [this] { align_to_area(Edge::Top); });
    add(6521, [this] { align_to_area(Edge::Bottom); });
    add(6549, [this] { align_to_area(Edge::MiddleX); });
    add(6516, [this] { align_to_area(Edge::MiddleY); });
}

void CDlgTopTable::init_switches()
{
    on_click(id_ruler, [this] { on_ruler(); });
    for (const AidSwitch& aid : needing_rulers)
        on_click(aid.id, [this, aid] { flip(aid); });
    on_click(id_selection_mode, [this] { on_selection_mode(); });
}

void CDlgTopTable::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    m_align->on_world_created(world);
    show_switches();
}

/// Menus are edited while their tab is chosen; another mode has ended that.
void CDlgTopTable::on_set_active(bool active)
{
    if (active && core())
        core()->selection().menu_editing = control_as<QTabBar>(id_tabs)->currentIndex() == tab_menu;
}

void CDlgTopTable::update_ui(int code)
{
    if (!scene() || (code != tarn::ui_full_refresh && code != tarn::ui_scene_changed))
        return;
    show_switches();
    for (const QLatin1String group : arranging_groups)
        findChild<QWidget*>(group)->setEnabled(core()->selection().editing);
}

void CDlgTopTable::on_tab(int index)
{
    if (core())
        core()->selection().menu_editing = index == tab_menu;
    if (m_tool_main)
        m_tool_main->show_page(index);
    if (!m_prop_bar)
        return;
    if (index == tab_style)
        m_prop_bar->group().show_wnd_by_id(CPropBar::page_element_editor);
    else
        m_prop_bar->group().show_wnd_by_id(index == tab_menu ? CPropBar::page_menu : CPropBar::page_dialog);
}

void CDlgTopTable::align_to_area(Edge edge)
{
    if (core() && tarn::align_selection_to_area(*core(), edge))
        update_all_views();
}

/// The property page shows the new places and sizes. Others are not notified: what is selected stays what it was.
void CDlgTopTable::show_arranged()
{
    if (core() && m_prop_bar)
        m_prop_bar->group().update_ui(core()->selection().controls_selected ? tarn::ui_control_properties
                                                                            : tarn::ui_dialog_properties);
}

void CDlgTopTable::on_ruler()
{
    if (!core())
        return;
    ViewAids& aids = core()->view_aids();
    aids.ruler = !aids.ruler;
    aids.snap = aids.ruler;
    show_switches();
    for (const AidSwitch& aid : needing_rulers)
        button(aid.id)->setEnabled(aids.ruler);
    update_all_views();
}

void CDlgTopTable::flip(const AidSwitch& aid)
{
    if (!core())
        return;
    ViewAids& aids = core()->view_aids();
    if (!aids.ruler)
        button(aid.id)->SetCheck(false);
    aids.*aid.flag = !(aids.*aid.flag);
    if (aid.is_drawn)
        update_all_views();
}

void CDlgTopTable::on_selection_mode()
{
    if (!scene())
        return;
    // The button goes on showing the mode from before the click.
    CGuiPlugScene::SelectionMode& mode = scene()->selection_mode();
    button(id_selection_mode)->SetCheck(mode.touched);
    mode.enclosed = mode.touched;
    mode.touched = !mode.enclosed;
    update_all_views();
}

void CDlgTopTable::show_switches()
{
    if (!scene())
        return;
    const ViewAids& aids = core()->view_aids();
    button(id_ruler)->SetCheck(aids.ruler);
    button(id_snap)->SetCheck(aids.snaps());
    if (aids.ruler)
        for (const AidSwitch& aid : needing_rulers) {
            button(aid.id)->SetCheck(aids.*aid.flag);
            button(aid.id)->setEnabled(true);
        }
    button(id_selection_mode)->SetCheck(scene()->selection_mode().enclosed);
}
