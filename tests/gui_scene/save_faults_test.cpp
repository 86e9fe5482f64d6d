// Whatever fails while a scene is saved: the old package is there whole, or the new one.

#include "support/failing_file_io.h"
#include "support/scene_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class SaveFaults : public SceneTest {
protected:
    SaveFaults()
    {
        read_sample(u"hud"_s);
        EXPECT_TRUE(save(path()).ok());
        m_old = content_of(path());
        dialog({1, 2, 3, 4}, u"New"_s);
        m_new = saved_bytes();
        QFile::remove(path(u"bytes.tarn"_s));
    }
    void expect_whole(FailingFileIo& io, const QByteArray& expected, const std::string& where)
    {
        const Status status = save(path(), {}, io);
        EXPECT_FALSE(status.ok()) << where;
        EXPECT_TRUE(status.message().contains(path())) << where << ": " << status.message().toStdString();
        EXPECT_TRUE(content_of(path()) == expected) << where;
        EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"scene.tarn"_s}) << where;
        EXPECT_TRUE(m_scene.open_scene(path()).ok()) << where;
        dialog({1, 2, 3, 4}, u"New"_s);
    }

    QByteArray m_old;
    QByteArray m_new;
};

} // namespace

TEST_F(SaveFaults, every_operation_that_fails_leaves_one_of_the_two_files_whole_and_is_reported)
{
    FailingFileIo counter;
    ASSERT_TRUE(save(path(u"scene.tarn"_s), {}, counter).ok());
    ASSERT_TRUE(content_of(path()) == m_new);
    for (int kind = FailingFileIo::Open; kind < FailingFileIo::Remove; ++kind) {
        const auto which = FailingFileIo::Kind(kind);
        ASSERT_GE(counter.count(which), 1) << kind;
        for (int number = 0; number < counter.count(which); ++number) {
            for (const bool from_then_on : {false, true}) {
                put(path(), m_old);
                ASSERT_TRUE(m_scene.open_scene(path()).ok());
                dialog({1, 2, 3, 4}, u"New"_s);
                FailingFileIo io(which, number, from_then_on);
                expect_whole(io, kind == FailingFileIo::SyncFolder ? m_new : m_old,
                             "kind " + std::to_string(kind) + ", number " + std::to_string(number));
            }
        }
    }
}

TEST_F(SaveFaults, a_first_save_that_fails_leaves_no_file)
{
    for (int kind = FailingFileIo::Open; kind < FailingFileIo::SyncFolder; ++kind) {
        FailingFileIo io(FailingFileIo::Kind(kind), 0);
        EXPECT_FALSE(save(path(u"first.tarn"_s), {}, io).ok());
        EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"scene.tarn"_s}) << kind;
    }
}

TEST_F(SaveFaults, what_a_crash_left_behind_is_overwritten_by_the_next_save)
{
    put(path(u".scene.tarn.saving"_s), m_new.left(m_new.size() / 2));
    EXPECT_TRUE(m_scene.open_scene(path()).ok()) << "the old package is not touched by it";
    dialog({1, 2, 3, 4}, u"New"_s);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    EXPECT_TRUE(content_of(path()) == m_new);
    EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"scene.tarn"_s});
}

TEST_F(SaveFaults, a_failed_save_does_not_count_as_saved)
{
    act([&] { dialog({}); });
    EXPECT_FALSE(m_scene.save_scene(path(u"no/such/folder.tarn"_s)).ok());
    EXPECT_FALSE(m_scene.journal().is_saved());
    EXPECT_TRUE(m_scene.save_scene(path()).ok());
    EXPECT_TRUE(m_scene.journal().is_saved());
}
