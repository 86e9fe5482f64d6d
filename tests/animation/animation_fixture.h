#pragma once

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/authored.h"
#include "core/field.h"
#include "core/language.h"
#include "script/config_scene.h"
#include "store/scene_text.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarn::test {

using namespace Qt::StringLiterals;

/// Something that can be animated.
struct ThingState : StateOf<ThingState> {
    QString name;
    float x = 0;
    float y = 0;
    float transparency = 0;
    quint32 color = 0xffffffff;
    bool visible = true;

    static const FieldTable& field_table()
    {
        using S = ThingState;
        static const FieldTable table(
            nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::name>("name"), field<S, &S::x>("x"),
            field<S, &S::y>("y"), field<S, &S::transparency>("transparency"), field<S, &S::color>("color", 0xffffffffu),
            field<S, &S::visible>("visible", true));
        return table;
    }
};

class Thing final : public ModelObject {
public:
    Thing(Document& document, StatePtr state) : ModelObject(document, std::move(state)) {}

    const ThingState& shown() const { return state<ThingState>(); }
    const ThingState& authored() const { return static_cast<const ThingState&>(Authored::state(*this)); }
    /// One step of undo.
    void place(float x, float y)
    {
        const UserAction action(journal(), u"place"_s);
        write<ThingState>([=](ThingState& s) {
            s.x = x;
            s.y = y;
        });
    }
    const char* class_name() const override { return "Thing"; }
};

struct ThingsState : StateOf<ThingsState> {
    IdList things;

    static const FieldTable& field_table()
    {
        using S = ThingsState;
        static const FieldTable table(nullptr, field<S, &S::things>("thing_ids", {}, children()));
        return table;
    }
};

class Things final : public ModelObject {
public:
    explicit Things(Document& document) : ModelObject(document, new ThingsState)
    {
        document.add_part({.entry = "things.json", .container = this});
        document.add_kind(
            {.part = "things.json",
             .key = "things",
             .chinese = u"东西",
             .english = u"thing",
             .container = this,
             .make_state = [](int) -> ObjectState* { return new ThingState; },
             .make_object = [&document](StatePtr state) { return std::make_shared<Thing>(document, std::move(state)); },
             .children =
                 [](ObjectState& parent) {
                     auto* things = dynamic_cast<ThingsState*>(&parent);
                     return things ? &things->things : nullptr;
                 }});
        m_kind = &document.kinds().back();
    }
    const ObjectKind& thing_kind() const { return *m_kind; }
    ObjectState* fresh_state() const override { return new ThingsState; }
    const char* class_name() const override { return "Things"; }

private:
    const ObjectKind* m_kind;
};

/// Things as timebars see them: they have a place, a colour, a transparency, and can be hidden.
class ThingTarget final : public AnimationTarget {
public:
    bool takes(const ModelObject& object) const override { return dynamic_cast<const Thing*>(&object); }
    Pose pose(const ObjectState& state) const override
    {
        const auto& s = static_cast<const ThingState&>(state);
        Pose pose;
        pose.set_vec(Channel::Position, s.x, s.y);
        pose.set_color(s.color);
        pose.set_number(Channel::Transparency, s.transparency);
        pose.set_whole(Channel::Show, s.visible);
        return pose;
    }
    std::span<const FieldKey> fields(Channel channel) const override
    {
        using S = ThingState;
        static constexpr FieldKey place[] = {key<&S::x>, key<&S::y>};
        static constexpr FieldKey others[] = {key<&S::color>, key<&S::transparency>, key<&S::visible>};
        switch (channel) {
        case Channel::Position: return place;
        case Channel::Color: return std::span(others).subspan(0, 1);
        case Channel::Transparency: return std::span(others).subspan(1, 1);
        case Channel::Show: return std::span(others).subspan(2, 1);
        default: return {};
        }
    }
    void show(ModelObject& object, const Pose& pose) override
    {
        ++shows;
        object.write<ThingState>([&](ThingState& s) {
            if (pose.has(Channel::Position)) {
                s.x = pose.number(Channel::Position, 0);
                s.y = pose.number(Channel::Position, 1);
            }
            if (pose.has(Channel::Color))
                s.color = pose.color();
            if (pose.has(Channel::Transparency))
                s.transparency = pose.number(Channel::Transparency);
            if (pose.has(Channel::Show))
                s.visible = pose.shows();
        });
    }

