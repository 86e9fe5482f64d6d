#pragma once

#include "animation_program.h"
#include "animation_states.h"
#include "child_list.h"
#include "core/attribute_driver.h"
#include "core/model_changes.h"

#include <QSet>

#include <array>
#include <memory>
#include <optional>
#include <vector>

class CConfigScene;
class CTimebar;

/// The timebars of a scene, and what they make it show. Of two that drive one channel of an object the higher in the list
/// wins.
class CAnimationScene final : public tarn::ModelObject, private tarn::ModelListener, private tarn::AttributeDriver {
public:
    static constexpr std::size_t max_bars = 10'000;

    /// The timebars become a part of the document.
    explicit CAnimationScene(tarn::Document& document);
    ~CAnimationScene() override;

    /// The scene has objects of that kind; null: no more. It has to outlive the use of the timebars.
    void set_target_kind(tarn::TimerObjectType type, tarn::AnimationTarget* target);
    tarn::AnimationTarget* target_kind(tarn::TimerObjectType type) const { return m_targets[std::size_t(type)]; }
    /// The kind of timer object that animates such an object; Script when none does.
    tarn::TimerObjectType type_for(const tarn::ModelObject& object) const;
    void set_listener(tarn::AnimationListener* listener) { m_listener = listener; }

    // Timebars
    const std::vector<CTimebar*>& bars() const;
    CTimebar* current_bar() const; ///< null for none; not saved
    void set_current_bar(const CTimebar* bar);
    /// A new bar at the end of the list, which becomes the current one: "Bar<n>" when `name` is empty. Null when there is
    /// no room for more.
    CTimebar* create_bar(float total_length, const QString& name = {});
    void remove_bar(CTimebar* bar);
    /// A copy right behind it, with functions of its own; the current bar stays.
    CTimebar* clone_bar(const CTimebar* bar);
    // These answer whether the order changed.
    bool move_up(CTimebar* bar);
    bool move_down(CTimebar* bar);
    bool move_front(CTimebar* bar);
    bool move_end(CTimebar* bar);
    CTimebar* SearchTimebarFromName(const QString& name) const; ///< the first of that name

    // What the scene shows
    /// While on, the current bar drives the scene; off, the scene is shown as authored.
    void set_editing(bool on);
    bool is_editing() const { return m_editing; }
    /// A preview: the bars that play by themselves begin, and all that play drive the scene. Whoever begins or ends it clears
    /// what is shown before.
    void set_running(bool on);
    bool is_running() const { return m_running; }
    /// All bars that play go on by that many seconds; answers whether there are any.
    bool frame_move(float elapsed);
    /// Shows the present times of the bars that drive.
    void show_frame();
    /// Which bar drives the channel of the object now; null when none does.
    CTimebar* driver_of(quint32 object, tarn::Channel channel) const;
    /// What drives an attribute of an object.
    struct Driving {
        CTimebar* bar;
        tarn::Channel channel;
        bool is_recorded; ///< the keys say what is shown; else the author changed it
    };
    /// None when the attribute is shown as authored.
    std::optional<Driving> driving(const tarn::ModelObject& object, tarn::FieldKey field) const;
    /// The channel of such objects that holds the attribute; none for an attribute that no channel has.
    std::optional<tarn::Channel> channel_of(const tarn::ModelObject& object, tarn::FieldKey field) const;
    /// The channels of an object that are driven now, as bits.
    quint32 driven_channels(quint32 object) const;

    // What drives while the author works, by the ids of timer objects; a preview plays all. Neither saved nor undone.
    void set_muted(quint32 object, bool on);
    bool is_muted(quint32 object) const { return m_muted.contains(object); }
    /// While there are such objects, only they drive.
    void set_solo(quint32 object, bool on);
    void unmute_all();
    bool is_solo(quint32 object) const { return m_solo.contains(object); }
    /// The timer object drives nothing now: it is muted, or another one of its timebar is solo.
    bool is_silent(const CTimerObject& object) const;

