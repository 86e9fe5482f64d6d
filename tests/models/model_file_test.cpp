#include "models/model_file.h"

#include "sample_model.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <random>

using namespace tarn;
using namespace tarn::test;

namespace {

TEST(ModelFile, ReadsWhatItWroteAndNothingThatIsCutOffOrGoesOn)
{
    const QByteArray file = write_model(arm());
    const auto model = read_model(file);
    ASSERT_TRUE(model.ok()) << model.status().message().toStdString();
    EXPECT_EQ(write_model(model.value()->data()), file);
    EXPECT_EQ(model.value()->kind(), ModelKind::Skinned);
    EXPECT_EQ(model.value()->data().pictures[0].image.pixelColor(2, 1), QColor(10, 20, 30));
    for (qsizetype size = 0; size < file.size(); ++size)
        EXPECT_FALSE(read_model(file.left(size)).ok()) << size;
    EXPECT_FALSE(read_model(file + 'x').ok());
}

TEST(ModelFile, RefusesWhatWouldLeadOutOfItsListsOrIsNoNumber)
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    const std::vector<std::pair<const char*, std::function<void(ModelData&)>>> damages{
        {"a node under itself", [](ModelData& data) { data.nodes[1].parent = 1; }},
        {"a node under a later one", [](ModelData& data) { data.nodes[0].parent = 2; }},
        {"a mesh that is not there", [](ModelData& data) { data.nodes[1].meshes = {2}; }},
        {"a material that is not there", [](ModelData& data) { data.meshes[0].material = 2; }},
        {"a picture that is not there", [](ModelData& data) { data.materials[0].picture = 1; }},
        {"a picture below none", [](ModelData& data) { data.materials[0].normal_map = -2; }},
        {"a corner that is not there", [](ModelData& data) { data.meshes[0].indices[4] = 4; }},
        {"half a triangle", [](ModelData& data) { data.meshes[0].indices.pop_back(); }},
        {"a bone number that is not there", [](ModelData& data) { data.meshes[0].bone_numbers[3][3] = 2; }},
        {"a bone of no node", [](ModelData& data) { data.meshes[0].bones[1].node = 4; }},
        {"a weight below zero", [](ModelData& data) { data.meshes[0].bone_weights[2].setY(-1); }},
        {"a place that is no number", [=](ModelData& data) { data.meshes[1].places[0].setZ(none); }},
        {"an endless scale", [](ModelData& data) { data.nodes[0].scale.setX(HUGE_VALF); }},
        {"a turn of no length", [](ModelData& data) { data.nodes[0].turn = QQuaternion(0, 0, 0, 0); }},
        {"times that go back",
         [](ModelData& data) {
             data.actions[0].tracks[0].turns.times = {1, 0};
         }},
        {"a time that is no number", [=](ModelData& data) { data.actions[0].tracks[0].turns.times[1] = none; }},
        {"a track of no node", [](ModelData& data) { data.actions[0].tracks[0].node = 4; }},
        {"a length that is no number", [=](ModelData& data) { data.actions[0].duration = none; }},
    };
    for (const auto& [what, damage] : damages) {
        ModelData data = arm();
        damage(data);
        EXPECT_FALSE(read_model(write_model(data)).ok()) << what;
    }
}

TEST(ModelFile, CountsAMeshAsOftenAsNodesShowIt)
{
    ModelData data = arm();
    const auto per_mesh = qsizetype(data.meshes[1].indices.size() / 3);
    data.nodes[1].meshes.assign(std::size_t(ModelLimits::triangles / per_mesh) + 1, 1);
    const auto model = read_model(write_model(data));
    ASSERT_FALSE(model.ok());
    EXPECT_TRUE(model.status().message().contains(QStringLiteral("2000000"))) << model.status().message().toStdString();
}

TEST(ModelFile, SurvivesAnyBytesAndCounts)
{
    const QByteArray file = write_model(arm());
    std::mt19937 random(7);
    for (int i = 0; i < 20'000; ++i) {
        QByteArray mutant = file;
        const auto at = [&] { return qsizetype(random() % std::size_t(mutant.size() - 4)); };
        for (unsigned k = random() % 3; k < 3; ++k)
            mutant[at()] = char(random());
        if (random() % 2)
            mutant.replace(at(), 4, random() % 2 ? QByteArray(4, '\xff') : QByteArray("\0\0\0\x7f", 4));
        if (const auto model = read_model(mutant))
            EXPECT_TRUE(read_model(write_model(model.value()->data())).ok());
        else
            EXPECT_FALSE(model.status().message().isEmpty());
    }
}

} // namespace
