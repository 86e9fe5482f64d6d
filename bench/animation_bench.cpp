// Timebars: frames that are evaluated and shown, edits of long tracks, drags of many keys.

#include "animation/animation_scene.h"
#include "animation/ease.h"
#include "animation/key_drag.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/field.h"
#include "store/scene_text.h"

#include <benchmark/benchmark.h>

#include <QEasingCurve>
#include <QPropertyAnimation>

#include <cmath>
#include <memory>
#include <random>

namespace bench {

/// What Qt's animations move.
class Moved : public QObject {
    Q_OBJECT
    Q_PROPERTY(double number READ number WRITE set_number)

public:
    double number() const { return m_number; }
    void set_number(double number) { m_number = number; }

private:
    double m_number = 0;
};

} // namespace bench

namespace {

constexpr float length = 10;
constexpr int keys_of_track = 100;
constexpr float frame = 1.f / 60;

float number_of(int track, int key)
{
    return std::sin(float(track * 31 + key * 7));
}
float time_of(int key)
{
    return length * float(key) / (keys_of_track - 1);
}
float ease_of(int track, int key)
{
    return float((track * 13 + key * 29) % 161 - 80);
}

/// Something that timebars move, as plain as can be.
struct Plain final : tarn::ModelObject {
    struct State : tarn::StateOf<State> {
        static const tarn::FieldTable& field_table()
        {
            static const tarn::FieldTable table(nullptr, tarn::field<State, &State::id>("id"));
            return table;
        }
    };
    Plain(tarn::Document& document, tarn::StatePtr state) : ModelObject(document, std::move(state)) {}
    const char* class_name() const override { return "Plain"; }
    bool is_attached() const override { return true; }

    float number = 0;
};

struct PlainTarget final : tarn::AnimationTarget {
    bool takes(const tarn::ModelObject& object) const override { return dynamic_cast<const Plain*>(&object); }
    tarn::Pose pose(const tarn::ObjectState&) const override
    {
        tarn::Pose pose;
        pose.set_number(tarn::Channel::Transparency, 0);
        return pose;
    }
    std::span<const tarn::FieldKey> fields(tarn::Channel) const override { return {}; }
    void show(tarn::ModelObject& object, const tarn::Pose& pose) override
    {
        static_cast<Plain&>(object).number = pose.number(tarn::Channel::Transparency);
    }
};

struct PlainList final : tarn::ModelObject {
    struct State : tarn::StateOf<State> {
        tarn::IdList objects;
        static const tarn::FieldTable& field_table()
        {
            static const tarn::FieldTable table(
                nullptr, tarn::field<State, &State::objects>("object_ids", {}, tarn::children()));
            return table;
        }
    };
    explicit PlainList(tarn::Document& document) : ModelObject(document, new State)
    {
        document.add_part({.entry = "plain.json", .container = this});
        document.add_kind(
            {.part = "plain.json",
             .key = "plain",
             .chinese = u"",
             .english = u"",
             .container = this,
             .make_state = [](int) -> tarn::ObjectState* { return new Plain::State; },
             .make_object =
                 [&document](tarn::StatePtr state) { return std::make_shared<Plain>(document, std::move(state)); },
             .children =
                 [](tarn::ObjectState& parent) {
                     auto* list = dynamic_cast<State*>(&parent);
                     return list ? &list->objects : nullptr;
                 }});
        kind = &document.kinds().back();
    }
    const char* class_name() const override { return "PlainList"; }

    const tarn::ObjectKind* kind;
};

/// A bar whose objects have one track each.
class Animated {
public:
    Animated(int tracks, int keys, const std::function<tarn::Key(int track, int key)>& key_at)
    {
        const tarn::RecordingOff off(document.journal());
        scene.set_target_kind(tarn::TimerObjectType::Control, &m_target);
        bar = scene.create_bar(length);
        for (int track = 0; track < tracks; ++track) {
            auto* object = scene.add(*m_list.kind, new Plain::State, m_list, track);
            CTimerObject* timer = bar->create_object(tarn::TimerObjectType::Control, {object->id()});
            CTVar* variable = timer->create_channel_var(tarn::Channel::Transparency);
            std::vector<tarn::Key> all;
            for (int key = 0; key < keys; ++key)
                all.push_back(key_at(track, key));
            tarn::KeyTrack track_keys;
            track_keys.edit({}, all);
            variable->set_keys(std::move(track_keys));
            variables.push_back(variable);
        }
        document.forget_history();
    }

