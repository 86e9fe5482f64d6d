#include "animation_scene.h"

#include "core/authored.h"
#include "core/field.h"
#include "core/language.h"
#include "script/config_scene.h"
#include "t_var.h"
#include "timebar.h"
#include "timer_object.h"

#include <algorithm>
#include <span>

using namespace tarn;

namespace {

constexpr const char* entry = "animation.json";

template <class State, IdList State::*list>
IdList* children_in(ObjectState& parent)
{
    auto* state = dynamic_cast<State*>(&parent);
    return state ? &(state->*list) : nullptr;
}

template <class State>
ObjectState* fresh(int)
{
    return new State;
}

ObjectState* fresh_timer_object(int type)
{
    return type >= 0 && type < timer_object_type_count ? new TimerObjectState(type) : nullptr;
}

/// Of two script keys at one time of one timebar, only one would ever be found.
QString time_of_script_key(const ObjectState& state)
{
    const auto& key = static_cast<const ScriptKeyState&>(state);
    return QStringLiteral("%1/%2").arg(key.parent.id).arg(double(key.time), 0, 'g', 9);
}

void put(QSet<quint32>& set, quint32 id, bool on)
{
    if (on)
        set.insert(id);
    else
        set.remove(id);
}

} // namespace

CAnimationScene::CAnimationScene(Document& document) : ModelObject(document, new AnimationState)
{
    document.add_part({.entry = entry, .container = this});
    add_kinds();
    document.changes().add_listener(this);
    document.set_driver(this);
}

CAnimationScene::~CAnimationScene()
{
    document().set_driver(nullptr);
    document().changes().remove_listener(this);
}

void CAnimationScene::add_kinds()
{
    const auto add = [this](ObjectKind kind) {
        document().add_kind(std::move(kind));
        return &document().kinds().back();
    };
    m_bar_kind = add(
        {.part = entry,
         .key = "timebars",
         .chinese = u"时间轴",
         .english = u"timebar",
         .container = this,
         .make_state = fresh<TimebarState>,
         .make_object = [this](StatePtr state) { return std::make_shared<CTimebar>(*this, std::move(state)); },
         .children = children_in<AnimationState, &AnimationState::bars>,
         .most = max_bars});
    m_object_kind = add({.part = entry,
                         .key = "timer_objects",
                         .chinese = u"动画对象",
                         .english = u"timer object",
                         .saves_type = true,
                         .make_state = fresh_timer_object,
                         .make_object = [this](StatePtr state) -> std::shared_ptr<ModelObject> {
                             if (static_cast<const TimerObjectState&>(*state).type == int(TimerObjectType::Script))
                                 return std::make_shared<CTCommandScript>(*this, std::move(state));
                             return std::make_shared<CTimerObject>(*this, std::move(state));
                         },
                         .children = children_in<TimebarState, &TimebarState::objects>});
    m_variable_kind = add(
        {.part = entry,
         .key = "variables",
         .chinese = u"变量",
         .english = u"variable",
         .make_state = fresh<VarState>,
         .make_object = [this](StatePtr state) { return std::make_shared<CTVar>(*this, std::move(state)); },
         .children = children_in<TimerObjectState, &TimerObjectState::variables>});
    m_script_key_kind = add(
        {.part = entry,
         .key = "script_keys",
         .chinese = u"脚本关键帧",
         .english = u"script key",
         .make_state = fresh<ScriptKeyState>,
         .make_object = [this](StatePtr state) { return std::make_shared<CScriptKey>(*this, std::move(state)); },
         .children = children_in<TimebarState, &TimebarState::script_keys>,
         .unique_key = time_of_script_key});
    m_mark_kind = add(
        {.part = entry,
         .key = "marks",
         .chinese = u"标记",
         .english = u"mark",
         .make_state = fresh<TimeMarkState>,
         .make_object = [this](StatePtr state) { return std::make_shared<CTimeMark>(*this, std::move(state)); },
         .children = children_in<TimebarState, &TimebarState::marks>});
}

ModelObject* CAnimationScene::add(const ObjectKind& kind, ObjectState* state, ModelObject& parent, qsizetype place)
{
    StatePtr held(state);
    state->id = document().take_id();
    if (state->id == 0)
        return nullptr;
    const auto object = document().create(kind, std::move(held));
    document().attach(*object, parent, place);
    return object.get();
}

CConfigScene* CAnimationScene::functions() const
{
    for (const PackagePart& part : document().parts())
        if (auto* functions = dynamic_cast<CConfigScene*>(part.container))
            return functions;
    return nullptr;
}