    int shows = 0;
};

/// What timebars told, as texts in order.
class Hearer final : public AnimationListener {
public:
    void script_key_passed(CTimebar&, float time, const QString&) override { heard << QString::number(double(time)); }
    void command_due(CTCommandScript& object) override { heard << object.script(); }
    void bar_ended(CTimebar&) override { heard << u"end"_s; }
    QString take() { return std::exchange(heard, {}).join(u' '); }

    QStringList heard;
};

/// An animation with some things to animate.
class AnimationTest : public testing::Test {
protected:
    AnimationTest()
    {
        VLCMsgIniW::set_language(Language::English);
        m_scene.set_target_kind(TimerObjectType::Control, &m_target);
        m_scene.set_listener(&m_hearer);
    }
    Thing* thing(const QString& name = u"thing"_s)
    {
        auto* state = new ThingState;
        state->name = name;
        return static_cast<Thing*>(m_scene.add(m_things.thing_kind(), state, m_things, 0));
    }
    CTimerObject* timer(CTimebar* bar, const ModelObject* object)
    {
        return bar->create_object(TimerObjectType::Control, {object->id()});
    }
    /// A variable of the channel with keys of one number each.
    static CTVar* with_keys(CTimerObject* object, Channel channel, std::initializer_list<std::pair<float, float>> keys)
    {
        CTVar* variable = object->create_channel_var(channel);
        for (const auto& [time, number] : keys)
            variable->set_key_value(time, value(variable->type(), number));
        return variable;
    }
    static KeyValue value(VarType type, float number)
    {
        switch (type) {
        case VarType::Int: return KeyValue::whole(int(number));
        case VarType::Vec: return KeyValue::vec(number, 2 * number, 0);
        case VarType::Color: return KeyValue::color(0xff000000u | quint32(number));
        case VarType::Float: return KeyValue::number(number);
        case VarType::Mat: break;
        }
        return KeyValue(type);
    }
    static std::vector<float> times(const CTVar* variable)
    {
        std::vector<float> times;
        variable->keys().each_time(0, max_time, [&](qsizetype, float time) { times.push_back(time); });
        return times;
    }
    /// All that would be saved.
    QByteArray text() const
    {
        QByteArray all;
        for (const PackagePart& part : m_document.parts())
            all += part_text(m_document, part, m_document.snapshot());
        return all;
    }
    int undo_all()
    {
        int steps = 0;
        while (m_document.journal().undo())
            ++steps;
        return steps;
    }
    /// Puts what `texts` hold, by the parts' entries, in the place of everything.
    Status read(const QMap<QByteArray, QByteArray>& texts)
    {
        SceneReader reader(m_document);
        for (const PackagePart& part : m_document.parts())
            if (texts.contains(part.entry))
                if (auto status = reader.read(part, texts[part.entry]); !status)
                    return status;
        auto status = reader.finish(0);
        if (status)
            m_document.install(std::move(reader.scene()));
        return status;
    }
    QMap<QByteArray, QByteArray> texts() const
    {
        QMap<QByteArray, QByteArray> texts;
        for (const PackagePart& part : m_document.parts())
            texts.insert(part.entry, part_text(m_document, part, m_document.snapshot()));
        return texts;
    }

    Document m_document;
    CConfigScene m_functions{m_document};
    Things m_things{m_document};
    CAnimationScene m_scene{m_document};
    ThingTarget m_target;
    Hearer m_hearer;
};

/// A scene that reads what another one saved.
class OtherScene : public AnimationTest {
public:
    using AnimationTest::m_scene;
    using AnimationTest::read;
    using AnimationTest::text;
    void TestBody() override {}
};

} // namespace tarn::test
