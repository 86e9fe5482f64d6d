// What is kept of a scene that is not saved, within one program.

#include "autosave.h"
#include "core/field.h"
#include "core/model_object.h"
#include "engine/scene_plug.h"
#include "frame/boxes.h"
#include "frame/qt_boxes.h"
#include "settings.h"
#include "studio.h"
#include "support/files.h"
#include "watched_work.h"

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;

namespace {

class AutosaveTest : public testing::Test {
protected:
    AutosaveTest()
    {
        settings::forget_all();
        const QString plug_ins = m_folder.filePath(u"plug-ins"_s);
        QDir().mkpath(plug_ins);
        QFile::link(QStringLiteral(TARN_SCENE_PLUGIN), plug_ins + u"/libscene.so"_s);
        EXPECT_EQ(m_studio.load_plug_ins(plug_ins), QStringList());
        m_studio.start_world();
    }
    ModelObject& dialog(const QString& name)
    {
        return *m_studio.scene()->model().create(kind(), {.name = name, .rect = {1, 2, 30, 40}}).value();
    }
    const ObjectKind& kind() { return *m_studio.world().document().kind("dialogs"); }
    std::vector<ModelObject*> dialogs() { return m_studio.world().document().objects_of(kind()); }
    QStringList names()
    {
        QStringList names;
        for (const ModelObject* object : dialogs())
            names.append(std::get<QString>(object->property(*object->fields().find("name"))));
        return names;
    }
    void rename(ModelObject& object, const QString& name)
    {
        EXPECT_TRUE(object.set_property(*object.fields().find("name"), name).ok());
    }
    QStringList kept() const { return QDir(m_recovery).entryList({u"*.tarn"_s, u"*.json"_s}); }
    QByteArray saved(const QString& name)
    {
        EXPECT_TRUE(m_studio.save_file(m_folder.filePath(name)).ok());
        return content_of(m_folder.filePath(name));
    }
    /// As the program does that starts after this one was killed now.
    void die_and_recover()
    {
        m_studio.keep_unsaved();
        const QTemporaryDir elsewhere;
        for (const QString& file : kept())
            EXPECT_TRUE(QFile::copy(m_recovery + u'/' + file, elsewhere.filePath(file)));
        EXPECT_TRUE(m_studio.new_file().ok());
        for (const QString& file : everything_in(elsewhere.path()))
            EXPECT_TRUE(QFile::copy(elsewhere.filePath(file), m_recovery + u"/left-"_s + file));
        auto left = m_studio.left_behind();
        ASSERT_EQ(left.size(), 1u);
        const Status status = m_studio.recover(std::move(left.front()));
        EXPECT_TRUE(status) << status.message().toStdString();
    }

    QTemporaryDir m_folder;
    const QString m_data = m_folder.filePath(u"data"_s);
    const QString m_recovery = m_data + u"/recovery"_s;
    Studio m_studio;
};

} // namespace

TEST_F(AutosaveTest, a_recovered_scene_is_whole_changed_and_that_of_its_file_and_is_gone_once_it_is_saved)
{
    m_studio.keep_data(m_data);
    const QString path = m_folder.filePath(u"scene.tarn"_s);
    ASSERT_TRUE(QFile::copy(QStringLiteral(TARN_EVENTS_SAMPLE), path));
    ASSERT_TRUE(m_studio.open_file(path).ok());
    dialog(u"Late"_s);
    die_and_recover();
    EXPECT_TRUE(m_studio.is_changed());
    EXPECT_EQ(m_studio.file_name(), path);
    EXPECT_TRUE(names().contains(u"Late"_s));
    EXPECT_EQ(kept().size(), 2);
    EXPECT_TRUE(content_of(path) == content_of(QStringLiteral(TARN_EVENTS_SAMPLE)));

    const QByteArray recovered = saved(u"recovered.tarn"_s);
    EXPECT_EQ(kept(), QStringList());
    ASSERT_TRUE(m_studio.open_file(path).ok());
    dialog(u"Late"_s);
    EXPECT_TRUE(saved(u"edited.tarn"_s) == recovered) << "pictures, functions and events came along";
}

TEST_F(AutosaveTest, the_scene_is_kept_as_authored_while_it_runs_and_while_an_action_is_under_way)
{
    m_studio.keep_data(m_data);
    ModelObject& one = dialog(u"One"_s);
    m_studio.set_playing(true);
    {
        const ShownWrites shown(m_studio.world().document());
        rename(one, u"Shown"_s);
    }
    m_studio.keep_unsaved();
    EXPECT_TRUE(m_studio.is_playing());
    EXPECT_EQ(names(), QStringList{u"Shown"_s});
    die_and_recover();
    EXPECT_EQ(names(), QStringList{u"One"_s});

    Journal& journal = m_studio.scene()->journal();
    const std::size_t steps = journal.step_count();
    journal.begin(u"drag"_s);
    rename(*dialogs().front(), u"Dragged"_s);
    m_studio.keep_unsaved();
    EXPECT_TRUE(journal.in_action());
    journal.cancel();
    journal.end();
    EXPECT_EQ(journal.step_count(), steps);
    EXPECT_EQ(names(), QStringList{u"One"_s});
}