void CAnimationScene::set_target_kind(TimerObjectType type, AnimationTarget* target)
{
    m_targets[std::size_t(type)] = target;
    m_stale = true;
}

TimerObjectType CAnimationScene::type_for(const ModelObject& object) const
{
    for (std::size_t type = 0; type < m_targets.size(); ++type)
        if (m_targets[type] && m_targets[type]->takes(object))
            return TimerObjectType(type);
    return TimerObjectType::Script;
}

// Timebars -----------------------------------------------------------------------------------------------------------

void CAnimationScene::children_changed()
{
    m_bars.changed();
    m_stale = true;
}

const std::vector<CTimebar*>& CAnimationScene::bars() const
{
    return m_bars.get(document(), animation_state().bars);
}

CTimebar* CAnimationScene::current_bar() const
{
    const auto found = std::find_if(bars().begin(), bars().end(),
                                    [this](const CTimebar* bar) { return bar->id() == m_current_bar; });
    return found == bars().end() ? nullptr : *found;
}

void CAnimationScene::set_current_bar(const CTimebar* bar)
{
    const quint32 wanted = bar ? bar->id() : 0;
    if (wanted == m_current_bar)
        return;
    drop_unrecorded();
    if (CTimebar* before = m_running ? nullptr : current_bar())
        before->m_playing = false;
    m_current_bar = wanted;
    m_stale = true;
    show_frame();
}

void CAnimationScene::set_muted(quint32 object, bool on)
{
    put(m_muted, object, on);
    m_stale = true;
    show_frame();
}

void CAnimationScene::set_solo(quint32 object, bool on)
{
    put(m_solo, object, on);
    m_stale = true;
    show_frame();
}

void CAnimationScene::unmute_all()
{
    m_muted.clear();
    m_solo.clear();
    m_stale = true;
}

bool CAnimationScene::is_silent(const CTimerObject& object) const
{
    if (m_running)
        return false;
    if (is_muted(object.id()))
        return true;
    // Asked of the solo ones, which are few: a timebar may have thousands of objects.
    return !is_solo(object.id()) && std::any_of(m_solo.begin(), m_solo.end(), [&](quint32 id) {
        const ModelObject* solo = document().find(id);
        return solo && solo->is_attached() && solo->parent() == object.parent();
    });
}

QString CAnimationScene::free_name(const QString& wanted) const
{
    QString name = wanted;
    for (int number = 1; name.isEmpty() || SearchTimebarFromName(name); ++number)
        name = wanted.isEmpty() ? QStringLiteral("Bar%1").arg(number)
                                : QStringLiteral("%1 (%2)").arg(wanted).arg(number + 1);
    return name;
}

CTimebar* CAnimationScene::create_bar(float total_length, const QString& name)
{
    if (bars().size() >= max_bars)
        return nullptr;
    const UserAction action(journal(), lang(u"新建时间轴", u"New Timebar"));
    auto* state = new TimebarState;
    state->name = name.isEmpty() ? free_name({}) : name.left(TimebarState::max_name);
    state->total_length = std::clamp(total_length, 0.f, max_time);
    auto* bar = static_cast<CTimebar*>(add(*m_bar_kind, state, *this, animation_state().bars.size()));
    if (bar)
        set_current_bar(bar);
    return bar;
}

void CAnimationScene::remove_bar(CTimebar* bar)
{
    if (!bar || bar->parent() != this)
        return;
    const UserAction action(journal(), lang(u"删除时间轴", u"Delete Timebar"));
    bar->remove_script_keys(bar->script_key_times());
    ModelObject* gone = bar;
    document().detach(std::span(&gone, 1));
    if (m_current_bar == gone->id())
        set_current_bar(nullptr);
}

CTimebar* CAnimationScene::clone_bar(const CTimebar* bar)
{
    if (!bar || bars().size() >= max_bars)
        return nullptr;
    const UserAction action(journal(), lang(u"复制时间轴", u"Copy Timebar"));
    StatePtr state(Authored::state(*bar).clone());
    auto& copy = static_cast<TimebarState&>(*state);
    copy.parent = {};
    copy.name = free_name(bar->name());
    copy.objects = copy.script_keys = copy.marks = {};
    const qsizetype place = animation_state().bars.indexOf(ObjectRef{bar->id()}) + 1;
    auto* clone = static_cast<CTimebar*>(add(*m_bar_kind, state.take(), *this, place));
    if (clone)
        clone->copy_content(*bar, 0, max_time);
    return clone;
}

