#include "dlg_prop_timer_script.h"

#include "animation/timebar.h"
#include "core/language.h"
#include "frame/boxes.h"
#include "frame/cmd_test.h"
#include "frame/str_input.h"
#include "gui_scene/gui_plug_scene.h"
#include "script/config_scene.h"
#include "timeline_change.h"
#include "timer_lists.h"
#include "widgets/button_st.h"

using tarn::CScriptKey;
using tarn::lang;

namespace {

enum Id : int { id_list = 6567, id_new = 6184, id_edit = 6182, id_delete = 6185, id_move = 6183 };

} // namespace

CDlgPropTimerScript::CDlgPropTimerScript(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropTimerScript"), tarn::current_timebar, parent)
{
}

QWidget* CDlgPropTimerScript::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name == QLatin1String("CReportListTimerScript"))
        return m_list = new CReportListTimerScript(parent);
    return nullptr;
}

void CDlgPropTimerScript::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    // The script editor opens when the step of undo is over.
    connect(button(id_new), &QAbstractButton::clicked, this, [this] { add_key(); });
    connect(button(id_edit), &QAbstractButton::clicked, this, [this] { edit_key(); });
    const auto remove = [this] {
        if (const CScriptKey* key = selected_key())
            remove_key(key->time());
    };
    on_click(id_delete, remove);
    on_click(id_move, [this] { move_key(); });
    connect(m_list, &CReportList::item_clicked, this, [this] { choose_key(); });
    connect(m_list, &CReportListTimerRows::navigated, this, [this] { choose_key(); });
    connect(m_list, &CReportList::item_double_clicked, this, [this] { edit_key(); });
    connect(m_list, &CReportList::delete_pressed, this, remove);
    button(id_move)->setEnabled(false);
}

void CDlgPropTimerScript::model_changed(const tarn::ModelChange& change)
{
    if (tarn::is_of_timeline(change, scene()->animation()))
        CBoundPage::model_changed(change);
}

CTimebar* CDlgPropTimerScript::bar() const
{
    return static_cast<CTimebar*>(current());
}

const CScriptKey* CDlgPropTimerScript::selected_key() const
{
    return bar() ? static_cast<const CScriptKey*>(m_list->selected_row()) : nullptr;
}

void CDlgPropTimerScript::refresh()
{
    const CTimebar* const shown = bar();
    CBoundPage::refresh();
    std::vector<void*> rows;
    if (shown)
        rows.assign(shown->script_keys().begin(), shown->script_keys().end());
    void* chosen = shown ? shown->script_key(m_key_time) : nullptr;
    m_list->show_rows(rows, chosen || rows.empty() ? chosen : rows.front());
    enable_buttons();
}

void CDlgPropTimerScript::enable_buttons()
{
    const bool is_there = bar();
    const bool is_chosen = selected_key();
    m_list->setEnabled(is_there);
    button(id_new)->setEnabled(is_there);
    button(id_move)->setEnabled(is_there);
    button(id_edit)->setEnabled(is_chosen);
    button(id_delete)->setEnabled(is_chosen);
}

void CDlgPropTimerScript::choose_key()
{
    if (const CScriptKey* key = selected_key())
        m_key_time = key->time();
    enable_buttons();
}

/// A time that the bar reaches, or is let reach; none when the author gives it up. A prompt that is cancelled is 0.
std::optional<float> CDlgPropTimerScript::ask_time(CTimebar& bar, const QString& prompt)
{
    QString answer;
    PopDlgStrInput(this, prompt, lang(u"脚本触发", u"Script"), QStringLiteral("0"), answer, 300, 1);
    const float time = bar.time_unit().time_of(tarn::TimeUnit::typed(answer));
    if (!(time >= 0 && time <= tarn::max_time)) {
        tarn::boxes::error(this, lang(u"时间输入有误！", u"Input Error!"));
        return {};
    }
    if (bar.get_total_length() < time) {
        if (!tarn::boxes::confirm(this, lang(u"触发事件超过了总时间！是否延长时间轴？", u"Extend total time?")))
            return {};
        bar.set_total_length(time);
    }
    return time;
}

void CDlgPropTimerScript::add_key()
{
    CTimebar* const shown = bar();
    if (!shown)
        return;
    std::optional<float> time;
    const auto insert = [&] {
        time = ask_time(*shown,
                        shown->shows_frames() ? lang(u"请输入脚本触发的帧数", u"Trigger Frame:")
                                              : lang(u"请输入脚本触发的时间(秒)", u"Trigger Time in second:"));
        if (!time)
            return;
        shown->insert_script_key(*time);
        shown->create_script_function(*time);
        m_key_time = *time;
        tell_changed();
    };
    run_action(insert, lang(u"新建脚本关键帧", u"New Script Key"));
    if (time)
        open_script(*time);
}

void CDlgPropTimerScript::open_script(float time)
{
    if (const CTimebar* shown = bar())
        CDlgCmdTest::do_modal(shown->get_script_name(time), world(), this, -1);
}

void CDlgPropTimerScript::edit_key()
{
    CTimebar* const shown = bar();
    const CScriptKey* const key = selected_key();
    if (!shown || !key)
        return;
    const float time = key->time();
    if (!scene()->functions().find_function(key->function())) {
        const bool creates = tarn::boxes::confirm(
            this,
            lang(u"脚本已经丢失，选择YES重新创建脚本，选择取消，删除该关键帧",
                 u"Script is lost!\r\nPress Yes to Create new one.\r\nNo to remove this script key."));
        const auto answer = [&] { creates ? void(shown->create_script_function(time)) : remove_key(time); };
        run_action(answer, lang(u"脚本关键帧", u"Script Key"));
        if (!creates)
            return;
    }
    open_script(time);
}

void CDlgPropTimerScript::remove_key(float time)
{
    CTimebar* const shown = bar();
    if (!shown)
        return;
    shown->remove_script_key(time);
    tell_changed();
}

void CDlgPropTimerScript::move_key()
{
    CTimebar* const shown = bar();
    const CScriptKey* const key = selected_key();
    if (!shown || !key)
        return;
    const float from = key->time();
    const auto to = ask_time(*shown,
                             shown->shows_frames() ? lang(u"请输入脚本触发的帧数", u"Trigger frame:")
                                                   : lang(u"请输入脚本触发的时间(秒)", u"Trigger time in second:"));
    if (!to)
        return;
    if (shown->is_script_key_time(*to))
        return tarn::boxes::error(this, lang(u"该时间已经有关键帧存在!", u"There is a key script already!"));
    shown->change_key_time(tarn::KeyKind::Script, from, *to);
    m_key_time = *to;
    tell_changed();
}
