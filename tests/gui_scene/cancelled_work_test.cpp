// Long work that is given up, at every moment at which it can be.

#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class CancelledWork : public SceneTest {
protected:
    CancelledWork()
    {
        for (int i = 0; i < 1500; ++i)
            control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), QRectF(i, i, 50, 20), QString::number(i));
        core().add_texture(u"large.png"_s, png(Qt::red, {2000, 2000}));
        EXPECT_TRUE(m_scene.save_scene(path()).ok());
        m_scene.new_scene();
        dialog({1, 2, 3, 4}, u"Mine"_s);
        m_before = text();
    }
    ~CancelledWork() override { m_world.on_work = nullptr; }

    /// Does `work` again and again, each time given up one look later, until it is done; answers how often it was given up.
    int give_up(const std::function<Status()>& work, const std::function<void()>& expect_nothing_done)
    {
        for (int looks = 0;; ++looks) {
            SCOPED_TRACE(looks);
            int left = looks;
            double share = 0;
            const Progress::Tell tell = [&](double now) {
                EXPECT_GE(now, share);
                EXPECT_LE(now, 1);
                share = now;
                return left-- > 0;
            };
            m_world.on_work = [&](const QString&, const CBaseWorld::Work& job) { return job(Progress(tell)); };
            const Status status = work();
            if (status)
                return looks;
            EXPECT_TRUE(is_stopped(status)) << status.message().toStdString();
            expect_nothing_done();
            if (testing::Test::HasFailure())
                return looks;
        }
    }
    void expect_same_scene()
    {
        EXPECT_TRUE(same_text(text(), m_before));
        EXPECT_FALSE(m_scene.journal().can_redo());
    }

    QByteArray m_before;
};

} // namespace

TEST_F(CancelledWork, of_opening_importing_and_merging_leaves_the_scene_as_it_was)
{
    const auto same = [&] { expect_same_scene(); };
    EXPECT_GE(give_up([&] { return m_scene.on_merge_GUI(path(), u"Theirs"_s, false); }, same), 20);
    EXPECT_EQ(core().GetDialogs().size(), 2);
    EXPECT_TRUE(m_scene.journal().undo());
    const auto import = [&] {
        CPakFile package;
        const Status opened = package.open(path());
        return opened ? m_scene.load(package, CTexPathInfo(path(), 1)) : opened;
    };
    m_before = text();
    EXPECT_GE(give_up(import, [&] { EXPECT_TRUE(same_text(text(), m_before)); }), 20);
    EXPECT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(same_text(text(), m_before));
    EXPECT_GE(give_up([&] { return m_scene.open_scene(path()); }, [&] { EXPECT_TRUE(same_text(text(), m_before)); }),
              20);
    EXPECT_EQ(core().controls().size(), 1500);
}

TEST_F(CancelledWork, of_saving_leaves_the_old_file_and_nothing_beside_it)
{
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    m_scene.journal().changed_outside();
    const QByteArray old = content_of(path());
    const Document& document = core().document();
    const SceneSnapshot copy = content_to_save(core());
    const auto save = [&] {
        return m_world.work({}, [&](const Progress& progress) {
            return save_package(path(), document, copy, {}, ReadOnly::Keep, progress);
        });
    };
    EXPECT_GE(give_up(save,
                      [&] {
                          EXPECT_TRUE(content_of(path()) == old);
                          EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"scene.tarn"_s});
                      }),
              20);
    // As the program saves, in another thread: this one looks as often as it gets to it.
    give_up([&] { return m_scene.save_scene(path()); }, [&] { EXPECT_FALSE(m_scene.journal().is_saved()); });
    EXPECT_TRUE(m_scene.journal().is_saved());
    EXPECT_TRUE(content_of(path()) == old);
}

TEST_F(CancelledWork, of_taking_in_a_picture_leaves_the_object_as_it_was)
{
    auto* button = control(DXUT_CONTROL_BUTTONST, core().GetRootDialog(), {0, 0, 10, 10});
    put(path(u"picture.png"_s), png(Qt::blue, {3000, 3000}));
    m_before = text();
    const FieldKey field = key<&ImageButtonState::image_normal>;
    give_up([&] { return m_scene.set_picture({button}, field, path(u"picture.png"_s)); },
            [&] {
                expect_same_scene();
                EXPECT_TRUE(core().document().files().isEmpty());
            });
    EXPECT_EQ(core().document().files().size(), 1);
}