bool CAnimationScene::move_to(CTimebar* bar, qsizetype place)
{
    IdList order = animation_state().bars;
    const qsizetype from = bar ? order.indexOf(ObjectRef{bar->id()}) : -1;
    if (from < 0 || place < 0 || place >= order.size() || place == from)
        return false;
    const UserAction action(journal(), lang(u"时间轴次序", u"Order of Timebars"));
    order.move(from, place);
    document().reorder(*this, *m_bar_kind, order);
    return true;
}

bool CAnimationScene::move_up(CTimebar* bar)
{
    return bar && move_to(bar, animation_state().bars.indexOf(ObjectRef{bar->id()}) - 1);
}

bool CAnimationScene::move_down(CTimebar* bar)
{
    return bar && move_to(bar, animation_state().bars.indexOf(ObjectRef{bar->id()}) + 1);
}

bool CAnimationScene::move_front(CTimebar* bar)
{
    return move_to(bar, 0);
}

bool CAnimationScene::move_end(CTimebar* bar)
{
    return move_to(bar, animation_state().bars.size() - 1);
}

CTimebar* CAnimationScene::SearchTimebarFromName(const QString& name) const
{
    const auto found = std::find_if(bars().begin(), bars().end(),
                                    [&](const CTimebar* bar) { return bar->name() == name; });
    return found == bars().end() ? nullptr : *found;
}

// What the scene shows -----------------------------------------------------------------------------------------------

void CAnimationScene::set_editing(bool on)
{
    if (std::exchange(m_editing, on) == on)
        return;
    drop_unrecorded();
    if (CTimebar* bar = on ? nullptr : current_bar())
        bar->m_playing = false;
    m_stale = true;
    show_frame();
}

void CAnimationScene::set_running(bool on)
{
    if (m_running == on)
        return;
    drop_unrecorded();
    if (on && m_editing)
        document().clear_shown();
    for (CTimebar* bar : bars()) {
        bar->m_playing = false;
        bar->m_speed = 1;
        bar->m_passed.clear();
        if (on)
            bar->m_time_before = bar->m_current_time;
        else
            bar->m_current_time = std::min(bar->m_time_before, bar->get_total_length());
    }
    m_programs.clear();
    m_running = on;
    m_stale = true;
    for (CTimebar* bar : bars())
        if (on && bar->auto_play())
            bar->active_bar(1, 1);
    show_frame();
}

bool CAnimationScene::drives(const CTimebar& bar) const
{
    return m_running ? bar.is_playing() : m_editing && bar.id() == m_current_bar;
}

/// Finds out what drives the scene, after something changed. While a preview runs, what is shown stays: a bar that stopped
/// leaves its last values.
void CAnimationScene::prepare()
{
    if (!std::exchange(m_stale, false))
        return;
    if (!m_running && !m_programs.empty())
        document().clear_shown();
    document().changes().touch(*this, shared_state()); // Who marks what is driven looks again.
    m_programs.clear();
    AnimationProgram::Covered covered;
    for (CTimebar* bar : bars())
        if (drives(*bar))
            m_programs.push_back({bar, AnimationProgram(*bar, covered)});
}

void CAnimationScene::show_frame()
{
    prepare();
    m_changed = false;
    const ShownWrites shown(document());
    for (Program& row : m_programs)
        row.program.show(row.bar->current_time(), unrecorded());
}

void CAnimationScene::show_bar(CTimebar& bar)
{
    if (!m_running || drives(bar)) {
        show_frame();
        return;
    }
    AnimationProgram::Covered covered;
    for (const CTimebar* higher : bars()) {
        if (higher == &bar)
            break;
        if (drives(*higher))
            (void)AnimationProgram(*higher, covered);
    }
    AnimationProgram program(bar, covered);
    const ShownWrites shown(document());
    program.show(bar.current_time(), {});
}

bool CAnimationScene::frame_move(float elapsed)
{
    prepare();
    for (CTimebar* bar : bars())
        if (bar->is_playing())
            bar->advance(elapsed);
    show_frame();
    // Whoever hears it may change the model: from here on objects are found by their ids.
    std::vector<quint32> ids;
    for (const Program& row : m_programs)
        ids.push_back(row.bar->id());
    for (const quint32 id : ids)
        if (auto* bar = document().find_as<CTimebar>(id); bar && bar->is_attached())
            tell_passed(*bar);
    return !ids.empty();
}

