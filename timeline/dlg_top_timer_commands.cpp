// What the buttons of the timeline's tools do.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "dlg_top_timer.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "key_table.h"
#include "static_timer.h"
#include "top_timer_ids.h"
#include "widgets/button_st.h"

#include <QFrame>
#include <QLayout>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStackedWidget>

using namespace tarn::top_timer;
using tarn::lang;

namespace {

constexpr int last_position = 100; ///< of the scroll bar, which counts in percent of the timebar's length
constexpr float end_margin = 100;  ///< pixels right of the timebar's end when it is scrolled to the end
constexpr int frame_width = 2;     ///< around the timeline while edits become keys
constexpr QColor record_color(0xe0, 0x2b, 0x2b);

/// A script object has no place to record: its variables keep the values that they have now. False without such.
bool record_variables(CTimebar& bar)
{
    const auto* script = dynamic_cast<const CTCommandScript*>(bar.current_object());
    if (!script || script->variables().empty())
        return false;
    const tarn::UserAction action(bar.journal(), lang(u"记录关键帧", u"Record Key"));
    for (CTVar* variable : script->variables())
        variable->set_key_value(bar.current_time(), variable->value_at(bar.current_time()));
    return true;
}

} // namespace

// Playing ---------------------------------------------------------------------------------------------------------------

void CDlgTopTimer::on_play_ended()
{
    if (bar() && button(id_loop)->GetCheck()) {
        bar()->active_bar(1, 1);
        m_timer->start_clock();
    }
    show_playing();
}

void CDlgTopTimer::show_playing()
{
    button(id_play)->SetIcon(bar() && bar()->is_playing() ? icon_stop : icon_play);
}

void CDlgTopTimer::go_to_key(bool next)
{
    if (!bar())
        return;
    const float now = m_timer->current_time();
    const auto time = next ? bar()->get_next_action_key_frame(now) : bar()->get_pre_action_key_frame(now);
    if (!time)
        return;
    m_timer->set_current_time(*time);
    m_timer->show_time(*time);
    update_all_views();
}

// Keys and objects ------------------------------------------------------------------------------------------------------

void CDlgTopTimer::record()
{
    if (!bar() || !is_editing())
        return;
    // After a move of the cursor that kept the pose, the timebar stands elsewhere.
    bar()->set_current_time(m_timer->current_time(), 0);
    if (bar()->record_selection(scene()->selected_objects()) == 0 && !record_variables(*bar()))
        m_timer->say(
            lang(u"请先选择要记录的窗口、控件或物体", u"First select the dialogs, controls or objects to record"));
    refresh();
    broadcast(tarn::ui_timebar_content);
    update_all_views();
}

void CDlgTopTimer::release_objects()
{
    if (!bar() || !is_editing() || scene()->selected_objects().empty()
        || !tarn::boxes::confirm(this, lang(u"是否删除时间轴对选择物体的控制?", u"Remove animation of selection?")))
        return;
    for (const tarn::ModelObject* object : scene()->selected_objects())
        bar()->remove_obj(bar()->SearchItemUsage(*object));
    refresh();
    broadcast(tarn::ui_timebar_content);
    update_all_views();
}

void CDlgTopTimer::edit_center()
{
    if (!animation())
        return;
    // Controls turn about a point, dialogs do not.
    const tarn::SelectionRecord& selection = core()->selection();
    const tarn::ModelObject* object = selection.controls_selected ? selection.current_control : nullptr;
    if (button(id_center)->GetCheck() && object)
        animation()->edit_sel_mat(*object);
    else
        animation()->end_edit();
    button(id_center)->SetCheck(animation()->edited_center().id != 0);
    update_all_views();
}

void CDlgTopTimer::set_auto_record(bool on)
{
    if (animation())
        animation()->set_auto_record(on);
    show_auto_record();
}

void CDlgTopTimer::show_auto_record()
{
    const bool on = animation() && animation()->auto_record();
    button(id_auto_record)->SetCheck(on);
    button(id_auto_record)->SetColor(CButtonST::normal_text_color, 0);
    auto* frame = qobject_cast<QFrame*>(m_timer->parentWidget());
    const int margin = on ? 0 : frame_width;
    frame->setFrameStyle(on ? int(QFrame::Box) | int(QFrame::Plain) : int(QFrame::NoFrame));
    frame->setLineWidth(frame_width);
    frame->layout()->setContentsMargins(margin, margin, margin, margin);
    QPalette colors;
    colors.setColor(QPalette::WindowText, record_color);
    frame->setPalette(colors);
}

void CDlgTopTimer::show_key_table(bool on)
{
    m_pages->setCurrentIndex(on ? 1 : 0);
    m_table->refresh();
}

// The time axis ---------------------------------------------------------------------------------------------------------

void CDlgTopTimer::set_up_scroll_bar()
{
    auto* scroll = control_as<QScrollBar>(id_scroll);
    // The thumb takes effect where it is let go.
    connect(scroll, &QScrollBar::actionTriggered, this, [this, scroll] { scroll_to(scroll->sliderPosition()); });
    connect(scroll, &QScrollBar::sliderReleased, this, [this, scroll] { scroll_to(scroll->sliderPosition()); });
}

void CDlgTopTimer::zoom(void (CStaticTimer::*how)())
{
    (m_timer->*how)();
    update_scroll_bar();
}

void CDlgTopTimer::scroll_to(int position)
{
    if (!bar())
        return;
    position = std::clamp(position, 0, last_position);
    const float visible = (float(m_timer->width()) - end_margin) * m_timer->seconds_per_pixel();
    const float origin = (bar()->get_total_length() - visible) * float(position) / float(last_position);
    m_timer->set_view_origin(std::max(origin, 0.f));
    m_timer->redraw();
}

void CDlgTopTimer::update_scroll_bar()
{
    auto* scroll = control_as<QScrollBar>(id_scroll);
    scroll->setEnabled(bar() != nullptr);
    if (!bar())
        return;
    m_timer->redraw();
    if (bar()->get_total_length() < float(m_timer->width()) * m_timer->seconds_per_pixel()) {
        scroll->setEnabled(false);
        m_timer->set_view_origin(0);
    } else {
        show_thumb();
    }
}

/// The thumb shows the origin as a share of the timebar; scrolling leaves room behind its end.
void CDlgTopTimer::show_thumb()
{
    if (!bar() || !(bar()->get_total_length() > 0))
        return;
    const float origin = m_timer->view_origin();
    const float shown = origin > 0 ? origin : m_timer->current_time();
    const QSignalBlocker blocker(control(id_scroll));
    control_as<QScrollBar>(id_scroll)->setValue(int(shown / bar()->get_total_length() * float(last_position)));
}
