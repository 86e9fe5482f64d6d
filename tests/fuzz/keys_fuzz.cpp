// The animation of a package, key tracks as lists of numbers, and keys on the clipboard: what is taken is sound, can be
// edited, and is written and read back the same.

#include "fuzz.h"

#include "animation/anim_time.h"
#include "animation/animation_scene.h"
#include "animation/key_clipboard.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "script/config_scene.h"
#include "store/scene_text.h"

#include <cstring>

namespace {

using namespace tarn;

struct Scene {
    Document document;
    CConfigScene functions{document};
    CAnimationScene animation{document};

    const PackagePart& part() const { return document.parts().back(); }
    QByteArray text() const { return part_text(document, part(), document.snapshot()); }
    bool read(const QByteArray& text)
    {
        SceneReader reader(document);
        if (!reader.read(part(), text) || !reader.finish(0))
            return false;
        document.install(std::move(reader.scene()));
        return true;
    }
};

void require_sound(const KeyTrack& track)
{
    float before = -1;
    track.each_time(0, max_time, [&](qsizetype index, float time) {
        require(time > before && track.find(time) == index, "times ascend");
        before = time;
    });
    require(track.is_empty() || before == track.time(track.size() - 1), "all keys are in range");
    for (const float time : {0.f, before / 2, before}) {
        const KeyValue value = track.value_at(time, false);
        for (const quint32 word : value.words())
            require(track.type() == VarType::Int || track.type() == VarType::Color
                        || KeyValue::is_sound(std::bit_cast<float>(word) / 4),
                    "values are finite");
    }
}

void read_package(const QByteArray& text)
{
    Scene scene;
    if (!scene.read(text))
        return;
    const QByteArray saved = scene.text();
    Scene again;
    require(again.read(saved), "what was written can be read");
    require(again.text() == saved, "and is the same");
    for (CTimebar* bar : scene.animation.bars()) {
        bar->insert_time(1, 2);
        bar->remove_region(0.5f, 2.5f);
        bar->set_current_time(1);
        for (const CTimerObject* object : bar->objects())
            for (const CTVar* variable : object->variables())
                require_sound(variable->keys());
    }
    while (scene.document.journal().undo())
        ;
}

void read_numbers(FuzzInput& input)
{
    NumberList numbers;
    while (!input.empty()) {
        float number = 0;
        const quint32 word = input.word();
        std::memcpy(&number, &word, sizeof number);
        numbers.append(word % 3 ? double(word % 64) : double(number));
    }
    KeyTrack track;
    if (FieldType<KeyTrack>::from_value(numbers, {}, track))
        require_sound(track);
}

void paste(const QByteArray& text)
{
    Scene scene;
    CTimebar* bar = scene.animation.create_bar(10);
    bar->set_current_object(bar->create_script_object());
    const QByteArray before = scene.text();
    scene.document.forget_history();
    const auto pasted = paste_keys(*bar, text, 1);
    require(pasted || scene.text() == before, "what is no text of keys changes nothing");
    for (const CTimerObject* object : bar->objects())
        for (const CTVar* variable : object->variables())
            require_sound(variable->keys());
    require(scene.read(scene.text()), "what was pasted can be saved and read");
}

} // namespace

void fuzz(FuzzInput input)
{
    switch (input.byte() % 8) {
    case 0: return read_numbers(input);
    case 2: return paste(input.rest());
    default: return read_package(input.rest());
    }
}
