// Whatever fails while a scene is saved: the old package is there whole, or the new one.

#include "support/failing_file_io.h"
#include "support/long_tests.h"
#include "support/scene_fixture.h"

#include <array>

using namespace tarn;
using namespace tarn::test;

namespace {

class SaveFaults : public SceneTest {
protected:
    enum class Target { File, Nothing, Link, LinkToNothing };

    SaveFaults()
    {
        read_sample(u"hud"_s);
        m_old = saved_bytes();
        dialog({1, 2, 3, 4}, u"New"_s);
        m_new = saved_bytes();
        QFile::remove(path(u"bytes.tarn"_s));
    }
    /// Saves the changed scene while `io` fails: what is there then is the old file, or once it was renamed the new one.
    void expect_whole(FailingFileIo& io, Target target, bool renamed, const CSaveOpt& options)
    {
        const bool is_link = target == Target::Link || target == Target::LinkToNothing;
        const bool has_old = target == Target::File || target == Target::Link;
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"scene.tarn"_s);
        const QString saved = is_link ? folder.filePath(u"link"_s) : file;
        ASSERT_TRUE(!is_link || QFile::link(file, saved));
        if (has_old)
            put(file, m_old);
        const Status status = save(saved, options, io);
        EXPECT_FALSE(status.ok());
        EXPECT_TRUE(status.message().contains(saved)) << status.message().toStdString();
        if (renamed)
            EXPECT_TRUE(options.selection_only || content_of(file) == m_new);
        else
            EXPECT_TRUE(has_old ? content_of(file) == m_old : !QFile::exists(file));
        EXPECT_EQ(everything_in(folder.path()).size(), int(is_link) + int(has_old || renamed));
        CPakFile package;
        EXPECT_EQ(package.open(file).ok(), has_old || renamed);
    }

    QByteArray m_old;
    QByteArray m_new;
};

} // namespace

TEST_F(SaveFaults, every_operation_that_fails_leaves_one_of_the_two_files_whole_and_is_reported)
{
    FailingFileIo counter;
    ASSERT_TRUE(save(path(), {}, counter).ok());
    ASSERT_TRUE(content_of(path()) == m_new);
    const std::array all_options{CSaveOpt{}, CSaveOpt{.prefix = {}, .selection_only = true, .texture_path = {}}};
    for (const CSaveOpt& options : all_options) {
        for (const Target target : {Target::File, Target::Nothing, Target::Link, Target::LinkToNothing}) {
            for (int kind = FailingFileIo::Create; kind < FailingFileIo::Remove; ++kind) {
                const auto which = FailingFileIo::Kind(kind);
                ASSERT_GE(counter.count(which), 1) << kind;
                for (int number = 0; number < counter.count(which); ++number) {
                    for (const bool from_then_on : {false, true}) {
                        SCOPED_TRACE(testing::Message()
                                     << "kind " << kind << ", number " << number << ", target " << int(target));
                        FailingFileIo io(which, number, from_then_on);
                        expect_whole(io, target, kind == FailingFileIo::Close || kind == FailingFileIo::SyncFolder,
                                     options);
                    }
                }
            }
        }
    }
}

TEST_F(SaveFaults, a_disk_that_is_full_after_any_number_of_bytes_leaves_the_old_file)
{
    const qsizetype step = std::max<qsizetype>(1, m_new.size() / times(12, 500));
    for (const Target target : {Target::File, Target::Nothing}) {
        for (qsizetype fits = 0; fits < m_new.size(); fits += step) {
            SCOPED_TRACE(testing::Message() << fits << " bytes");
            FailingFileIo io(FailingFileIo::Write, 0);
            io.set_fits(fits);
            expect_whole(io, target, false, {});
        }
    }
}

TEST_F(SaveFaults, a_failed_save_does_not_count_as_saved)
{
    act([&] { dialog({}); });
    EXPECT_FALSE(m_scene.save_scene(path(u"no/such/folder.tarn"_s)).ok());
    EXPECT_FALSE(m_scene.journal().is_saved());
    EXPECT_TRUE(m_scene.save_scene(path()).ok());
    EXPECT_TRUE(m_scene.journal().is_saved());
}
