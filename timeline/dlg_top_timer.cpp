#include "dlg_top_timer.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dialog_state.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "key_table.h"
#include "row_names.h"
#include "static_timer.h"
#include "timer_object_text.h"
#include "top_timer_ids.h"
#include "widgets/button_st.h"

#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QLayout>
#include <QScrollBar>
#include <QStackedWidget>

#include <algorithm>

using namespace tarn::top_timer;
using tarn::key;
using tarn::lang;

namespace {

struct ButtonLook {
    int id;
    int icon;
};

constexpr ButtonLook looks[] = {
    {id_lock, 6200},     {id_play, icon_play}, {id_record, 6487},  {id_auto_record, 6880},
    {id_previous, 6479}, {id_next, 6495},      {id_zoom_in, 6170}, {id_zoom_out, 6171},
    {id_release, 6575},  {id_center, 6579},    {id_loop, 6882},    {id_table, 6883},
};

constexpr int captioned[] = {id_play, id_record, id_release, id_center, id_table};
constexpr int least_button = 28; ///< pixels, with the icon alone

struct SpeedRow {
    const char* text;
    float speed;
};
constexpr SpeedRow speeds[] = {{"1/8", 0.125f}, {"1/4", 0.25f}, {"1/2", 0.5f}, {"1", 1}, {"2", 2}, {"4", 4}};
constexpr int usual_speed = 3;

void set_items(QComboBox& box, const QStringList& items, int chosen)
{
    QStringList now;
    for (int i = 0; i < box.count(); ++i)
        now.append(box.itemText(i));
    if (now != items) {
        box.clear();
        box.addItems(items);
    }
    box.setCurrentIndex(chosen);
}

template <class Object>
int place_of(const std::vector<Object*>& objects, const Object* wanted)
{
    const auto found = std::find(objects.begin(), objects.end(), wanted);
    return found == objects.end() ? -1 : int(found - objects.begin());
}

template <class Object>
Object* at(const std::vector<Object*>& objects, int row)
{
    return row >= 0 && row < int(objects.size()) ? objects[std::size_t(row)] : nullptr;
}

/// Whether what the lists say may be another.
bool concerns_lists(const tarn::ModelChange& change)
{
    static const tarn::FieldKey fields[] = {
        key<&tarn::TimebarState::name>,          key<&tarn::TimebarState::total_length>,
        key<&tarn::TimerObjectState::target>,    key<&tarn::TimerObjectState::function>,
        key<&tarn::TimerObjectState::arguments>, key<&tarn::VarState::name>,
        key<&tarn::ControlState::name>,          key<&tarn::DialogState::name>,
    };
    return change.everything || change.is_of_structure()
        || std::any_of(std::begin(fields), std::end(fields),
                       [&](const tarn::FieldKey& field) { return change.is_of(field); });
}

} // namespace

CDlgTopTimer::CDlgTopTimer(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgTopTimer"), parent) {}

QWidget* CDlgTopTimer::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name == QLatin1String("RowNames"))
        return m_names = new tarn::RowNames(parent);
    if (class_name != QLatin1String("CStaticTimer"))
        return nullptr;
    m_timer = new CStaticTimer(parent);
    return m_timer;
}

void CDlgTopTimer::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_pages = findChild<QStackedWidget*>(QStringLiteral("pages"));
    m_names->set_timeline(*m_timer);
    set_up_buttons();
    set_up_scroll_bar();
    on_choose(id_bars, [this](int row) { choose_bar(row); });
    on_choose(id_targets, [this](int row) { choose_target(row); });
    on_choose(id_variables, [this](int row) { choose_variable(row); });
    connect(m_timer, &CStaticTimer::play_toggled, this, [this] { show_playing(); });
    connect(m_timer, &CStaticTimer::play_ended, this, [this] { on_play_ended(); });
    connect(m_timer, &CStaticTimer::time_changed, this, [this] { m_bar_time = bar() ? bar()->current_time() : 0; });
    connect(m_timer, &CStaticTimer::view_changed, this, [this] { show_thumb(); });
    m_timer->installEventFilter(this);

    QWidget* page = m_pages->findChild<QWidget*>(QStringLiteral("table_page"));
    m_table = new tarn::KeyTable(page);
    auto* fill = new QVBoxLayout(page);
    fill->setContentsMargins({});
    fill->addWidget(m_table);
    show_key_table(false);
    show_auto_record();
}

