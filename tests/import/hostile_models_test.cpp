// Damaged copies of model files of every layout. Whatever the child does over them, the parent gets a sound model or a
// message.

#include "import_folder.h"

#include "models/model_pick.h"
#include "support/long_tests.h"

#include <QElapsedTimer>

#include <random>

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;

namespace {

class Mutation {
public:
    explicit Mutation(unsigned seed) : m_random(seed) {}

    QByteArray of(QByteArray file)
    {
        for (unsigned count = 1 + m_random() % 4; count > 0; --count)
            change(file);
        return file;
    }

private:
    qsizetype at(const QByteArray& file) { return qsizetype(m_random() % std::size_t(file.size())); }

    void change(QByteArray& file)
    {
        const qsizetype place = at(file);
        switch (m_random() % 6) {
        case 0: file[place] = char(m_random()); break;
        case 1: file.truncate(std::max<qsizetype>(8, place)); break;
        case 2: file.replace(place, 4, m_random() % 2 ? QByteArray(4, '\xff') : QByteArray("\0\0\0\x7f", 4)); break;
        case 3: file.insert(place, file.mid(at(file), 200)); break;
        case 4: file.remove(place, 1 + qsizetype(m_random() % 20)); break;
        case 5: grow_number(file, place); break;
        }
    }

    /// Makes the next number of a text a huge one.
    static void grow_number(QByteArray& file, qsizetype place)
    {
        for (; place < file.size(); ++place)
            if (file[place] >= '0' && file[place] <= '9') {
                file.replace(place, 1, "999999999");
                return;
            }
    }

    std::mt19937 m_random;
};

/// Poses and meets what was imported, as a program would.
void use(const ModelPtr& model)
{
    ModelPose pose(model);
    for (int action = 0; action < int(model->data().actions.size()); ++action)
        pose.set_action(action, 0.4);
    (void)pick(pose, {}, {{0, 0.5f, 10}, {0, 0, -1}});
}

class HostileModels : public testing::TestWithParam<const char*> {};

TEST_P(HostileModels, NeverTakeTheProgramDown)
{
    const ImportFolder folder;
    const QString name = QLatin1String(GetParam());
    const QByteArray whole = ImportFolder::source(name);
    folder.take(u"pyramid.mtl"_s);
    const ModelImporter importer = folder.importer();
    for (int i = 0; i < times(30, 1500); ++i) {
        const QString path = folder.add(u"mutant."_s + QFileInfo(name).suffix(), Mutation(unsigned(i)).of(whole));
        QElapsedTimer clock;
        clock.start();
        const auto model = importer.import_file(path);
        EXPECT_LT(clock.elapsed(), 25'000) << i;
        if (model)
            use(model.value());
        else
            EXPECT_FALSE(model.status().message().isEmpty()) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, HostileModels,
                         testing::Values("figure.glb", "chest.glb", "crate.glb", "pyramid.fbx", "pyramid.obj",
                                         "pyramid.dae", "pyramid.stl"));

TEST(HostileModel, IsRefusedWhenItsPartsAreCountlessOrNestWithoutEnd)
{
    const ImportFolder folder;
    QByteArray nested = "{\"asset\":{\"version\":\"2.0\"},\"scene\":0,\"scenes\":[{\"nodes\":[0]}],\"nodes\":[";
    for (int i = 0; i < 20'000; ++i)
        nested += "{\"children\":[" + QByteArray::number(i + 1) + "]},";
    nested += "{}]}";
    const QByteArray loop = "{\"asset\":{\"version\":\"2.0\"},\"scene\":0,\"scenes\":[{\"nodes\":[0]}],"
                            "\"nodes\":[{\"children\":[1]},{\"children\":[0]}]}";
    const QByteArray huge = "{\"asset\":{\"version\":\"2.0\"},\"buffers\":[{\"byteLength\":4000000000000,"
                            "\"uri\":\"data:application/octet-stream;base64,AAAA\"}],\"bufferViews\":[{\"buffer\":0,"
                            "\"byteLength\":4000000000000}],\"accessors\":[{\"bufferView\":0,\"componentType\":5126,"
                            "\"count\":300000000000,\"type\":\"VEC3\"}],\"meshes\":[{\"primitives\":[{\"attributes\":"
                            "{\"POSITION\":0}}]}],\"nodes\":[{\"mesh\":0}],\"scenes\":[{\"nodes\":[0]}],\"scene\":0}";
    for (const QByteArray& file : {nested, loop, huge, QByteArray("{\"a\":").repeated(100'000)}) {
        const auto model = folder.importer().import_file(folder.add(u"hostile.gltf"_s, file));
        EXPECT_FALSE(model.ok()) << file.left(60).toStdString();
    }
}

} // namespace
