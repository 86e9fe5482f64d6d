#include "import_folder.h"

#include "core/language.h"
#include "models/model_pose.h"
#include "support/printing.h"

#include <QElapsedTimer>

#include <csignal>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;
using namespace std::chrono_literals;

namespace {

class Importing : public testing::Test {
protected:
    void SetUp() override { VLCMsgIniW::set_language(Language::English); }

    ModelPtr imported(const QString& path) const
    {
        auto model = folder.importer().import_file(path);
        EXPECT_TRUE(model.ok()) << model.status().message().toStdString();
        return model ? model.value() : Model::make({}).value();
    }
    QString message(const ModelImporter& importer, const QString& path) const
    {
        const auto model = importer.import_file(path);
        EXPECT_FALSE(model.ok());
        EXPECT_TRUE(model.status().message().contains(QFileInfo(path).fileName()));
        return model.status().message();
    }
    /// A program that runs these lines; $4 is the file that it is to write.
    QString program(const QByteArray& lines) const
    {
        const QString path = folder.add(u"program"_s, "#!/bin/sh\n" + lines + "\n");
        QFile(path).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    ImportFolder folder;
};

void expect_metres_and_y_up(const Model& model)
{
    const ModelBox& box = model.box();
    EXPECT_NEAR((box.low - QVector3D(-0.5f, 0, -0.5f)).length(), 0, 1e-3)
        << box.low.x() << ' ' << box.low.y() << ' ' << box.low.z();
    EXPECT_NEAR((box.high - QVector3D(0.5f, 1, 0.5f)).length(), 0, 1e-3)
        << box.high.x() << ' ' << box.high.y() << ' ' << box.high.z();
    EXPECT_EQ(model.triangle_count(), 6);
}

TEST_F(Importing, GivesTheSamePyramidOfEveryLayoutInMetresAndUpright)
{
    for (const char* layout : {"obj", "fbx", "dae", "stl"}) {
        SCOPED_TRACE(layout);
        expect_metres_and_y_up(*imported(folder.take(u"pyramid."_s + QLatin1String(layout))));
    }
}

TEST_F(Importing, BringsSkeletonActionsAndMovingNodesOfTheSamples)
{
    const ModelPtr figure = imported(folder.take(u"figure.glb"_s));
    EXPECT_EQ(figure->kind(), ModelKind::Skinned);
    EXPECT_EQ(figure->data().actions.size(), 2u);
    EXPECT_NEAR(figure->box().high.y(), 1.83, 0.01);
    ModelPose pose(figure);
    pose.set_action(figure->find_action(u"wave"_s), 1.2);
    EXPECT_GT(pose.box().high.y(), 1.85) << "the hand is above the hat";

    const ModelPtr chest = imported(folder.take(u"chest.glb"_s));
    EXPECT_EQ(chest->kind(), ModelKind::Animated);
    ModelPose open(chest);
    open.set_action(chest->find_action(u"open"_s), 5, ActionEnd::Hold);
    EXPECT_GT(open.box().high.y(), chest->box().high.y() + 0.1f);

    const ModelPtr box = imported(folder.take(u"crate.glb"_s));
    const ModelData& crate = box->data();
    ASSERT_EQ(crate.materials.at(0).normal_map, 1);
    EXPECT_FALSE(crate.meshes.at(0).tangents.empty());
    EXPECT_EQ(crate.pictures.at(0).image.size(), QSize(256, 256));
    EXPECT_EQ(imported(folder.take(u"tree.glb"_s))->kind(), ModelKind::Static);
}

TEST_F(Importing, TakesMaterialsWithPicturesFromBesideTheFileAndFromWithin)
{
    folder.take(u"pyramid.mtl"_s);
    folder.add(u"textures/dots.png"_s, png({8, 4}, Qt::red));
    const ModelPtr model = imported(folder.take(u"pyramid.obj"_s));
    const ModelData& data = model->data();
    ASSERT_EQ(data.pictures.size(), 1u);
    EXPECT_EQ(data.pictures[0].name, u"dots.png"_s);
    EXPECT_EQ(data.pictures[0].image.size(), QSize(8, 4));
    const auto glass = std::find_if(data.materials.begin(), data.materials.end(),
                                    [](const ModelMaterial& material) { return material.name == u"glass"_s; });
    ASSERT_NE(glass, data.materials.end());
    EXPECT_EQ(glass->alpha, AlphaMode::Blend);
    EXPECT_FLOAT_EQ(glass->color.w(), 0.5f);

    const ModelPtr within = imported(folder.take(u"pyramid.fbx"_s));
    ASSERT_EQ(within->data().pictures.size(), 1u);
    EXPECT_EQ(within->data().pictures[0].image.size(), QSize(4, 4));
}

TEST_F(Importing, ReadsNothingOutsideTheFoldersOfTheModel)
{
    folder.add(u"secret.png"_s, png({8, 8}, Qt::red));
    for (const QByteArray& name : {QByteArray("../secret.png"), folder.path(u"secret.png"_s).toUtf8()}) {
        folder.add(u"model/pyramid.mtl"_s, "newmtl sand\nmap_Kd " + name + "\n");
        const QString path = folder.add(u"model/pyramid.obj"_s, ImportFolder::source(u"pyramid.obj"_s));
        EXPECT_TRUE(imported(path)->data().pictures.empty()) << name.toStdString();
    }
    ASSERT_TRUE(QFile::link(folder.path(u"secret.png"_s), folder.path(u"model/link.png"_s)));
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.path(u"model/pipe.png"_s)).constData(), 0600), 0);
    for (const QByteArray name : {"link.png", "pipe.png"}) {
        folder.add(u"model/pyramid.mtl"_s, "newmtl sand\nmap_Kd " + name + "\n");
        EXPECT_TRUE(imported(folder.path(u"model/pyramid.obj"_s))->data().pictures.empty()) << name.toStdString();
    }
}

