#include "render/renderer.h"

#include "../models/sample_model.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;

namespace {

constexpr QSize size(320, 180);

/// A square of two metres that looks along z, of one material "paint".
ModelData square(const ModelMaterial& material)
{
    ModelData data;
    data.materials = {material};
    data.materials[0].name = u"paint"_s;
    ModelMesh mesh;
    mesh.places = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
    mesh.normals.assign(4, {0, 0, 1});
    mesh.uvs = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    mesh.indices = {0, 1, 2, 0, 2, 3};
    data.meshes = {mesh};
    data.nodes.emplace_back().meshes = {0};
    return data;
}

DrawItem item(ModelData data, const QVector3D& place = {})
{
    DrawItem item;
    item.model = Model::make(std::move(data)).value();
    item.matrix.translate(place);
    return item;
}

DrawItem painted(const QVector4D& color, const QVector3D& place = {})
{
    ModelMaterial material;
    material.color = color;
    return item(square(material), place);
}

class Rendering : public testing::Test {
protected:
    void SetUp() override
    {
        renderer = Renderer::create();
        if (!renderer)
            GTEST_SKIP() << "no OpenGL here";
        view.pixels = size;
        view.ground = false;
        view.background = Qt::black;
        look_from({0, 0, 6});
        view.projection.perspective(45, float(size.width()) / float(size.height()), 0.1f, 1000);
    }

    void look_from(const QVector3D& eye, const QVector3D& up = {0, 1, 0}, const QVector3D& at = {})
    {
        view.view.setToIdentity();
        view.view.lookAt(eye, at, up);
    }
    QImage draw(const std::vector<DrawItem>& items)
    {
        EXPECT_NE(renderer->draw(0, view, items), 0u);
        return renderer->picture(0);
    }
    /// The colour at a place of the world.
    QColor at(const QImage& image, const QVector3D& place) const
    {
        const QVector3D clip = (view.projection * view.view).map(place);
        return image.pixelColor(int((clip.x() + 1) / 2 * float(image.width())),
                                int((1 - clip.y()) / 2 * float(image.height())));
    }

