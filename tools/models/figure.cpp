#include "glb.h"
#include "models.h"

#include <cmath>
#include <numbers>

namespace {

/// The skeleton: parents before children. Sides are the figure's own, which looks along z.
enum Joint {
    hips,
    spine,
    chest,
    neck,
    head,
    arm_left,
    forearm_left,
    hand_left,
    arm_right,
    forearm_right,
    hand_right,
    thigh_left,
    shin_left,
    foot_left,
    thigh_right,
    shin_right,
    foot_right,
    joint_count
};

struct Bone {
    const char* name;
    int parent;
    QVector3D place; ///< in the model, at rest
};

const Bone bones[joint_count] = {
    {"hips", -1, {0, 0.92f, 0}},
    {"spine", hips, {0, 1.06f, 0}},
    {"chest", spine, {0, 1.22f, 0}},
    {"neck", chest, {0, 1.44f, 0}},
    {"head", neck, {0, 1.52f, 0}},
    {"arm.left", chest, {0.19f, 1.38f, 0}},
    {"forearm.left", arm_left, {0.22f, 1.12f, 0}},
    {"hand.left", forearm_left, {0.24f, 0.88f, 0.01f}},
    {"arm.right", chest, {-0.19f, 1.38f, 0}},
    {"forearm.right", arm_right, {-0.22f, 1.12f, 0}},
    {"hand.right", forearm_right, {-0.24f, 0.88f, 0.01f}},
    {"thigh.left", hips, {0.095f, 0.88f, 0}},
    {"shin.left", thigh_left, {0.1f, 0.48f, 0.005f}},
    {"foot.left", shin_left, {0.1f, 0.09f, -0.01f}},
    {"thigh.right", hips, {-0.095f, 0.88f, 0}},
    {"shin.right", thigh_right, {-0.1f, 0.48f, 0.005f}},
    {"foot.right", shin_right, {-0.1f, 0.09f, -0.01f}},
};

/// A limb from the first joint over the second to the end, which bends softly at the second.
Shape limb(int upper, int lower, const QVector3D& end, float thick, float middle, float thin)
{
    const QVector3D from = bones[upper].place;
    const QVector3D bend = bones[lower].place;
    std::vector<Ring> rings;
    constexpr int steps = 6;
    for (int i = 0; i <= steps; ++i) {
        const float t = float(i) / steps;
        const float radius = thick + (middle - thick) * t;
        rings.push_back(
            {from + (bend - from) * t, radius, radius, {upper, lower, t < 0.7f ? 0 : (t - 0.7f) / 0.3f * 0.5f}});
    }
    for (int i = 1; i <= steps; ++i) {
        const float t = float(i) / steps;
        const float radius = middle + (thin - middle) * t;
        rings.push_back(
            {bend + (end - bend) * t, radius, radius, {upper, lower, t > 0.3f ? 1 : 0.5f + t / 0.3f * 0.5f}});
    }
    Shape shape = tube(rings, 16);
    shape.add(ball(from, {thick, thick, thick}, {upper, upper, 0}, 16));
    return shape;
}

Shape tunic()
{
    // From the hem to the collar.
    Shape shape = tube({{{0, 0.7f, 0}, 0.235f, 0.185f, {hips, hips, 0}},
                        {{0, 0.77f, 0}, 0.222f, 0.172f, {hips, hips, 0}},
                        {{0, 0.84f, 0}, 0.205f, 0.157f, {hips, hips, 0}},
                        {{0, 0.89f, 0}, 0.192f, 0.145f, {hips, hips, 0}},
                        {{0, 0.94f, 0}, 0.18f, 0.135f, {hips, spine, 0.2f}},
                        {{0, 1.03f, 0}, 0.165f, 0.125f, {hips, spine, 0.6f}},
                        {{0, 1.16f, 0}, 0.185f, 0.135f, {spine, chest, 0.5f}},
                        {{0, 1.3f, 0}, 0.205f, 0.14f, {spine, chest, 1}},
                        {{0, 1.39f, 0}, 0.185f, 0.12f, {chest, chest, 0}},
                        {{0, 1.44f, 0}, 0.11f, 0.09f, {chest, neck, 0.2f}},
                        {{0, 1.47f, 0}, 0.06f, 0.06f, {chest, neck, 0.5f}}},
                       28);
    // The skirt swings with the legs.
    for (std::size_t i = 0; i < shape.places.size(); ++i) {
        const QVector3D& place = shape.places[i];
        if (place.y() < 0.9f)
            shape.links[i] = {hips, place.x() > 0 ? thigh_left : thigh_right,
                              std::min(1.f, (0.9f - place.y()) / 0.2f) * 0.75f
                                  * std::min(1.f, std::abs(place.x()) / 0.08f)};
    }
    return shape;
}

Shape hat()
{
    constexpr Links on_head{head, head, 0};
    return tube({{{0, 1.66f, 0}, 0.1f, 0.11f, on_head},
                 {{0, 1.655f, 0}, 0.22f, 0.23f, on_head},
                 {{0, 1.672f, 0}, 0.215f, 0.225f, on_head},
                 {{0, 1.69f, -0.005f}, 0.12f, 0.13f, on_head},
                 {{0, 1.76f, -0.012f}, 0.1f, 0.11f, on_head},
                 {{0, 1.82f, -0.025f}, 0.06f, 0.065f, on_head},
                 {{0, 1.835f, -0.03f}, 0.015f, 0.015f, on_head}},
                28);
}

Shape boot(int foot, int shin)
{
    const QVector3D ankle = bones[foot].place;
    Shape shape = tube({{{ankle.x(), 0, ankle.z() + 0.005f}, 0.058f, 0.07f, {foot, foot, 0}},
                        {{ankle.x(), 0.09f, ankle.z()}, 0.058f, 0.062f, {foot, shin, 0.4f}},
                        {{ankle.x(), 0.24f, ankle.z() + 0.002f}, 0.066f, 0.07f, {shin, shin, 0}},
                        {{ankle.x(), 0.27f, ankle.z() + 0.002f}, 0.074f, 0.078f, {shin, shin, 0}},
                        {{ankle.x(), 0.29f, ankle.z() + 0.002f}, 0.07f, 0.074f, {shin, shin, 0}}},
                       16);
    shape.add(ball({ankle.x(), 0.045f, ankle.z() + 0.09f}, {0.056f, 0.045f, 0.105f}, {foot, foot, 0}, 16));
    return shape;
}

Shape face()
{
    constexpr Links on_head{head, head, 0};
    Shape shape = ball({0, 1.6f, 0}, {0.098f, 0.122f, 0.108f}, on_head, 24);
    shape.add(tube(
        {{{0, 1.42f, 0}, 0.05f, 0.05f, {neck, neck, 0}}, {{0, 1.53f, 0.005f}, 0.047f, 0.047f, {neck, head, 0.5f}}}));
    shape.add(ball({0, 1.585f, 0.108f}, {0.016f, 0.022f, 0.02f}, on_head, 12));
    for (const int hand : {hand_left, hand_right})
        shape.add(ball(bones[hand].place - QVector3D(0, 0.05f, 0), {0.036f, 0.068f, 0.044f}, {hand, hand, 0}, 14));
    return shape;
}

Shape eyes()
{
    Shape shape;
    for (const float x : {-0.038f, 0.038f})
        shape.add(ball({x, 1.612f, 0.094f}, {0.011f, 0.015f, 0.012f}, {head, head, 0}, 10));
    return shape;
}

Shape leather()
{
    Shape shape;
    shape.add(tube(
        {{{0, 0.985f, 0}, 0.186f, 0.141f, {hips, spine, 0.4f}}, {{0, 1.03f, 0}, 0.178f, 0.136f, {hips, spine, 0.5f}}},
        28));
    shape.add(boot(foot_left, shin_left));
    shape.add(boot(foot_right, shin_right));
    shape.add(follow(box({0, 1.24f, -0.2f}, {0.26f, 0.32f, 0.14f}, 0.04f), chest));
    return shape;
}

Shape scarf()
{
    Shape shape = tube({{{0, 1.425f, 0.005f}, 0.09f, 0.085f, {chest, chest, 0}},
                        {{0, 1.44f, 0.005f}, 0.115f, 0.108f, {chest, neck, 0.3f}},
                        {{0, 1.475f, 0.005f}, 0.112f, 0.105f, {chest, neck, 0.5f}},
                        {{0, 1.495f, 0.005f}, 0.075f, 0.07f, {neck, neck, 0}}},
                       24);
    QMatrix4x4 hanging;
    hanging.translate(0.06f, 1.34f, 0.135f);
    hanging.rotate(-12, 1, 0, 0);
    shape.add(follow(box({}, {0.075f, 0.2f, 0.022f}, 0.008f), chest), hanging);
    return shape;
}

QQuaternion turned(float x, float y = 0, float z = 0)
{
    return QQuaternion::fromEulerAngles(x, y, z);
}

/// `pose(phase)` for evenly spaced phases of 0 to a full turn in radians, ends included.
template <class Pose>
auto cycle(int steps, Pose&& pose)
{
    std::vector<decltype(pose(0.f))> values;
    for (int i = 0; i <= steps; ++i)
        values.push_back(pose(2 * std::numbers::pi_v<float> * float(i) / float(steps)));
    return values;
}

Glb::Action walk(const std::vector<int>& nodes)
{
    constexpr int steps = 20;
    Glb::Action action{QStringLiteral("walk"), 1.1f, {}, {}};
    const auto turns = [&](Joint joint, auto&& pose) { action.turns.emplace_back(nodes[joint], cycle(steps, pose)); };
    constexpr float half = std::numbers::pi_v<float>;
    for (const bool left : {true, false}) {
        const float lag = left ? 0 : half;
        turns(left ? thigh_left : thigh_right, [=](float t) { return turned(-28 * std::sin(t + lag)); });
        // The knee bends while its leg comes forward.
        turns(left ? shin_left : shin_right,
              [=](float t) { return turned(8 + 46 * std::pow(std::max(0.f, std::cos(t + lag)), 2.f)); });
        turns(left ? foot_left : foot_right, [=](float t) { return turned(12 * std::sin(t + lag + 0.6f)); });
        turns(left ? arm_left : arm_right, [=](float t) { return turned(24 * std::sin(t + lag), 0, left ? 4 : -4); });
        turns(left ? forearm_left : forearm_right, [=](float t) { return turned(-18 + 12 * std::sin(t + lag)); });
    }
    turns(spine, [](float t) { return turned(3, 5 * std::sin(t), 0); });
    turns(chest, [](float t) { return turned(0, 4 * std::sin(t), 1.5f * std::cos(t)); });
    turns(head, [](float t) { return turned(-2, -7 * std::sin(t), 0); });
    action.places.emplace_back(nodes[hips], cycle(steps, [](float t) {
                                   return bones[hips].place + QVector3D(0, 0.022f * std::cos(2 * t) - 0.02f, 0);
                               }));
    return action;
}

Glb::Action wave(const std::vector<int>& nodes)
{
    constexpr int steps = 40;
    Glb::Action action{QStringLiteral("wave"), 2.4f, {}, {}};
    // Up within the first quarter, down within the last.
    const auto raised = [](float t) {
        const float share = t / (2 * std::numbers::pi_v<float>);
        const float edge = std::min(1.f, std::min(share, 1 - share) * 4);
        return edge * edge * (3 - 2 * edge);
    };
    const auto turns = [&](Joint joint, auto&& pose) { action.turns.emplace_back(nodes[joint], cycle(steps, pose)); };
    turns(arm_right, [=](float t) { return turned(0, 0, -128 * raised(t)); });
    turns(forearm_right, [=](float t) { return turned(0, 0, raised(t) * (-24 + 28 * std::sin(4 * t))); });
    turns(hand_right, [=](float t) { return turned(0, 0, raised(t) * 12 * std::sin(4 * t + 0.8f)); });
    turns(arm_left, [](float) { return turned(0, 0, 6); });
    turns(spine, [=](float t) { return turned(0, 0, 3 * raised(t)); });
    turns(head, [=](float t) { return turned(0, -6 * raised(t), -7 * raised(t)); });
    return action;
}

} // namespace

