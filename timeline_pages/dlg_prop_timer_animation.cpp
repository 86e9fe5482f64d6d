#include "dlg_prop_timer_animation.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "dlg_target_pick.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/menufun.h"
#include "frame/str_cmd.h"
#include "frame/str_input.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/value_part.h"
#include "timeline_change.h"
#include "timer_lists.h"
#include "widgets/button_st.h"
#include "widgets/iconfun.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QLineEdit>

#include <algorithm>

using tarn::Channel;
using tarn::lang;
using tarn::ModelObject;
using tarn::TimebarState;
using tarn::TimerObjectState;
using tarn::TimerObjectType;
using tarn::Value;
using tarn::VarType;

namespace {

enum Id : int {
    id_seconds = 6228,
    id_frames = 6229,
    id_frame_rate = 6600,
    id_objects = 6187,
    id_remove_object = 6191,
    id_retarget = 6940,
    id_add_script = 6190,
    id_command = 6193,
    id_edit_command = 6192,
    id_hide_system = 6196,
    id_variables = 6186,
    id_variable_name = 6941,
    id_add_variable = 6188,
    id_remove_variable = 6189,
    id_clear_variable = 6195,
};

constexpr int has_keys_icon = 6954;

constexpr int channel_boxes[] = {6225, 6226, 6227, 6091, 6092, 6093}; ///< by the channels' bits

bool is_no_script(const ModelObject& object)
{
    return static_cast<const CTimerObject&>(object).type() != TimerObjectType::Script;
}

template <Channel channel>
Value shown_channel(const ModelObject&, const Value& flags, tarn::Part)
{
    return (quint32(tarn::number_of(flags)) & bit(channel)) != 0;
}

template <Channel channel>
Value stored_channel(const ModelObject& object, const Value& on, tarn::Part)
{
    const quint32 flags = static_cast<const CTimerObject&>(object).flags();
    return qint64(tarn::number_of(on) != 0 ? flags | bit(channel) : flags & ~bit(channel));
}

template <Channel channel>
constexpr tarn::FieldRow channel_row_of()
{
    return {.control = channel_boxes[int(channel)],
            .field = tarn::key<&TimerObjectState::flags>,
            .follows = tarn::Follows::Redraw,
            .reset = tarn::Default::None,
            .conversion = {.shown = shown_channel<channel>, .stored = stored_channel<channel>},
            .enabled_if = is_no_script,
            .target = &tarn::current_timer_object};
}

constexpr tarn::FieldRow mode_row(int control, int mode)
{
    return {.control = control,
            .field = tarn::key<&TimebarState::display_mode>,
            .reset = tarn::Default::None,
            .option = mode};
}

constexpr tarn::FieldRow rows[] = {
    mode_row(id_seconds, TimebarState::seconds_mode),
    mode_row(id_frames, TimebarState::frames_mode),
    {.control = id_frame_rate,
     .field = tarn::key<&TimebarState::frame_rate>,
     .number = {.format = "%.0f", .minimum = 1}},
    channel_row_of<Channel::Position>(),
    channel_row_of<Channel::Rotation>(),
    channel_row_of<Channel::Scale>(),
    channel_row_of<Channel::Color>(),
    channel_row_of<Channel::Transparency>(),
    channel_row_of<Channel::Show>(),
};

struct VarMenuRow {
    int command;
    const char16_t* chinese;
    const char16_t* english;
    VarType type;
};
constexpr VarMenuRow variable_menu[] = {{32789, u"整数(INT)", u"Whole Number (INT)", VarType::Int},
                                        {32783, u"浮点数(FLOAT)", u"Number (FLOAT)", VarType::Float},
                                        {32784, u"坐标(VEC)", u"Vector (VEC)", VarType::Vec},
                                        {32785, u"颜色(DWORD)", u"Color (DWORD)", VarType::Color},
                                        {32787, u"矩阵(MAT)", u"Matrix (MAT)", VarType::Mat}};

} // namespace

CDlgPropTimerAnimation::CDlgPropTimerAnimation(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropTimerAnimation"), tarn::current_timebar, parent)
{
}

QWidget* CDlgPropTimerAnimation::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name == QLatin1String("CReportListTimerCmd"))
        return m_objects = new CReportListTimerCmd(parent);
    if (class_name == QLatin1String("CReportListTimerVar"))
        return m_variables = new CReportListTimerVar(parent);
    return nullptr;
}

