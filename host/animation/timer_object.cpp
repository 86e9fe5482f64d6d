#include "timer_object.h"

#include "animation_scene.h"
#include "core/field.h"
#include "core/language.h"
#include "t_var.h"
#include "timebar.h"

#include <algorithm>
#include <span>

using namespace tarn;

namespace {

struct TypeRow {
    const char* class_name;
    const char16_t* chinese;
    const char16_t* english;
};

const TypeRow& row_of(TimerObjectType type)
{
    static constexpr TypeRow rows[] = {
        {"CTCommandScript", u"脚本", u"Script"},        {"CTimerObjectModel", u"模型", u"Model"},
        {"CTimerObjectCtrl", u"控件", u"Control"},      {"CTimerObjectDialog", u"窗口", u"Dialog"},
        {"CTimerObjectCamera", u"相机", u"Camera"},     {"CTimerObjectPanel", u"面板", u"Panel"},
        {"CTimerObjectSkeleton", u"骨骼", u"Skeleton"}, {"CTimerObjectAniModel", u"动画模型", u"Animated Model"}};
    return rows[int(type)];
}

} // namespace

CTimerObject::CTimerObject(CAnimationScene& scene, StatePtr state)
    : ModelObject(scene.document(), std::move(state)), m_scene(scene)
{
}

const char* CTimerObject::class_name() const
{
    return row_of(type()).class_name;
}

QString CTimerObject::get_type_name() const
{
    return lang(row_of(type()).chinese, row_of(type()).english);
}

QString CTimerObject::name() const
{
    if (type() == TimerObjectType::Script)
        return object_state().function + object_state().arguments;
    const ModelObject* object = target_object();
    const FieldBase* field = object ? object->fields().find("name") : nullptr;
    const Value name = field ? object->property(*field) : Value();
    const auto* text = std::get_if<QString>(&name);
    return text ? *text : QString();
}

CTimebar* CTimerObject::timebar() const
{
    return static_cast<CTimebar*>(parent());
}

ModelObject* CTimerObject::target_object() const
{
    const AnimationTarget* kind = m_scene.target_kind(type());
    ModelObject* object = kind ? document().find(target().id) : nullptr;
    return object && object->is_attached() && kind->takes(*object) ? object : nullptr;
}

ModelObject* CTimerObject::path_object() const
{
    const AnimationTarget* kind = m_scene.target_kind(type());
    ModelObject* object = kind ? document().find(path().id) : nullptr;
    return object && object->is_attached() && kind->can_follow(*object) ? object : nullptr;
}

bool CTimerObject::is_on(Channel channel) const
{
    return !(bit(channel) & chosen_channels) || (flags() & bit(channel));
}

void CTimerObject::after_write(const WrittenFields& written)
{
    const CTVar* shares = channel_variable(Channel::PathShare);
    const CTVar* places = channel_variable(Channel::Position);
    if (written.is_whole() || !written.contains(key<&TimerObjectState::path>) || !path_object() || !places
        || (shares && !shares->keys().is_empty()))
        return;
    const KeyTrack keys = places->keys(); // The list of variables is about to become longer.
    for (qsizetype i = 0; i < keys.size(); ++i) {
        Pose pose;
        pose.set(Channel::Position, keys.value(i));
        record(keys.time(i), pose);
    }
}

void CTimerObject::state_changed()
{
    m_scene.content_changed();
}

void CTimerObject::children_changed()
{
    m_variables.changed();
    m_scene.content_changed();
}

// Variables ----------------------------------------------------------------------------------------------------------

const std::vector<CTVar*>& CTimerObject::variables() const
{
    return m_variables.get(document(), object_state().variables);
}

CTVar* CTimerObject::current_variable() const
{
    const auto found = std::find_if(variables().begin(), variables().end(),
                                    [this](const CTVar* variable) { return variable->id() == m_current_variable; });
    return found == variables().end() ? nullptr : *found;
}

void CTimerObject::set_current_variable(const CTVar* variable)
{
    m_current_variable = variable ? variable->id() : 0;
}

CTVar* CTimerObject::channel_variable(Channel channel) const
{
    const auto found = std::find_if(variables().begin(), variables().end(),
                                    [channel](const CTVar* variable) { return variable->channel() == channel; });
    return found == variables().end() ? nullptr : *found;
}

CTVar* CTimerObject::find_variable(const QString& name, VarType type) const
{
    const auto found = std::find_if(variables().begin(), variables().end(), [&](const CTVar* variable) {
        return !variable->is_system() && variable->name() == name && variable->type() == type;
    });
    return found == variables().end() ? nullptr : *found;
}

CTVar* CTimerObject::add_var(VarState* state)
{
    const UserAction action(journal(), lang(u"添加变量", u"Add Variable"));
    return static_cast<CTVar*>(m_scene.add(m_scene.variable_kind(), state, *this, object_state().variables.size()));
}

CTVar* CTimerObject::create_var(VarType type, const QString& name)
{
    auto* state = new VarState;
    state->keys = KeyTrack(type);
    state->name = name;
    const auto is_taken = [this](const QString& wanted) {
        return std::any_of(variables().begin(), variables().end(),
                           [&](const CTVar* variable) { return variable->name() == wanted; });
    };
    for (int number = 1; name.isEmpty() && (number == 1 || is_taken(state->name)); ++number)
        state->name = QStringLiteral("Var%1").arg(number);
    return add_var(state);
}