    tarn::Document document;

private:
    PlainList m_list{document};
    PlainTarget m_target;

public:
    CAnimationScene scene{document};
    CTimebar* bar;
    std::vector<CTVar*> variables;
};

tarn::Key eased_key(int track, int key)
{
    return {time_of(key), tarn::KeyValue::number(number_of(track, key)), ease_of(track, key)};
}

tarn::Key dense_key(int, int key)
{
    return {.time = float(key) / 64, .value = tarn::KeyValue::number(float(key % 97))};
}

void evaluate_tarn(benchmark::State& state)
{
    Animated animated(int(state.range(0)), keys_of_track, eased_key);
    animated.scene.set_editing(true);
    float time = 0;
    for (auto _ : state) {
        time = time + frame > length ? 0 : time + frame;
        animated.bar->set_current_time(time);
    }
}

void evaluate_property_animation(benchmark::State& state)
{
    std::vector<std::unique_ptr<bench::Moved>> objects;
    std::vector<std::unique_ptr<QPropertyAnimation>> animations;
    for (int track = 0; track < state.range(0); ++track) {
        objects.push_back(std::make_unique<bench::Moved>());
        auto& animation = animations.emplace_back(
            std::make_unique<QPropertyAnimation>(objects.back().get(), QByteArrayLiteral("number")));
        animation->setDuration(int(length * 1000));
        animation->setEasingCurve(QEasingCurve::Linear);
        QVariantAnimation::KeyValues values;
        for (int key = 0; key < keys_of_track; ++key)
            values.append({double(time_of(key)) / double(length), double(number_of(track, key))});
        animation->setKeyValues(values);
    }
    float time = 0;
    for (auto _ : state) {
        time = time + frame > length ? 0 : time + frame;
        for (const auto& animation : animations)
            animation->setCurrentTime(int(time * 1000));
    }
}

/// Search, ease and way between, over flat lists and without a branch.
void evaluate_loop(benchmark::State& state)
{
    const auto tracks = std::size_t(state.range(0));
    std::vector<float> times;
    std::vector<float> values;
    std::vector<float> bends;
    std::vector<float> shown(tracks);
    for (std::size_t track = 0; track < tracks; ++track)
        for (int key = 0; key < keys_of_track; ++key) {
            times.push_back(time_of(key));
            values.push_back(number_of(int(track), key));
            bends.push_back(tarn::Ease::bend(ease_of(int(track), key)));
        }
    float time = 0;
    for (auto _ : state) {
        time = time + frame > length ? 0 : time + frame;
        for (std::size_t track = 0; track < tracks; ++track) {
            const std::size_t first = track * keys_of_track;
            const float* base = &times[first];
            std::size_t count = keys_of_track - 1;
            while (count > 1) {
                const std::size_t half = count / 2;
                base += base[half] <= time ? half : 0;
                count -= half;
            }
            const std::size_t key = std::size_t(base - times.data());
            const float u = (time - times[key]) / (times[key + 1] - times[key]);
            shown[track] = values[key] + tarn::Ease::way(u, bends[key + 1]) * (values[key + 1] - values[key]);
        }
        benchmark::DoNotOptimize(shown.data());
        benchmark::ClobberMemory();
    }
}

/// One key of one track gets another value, is put in, and taken out; with undo.
void edit_key_tarn(benchmark::State& state)
{
    Animated animated(1, int(state.range(0)), dense_key);
    animated.scene.set_editing(true);
    CTVar* variable = animated.variables.front();
    std::mt19937 random(1);
    for (auto _ : state) {
        const auto key = qsizetype(random() % quint32(state.range(0)));
        const float time = variable->keys().time(key);
        variable->set_key_value(time, tarn::KeyValue::number(-1));
        animated.document.journal().break_merge();
    }
}

/// The same with a list in one piece, a copy of which undo keeps.
void edit_key_list(benchmark::State& state)
{
    struct Key {
        float time;
        float value;
        float ease;
        int group;
    };
    QList<Key> keys;
    for (int key = 0; key < state.range(0); ++key)
        keys.append({float(key) / 64, float(key % 97), 0, -1});
    std::mt19937 random(1);
    for (auto _ : state) {
        const QList<Key> before = keys;
        keys[qsizetype(random() % quint32(state.range(0)))].value = -1;
        benchmark::DoNotOptimize(before.constData());
    }
}

/// A frame of a drag of 10,000 keys among as many as the case says, and what the bar then shows.
void drag_keys_tarn(benchmark::State& state)
{
    constexpr int dragged = 10'000;
    Animated animated(10, int(state.range(0)) / 10, dense_key);
    animated.scene.set_editing(true);
    tarn::KeySelection keys;
    const int step = int(state.range(0)) / dragged;
    for (CTVar* variable : animated.variables)
        for (int key = 0; key < state.range(0) / 10; key += step)
            keys[variable].push_back(variable->keys().time(key));
    const tarn::UserAction action(animated.document.journal());
    tarn::KeyDrag drag(keys);
    int frames = 0;
    for (auto _ : state) {
        drag.move(float(++frames % 100) / 100 + 0.003f);
        animated.scene.show_frame();
    }
}

void snapshot_keys(benchmark::State& state)
{
    const Animated animated(100, int(state.range(0)) / 100, dense_key);
    for (auto _ : state)
        benchmark::DoNotOptimize(animated.document.snapshot());
}

void save_keys(benchmark::State& state)
{
    const Animated animated(100, int(state.range(0)) / 100, dense_key);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            part_text(animated.document, animated.document.parts().back(), animated.document.snapshot()));
}

void load_keys(benchmark::State& state)
{
    const Animated animated(100, int(state.range(0)) / 100, dense_key);
    const tarn::PackagePart& part = animated.document.parts().back();
    const QByteArray text = part_text(animated.document, part, animated.document.snapshot());
    for (auto _ : state) {
        tarn::SceneReader reader(animated.document);
        if (!reader.read(part, text) || !reader.finish(0))
            state.SkipWithError("the keys were not read");
    }
}

#define TRACKS Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond)
BENCHMARK(evaluate_tarn)->Name("evaluate/tarn")->TRACKS;
BENCHMARK(evaluate_property_animation)->Name("evaluate/QPropertyAnimation")->TRACKS;
BENCHMARK(evaluate_loop)->Name("evaluate/loop")->TRACKS;
#define KEYS Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)
BENCHMARK(edit_key_tarn)->Name("edit_key/tarn")->KEYS;
BENCHMARK(edit_key_list)->Name("edit_key/list")->KEYS;
BENCHMARK(drag_keys_tarn)->Name("drag_keys/tarn")->KEYS;
BENCHMARK(snapshot_keys)->Name("snapshot_keys/tarn")->KEYS;
BENCHMARK(save_keys)->Name("save_keys/tarn")->KEYS;
BENCHMARK(load_keys)->Name("load_keys/tarn")->KEYS;

} // namespace

#include "animation_bench.moc"