void CAnimationScene::tell_passed(CTimebar& bar)
{
    const auto alive = bar.shared_from_this();
    const bool ended = std::exchange(bar.m_ended, false);
    m_stale |= ended;
    std::vector<quint32> passed;
    passed.swap(bar.m_passed);
    if (!m_listener)
        return;
    for (const quint32 id : passed)
        if (const auto* key = document().find_as<CScriptKey>(id); key && key->is_attached())
            m_listener->script_key_passed(bar, key->time(), key->function());
    if (m_running)
        for (const ObjectRef child : IdList(bar.bar_state().objects))
            if (auto* command = document().find_as<CTCommandScript>(child.id);
                command && command->take_due(bar.current_time()))
                m_listener->command_due(*command);
    if (ended)
        m_listener->bar_ended(bar);
}

void CAnimationScene::model_changed(const ModelChange& change)
{
    m_stale |= change.everything || change.is_of_structure();
    for (const ModelChange::Object& changed : change.objects)
        m_changed |= std::any_of(m_programs.begin(), m_programs.end(),
                                 [&](const Program& row) { return row.program.follows(*changed.object); });
    if ((m_stale || m_changed) && !m_running && (m_editing || !m_programs.empty()))
        show_frame();
}

CTimebar* CAnimationScene::driver_of(quint32 object, Channel channel) const
{
    if (m_stale)
        const_cast<CAnimationScene*>(this)->show_frame(); // What is driven no more is shown as authored.
    for (const Program& row : m_programs)
        if (row.program.channels_of(object) & bit(channel))
            return row.bar;
    return nullptr;
}

quint32 CAnimationScene::driven_channels(quint32 object) const
{
    quint32 channels = 0;
    for (const Program& row : m_programs)
        channels |= row.program.channels_of(object);
    return channels;
}

std::optional<Channel> CAnimationScene::channel_of(const ModelObject& object, FieldKey field) const
{
    const AnimationTarget* kind = target_kind(type_for(object));
    for (int c = 0; kind && c < channel_count; ++c) {
        const auto fields = kind->fields(Channel(c));
        if (std::find(fields.begin(), fields.end(), field) != fields.end())
            return Channel(c);
    }
    return std::nullopt;
}

std::optional<CAnimationScene::Driving> CAnimationScene::driving(const ModelObject& object, FieldKey field) const
{
    if (driven_channels(object.id()) == 0)
        return std::nullopt;
    const auto channel = channel_of(object, field);
    for (const Program& row : m_programs)
        if (channel && (row.program.channels_of(object.id()) & bit(*channel)))
            return Driving{row.bar, *channel, !unrecorded().value(object.id()).has(*channel)};
    return std::nullopt;
}

// Unrecorded ---------------------------------------------------------------------------------------------------------

// Both go by what the scene shows, which the author sees, not by what it is to show next.

bool CAnimationScene::drives(const ModelObject& object) const
{
    return m_editing && !m_running && driven_channels(object.id()) != 0;
}

bool CAnimationScene::drives(const ModelObject& object, FieldKey field) const
{
    return driving(object, field).has_value();
}

void CAnimationScene::take(ModelObject& object, const ObjectState& wanted)
{
    AnimationTarget& kind = *target_kind(type_for(object));
    const Pose shown = kind.pose(object.shown_state());
    Pose pose = kind.pose(wanted);
    const quint32 channels = driven_channels(object.id());
    for (int c = 0; c < channel_count; ++c)
        if (const auto channel = Channel(c); pose.has(channel))
            if (!(channels & bit(channel)) || pose.value(channel) == shown.value(channel))
                pose.drop(channel);
    if (!pose.is_empty())
        keep_unrecorded(object, pose);
}

/// In the step of undo that runs.
void CAnimationScene::keep_unrecorded(ModelObject& object, const Pose& pose)
{
    CTimebar* bar = m_auto_record ? current_bar() : nullptr;
    if (CTimerObject* timer = bar ? bar->SearchItemUsage(object) : nullptr)
        timer->record(bar->current_time(), pose);
    else
        write<AnimationState>([&](AnimationState& state) { state.unrecorded[object.id()].take(pose); });
    const ShownWrites shown(document());
    target_kind(type_for(object))->show(object, pose);
}

void CAnimationScene::forget_unrecorded(quint32 object, quint32 channels)
{
    if (!(unrecorded().value(object).channels() & channels))
        return;
    write<AnimationState>([&](AnimationState& state) {
        Pose& pose = state.unrecorded[object];
        pose.set_channels(pose.channels() & ~channels);
        if (pose.is_empty())
            state.unrecorded.remove(object);
    });
}

void CAnimationScene::drop_unrecorded()
{
    if (unrecorded().isEmpty())
        return;
    const RecordingOff off(journal());
    write<AnimationState>([](AnimationState& state) { state.unrecorded.clear(); });
}