TEST_F(Importing, ReducesPicturesThatAreTooLargeTogether)
{
    const QByteArray picture = png({2500, 2000}, Qt::red);
    QByteArray materials, faces = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\n";
    for (int i = 0; i < 9; ++i) {
        const QByteArray name = "p" + QByteArray::number(i);
        folder.add(QString::fromLatin1(name + ".png"), picture);
        materials += "newmtl " + name + "\nmap_Kd " + name + ".png\n";
        faces += "usemtl " + name + "\nf 1/1 2/1 3/1\n";
    }
    folder.add(u"many.mtl"_s, materials);
    const ModelPtr model = imported(folder.add(u"many.obj"_s, "mtllib many.mtl\n" + faces));
    ASSERT_EQ(model->data().pictures.size(), 9u);
    EXPECT_EQ(model->data().pictures[8].image.width(), 1024);
}

TEST_F(Importing, ComesFromTheCacheUntilTheFileOrOneBesideItChanges)
{
    folder.take(u"pyramid.mtl"_s);
    folder.add(u"textures/dots.png"_s, png({8, 4}, Qt::red));
    const QString path = folder.take(u"pyramid.obj"_s);
    imported(path);
    const ModelImporter only_cache = folder.importer(u"/no/such/program"_s);
    EXPECT_TRUE(only_cache.import_file(path).ok());
    EXPECT_TRUE(only_cache
                    .import_files(u"other.obj"_s,
                                  {{u"other.obj"_s, content_of(path)},
                                   {u"pyramid.mtl"_s, content_of(folder.path(u"pyramid.mtl"_s))},
                                   {u"textures/dots.png"_s, png({8, 4}, Qt::red)}})
                    .ok())
        << "the content counts, not where it stands";

    folder.add(u"textures/dots.png"_s, png({2, 2}, Qt::blue));
    EXPECT_FALSE(only_cache.import_file(path).ok());
    EXPECT_EQ(imported(path)->data().pictures.at(0).image.size(), QSize(2, 2));
    QFile::remove(folder.path(u"textures/dots.png"_s));
    EXPECT_TRUE(imported(path)->data().pictures.empty());
    folder.add(u"textures/dots.png"_s, png({8, 4}, Qt::red));
    EXPECT_EQ(imported(path)->data().pictures.size(), 1u) << "what was missing is there";
    folder.add(u"pyramid.obj"_s, content_of(path) + "\n# changed\n");
    EXPECT_FALSE(only_cache.import_file(path).ok());
}

