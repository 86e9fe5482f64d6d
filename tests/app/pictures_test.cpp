// Pictures and playing from the command line, in processes of the program.

#include "core/journal.h"
#include "engine/scene_plug.h"
#include "movies/movie_tools.h"
#include "play_window.h"
#include "store/pak_file.h"
#include "studio.h"
#include "support/files.h"
#include "support/movie_writer.h"
#include "support/printing.h"
#include "view/view3d.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarn::test;

namespace {

class Pictures : public testing::Test {
protected:
    /// Status of the program, and what it said.
    std::pair<int, QString> run(const QStringList& arguments)
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, m_folder.path());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path()); // Qt tells of one that is missing.
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TARN_PROGRAM), QStringList{u"--lang"_s, u"en"_s} + arguments);
        EXPECT_TRUE(program.waitForFinished(60'000));
        return {program.exitCode(), QString::fromUtf8(program.readAllStandardError())};
    }
    int render(const QStringList& options)
    {
        const auto [status, said] = run(QStringList{u"--render"_s, m_picture} + options + QStringList{m_sample});
        EXPECT_EQ(status != 0, said.contains(u"tarn-studio: "_s)) << said.toStdString();
        return status;
    }

    QTemporaryDir m_folder;
    const QString m_picture = m_folder.filePath(u"a.png"_s);
    const QString m_sample = QStringLiteral(TARN_SAMPLE);
};

} // namespace

TEST_F(Pictures, have_the_size_that_is_asked_for_whatever_the_screen_is)
{
    ASSERT_EQ(render({u"--size"_s, u"640x360"_s, u"--screen"_s, u"1920x1080"_s}), 0);
    EXPECT_EQ(QImage(m_picture).size(), QSize(640, 360));
    ASSERT_EQ(render({u"--screen"_s, u"800x600"_s}), 0);
    EXPECT_EQ(QImage(m_picture).size(), QSize(800, 600));
    ASSERT_EQ(render({u"--size"_s, u"400x400"_s, u"--screen"_s, u"800x400"_s}), 0);
    EXPECT_EQ(QImage(m_picture).pixelColor(200, 10), QColor(Qt::black)) << "the ratio stays";
}

TEST_F(Pictures, of_a_dialog_are_as_large_as_it_is)
{
    ASSERT_EQ(render({u"--dialog"_s, u"Inventory"_s}), 0);
    const QImage alone(m_picture);
    EXPECT_LT(alone.width(), 1280);
    ASSERT_EQ(render({u"--dialog"_s, u"Inventory"_s, u"--size"_s, u"64x64"_s}), 0);
    EXPECT_EQ(QImage(m_picture).size(), QSize(64, 64));
    EXPECT_EQ(render({u"--dialog"_s, u"no such dialog"_s}), 2);
}

TEST_F(Pictures, of_a_timebar_show_its_times_each_in_a_file)
{
    ASSERT_EQ(render({u"--timebar"_s, u"OpenInventory"_s, u"--time"_s, u"0..0.4"_s, u"--fps"_s, u"5"_s}), 0);
    EXPECT_EQ(everything_in(m_folder.path()), QStringList({u"a-0000.png"_s, u"a-0001.png"_s, u"a-0002.png"_s}));
    EXPECT_NE(QImage(m_folder.filePath(u"a-0000.png"_s)), QImage(m_folder.filePath(u"a-0002.png"_s)));
    EXPECT_EQ(render({u"--timebar"_s, u"no such timebar"_s}), 2);
    EXPECT_EQ(render({u"--time"_s, u"5000"_s}), 2);
}