/// Captions give way to the icons where there is no room for them.
void CDlgTopTimer::fit_captions()
{
    int missing = 0;
    for (const int id : captioned)
        missing += m_captions[id].second - button(id)->width();
    const auto* scroll = control_as<QScrollBar>(id_scroll);
    const int spare = scroll->width() - scroll->minimumWidth();
    const bool fits = missing <= spare;
    for (const int id : captioned) {
        CButtonST& shown = *button(id);
        if (shown.text().isEmpty() != fits)
            continue;
        shown.setText(fits ? m_captions[id].first : QString());
        if (shown.toolTip().isEmpty())
            shown.setToolTip(m_captions[id].first);
    }
}

void CDlgTopTimer::resizeEvent(QResizeEvent* event)
{
    CGuiChildDlg::resizeEvent(event);
    fit_captions();
}

void CDlgTopTimer::set_up_buttons()
{
    for (const ButtonLook& look : looks) {
        button(look.id)->SetIcon(look.icon);
        button(look.id)->setAccessibleName(button(look.id)->text().isEmpty() ? button(look.id)->toolTip()
                                                                             : button(look.id)->text());
    }
    for (const int id : captioned) {
        m_captions[id] = {button(id)->text(), button(id)->sizeHint().width()};
        button(id)->setMinimumWidth(least_button);
    }
    button(id_record)->SetTooltipText(lang(u"记录当前选择集", u"Record Selection"));
    button(id_play)->SetTooltipText(lang(u"播放/暂停", u"Play/Stop"));
    const QString again = lang(u"再次选择同一项：显示全部", u"Choose the same one again to show all of them");
    for (const int id : {id_targets, id_variables}) {
        control(id)->setToolTip(again);
        control_as<QComboBox>(id)->setPlaceholderText(lang(u"全部", u"All"));
    }
    auto* speed = control_as<QComboBox>(id_speed);
    speed->setMinimumContentsLength(3);
    for (const SpeedRow& row : speeds)
        speed->addItem(QStringLiteral("×") + QLatin1String(row.text));
    speed->setCurrentIndex(usual_speed);

    on_click(id_lock, [this] {
        m_is_locked = button(id_lock)->GetCheck();
        Q_EMIT locked(m_is_locked);
    });
    on_click(id_play, [this] { m_timer->toggle_play(); });
    on_click(id_record, [this] { record(); });
    on_click(id_auto_record, [this] { set_auto_record(button(id_auto_record)->GetCheck()); });
    on_click(id_previous, [this] { go_to_key(false); });
    on_click(id_next, [this] { go_to_key(true); });
    on_click(id_zoom_in, [this] { zoom(&CStaticTimer::zoom_in); });
    on_click(id_zoom_out, [this] { zoom(&CStaticTimer::zoom_out); });
    on_click(id_release, [this] { release_objects(); });
    on_click(id_center, [this] { edit_center(); });
    on_click(id_table, [this] { show_key_table(button(id_table)->GetCheck()); });
    on_choose(id_speed, [this](int row) {
        if (bar())
            bar()->set_speed(speeds[row].speed);
    });
    for (const int id : {id_hidden_previous, id_hidden_next, id_hidden_step})
        on_click(id, [this] { update_all_views(); });
}

void CDlgTopTimer::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    if (!scene())
        return;
    m_timer->set_scene(animation(), world);
    m_table->set_scene(animation());
    connect(m_table, &tarn::KeyTable::time_chosen, this, [this](float time) {
        m_timer->set_current_time(time);
        m_timer->show_time(time);
    });
    refresh();
}

CAnimationScene* CDlgTopTimer::animation() const
{
    return scene() ? &scene()->animation() : nullptr;
}

CTimebar* CDlgTopTimer::bar() const
{
    return animation() ? animation()->current_bar() : nullptr;
}

void CDlgTopTimer::update_ui(int code)
{
    if (!scene())
        return;
    switch (code) {
    case tarn::ui_full_refresh:
    case tarn::ui_scene_changed:
        enable_controls(core()->selection().editing);
        follow_selection();
        refresh();
        break;
    case tarn::ui_control_selected:
    case tarn::ui_selection_changed:
    case tarn::ui_world_selection_changed:
        follow_selection();
        refresh();
        break;
    case tarn::ui_timebars_changed:
    case tarn::ui_timebar_content: refresh(); break;
    default: break;
    }
}

void CDlgTopTimer::model_changed(const tarn::ModelChange& change)
{
    if (concerns_lists(change))
        refresh();
    else
        m_timer->redraw();
    m_table->follow(change);
}

bool CDlgTopTimer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_timer && event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &CDlgTopTimer::update_scroll_bar, Qt::QueuedConnection);
    return CGuiChildDlg::eventFilter(watched, event);
}