void CDlgPropTimerAnimation::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    for (const int id : channel_boxes)
        control_as<QCheckBox>(id)->setIconSize({10, 10}); // There is not much room.
    control_as<CSuperEdit>(id_frame_rate)->set_truncating(true);
    m_command.emplace(*control_as<QLineEdit>(id_command));
    m_variable_name.emplace(*control_as<QLineEdit>(id_variable_name));
    new tarn::EnterWatch(*this, [this] {
        rename_variable();
        enter_command();
    });
    connect(control_as<QLineEdit>(id_variable_name), &QLineEdit::editingFinished, this, [this] { rename_variable(); });

    connect(m_objects, &CReportList::item_clicked, this, [this] { choose_object(); });
    connect(m_objects, &CReportListTimerRows::navigated, this, [this] { choose_object(); });
    connect(m_objects, &CReportList::item_double_clicked, this, [this] { retarget(); });
    connect(m_objects, &CReportList::delete_pressed, this, [this] { remove_object(); });
    on_click(id_remove_object, [this] { remove_object(); });
    on_click(id_retarget, [this] { retarget(); });
    on_click(id_add_script, [this] { add_script_object(); });
    on_click(id_edit_command, [this] { edit_command(); });

    connect(m_variables, &CReportList::item_clicked, this, [this] { choose_variable(); });
    connect(m_variables, &CReportListTimerRows::navigated, this, [this] { choose_variable(); });
    connect(m_variables, &CReportList::delete_pressed, this, [this] { remove_variable(); });
    connect(control_as<QCheckBox>(id_hide_system), &QCheckBox::clicked, this, [this] { refresh(); });
    on_click(id_add_variable, [this] { add_variable(); });
    on_click(id_remove_variable, [this] { remove_variable(); });
    connect(button(id_clear_variable), &QAbstractButton::clicked, this, [this] { clear_variable(); });
}

void CDlgPropTimerAnimation::model_changed(const tarn::ModelChange& change)
{
    if (tarn::is_of_timeline(change, scene()->animation()))
        CBoundPage::model_changed(change);
}

CTimebar* CDlgPropTimerAnimation::bar() const
{
    return static_cast<CTimebar*>(current());
}

CTimerObject* CDlgPropTimerAnimation::object() const
{
    const CTimebar* shown = bar();
    return shown ? shown->current_object() : nullptr;
}

CTCommandScript* CDlgPropTimerAnimation::script() const
{
    return dynamic_cast<CTCommandScript*>(object());
}

// Showing ------------------------------------------------------------------------------------------------------------

void CDlgPropTimerAnimation::refresh()
{
    show_enabled();
    CBoundPage::refresh();
    const CTimebar* const shown = bar();
    CTimerObject* const current = object();
    const CTCommandScript* const command = script();
    std::vector<void*> objects;
    if (shown)
        objects.assign(shown->objects().begin(), shown->objects().end());
    m_objects->show_rows(objects, current);
    CTVar* const variable = current ? current->current_variable() : nullptr;
    m_variables->show_rows(listed_variables(), variable);
    m_command->show(command ? command->script() : QString(), command ? command->id() : 0);
    m_variable_name->show(variable ? variable->name() : QString(), variable ? variable->id() : 0);
    show_channels();
}

std::vector<void*> CDlgPropTimerAnimation::listed_variables() const
{
    std::vector<void*> listed;
    const bool hides_system = control_as<QCheckBox>(id_hide_system)->isChecked();
    if (const CTimerObject* shown = object())
        for (CTVar* variable : shown->variables())
            if (!hides_system || !variable->is_system())
                listed.push_back(variable);
    return listed;
}

void CDlgPropTimerAnimation::show_enabled()
{
    const CTimerObject* const current = object();
    const bool is_script = script();
    const CTVar* const variable = current ? current->current_variable() : nullptr;
    const auto is_enabled = [&](int id) {
        switch (id) {
        case id_command:
        case id_edit_command:
        case id_add_variable:
        case id_remove_variable: return is_script;
        case id_hide_system:
        case id_variables: return current != nullptr;
        case id_retarget: return current && !is_script;
        case id_variable_name: return variable && !variable->is_system();
        default: return bar() != nullptr;
        }
    };
    std::vector<int> of_rows;
    for (const tarn::FieldRow* row : field_rows())
        of_rows.push_back(row->control);
    for (auto widget = controls().begin(); widget != controls().end(); ++widget)
        if (std::find(of_rows.begin(), of_rows.end(), widget.key()) == of_rows.end())
            widget.value()->setEnabled(is_enabled(widget.key()));
}

/// A channel that has keys bears a key.
void CDlgPropTimerAnimation::show_channels()
{
    const CTimerObject* const current = object();
    for (int i = 0; i < int(std::size(channel_boxes)); ++i) {
        auto* box = control_as<QCheckBox>(channel_boxes[i]);
        const CTVar* variable = current ? current->channel_variable(Channel(i)) : nullptr;
        const qsizetype count = variable ? variable->keys().size() : 0;
        if (box->icon().isNull() != (count == 0))
            box->setIcon(count ? iconfun::icon(has_keys_icon) : QIcon());
        box->setToolTip(count ? lang(u"%1 个关键帧", u"%1 keys").arg(count) : lang(u"没有关键帧", u"no keys"));
    }
}

// Timer objects ------------------------------------------------------------------------------------------------------

void CDlgPropTimerAnimation::choose_object()
{
    if (CTimebar* shown = bar()) {
        shown->set_current_object(static_cast<CTimerObject*>(m_objects->selected_row()));
        tell_changed();
    }
}