    std::unique_ptr<Renderer> renderer;
    RenderView view;
};

bool is_dark(const QColor& color)
{
    return color.lightness() < 8;
}

TEST_F(Rendering, ShowsModelsWhereTheirPosesAre)
{
    const DrawItem resting = item(arm());
    ModelPose bent(resting.model);
    bent.set_action(0, 1, ActionEnd::Hold);
    look_from({0, 1, -6}, {0, 1, 0}, {0, 1, 0}); // The square turns its back, which is not drawn.
    QImage image = draw({resting});
    EXPECT_TRUE(is_dark(at(image, {0, 1.8f, 0}))) << "the strip's back is not drawn either";
    ModelData both_sides = arm();
    both_sides.materials[0].two_sided = true;
    both_sides.materials[0].picture = -1;
    DrawItem strip = item(both_sides);
    image = draw({strip});
    EXPECT_GT(at(image, {0, 1.8f, 0}).red(), 60);
    EXPECT_TRUE(is_dark(at(image, {-0.9f, 0.9f, 0})));
    ModelPose pose(strip.model);
    pose.set_action(0, 1, ActionEnd::Hold);
    strip.pose = &pose;
    image = draw({strip});
    EXPECT_TRUE(is_dark(at(image, {0, 1.8f, 0})));
    EXPECT_GT(at(image, {-0.9f, 0.9f, 0}).red(), 60);
}

TEST_F(Rendering, ShowsTheFrontOfWhatIsMirrored)
{
    DrawItem mirrored = painted({0, 1, 0, 1});
    mirrored.matrix.scale(-1, 1, 1);
    EXPECT_GT(at(draw({mirrored}), {}).green(), 60);
}

TEST_F(Rendering, MixesWhatLetsThroughFromBackToFront)
{
    DrawItem red = painted({1, 0, 0, 1});
    DrawItem green = painted({0, 1, 0, 1}, {0, 0, 1});
    DrawItem blue = painted({0, 0, 1, 1}, {0, 0, 2});
    green.transparency = 0.5f;
    blue.tint.setAlphaF(0.5f);
    const QColor mixed = at(draw({blue, green, red}), {});
    EXPECT_EQ(at(draw({red, green, blue}), {}), mixed) << "the order of the list does not matter";
    EXPECT_GT(mixed.blue(), mixed.green() + 20);
    EXPECT_GT(mixed.green(), mixed.red() - 10);
    EXPECT_GT(mixed.red(), 20);
    red.transparency = 1;
    EXPECT_TRUE(is_dark(at(draw({red}), {})));
    EXPECT_EQ(renderer->cost().items, 0);
}

TEST_F(Rendering, CutsOutAndTintsAndHighlights)
{
    ModelMaterial material;
    material.picture = 0;
    material.alpha = AlphaMode::Mask;
    ModelData data = square(material);
    QImage leaf(2, 1, QImage::Format_RGBA8888);
    leaf.setPixelColor(0, 0, QColor(255, 255, 255));
    leaf.setPixelColor(1, 0, QColor(255, 255, 255, 0));
    data.pictures = {{QString(), {}, leaf}};
    DrawItem cut = item(data);
    cut.tint = QColor(0, 0, 255);
    const QImage image = draw({cut});
    EXPECT_GT(at(image, {-0.8f, 0, 0}).blue(), 60);
    EXPECT_LT(at(image, {-0.8f, 0, 0}).red(), 8);
    EXPECT_TRUE(is_dark(at(image, {0.8f, 0, 0})));
    cut.highlight = QColor(255, 0, 0);
    EXPECT_GT(at(draw({cut}), {-0.8f, 0, 0}).red(), 30);
}

TEST_F(Rendering, BumpsTurnWithTheNormalMap)
{
    // A normal map whose right half leans to the light's side and whose left half leans away.
    ModelMaterial material;
    material.normal_map = 0;
    ModelData data = square(material);
    data.meshes[0].tangents.assign(4, {1, 0, 0, 1});
    QImage bumps(2, 1, QImage::Format_RGBA8888);
    bumps.setPixelColor(0, 0, QColor(30, 128, 200));
    bumps.setPixelColor(1, 0, QColor(225, 128, 200));
    data.pictures = {{QString(), {}, bumps}};
    const QImage image = draw({item(data)});
    EXPECT_GT(at(image, {0.8f, 0, 0}).lightness(), at(image, {-0.8f, 0, 0}).lightness() + 20);
}

TEST_F(Rendering, ShowsAPictureInPlaceOfAMaterialsOwn)
{
    DrawItem screen = painted({1, 1, 1, 1});
    screen.textures = {{u"paint"_s, 7}};
    const QColor own = at(draw({screen}), {});
    QImage picture(64, 32, QImage::Format_RGB32);
    picture.fill(Qt::green);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 64; ++x)
            picture.setPixel(x, y, qRgb(255, 0, 0));
    renderer->set_texture(7, picture);
    QImage image = draw({screen});
    EXPECT_GT(at(image, {0, 0.5f, 0}).red(), 60) << "the picture's first row is above";
    EXPECT_GT(at(image, {0, -0.5f, 0}).green(), 60);
    renderer->set_texture(7, picture);
    renderer->draw(0, view, std::vector{screen});
    EXPECT_FALSE(renderer->cost().drawn) << "the picture is the same";
    picture.fill(Qt::blue);
    renderer->set_texture(7, picture);
    EXPECT_GT(at(draw({screen}), {}).blue(), 60);
    renderer->set_texture(7, {});
    EXPECT_EQ(at(draw({screen}), {}), own);
}