TEST_F(Importing, MakesADamagedEntryOfTheCacheAnew)
{
    const QString path = folder.take(u"pyramid.stl"_s);
    imported(path);
    const QStringList entries = everything_in(folder.cache());
    ASSERT_EQ(entries.size(), 1);
    const QString entry = folder.cache() + u'/' + entries[0];
    const QByteArray whole = content_of(entry);
    QByteArray changed = whole;
    changed[changed.size() - 40] = char(changed[changed.size() - 40] ^ 1);
    for (const QByteArray& damaged : {changed, whole.left(100), QByteArray(), whole + 'x'}) {
        put(entry, damaged);
        expect_metres_and_y_up(*imported(path));
        EXPECT_EQ(content_of(entry), whole);
    }
}

TEST_F(Importing, TellsAPersonWhatWentWrong)
{
    EXPECT_TRUE(message(folder.importer(), folder.add(u"a.docx"_s, "x")).contains(u"Use glTF, OBJ, FBX"_s));
    EXPECT_TRUE(message(folder.importer(), folder.path(u"none.glb"_s)).contains(u"Check the file"_s));
    EXPECT_TRUE(message(folder.importer(), folder.add(u"a.obj"_s, "v 0 0 0\n")).size() < 400);
    EXPECT_TRUE(message(folder.importer(), folder.add(u"a.glb"_s, "glTF")).size() < 400);
    const QString path = folder.take(u"pyramid.stl"_s);
    EXPECT_TRUE(message(folder.importer(u"/no/such/program"_s), path).contains(u"is missing"_s));
    EXPECT_TRUE(message(folder.importer(program("kill -SEGV $$")), path).contains(u"may be damaged"_s));
    EXPECT_TRUE(message(folder.importer(program("exit 7")), path).contains(u"may be damaged"_s));
    EXPECT_TRUE(message(folder.importer(program("printf 'no\\001 good\\nat all.' >&2; exit 1")), path)
                    .contains(u"no? good at all. Check"_s));
    EXPECT_TRUE(message(folder.importer(program("echo nothing > \"$4\"")), path).contains(u"is damaged"_s));
    EXPECT_TRUE(message(folder.importer(program("truncate -s 300M \"$4\"")), path).contains(u"too large"_s));
    EXPECT_TRUE(everything_in(folder.cache()).isEmpty());
}

TEST_F(Importing, EndsAChildThatTakesTooLongOrThatNobodyWaitsForAnyMore)
{
    const QString path = folder.take(u"pyramid.stl"_s);
    ModelImporter importer = folder.importer(program("echo $$ > \"$(dirname \"$0\")/child\"\n"
                                                     "yes 50 | head -c 1000000; exec sleep 100"));
    importer.set_time_limit(300ms);
    const auto child_is_gone = [&] {
        const int child = content_of(folder.path(u"child"_s)).trimmed().toInt();
        return child > 0 && kill(child, 0) != 0;
    };
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(message(importer, path).contains(u"took longer"_s));
    EXPECT_TRUE(child_is_gone());

    importer.set_time_limit(60s);
    double last = 0;
    const Progress::Tell tell = [&](double share) {
        last = share;
        return share < 0.4;
    };
    const auto model = importer.import_file(path, Progress(tell));
    EXPECT_TRUE(is_stopped(model.status()));
    EXPECT_NEAR(last, 0.45, 1e-6) << "half of the child's part of the work";
    EXPECT_TRUE(child_is_gone());
    EXPECT_LT(clock.elapsed(), 30'000);
}

} // namespace
