#include "dlg_gui_manager_timer.h"

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/str_input.h"
#include "gui_scene/gui_plug_scene.h"
#include "report_list_timer.h"
#include "widgets/button_st.h"

using tarn::lang;

namespace {

enum Id : int {
    id_new = 6568,
    id_list = 6567,
    id_top = 6106,
    id_bottom = 6013,
    id_copy = 6012,
    id_up = 6014,
    id_down = 6015,
    id_delete = 6317,
};

constexpr int menu_rename = 1; ///< the other commands of the menu have their buttons' numbers
constexpr int row_commands[] = {id_copy, 0, id_top, id_up, id_down, id_bottom, 0, id_delete}; ///< 0: a separator

struct ButtonLook {
    int id;
    int icon;
    const char16_t* chinese; ///< tip
    const char16_t* english;
};

constexpr ButtonLook looks[] = {
    {id_top, 6427, u"移到最上面，优先于其他时间轴", u"Moves it to the top, where it wins over all others"},
    {id_bottom, 6423, u"移到最下面", u"Moves it to the bottom"},
    {id_up, 6052, u"上移一行", u"Moves it up by one row"},
    {id_down, 6412, u"下移一行", u"Moves it down by one row"},
    {id_copy, 18, u"复制当前时间轴及其脚本", u"Copies the current timebar with its scripts"},
    {id_delete, 6420, u"删除当前时间轴", u"Deletes the current timebar"},
};

constexpr float usual_length = 100; ///< seconds, for a length that is none
constexpr int longest_number = 300; ///< characters

float typed_length(const QString& text)
{
    const auto seconds = float(tarn::TimeUnit::typed(text));
    return seconds > 0 ? seconds : usual_length;
}

} // namespace

CDlgGuiManagerTimer::CDlgGuiManagerTimer(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgGuiManagerTimer"), parent)
{
}

QWidget* CDlgGuiManagerTimer::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListTimer"))
        return nullptr;
    m_list = new CReportListTimer(parent);
    return m_list;
}

void CDlgGuiManagerTimer::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    for (const ButtonLook& look : looks) {
        button(look.id)->SetIcon(look.icon);
        button(look.id)->SetTooltipText(lang(look.chinese, look.english));
    }
    on_click(id_new, [this] { on_new(); });
    on_click(id_delete, [this] { on_delete(); });
    on_click(id_copy, [this] { on_copy(); });
    on_click(id_up, [this] { move(&CAnimationScene::move_up); });
    on_click(id_down, [this] { move(&CAnimationScene::move_down); });
    on_click(id_top, [this] { move(&CAnimationScene::move_front); });
    on_click(id_bottom, [this] { move(&CAnimationScene::move_end); });
    connect_list();
}

void CDlgGuiManagerTimer::connect_list()
{
    const auto choose_row = [this](int row) { choose(m_list->bar(row)); };
    connect(m_list, &CReportList::item_clicked, this, [choose_row](int row) { choose_row(row); });
    connect(m_list, &CReportListTimer::navigated, this,
            [this, choose_row] { choose_row(m_list->get_last_sel_index()); });
    connect(m_list, &CReportList::item_double_clicked, this, [this, choose_row](int row) {
        choose_row(row);
        on_rename();
    });
    connect(m_list, &CReportListTimer::rename_pressed, this, [this] { on_rename(); });
    connect(m_list, &CReportList::delete_pressed, this,
            [this] { run_action([this] { on_delete(); }, lang(u"删除时间轴", u"Delete Timebar")); });
    connect(m_list, &CReportList::menu_requested, this, [this](int row, const QPoint& place) { on_menu(row, place); });
}

CAnimationScene* CDlgGuiManagerTimer::animation() const
{
    return scene() ? &scene()->animation() : nullptr;
}

CTimebar* CDlgGuiManagerTimer::current() const
{
    return animation() ? animation()->current_bar() : nullptr;
}

CTimebar* CDlgGuiManagerTimer::editable() const
{
    return is_editing() ? current() : nullptr;
}

// Mode and refresh ------------------------------------------------------------------------------------------------------

void CDlgGuiManagerTimer::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    on_set_active(m_active);
}

