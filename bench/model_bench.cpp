// Edits of many controls at once, undone again, beside Qt's undo stack.

#include "bench_scene.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"

#include <QUndoStack>

namespace {

/// A scene with the case's number of controls.
class FilledScene {
public:
    explicit FilledScene(const benchmark::State& state)
    {
        (void)scene.open_scene(bench::package_path(int(state.range(0))));
        controls = bench::controls_of(scene);
    }
    CGuiCore& core() { return scene.gui_core(); }
    tarn::Journal& journal() { return scene.journal(); }

    bench::WorldScene in_world;

    CGuiPlugScene& scene = in_world.scene;
    std::vector<CDXUTControl*> controls;
};

void set_property_tarn(benchmark::State& state)
{
    FilledScene scene(state);
    for (auto _ : state) {
        bench::cool_caches(state);
        {
            const tarn::UserAction action(scene.journal());
            for (CDXUTControl* control : scene.controls) {
                control->SetVisible(!control->GetVisible());
            }
        }
        scene.journal().undo();
    }
}

/// The same by the attribute's name, as pages and scripts do it.
void set_named_tarn(benchmark::State& state)
{
    FilledScene scene(state);
    qint64 tag = 0;
    for (auto _ : state) {
        bench::cool_caches(state);
        ++tag;
        {
            const tarn::UserAction action(scene.journal());
            for (CDXUTControl* control : scene.controls) {
                (void)control->set_property(*control->fields().find("color_tag"), tag);
            }
        }
        scene.journal().undo();
    }
}

struct Plain {
    int number = 0;
};

class SetNumber : public QUndoCommand {
public:
    SetNumber(Plain& object, int number, QUndoCommand* parent)
        : QUndoCommand(parent), m_object(object), m_before(object.number), m_after(number)
    {
    }
    void undo() override { m_object.number = m_before; }
    void redo() override { m_object.number = m_after; }

private:
    Plain& m_object;
    int m_before;
    int m_after;
};

void set_property_undo_stack(benchmark::State& state)
{
    std::vector<Plain> objects(std::size_t(state.range(0)));
    QUndoStack stack;
    for (auto _ : state) {
        bench::cool_caches(state);
        auto* all = new QUndoCommand;
        for (Plain& object : objects)
            new SetNumber(object, object.number + 1, all);
        stack.push(all);
        stack.undo();
        benchmark::DoNotOptimize(objects.data());
        benchmark::ClobberMemory();
    }
}

void select_all(benchmark::State& state)
{
    FilledScene scene(state);
    for (auto _ : state) {
        bench::cool_caches(state);
        scene.core().SelectControls(scene.controls);
        scene.core().ClearCtrlSelection();
    }
}

void create(benchmark::State& state)
{
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    for (auto _ : state) {
        {
            const tarn::UserAction action(scene.journal());
            bench::fill_scene(scene.gui_core(), int(state.range(0)));
        }
        state.PauseTiming();
        scene.new_scene();
        state.ResumeTiming();
    }
}

/// Each control is a step of its own, as when a script makes them.
void create_in_steps(benchmark::State& state)
{
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    for (auto _ : state) {
        bench::cool_caches(state);
        CDXUTDialog* dialog = nullptr;
        for (int i = 0; i < state.range(0); ++i) {
            const tarn::UserAction action(scene.journal());
            if (i % 50 == 0)
                dialog = scene.gui_core().create_dialog(QRect(0, 0, 640, 480));
            scene.gui_core().create_control(DXUT_CONTROL_BUTTON, dialog, QRectF(i % 500, i % 400, 96, 28));
        }
        state.PauseTiming();
        scene.new_scene();
        state.ResumeTiming();
    }
}

/// All controls are selected and removed in one action, as the Delete key does it, and brought back.
void remove_selected(benchmark::State& state)
{
    FilledScene scene(state);
    for (auto _ : state) {
        bench::cool_caches(state);
        scene.core().SelectControls(scene.controls);
        scene.scene.RemoveCtrls(scene.controls);
        scene.journal().undo();
        benchmark::DoNotOptimize(scene.core().controls().size());
    }
}

/// Every control has a picture of its own, which goes with it.
void release_pictures(benchmark::State& state)
{
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    {
        const tarn::RecordingOff off(scene.journal());
        CDXUTDialog* dialog = scene.gui_core().create_dialog(QRect(0, 0, 640, 480));
        for (int i = 0; i < state.range(0); ++i) {
            const QString name = QStringLiteral("p%1.png").arg(i);
            scene.gui_core().set_texture(name, "bytes");
            CDXUTControl* made = scene.gui_core().create_control(DXUT_CONTROL_PICTURE, dialog, QRectF(0, 0, 8, 8));
            (void)made->set_property(*made->fields().find("image"), name);
        }
    }
    const auto controls = bench::controls_of(scene);
    for (auto _ : state) {
        bench::cool_caches(state);
        scene.RemoveCtrls(controls);
        scene.journal().undo();
    }
}

using bench::growing;
using bench::growing_cold;

BENCHMARK(set_property_tarn)->Name("set_property/tarn")->Apply(growing_cold);
BENCHMARK(set_property_undo_stack)->Name("set_property/QUndoStack")->Apply(growing_cold);
BENCHMARK(set_named_tarn)->Name("set_named_property/tarn")->Apply(growing_cold);
BENCHMARK(select_all)->Name("selection/tarn")->Apply(growing_cold);
BENCHMARK(create)->Name("create_controls/tarn")->Apply(growing);
BENCHMARK(create_in_steps)->Name("create_in_steps/tarn")->Apply(growing_cold);
BENCHMARK(release_pictures)->Name("release_pictures/tarn")->Apply(growing_cold);
BENCHMARK(remove_selected)->Name("remove_selected/tarn")->Apply(growing_cold);

} // namespace
