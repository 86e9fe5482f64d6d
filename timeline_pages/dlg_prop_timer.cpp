#include "dlg_prop_timer.h"

#include "animation/timebar.h"
#include "core/language.h"
#include "dlg_prop_timer_animation.h"
#include "dlg_prop_timer_script.h"
#include "engine/base_world.h"
#include "frame/rollup.h"
#include "frame/str_input.h"
#include "gui_scene/gui_plug_scene.h"
#include "timeline_change.h"
#include "widgets/button_st.h"

#include <QComboBox>
#include <QLineEdit>

using tarn::lang;
using tarn::TimebarState;

namespace {

enum Id : int { id_name = 6396, id_length = 6177, id_play_mode = 6439, id_auto_play = 6601 };

constexpr float longest = 36'000; ///< seconds that can be typed: ten hours

constexpr tarn::FieldRow row(int control, tarn::FieldKey field)
{
    return {.control = control, .field = field, .follows = tarn::Follows::Nothing};
}

constexpr tarn::FieldRow rows[] = {row(id_play_mode, tarn::key<&TimebarState::play_mode>),
                                   row(id_auto_play, tarn::key<&TimebarState::auto_play>)};

} // namespace

CDlgPropTimer::CDlgPropTimer(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropTimer"), tarn::current_timebar, parent)
{
}

void CDlgPropTimer::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    control_as<QComboBox>(id_play_mode)
        ->addItems({lang(u"只运行一次", u"Normal"), lang(u"重复播放", u"Repeat"), lang(u"摇摆播放", u"Swing"),
                    lang(u"逆向一次", u"Reverse once"), lang(u"逆向重复", u"Reverse repeat")});
    bind(rows);
    m_name.emplace(*control_as<QLineEdit>(id_name));
    on_click(id_length, [this] { ask_length(); });
    new tarn::EnterWatch(*this, [this] { enter_name(); });
    m_rollup = findChild<CMyRollup*>();
    const auto insert = [this](CGuiChildDlg* page, int template_id, const QString& title) {
        page->Create(template_id, m_rollup);
        m_rollup->InsertPage(title, page);
    };
    insert(new CDlgPropTimerAnimation, 6569, lang(u"动画制作", u"Animation"));
    insert(new CDlgPropTimerScript, 6173, lang(u"脚本触发", u"Script"));
    m_rollup->ExpandAllPages(true);
}

void CDlgPropTimer::on_world_created(CBaseWorld* world)
{
    CBoundPage::on_world_created(world);
    m_rollup->on_world_created(world);
}

void CDlgPropTimer::update_ui(int code)
{
    // A preview that begins or ends: meanwhile there is no timebar to edit.
    const int told = code == tarn::ui_scene_changed ? tarn::ui_timebars_changed : code;
    CBoundPage::update_ui(told);
    m_rollup->update_ui(told);
}

void CDlgPropTimer::model_changed(const tarn::ModelChange& change)
{
    if (tarn::is_of_timeline(change, scene()->animation()))
        CBoundPage::model_changed(change);
}

CTimebar* CDlgPropTimer::bar() const
{
    return static_cast<CTimebar*>(current());
}

void CDlgPropTimer::refresh()
{
    const CTimebar* const shown = bar();
    for (QWidget* widget : controls())
        widget->setEnabled(shown);
    CBoundPage::refresh();
    m_name->show(shown ? shown->name() : QString(), shown ? shown->id() : 0);
    if (shown)
        button(id_length)->setText(shown->time_unit().length_text(shown->get_total_length()));
}

void CDlgPropTimer::ask_length()
{
    CTimebar* const shown = bar();
    if (!shown)
        return;
    const tarn::TimeUnit unit = shown->time_unit();
    const QString prompt = unit.is_frames() ? lang(u"请输入时间轴的总帧数", u"Total frame Number:")
                                            : lang(u"请输入时间轴的总时间(秒)", u"Total time in second:");
    QString answer;
    PopDlgStrInput(this, prompt, lang(u"总时间", u"Total Length"), QStringLiteral("100"), answer, 300, 1);
    const float seconds = unit.time_of(tarn::TimeUnit::typed(answer));
    if (!(seconds > 0 && seconds <= longest))
        return;
    shown->set_total_length(seconds);
    tell_changed();
}

void CDlgPropTimer::enter_name()
{
    CTimebar* const shown = bar();
    if (!shown)
        return;
    run_action([&] { shown->set_name(m_name->text()); }, lang(u"时间轴名称", u"Name of the Timebar"));
    m_name->done();
    tell_changed();
}