TEST_F(Pictures, of_movies_show_their_first_frame_and_wait_for_nothing_that_does_not_come)
{
    const auto red_at = [&](const QByteArray& movie, const QString& player) {
        CPakFile package;
        EXPECT_TRUE(package.create(m_folder.filePath(u"movie.tarn"_s)).ok());
        EXPECT_TRUE(package.add_file(u"manifest.json"_s, "{\"format\":1}").ok());
        EXPECT_TRUE(package
                        .add_file(u"scene.json"_s,
                                  "{\"root\":{\"id\":1},\"controls\":[{\"id\":2,\"type\":16,\"dialog\":1,\"x\":10,"
                                  "\"y\":10,\"width\":120,\"height\":90,\"source\":\"m.swf\"}]}")
                        .ok());
        EXPECT_TRUE(package.add_file(u"movies/m.swf"_s, movie).ok());
        EXPECT_TRUE(package.close().ok());
        if (!player.isNull())
            qputenv("TARN_MOVIE_PLAYER", player.toUtf8());
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(run({u"--render"_s, m_picture, m_folder.filePath(u"movie.tarn"_s)}).first, 0);
        EXPECT_LT(clock.elapsed(), 40'000);
        return QImage(m_picture).pixelColor(15, 25) == QColor(Qt::red);
    };
    const bool is_there = tarn::MovieTools::find().ok();
    EXPECT_EQ(red_at(moving_movie(), {}), is_there);
    const QByteArray endless = MovieWriter().script(MovieScript().loop_forever()).show_frame().bytes();
    EXPECT_FALSE(red_at(endless, {}));
    const QByteArray before = qgetenv("TARN_MOVIE_PLAYER");
    EXPECT_FALSE(red_at(moving_movie(), m_folder.path()));
    before.isNull() ? qunsetenv("TARN_MOVIE_PLAYER") : qputenv("TARN_MOVIE_PLAYER", before);
}

TEST_F(Pictures, of_what_cannot_be_read_are_refused_with_a_reason)
{
    put(m_folder.filePath(u"b.tarn"_s), "no package");
    for (const QString& file : {m_folder.filePath(u"b.tarn"_s), m_folder.filePath(u"gone.tarn"_s)})
        for (const QStringList& how : {QStringList{u"--render"_s, m_picture}, QStringList{u"--play"_s}}) {
            const auto [status, said] = run(how + QStringList{file});
            EXPECT_EQ(status, 2);
            EXPECT_TRUE(said.startsWith(u"tarn-studio: "_s)) << said.toStdString();
        }
    EXPECT_EQ(run({u"--render"_s, m_folder.filePath(u"no/folder.png"_s), m_sample}).first, 2);
}

TEST_F(Pictures, the_commands_are_reached_through_the_program)
{
    EXPECT_EQ(run({u"--check"_s, m_sample}), std::pair(0, QString()));
    EXPECT_EQ(run({u"merge"_s}).first, 2);
    EXPECT_EQ(run({u"diff"_s, u"--help"_s}).first, 0);
}

TEST(PlayWindow, runs_the_interface_without_the_editor_and_changes_to_the_full_screen)
{
    Studio studio;
    EXPECT_TRUE(
        studio.load_plug_ins(QFileInfo(QStringLiteral(TARN_SCENE_PLUGIN)).path(), Studio::Windows::None).isEmpty());
    ASSERT_TRUE(studio.scene());
    EXPECT_TRUE(studio.ui_plug_ins().empty());
    studio.start_world();
    ASSERT_TRUE(studio.open_file(QStringLiteral(TARN_SAMPLE)).ok());
    {
        PlayWindow window(studio, {});
        EXPECT_EQ(window.size(), studio.scene()->design_size());
        window.show();
        EXPECT_TRUE(studio.is_playing());
        auto* view = window.findChild<CView3D*>();
        QTest::keyClick(view, Qt::Key_F11);
        EXPECT_TRUE(window.isFullScreen());
        QTest::keyClick(view, Qt::Key_F11);
        EXPECT_FALSE(window.isFullScreen());
    }
    EXPECT_FALSE(studio.is_playing());
    EXPECT_TRUE(studio.scene()->journal().is_saved());
}