TEST_F(Rendering, DrawsOnlyWhatIsSeenAndOnlyWhenItChanged)
{
    const DrawItem shared = item(arm());
    ModelPose pose(shared.model);
    std::vector<DrawItem> items(3, shared);
    items[0].pose = &pose;
    items[1].matrix.translate(1000, 0, 0);
    items[2].matrix.translate(0, 0, 20);
    const auto draws = [&] {
        renderer->draw(0, view, items);
        return renderer->cost().drawn;
    };
    EXPECT_TRUE(draws());
    EXPECT_EQ(renderer->cost().items, 1);
    EXPECT_FALSE(draws());
    pose.set_action(0, 0.3);
    EXPECT_TRUE(draws());
    items[1].matrix.translate(1, 0, 0);
    EXPECT_TRUE(draws());
    renderer->draw(1, view, items); // Another camera's picture.
    EXPECT_TRUE(renderer->cost().drawn);
    EXPECT_FALSE(draws());
    view.pixels = {100, 50};
    EXPECT_TRUE(draws());
    EXPECT_EQ(renderer->picture(0).size(), QSize(100, 50));
    EXPECT_EQ(renderer->draw(0, {}, items), 0u) << "no size";
    renderer->remove_target(1);
    EXPECT_TRUE(renderer->picture(1).isNull());
}

TEST_F(Rendering, CastsOneShadowOnTheGroundAndHidesWhatIsBelow)
{
    view.ground = true;
    look_from({0.5f, 8, 8}, {0, 1, 0}, {0.5f, 0, 0.5f});
    DrawItem roof = painted({1, 1, 1, 1}, {0, 2, 0});
    roof.matrix.rotate(-90, 1, 0, 0);
    const QVector3D in_shadow(-0.9f, 0, -1.2f);
    const QVector3D in_light(2.5f, 0, 2.5f);
    const QImage bare = draw({});
    const QImage one = draw({roof});
    EXPECT_LT(at(one, in_shadow).value(), at(bare, in_shadow).value() * 3 / 4);
    EXPECT_EQ(at(one, in_light), at(bare, in_light));
    EXPECT_EQ(at(draw({roof, roof}), in_shadow), at(one, in_shadow)) << "two shadows are not darker than one";
    roof.casts_shadow = false;
    EXPECT_EQ(at(draw({roof}), in_shadow), at(bare, in_shadow));
    DrawItem buried = painted({1, 1, 1, 1}, {2.5f, -1, 2.5f});
    buried.matrix.rotate(-90, 1, 0, 0);
    buried.casts_shadow = false;
    EXPECT_EQ(at(draw({buried}), in_light), at(bare, in_light));
}

TEST_F(Rendering, SkyAndGroundTiltWithTheCamera)
{
    view.ground = true;
    const QVector3D above_horizon(3, 5, 0);
    look_from({3, 4, 9}, {0, 1, 0}, above_horizon);
    const QImage level = draw({});
    look_from({3, 4, 9}, {0.002f, 1, 0}, above_horizon); // Hardly, but no longer level.
    const QImage tilted = draw({});
    for (int y = 0; y < size.height() / 3; ++y) // In the middle; at the sides a level picture is less exact.
        ASSERT_NEAR(level.pixelColor(160, y).value(), tilted.pixelColor(160, y).value(), 3) << y;
    look_from({3, 4, 9}, {-1, 0, 0}, above_horizon); // Up is to the right.
    const QImage lying = draw({});
    EXPECT_NEAR(lying.pixelColor(220, 90).value(), level.pixelColor(160, 30).value(), 6);
    EXPECT_NEAR(lying.pixelColor(220, 20).value(), lying.pixelColor(220, 160).value(), 6);
}

TEST_F(Rendering, FreesWhatBelongedToModelsThatAreGone)
{
    std::weak_ptr<const Model> gone;
    {
        const DrawItem last = painted({1, 0, 0, 1});
        gone = last.model;
        draw({last});
    }
    draw({});
    EXPECT_TRUE(gone.expired());
}

} // namespace