void CDlgTopTimer::command(int id)
{
    if (!scene() || !is_editing())
        return;
    if (id == record_key) {
        run_action([this] { record(); }, lang(u"记录关键帧", u"Record Key"));
    } else if (id == select_again) {
        world()->api_reset_mt();
        core()->EnableGui(true);
        scene()->SetMTFunction(0, 0);
        update_all_views();
    }
}

// Lists -----------------------------------------------------------------------------------------------------------------

void CDlgTopTimer::refresh()
{
    take_bar();
    take_time();
    take_faults();
    fill_lists();
    show_playing();
    m_timer->redraw();
    m_table->refresh();
}

/// The timeline shows another timebar, or one that is of another length.
void CDlgTopTimer::take_bar()
{
    CTimebar* now = bar();
    const quint32 id = now ? now->id() : 0;
    if (id != m_shown_bar) {
        m_shown_bar = id;
        m_timer->stop_clock();
        m_timer->clear_selection();
        if (now) {
            now->set_speed(speeds[control_as<QComboBox>(id_speed)->currentIndex()].speed);
            m_timer->set_current_time(now->current_time());
        }
    } else if (!now || now->get_total_length() == m_shown_length) {
        return;
    } else if (m_timer->current_time() > now->get_total_length()) {
        m_timer->set_current_time(now->get_total_length());
    }
    m_shown_length = now ? now->get_total_length() : 0;
    update_scroll_bar();
}

/// Others show the timebar at a time, too: the cursor goes there.
void CDlgTopTimer::take_time()
{
    const CTimebar* now = bar();
    if (now && !now->is_playing() && now->current_time() != m_bar_time
        && now->current_time() != m_timer->current_time()) {
        m_timer->set_current_time(now->current_time());
        m_timer->show_time(now->current_time());
    }
}

void CDlgTopTimer::take_faults()
{
    std::vector<tarn::TimeFault> faults;
    for (const tarn::SceneModel::Problem& problem : scene()->layout_problems())
        if (bar() && problem.timebar == bar()->id())
            faults.push_back({problem.time, problem.place + QLatin1String(": ") + problem.text});
    std::stable_sort(faults.begin(), faults.end(),
                     [](const tarn::TimeFault& a, const tarn::TimeFault& b) { return a.time < b.time; });
    m_timer->set_faults(std::move(faults));
}

void CDlgTopTimer::fill_lists()
{
    QStringList bars;
    for (const CTimebar* entry : animation()->bars())
        bars.append(entry->name());
    set_items(*control_as<QComboBox>(id_bars), bars,
              place_of(animation()->bars(), static_cast<const CTimebar*>(bar())));

    QStringList targets;
    if (bar())
        for (const CTimerObject* object : bar()->objects())
            targets.append(tarn::target_text(*object));
    set_items(*control_as<QComboBox>(id_targets), targets,
              bar() ? place_of(bar()->objects(), static_cast<const CTimerObject*>(bar()->current_object())) : -1);
    fill_variables();
}

void CDlgTopTimer::fill_variables()
{
    const CTimerObject* object = bar() ? bar()->current_object() : nullptr;
    QStringList names;
    if (object)
        for (const CTVar* variable : object->variables())
            names.append(tarn::variable_text(*variable));
    set_items(*control_as<QComboBox>(id_variables), names,
              object ? place_of(object->variables(), static_cast<const CTVar*>(object->current_variable())) : -1);
}

/// What is selected in the view, and the timebar animates, becomes what the timeline shows.
void CDlgTopTimer::follow_selection()
{
    const auto objects = scene()->selected_objects();
    const quint32 id = objects.empty() ? 0 : objects.back()->id();
    if (id == m_followed_object)
        return;
    m_followed_object = id;
    if (m_is_locked || !bar() || objects.empty())
        return;
    if (const CTimerObject* object = bar()->SearchItemUsage(*objects.back()))
        bar()->set_current_object(object);
}

void CDlgTopTimer::choose_bar(int row)
{
    if (!animation())
        return;
    animation()->set_current_bar(at(animation()->bars(), row));
    refresh();
    broadcast(tarn::ui_timebar_content);
}

void CDlgTopTimer::choose_target(int row)
{
    if (!bar())
        return;
    const CTimerObject* chosen = at(bar()->objects(), row);
    bar()->set_current_object(chosen == bar()->current_object() ? nullptr : chosen);
    refresh();
    broadcast(tarn::ui_timebar_content);
}

void CDlgTopTimer::choose_variable(int row)
{
    CTimerObject* object = bar() ? bar()->current_object() : nullptr;
    if (!object)
        return;
    const CTVar* chosen = at(object->variables(), row);
    object->set_current_variable(chosen == object->current_variable() ? nullptr : chosen);
    refresh();
    broadcast(tarn::ui_timebar_content);
}