    // What the author changed of driven objects and did not record. While the current bar drives the scene, writes to
    // driven attributes come here, whoever made them.
    const QMap<quint32, tarn::Pose>& unrecorded() const { return animation_state().unrecorded; }
    /// Of one object's channels, in a step of undo.
    void forget_unrecorded(quint32 object, quint32 channels);
    /// All of it, for good.
    void drop_unrecorded();
    /// While on, what would stay unrecorded is recorded at the current time, in the same step of undo. Not saved.
    void set_auto_record(bool on) { m_auto_record = on; }
    bool auto_record() const { return m_auto_record; }

    // The turning point of an object is edited
    void edit_sel_mat(const tarn::ModelObject& object) { m_edited_center = object.id(); }
    void end_edit() { m_edited_center = 0; }
    tarn::ObjectRef edited_center() const { return {m_edited_center}; }

    CConfigScene* functions() const; ///< of the document; null when it has none
    const tarn::ObjectKind& bar_kind() const { return *m_bar_kind; }
    const tarn::ObjectKind& object_kind() const { return *m_object_kind; }
    const tarn::ObjectKind& variable_kind() const { return *m_variable_kind; }
    const tarn::ObjectKind& script_key_kind() const { return *m_script_key_kind; }
    const tarn::ObjectKind& mark_kind() const { return *m_mark_kind; }
    /// A new object as the parent's child at `place`; null when no ids are left. Takes over `state`.
    tarn::ModelObject* add(const tarn::ObjectKind& kind, tarn::ObjectState* state, tarn::ModelObject& parent,
                           qsizetype place);

    /// Removes the functions of these names that nothing calls, as a part of the step of undo.
    void remove_unused(const QStringList& names);

    /// What the bars do has changed.
    void content_changed() { m_stale = true; }

    tarn::ObjectState* fresh_state() const override { return new tarn::AnimationState; }
    const char* class_name() const override { return "CAnimationScene"; }
    void state_changed() override { m_changed = true; }
    void children_changed() override;

private:
    friend class CTimebar;
    struct Program {
        CTimebar* bar;
        tarn::AnimationProgram program;
    };

    void add_kinds();
    void model_changed(const tarn::ModelChange& change) override;
    bool drives(const tarn::ModelObject& object) const override;
    bool drives(const tarn::ModelObject& object, tarn::FieldKey field) const override;
    void take(tarn::ModelObject& object, const tarn::ObjectState& wanted) override;
    void keep_unrecorded(tarn::ModelObject& object, const tarn::Pose& pose);
    const tarn::AnimationState& animation_state() const { return state<tarn::AnimationState>(); }
    bool drives(const CTimebar& bar) const;
    void prepare();
    void show_bar(CTimebar& bar);
    void tell_passed(CTimebar& bar);
    bool move_to(CTimebar* bar, qsizetype place);
    QString free_name(const QString& wanted) const;

    std::array<tarn::AnimationTarget*, tarn::timer_object_type_count> m_targets{};
    tarn::AnimationListener* m_listener = nullptr;
    const tarn::ObjectKind* m_bar_kind = nullptr;
    const tarn::ObjectKind* m_object_kind = nullptr;
    const tarn::ObjectKind* m_variable_kind = nullptr;
    const tarn::ObjectKind* m_script_key_kind = nullptr;
    const tarn::ObjectKind* m_mark_kind = nullptr;
    tarn::ChildList<CTimebar> m_bars;
    quint32 m_current_bar = 0;
    quint32 m_edited_center = 0;
    QSet<quint32> m_muted; ///< timer objects
    QSet<quint32> m_solo;
    bool m_editing = false;
    bool m_running = false;
    bool m_auto_record = false;
    bool m_stale = true;             ///< what drives the scene has to be found out anew
    bool m_changed = false;          ///< what was not recorded is another than what is shown
    std::vector<Program> m_programs; ///< of the bars that drive, the highest first
};