void CDlgPropTimerAnimation::remove_object()
{
    CTimebar* const shown = bar();
    if (!shown)
        return;
    shown->remove_obj(shown->current_object());
    tell_changed();
}

void CDlgPropTimerAnimation::add_script_object()
{
    CTimebar* const shown = bar();
    if (!shown)
        return;
    shown->set_current_object(shown->create_script_object());
    tell_changed();
}

void CDlgPropTimerAnimation::retarget()
{
    CTimerObject* const changed = object();
    if (!changed || changed->type() == TimerObjectType::Script)
        return;
    const auto target = CDlgTargetPick::pick(this, *scene(), *changed);
    if (!target || !changed->set_target({*target}))
        return;
    tell_changed();
}

// Variables ----------------------------------------------------------------------------------------------------------

void CDlgPropTimerAnimation::choose_variable()
{
    if (CTimerObject* current = object()) {
        current->set_current_variable(static_cast<CTVar*>(m_variables->selected_row()));
        tell_changed();
    }
}

void CDlgPropTimerAnimation::clear_variable()
{
    CTimerObject* const current = object();
    if (!current || !m_variables->selected_row() || !current->current_variable())
        return;
    current->set_current_variable(nullptr);
    tell_changed();
}

void CDlgPropTimerAnimation::add_variable()
{
    CTCommandScript* const owner = script();
    if (!owner)
        return;
    std::vector<tarn::boxes::MenuItem> items;
    for (const VarMenuRow& row : variable_menu)
        items.push_back({.id = row.command, .text = lang(row.chinese, row.english)});
    const int command = menufun::pop_menu(this, items);
    const auto* row = std::find_if(std::begin(variable_menu), std::end(variable_menu),
                                   [command](const VarMenuRow& candidate) { return candidate.command == command; });
    if (row == std::end(variable_menu))
        return;
    if (CTVar* variable = owner->create_var(row->type))
        ask_first_value(*variable);
}

void CDlgPropTimerAnimation::ask_first_value(CTVar& variable)
{
    tarn::KeyValue value(variable.type());
    QString answer;
    PopDlgStrInput(this, lang(u"请输入变量的初始值", u"Init Variable"), variable.name(),
                   CTVar::get_string_from_var(value), answer, 300, 1);
    if (answer.isEmpty())
        return;
    if (!variable.get_var_from_string(answer, value))
        return tarn::boxes::error(
            this,
            lang(u"“%1”不是%2的值。", u"\"%1\" is no value of the type %2.").arg(answer, variable.get_type_name(1)));
    variable.set_key_value(0, value);
    variable.object()->set_current_variable(&variable);
    tell_changed();
}

void CDlgPropTimerAnimation::remove_variable()
{
    CTCommandScript* const owner = script();
    auto* const gone = static_cast<CTVar*>(m_variables->selected_row());
    if (!owner || !gone || !owner->current_variable())
        return;
    owner->remove_var(gone);
    tell_changed();
}

void CDlgPropTimerAnimation::rename_variable()
{
    CTimerObject* const owner = object();
    CTVar* const variable = owner ? owner->current_variable() : nullptr;
    const QString name = m_variable_name->text().trimmed();
    m_variable_name->done();
    if (!variable || variable->is_system() || name == variable->name())
        return;
    const bool is_taken = std::any_of(owner->variables().begin(), owner->variables().end(),
                                      [&](const CTVar* other) { return other != variable && other->name() == name; });
    if (name.isEmpty() || is_taken) {
        refresh();
        if (is_taken)
            tarn::boxes::error(this,
                               lang(u"已有名为“%1”的变量。", u"There is a variable called \"%1\" already.").arg(name));
        return;
    }
    auto* command = script();
    command ? command->rename_var(variable, name) : variable->set_name(name);
    tell_changed();
}

// Commands -----------------------------------------------------------------------------------------------------------

void CDlgPropTimerAnimation::set_command(const QString& line)
{
    CTCommandScript* const command = script();
    if (!command)
        return;
    const auto set = [&] {
        command->set_script(line);
        command->analyze_script();
    };
    run_action(set, lang(u"脚本命令", u"Script Command"));
    m_command->done();
}

void CDlgPropTimerAnimation::enter_command()
{
    if (!script())
        return;
    set_command(m_command->text());
    refresh();
}

void CDlgPropTimerAnimation::edit_command()
{
    const CTCommandScript* const edited = script();
    if (!edited)
        return;
    QStringList names;
    for (const CTVar* variable : edited->variables())
        names.append(variable->name());
    QString line = m_command->text();
    QString command;
    QStringList parameters;
    g_seperate_cmd_line_with_pars(line, command, parameters);
    if (!g_edit_str_cmd(this, *world(), get_cmd_id_from_str(command, *world()), command, parameters, names, line))
        return;
    set_command(line);
    tell_changed();
}