TEST_F(AutosaveTest, a_scene_as_it_was_saved_is_not_kept)
{
    m_studio.keep_data(m_data);
    ModelObject& one = dialog(u"One"_s);
    saved(u"scene.tarn"_s);
    rename(one, u"Two"_s);
    m_studio.keep_unsaved();
    EXPECT_EQ(kept().size(), 2);
    EXPECT_TRUE(m_studio.undo());
    EXPECT_EQ(kept(), QStringList());
    EXPECT_TRUE(m_studio.redo());
    m_studio.keep_unsaved();
    EXPECT_EQ(kept().size(), 2);
    m_studio.stop();
    EXPECT_EQ(everything_in(m_recovery), QStringList()) << "the program ended as it should";
}

TEST_F(AutosaveTest, where_nothing_can_be_kept_the_author_is_told_once_until_it_is_possible_again)
{
    const QSignalSpy failures(&m_studio, &Studio::autosave_failed);
    m_studio.keep_data(m_data);
    ASSERT_TRUE(QDir(m_recovery).removeRecursively());
    put(m_recovery, "a file is in the way");
    ModelObject& one = dialog(u"One"_s);
    const auto edit = [&] {
        for (int i = 0; i < 4 * Autosave::most_edits; ++i)
            rename(one, QString::number(i));
        m_studio.keep_unsaved();
    };
    edit();
    edit();
    EXPECT_EQ(failures.size(), 1);
    ASSERT_TRUE(QFile::remove(m_recovery));
    ASSERT_TRUE(QDir().mkpath(m_recovery));
    edit();
    EXPECT_EQ(kept().size(), 2);
    EXPECT_EQ(failures.size(), 1);
}

TEST_F(AutosaveTest, a_file_that_others_wrote_since_it_was_opened_is_noticed_also_after_a_recovery)
{
    m_studio.keep_data(m_data);
    dialog(u"One"_s);
    const QString path = m_folder.filePath(u"scene.tarn"_s);
    saved(u"scene.tarn"_s);
    EXPECT_FALSE(m_studio.was_changed_outside(path));
    dialog(u"Two"_s);
    put(path, "others");
    EXPECT_TRUE(m_studio.was_changed_outside(path));
    EXPECT_FALSE(m_studio.was_changed_outside(m_folder.filePath(u"other.tarn"_s)));
    die_and_recover();
    EXPECT_EQ(m_studio.file_name(), path);
    EXPECT_TRUE(m_studio.was_changed_outside(path));
    saved(u"scene.tarn"_s);
    EXPECT_FALSE(m_studio.was_changed_outside(path));
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_FALSE(m_studio.was_changed_outside(path)) << "there is nothing to overwrite";
}

TEST_F(AutosaveTest, leftovers_that_are_no_package_stay_until_they_are_discarded)
{
    m_studio.keep_data(m_data);
    put(m_recovery + u"/broken.tarn"_s, "no package");
    put(m_recovery + u"/alone.json"_s, "{}");
    dialog(u"One"_s);
    auto left = m_studio.left_behind();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_FALSE(m_studio.recover(std::move(left.front())).ok());
    EXPECT_EQ(names(), QStringList{u"One"_s});
    left = m_studio.left_behind();
    ASSERT_EQ(left.size(), 1u);
    left.front()->remove();
    left.clear();
    EXPECT_EQ(m_studio.left_behind().size(), 0u);
    EXPECT_FALSE(QFile::exists(m_recovery + u"/alone.json"_s));
}

TEST(WatchedWork, is_shown_only_when_it_takes_long_and_draws_windows_meanwhile)
{
    struct Shows : boxes::QtBoxes {
        std::unique_ptr<boxes::ProgressBox> progress(QWidget* parent, const QString& text) override
        {
            ++shown;
            return QtBoxes::progress(parent, text);
        }
        int shown = 0;
    } shows;
    boxes::set_responder(&shows);
    const auto take = [](qint64 ms, const Progress& progress) {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < ms)
            if (!progress.go_on(double(time.elapsed()) / double(ms)))
                return stopped();
        return Status();
    };
    EXPECT_TRUE(do_watched(nullptr, u"short"_s, [&](const Progress& progress) { return take(50, progress); }).ok());
    EXPECT_EQ(shows.shown, 0);
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(10);
    EXPECT_TRUE(do_watched(nullptr, u"long"_s, [&](const Progress& progress) { return take(400, progress); }).ok());
    EXPECT_EQ(shows.shown, 1);
    EXPECT_GE(ticks, 3);

    struct View : QWidget {
        void paintEvent(QPaintEvent*) override
        {
            for (const QWidget* window : QApplication::topLevelWidgets())
                seen_with_box |= qobject_cast<const QProgressDialog*>(window) && window->isVisible();
        }
        bool seen_with_box = false;
    } view;
    view.show();
    const auto change_view = [&](const Progress& progress) {
        auto status = take(150, progress);
        QApplication::processEvents();
        view.seen_with_box = false;
        view.update();
        return status;
    };
    EXPECT_TRUE(do_watched(nullptr, u"changes"_s, change_view).ok());
    EXPECT_TRUE(view.seen_with_box) << "until the change is drawn";

    QTimer::singleShot(0, [] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (qobject_cast<QProgressDialog*>(window))
                QTest::mouseClick(window->findChild<QPushButton*>(), Qt::LeftButton);
    });
    const Status given_up = do_watched(nullptr, u"endless"_s,
                                       [&](const Progress& progress) { return take(60'000, progress); });
    EXPECT_TRUE(is_stopped(given_up));
    boxes::error(nullptr, given_up.message()); // No box opens, which nobody would close.
    boxes::set_responder(nullptr);
}