QByteArray make_figure()
{
    Glb glb;
    const int cloth = glb.add_material(QStringLiteral("tunic"), QColor(74, 118, 122));
    const int trousers = glb.add_material(QStringLiteral("trousers"), QColor(66, 72, 92));
    const int skin = glb.add_material(QStringLiteral("skin"), QColor(226, 184, 154));
    const int brown = glb.add_material(QStringLiteral("leather"), QColor(118, 84, 64));
    const int red = glb.add_material(QStringLiteral("scarf"), QColor(214, 138, 92));
    const int dark = glb.add_material(QStringLiteral("eyes"), QColor(40, 42, 54));

    Shape sleeves;
    sleeves.add(tunic());
    sleeves.add(limb(arm_left, forearm_left, bones[hand_left].place, 0.064f, 0.05f, 0.046f));
    sleeves.add(limb(arm_right, forearm_right, bones[hand_right].place, 0.064f, 0.05f, 0.046f));
    Shape legs;
    legs.add(limb(thigh_left, shin_left, bones[foot_left].place, 0.092f, 0.066f, 0.05f));
    legs.add(limb(thigh_right, shin_right, bones[foot_right].place, 0.092f, 0.066f, 0.05f));
    const int mesh = glb.add_mesh(QStringLiteral("figure"),
                                  {{sleeves, cloth},
                                   {legs, trousers},
                                   {face(), skin},
                                   {leather(), brown},
                                   {scarf(), red},
                                   {hat(), brown},
                                   {eyes(), dark}});
    std::vector<int> nodes;
    std::vector<QVector3D> places;
    for (const Bone& bone : bones) {
        const QVector3D parent = bone.parent < 0 ? QVector3D() : bones[bone.parent].place;
        const int above = bone.parent < 0 ? -1 : nodes[std::size_t(bone.parent)];
        nodes.push_back(glb.add_node(QLatin1String(bone.name), above, bone.place - parent));
        places.push_back(bone.place);
    }
    glb.add_skin(glb.add_node(QStringLiteral("Figure"), -1, {}, mesh), nodes, places);
    glb.add_action(walk(nodes));
    glb.add_action(wave(nodes));
    return glb.file();
}