void CDlgGuiManagerTimer::on_set_active(bool active)
{
    m_active = active;
    if (!animation())
        return;
    if (active)
        core()->selection().menu_editing = false;
    animation()->set_editing(active);
}

void CDlgGuiManagerTimer::update_ui(int code)
{
    if (!scene())
        return;
    switch (code) {
    case tarn::ui_full_refresh:
    case tarn::ui_timebars_changed: fill_list(); break;
    case tarn::ui_timebar_content:
        m_list->refresh_all_item_caption();
        show_current();
        break;
    case tarn::ui_mode_entered:
        if (m_active)
            Q_EMIT timebar_shown();
        break;
    default: break;
    }
}

void CDlgGuiManagerTimer::model_changed(const tarn::ModelChange& change)
{
    if (change.is_of_structure() || change.everything)
        fill_list();
    else
        m_list->refresh_all_item_caption();
}

void CDlgGuiManagerTimer::fill_list()
{
    const auto& bars = animation()->bars();
    m_list->refill_list(std::vector<void*>(bars.begin(), bars.end()));
    show_current();
}

void CDlgGuiManagerTimer::show_current()
{
    m_list->selecte_item_by_ptr_binded(current());
    for (const int id : {id_delete, id_copy, id_up, id_down, id_top, id_bottom})
        button(id)->setEnabled(current());
}

// Commands --------------------------------------------------------------------------------------------------------------

void CDlgGuiManagerTimer::on_new()
{
    if (!is_editing())
        return;
    QString answer;
    const QString text = lang(u"请输入时间轴的总时间(秒)", u"Input total time in second.");
    PopDlgStrInput(this, text, text, QStringLiteral("10"), answer, longest_number);
    if (answer.isEmpty() || !animation()->create_bar(typed_length(answer)))
        return;
    fill_list();
    broadcast(tarn::ui_timebars_changed);
    Q_EMIT timebar_shown();
}

void CDlgGuiManagerTimer::choose(CTimebar* bar)
{
    if (!animation())
        return;
    if (!bar && m_locked) {
        show_current();
        return;
    }
    animation()->set_current_bar(bar);
    if (bar)
        Q_EMIT timebar_shown();
    broadcast(tarn::ui_timebar_content);
}

void CDlgGuiManagerTimer::on_rename()
{
    CTimebar* bar = editable();
    QString name;
    if (!bar
        || !PopDlgStrInput(this, lang(u"请输入时间轴的名称", u"Name of the timebar:"), {}, bar->name(), name,
                           tarn::TimebarState::max_name)
        || name.trimmed().isEmpty())
        return;
    run_action([&] { bar->set_name(name.trimmed()); }, lang(u"重命名时间轴", u"Rename Timebar"));
    broadcast(tarn::ui_timebar_content);
}

void CDlgGuiManagerTimer::on_delete()
{
    CTimebar* bar = editable();
    if (!bar || !tarn::boxes::confirm(this, lang(u"是否确定删除时间轴", u"Ensure delete timebar:") + bar->name()))
        return;
    animation()->remove_bar(bar);
    broadcast(tarn::ui_timebars_changed);
}

void CDlgGuiManagerTimer::move(bool (CAnimationScene::*how)(CTimebar*))
{
    if (CTimebar* bar = editable()) {
        (animation()->*how)(bar);
        fill_list();
    }
}

void CDlgGuiManagerTimer::on_copy()
{
    if (CTimebar* bar = editable())
        animation()->clone_bar(bar);
}

void CDlgGuiManagerTimer::on_menu(int row, const QPoint& place)
{
    CTimebar* bar = m_list->bar(row);
    if (bar != current() || !bar)
        choose(bar);
    if (!is_editing())
        return;
    using Item = tarn::boxes::MenuItem;
    tarn::boxes::Menu menu{.items = {Item{.id = id_new, .text = button(id_new)->text()}}, .place = place};
    if (bar) {
        menu.items.push_back({.id = menu_rename, .text = lang(u"重命名...", u"Rename...")});
        for (const int id : row_commands)
            menu.items.push_back(id ? Item{.id = id, .text = button(id)->text()} : Item{});
    }
    const int chosen = tarn::boxes::menu(this, menu);
    if (chosen == menu_rename)
        on_rename();
    else if (chosen)
        button(chosen)->click();
}
