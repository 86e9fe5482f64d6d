// The 3D world drawn with software OpenGL, beside a bare loop that draws the same triangles with one program and sets
// nothing but their places.

#include "models/model_pick.h"
#include "render/gl_objects.h"
#include "render/model_buffers.h"
#include "render/render_context.h"
#include "render/render_target.h"
#include "render/renderer.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

namespace {

using namespace tarn;

constexpr QSize screen(1280, 720);
constexpr int columns = 5;

/// A ball of about so many triangles; with bones it is a chain of ten, which an action bends.
ModelData ball(int triangles, bool with_bones)
{
    ModelData data;
    data.materials.emplace_back();
    data.nodes.emplace_back().meshes = {0};
    const auto rows = quint32(std::sqrt(triangles / 4));
    const quint32 around = 2 * rows;
    ModelMesh mesh;
    for (quint32 row = 0; row <= rows; ++row)
        for (quint32 side = 0; side <= around; ++side) {
            const float down = std::numbers::pi_v<float> * float(row) / float(rows);
            const float turn = 2 * std::numbers::pi_v<float> * float(side) / float(around);
            const QVector3D out(std::sin(down) * std::cos(turn), std::cos(down), std::sin(down) * std::sin(turn));
            mesh.places.push_back(out);
            mesh.normals.push_back(out);
        }
    for (quint32 row = 0; row < rows; ++row)
        for (quint32 side = 0; side < around; ++side) {
            const quint32 a = row * (around + 1) + side;
            const quint32 below = a + around + 1;
            mesh.indices.insert(mesh.indices.end(), {a, a + 1, below, a + 1, below + 1, below});
        }
    if (with_bones) {
        constexpr quint16 count = 10;
        ModelAction action{QStringLiteral("bend"), 1, {}};
        for (quint16 bone = 0; bone < count; ++bone) {
            ModelNode node;
            node.parent = qint32(bone);
            node.place = {0, 0.05f, 0};
            data.nodes.push_back(node);
            mesh.bones.push_back({quint32(bone + 1), {}});
            const ModelKeys<QQuaternion> turns{{0, 1}, {QQuaternion(), QQuaternion::fromAxisAndAngle(1, 0, 0, 6)}};
            action.tracks.push_back({quint32(bone + 1), {}, turns, {}});
        }
        for (const QVector3D& place : mesh.places) {
            const auto bone = quint16(std::min(float(count - 2), (place.y() + 1) / 2 * (count - 1)));
            mesh.bone_numbers.push_back({bone, quint16(bone + 1), 0, 0});
            mesh.bone_weights.emplace_back(0.5f, 0.5f, 0, 0);
        }
        data.actions = {action};
    }
    data.meshes = {std::move(mesh)};
    return data;
}

QMatrix4x4 place_of(int number, int count)
{
    QMatrix4x4 matrix;
    const float scale = count > 100 ? 0.15f : 0.9f;
    const int across = count > 100 ? 40 : columns;
    matrix.translate(float(number % across - across / 2) * 2.2f * scale, scale, float(-number / across) * 2.2f * scale);
    matrix.scale(scale);
    return matrix;
}

RenderView camera(int frame)
{
    RenderView view;
    view.pixels = screen;
    view.view.lookAt({0.001f * float(frame % 50), 5, 7}, {0, 0, -3}, {0, 1, 0});
    view.projection.perspective(45, float(screen.width()) / float(screen.height()), 0.1f, 1000);
    return view;
}

std::vector<DrawItem> items(int count, const ModelPtr& model)
{
    std::vector<DrawItem> all;
    for (int i = 0; i < count; ++i) {
        all.emplace_back().model = model;
        all.back().matrix = place_of(i, count);
    }
    return all;
}

/// The camera moves: 10,000 triangles an item, shadows of the frame before.
void draw_world_tarn(benchmark::State& state)
{
    const auto renderer = Renderer::create();
    if (!renderer)
        return state.SkipWithError("there is no OpenGL");
    const auto all = items(int(state.range(0)), Model::make(ball(10'000, false)).value());
    int frame = 0;
    for (auto _ : state) {
        renderer->draw(0, camera(++frame), all);
        benchmark::DoNotOptimize(renderer->picture(0));
    }
}

/// One of them bends, so that its shadow is another one, too.
void draw_figure_tarn(benchmark::State& state)
{
    const auto renderer = Renderer::create();
    if (!renderer)
        return state.SkipWithError("there is no OpenGL");
    auto all = items(int(state.range(0)), Model::make(ball(10'000, false)).value());
    ModelPose pose(Model::make(ball(10'000, true)).value());
    all[2].model = pose.model();
    all[2].pose = &pose;
    int frame = 0;
    for (auto _ : state) {
        pose.set_action(0, 0.01 * ++frame);
        renderer->draw(0, camera(frame), all);
        benchmark::DoNotOptimize(renderer->picture(0));
    }
}

/// All of them move, with few triangles each.
void draw_crowd_tarn(benchmark::State& state)
{
    const auto renderer = Renderer::create();
    if (!renderer)
        return state.SkipWithError("there is no OpenGL");
    auto all = items(int(state.range(0)), Model::make(ball(100, false)).value());
    int frame = 0;
    for (auto _ : state) {
        ++frame;
        for (DrawItem& item : all)
            item.matrix.translate(0, frame % 2 ? 0.01f : -0.01f, 0);
        renderer->draw(0, camera(frame), all);
        benchmark::DoNotOptimize(renderer->picture(0));
    }
}

constexpr char plain_vertex[] = R"(
layout(location = 0) in vec3 place;
layout(location = 1) in vec3 normal;
uniform mat4 to_clip;
out vec3 face;
void main()
{
    face = normal;
    gl_Position = to_clip * vec4(place, 1.0);
}
)";

constexpr char plain_fragment[] = R"(
in vec3 face;
out vec4 value;
void main()
{
    value = vec4(vec3(0.3 + 0.6 * max(dot(normalize(face), vec3(0.42, 0.9, 0.1)), 0.0)), 1.0);
}
)";

void bare_loop(benchmark::State& state, int triangles)
{
    const auto context = RenderContext::create();
    if (!context)
        return state.SkipWithError("there is no OpenGL");
    const RenderContext::Current current(*context);
    const ModelBuffers buffers(*Model::make(ball(triangles, false)).value());
    GlProgram program;
    if (!program.build(plain_vertex, plain_fragment))
        return state.SkipWithError("the program is refused");
    RenderTarget target(0);
    target.resize(screen);
    int frame = 0;
    for (auto _ : state) {
        const RenderView view = camera(++frame);
        target.bind();
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_CULL_FACE);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        program.use();
        for (int i = 0; i < int(state.range(0)); ++i) {
            program.set("to_clip", view.projection * view.view * place_of(i, int(state.range(0))));
            buffers.draw(0);
        }
        benchmark::DoNotOptimize(target.picture());
    }
}

void draw_world_bare(benchmark::State& state)
{
    bare_loop(state, 10'000);
}

void draw_crowd_bare(benchmark::State& state)
{
    bare_loop(state, 100);
}

void pick_tarn(benchmark::State& state)
{
    ModelPose pose(Model::make(ball(int(state.range(0)), true)).value());
    pose.set_action(0, 0.5);
    for (auto _ : state)
        benchmark::DoNotOptimize(pick(pose, {}, {{0.1f, 0.1f, 5}, {0, 0, -1}}));
}

/// The same without looking for anything: the places of the vertices.
void pick_places(benchmark::State& state)
{
    ModelPose pose(Model::make(ball(int(state.range(0)), true)).value());
    pose.set_action(0, 0.5);
    std::vector<QVector3D> places;
    for (auto _ : state) {
        pose.places(pose.model()->parts()[0], places);
        benchmark::DoNotOptimize(places.data());
    }
}

BENCHMARK(draw_world_tarn)->Name("draw_world/tarn")->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(draw_world_bare)->Name("draw_world/bare_loop")->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(draw_figure_tarn)->Name("draw_figure/tarn")->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(draw_world_bare)->Name("draw_figure/bare_loop")->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(draw_crowd_tarn)->Name("draw_crowd/tarn")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(draw_crowd_bare)->Name("draw_crowd/bare_loop")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(pick_tarn)->Name("pick_model/tarn")->Arg(1000)->Arg(10000);
BENCHMARK(pick_places)->Name("pick_model/places")->Arg(1000)->Arg(10000);

} // namespace