CTVar* CTimerObject::create_channel_var(Channel channel)
{
    auto* state = new VarState;
    state->keys = KeyTrack(channel_row(channel).type);
    state->name = QLatin1String(channel_row(channel).name);
    state->channel = int(channel);
    return add_var(state);
}

void CTimerObject::remove_var(CTVar* variable)
{
    if (!variable || variable->object() != this)
        return;
    const UserAction action(journal(), lang(u"删除变量", u"Delete Variable"));
    ModelObject* gone = variable;
    document().detach(std::span(&gone, 1));
}

// Keys ---------------------------------------------------------------------------------------------------------------

bool CTimerObject::has_key(float time) const
{
    return std::any_of(variables().begin(), variables().end(),
                       [time](const CTVar* variable) { return variable->keys().find(time) >= 0; });
}

bool CTimerObject::set_key_ease(float time, float ease)
{
    const UserAction action(journal(), lang(u"松紧值", u"Ease"));
    bool changed = false;
    for (CTVar* variable : variables())
        changed |= variable->set_key_ease(time, ease);
    return changed;
}

float CTimerObject::get_ease(float time) const
{
    for (const CTVar* variable : variables())
        if (variable->keys().find(time) >= 0)
            return variable->get_ease(time);
    return 0;
}

std::optional<float> CTimerObject::next_key(float after) const
{
    std::optional<float> next;
    for (const CTVar* variable : variables()) {
        const KeyTrack& keys = variable->keys();
        qsizetype key = keys.first_from(after);
        if (key < keys.size() && keys.time(key) == after)
            ++key;
        if (key < keys.size())
            next = std::min(next.value_or(keys.time(key)), keys.time(key));
    }
    return next;
}

std::optional<float> CTimerObject::previous_key(float before) const
{
    std::optional<float> previous;
    for (const CTVar* variable : variables())
        if (const qsizetype key = variable->keys().first_from(before) - 1; key >= 0)
            previous = std::max(previous.value_or(0), variable->keys().time(key));
    return previous;
}

std::optional<std::pair<float, float>> CTimerObject::get_time_belone(float time) const
{
    const auto begin = has_key(time) ? time : previous_key(time);
    const auto end = next_key(time);
    return begin && end ? std::optional(std::pair(*begin, *end)) : std::nullopt;
}

void CTimerObject::record(float time, const Pose& pose)
{
    const UserAction action(journal(), lang(u"记录关键帧", u"Record Key"));
    Pose kept = pose;
    if (const ModelObject* path = path_object(); path && pose.has(Channel::Position))
        m_scene.target_kind(type())->find_on_path(*path, kept);
    for (int c = 0; c < channel_count; ++c)
        if (const auto channel = Channel(c); kept.has(channel))
            CObjKey(*this, time).set_value(channel, kept.value(channel));
}

void CTimerObject::update_frame()
{
    m_scene.show_frame();
}

// Script objects -----------------------------------------------------------------------------------------------------

bool CTCommandScript::set_script(const QString& command)
{
    const UserAction action(journal(), lang(u"脚本命令", u"Script Command"));
    const QString text = command.trimmed();
    const auto is_end = [](QChar c) { return c.isSpace() || c == u'(' || c == u','; };
    const auto end = std::find_if(text.begin(), text.end(), is_end) - text.begin();
    const bool changed = change<&TimerObjectState::function>(text.left(end));
    return change<&TimerObjectState::arguments>(text.mid(end)) || changed;
}

void CTCommandScript::analyze_script()
{
    const UserAction action(journal(), lang(u"脚本命令", u"Script Command"));
    for (const QString& name : command().names())
        if (std::none_of(variables().begin(), variables().end(),
                         [&](const CTVar* variable) { return variable->name() == name; }))
            create_var(VarType::Float, name);
}

bool CTCommandScript::rename_var(CTVar* variable, const QString& name)
{
    const UserAction action(journal(), lang(u"变量名称", u"Variable Name"));
    const QString before = variable->name();
    if (!variable->set_name(name))
        return false;
    if (const CommandLine line = command(); line.names().contains(before))
        set_script(line.renamed(before, variable->name()));
    return true;
}

bool CTCommandScript::take_due(float time)
{
    std::vector<KeyValue> values;
    for (const CTVar* variable : variables())
        values.push_back(variable->value_at(time));
    if (script().isEmpty() || m_ran_with == values)
        return false;
    m_ran_with = std::move(values);
    return true;
}

// Keys of objects ----------------------------------------------------------------------------------------------------

int CObjKey::group() const
{
    for (const CTVar* variable : m_object->variables())
        if (const qsizetype key = variable->keys().find(m_time); key >= 0)
            return variable->keys().group(key);
    return Key::no_group;
}

void CObjKey::set_group(int group)
{
    const UserAction action(m_object->journal(), lang(u"关键帧的组", u"Key Group"));
    for (CTVar* variable : m_object->variables())
        variable->set_key_group(m_time, group);
}

bool CObjKey::has(Channel channel) const
{
    const CTVar* variable = m_object->channel_variable(channel);
    return variable && variable->keys().find(m_time) >= 0;
}

KeyValue CObjKey::value(Channel channel) const
{
    const CTVar* variable = m_object->channel_variable(channel);
    return variable ? variable->value_at(m_time) : KeyValue(channel_row(channel).type);
}

void CObjKey::set_value(Channel channel, const KeyValue& value)
{
    const UserAction action(m_object->journal(), lang(u"关键帧的值", u"Key Value"));
    CTVar* variable = m_object->channel_variable(channel);
    if (!variable)
        variable = m_object->create_channel_var(channel);
    if (variable)
        variable->set_key_value(m_time, value);
}
