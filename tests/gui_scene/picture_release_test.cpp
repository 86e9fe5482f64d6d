#include "gui_core/dxut_button_st.h"
#include "gui_scene/picture_file.h"
#include "gui_scene/tex_file_man.h"
#include "support/gui_fixture.h"
#include "support/scene_fixture.h"
#include "world/world_scene.h"

namespace tarn::test {

namespace {

class PictureReleaseTest : public SceneTest {
protected:
    PictureReleaseTest()
    {
        m_home = dialog({0, 0, 400, 300});
        for (CDXUTButtonST** made : {&m_first, &m_second})
            *made = static_cast<CDXUTButtonST*>(control(DXUT_CONTROL_BUTTONST, m_home, {0, 0, 80, 24}));
        put(path(u"red.png"_s), png(Qt::red));
        put(path(u"blue.png"_s), png(Qt::blue));
    }
    /// The names of the scene's pictures.
    QString pictures() { return core().texture_names().join(u' '); }
    void set(CDXUTControl* button, int state, const QString& file)
    {
        const Status done = m_scene.set_buttonst_img({button}, state, path(file));
        ASSERT_TRUE(done) << done.message().toStdString();
    }
    void clear(CDXUTControl* button, FieldKey field = key<&ImageButtonState::image_normal>)
    {
        m_scene.clear_picture({button}, field);
    }

    CDXUTDialog* m_home = nullptr;
    CDXUTButtonST* m_first = nullptr;
    CDXUTButtonST* m_second = nullptr;
};

TEST_F(PictureReleaseTest, a_picture_stays_as_long_as_any_slot_shows_it_and_comes_back_with_undo)
{
    set(m_first, 0, u"red.png"_s);
    set(m_first, 2, u"red.png"_s);
    set(m_second, 1, u"red.png"_s);
    EXPECT_EQ(pictures(), u"red.png"_s) << "one content, one file";
    clear(m_first);
    clear(m_second, key<&ImageButtonState::image_hover>);
    EXPECT_EQ(pictures(), u"red.png"_s);
    const QByteArray before = saved_bytes();
    clear(m_first, key<&ImageButtonState::image_pressed>);
    EXPECT_EQ(pictures(), QString());
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(pictures(), u"red.png"_s);
    EXPECT_EQ(saved_bytes(), before);
    ASSERT_TRUE(m_scene.journal().redo());
    EXPECT_EQ(pictures(), QString());
}

TEST_F(PictureReleaseTest, replacing_lets_the_old_picture_go_and_the_same_one_stay)
{
    set(m_first, 0, u"red.png"_s);
    set(m_first, 0, u"red.png"_s);
    EXPECT_EQ(pictures(), u"red.png"_s);
    set(m_first, 0, u"blue.png"_s);
    EXPECT_EQ(pictures(), u"blue.png"_s);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(pictures(), u"red.png"_s);
    EXPECT_EQ(m_first->image(0), u"red.png"_s);
}

TEST_F(PictureReleaseTest, what_the_changed_objects_never_showed_is_left_alone)
{
    core().set_texture(u"for later.png"_s, png(Qt::green));
    set(m_first, 0, u"red.png"_s);
    clear(m_first);
    m_scene.RemoveCtrls({m_first, m_second});
    EXPECT_EQ(pictures(), u"for later.png"_s);
}

TEST_F(PictureReleaseTest, removing_controls_and_dialogs_takes_their_pictures_along)
{
    set(m_first, 0, u"red.png"_s);
    set(m_second, 0, u"red.png"_s);
    set(m_second, 1, u"blue.png"_s);
    m_scene.RemoveCtrl(m_second);
    EXPECT_EQ(pictures(), u"red.png"_s);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(pictures(), u"blue.png red.png"_s);
    m_scene.RemoveCtrls({m_first, m_second});
    EXPECT_EQ(pictures(), QString());
    ASSERT_TRUE(m_scene.journal().undo());
    m_scene.RemoveDialog(m_home);
    EXPECT_EQ(pictures(), QString());
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(pictures(), u"blue.png red.png"_s);
}

TEST_F(PictureReleaseTest, bindings_styles_and_scripts_keep_a_picture)
{
    const auto gone_after_clearing = [this] {
        set(m_first, 0, u"red.png"_s);
        clear(m_first);
        return pictures().isEmpty();
    };
    set(m_first, 0, u"red.png"_s);
    m_scene.create_texture_dialog_bind(m_home, u"red.png"_s);
    EXPECT_FALSE(gone_after_clearing());
    m_scene.remove_tex_binder(m_home);
    EXPECT_EQ(pictures(), u"red.png"_s) << "the world's textures are not the dialog's";
    EXPECT_TRUE(gone_after_clearing());

    ASSERT_TRUE(m_scene.functions().set_function(u"swap"_s, u"-- shows red.png"_s));
    EXPECT_FALSE(gone_after_clearing());
    m_scene.functions().del_function(u"swap"_s);
    EXPECT_TRUE(gone_after_clearing());

    read(R"({"screen_width":10,"screen_height":10,"styles":{"s":{"look":"r\u0065d.png"}},"root":{"id":1},"dialogs":[],)"
         R"("controls":[{"type":10,"id":2,"dialog":1,"image_normal":"red.png"}]})",
         {{u"textures/red.png"_s, png(Qt::red)}});
    clear(core().controls().front());
    EXPECT_EQ(pictures(), u"red.png"_s);
}

TEST_F(PictureReleaseTest, a_file_that_is_no_picture_changes_nothing)
{
    set(m_first, 0, u"red.png"_s);
    const std::size_t steps = m_scene.journal().step_count();
    put(path(u"cut.png"_s), png(Qt::blue).left(30));
    for (const QString& file : {u"cut.png"_s, u"missing.png"_s, QString()})
        EXPECT_TRUE(m_scene.set_buttonst_img({m_first}, 0, path(file)).message().contains(path(file)));
    EXPECT_EQ(m_scene.journal().step_count(), steps);
    EXPECT_EQ(m_first->image(0), u"red.png"_s);
    EXPECT_EQ(pictures(), u"red.png"_s);
}

TEST_F(PictureReleaseTest, a_name_that_no_package_can_hold_is_not_taken)
{
    put(path(u"a:b.png"_s), png(Qt::green));
    set(m_first, 0, u"a:b.png"_s);
    EXPECT_TRUE(save(path()));
    EXPECT_TRUE(m_scene.open_scene(path()));
}

TEST_F(PictureReleaseTest, a_texture_of_the_world_is_found_by_its_content_and_otherwise_by_its_name)
{
    core().set_texture(u"walls/screen.png"_s, png(Qt::red));
    core().set_texture(u"blue.png"_s, png(Qt::green));
    CTexFileMan textures(core(), m_world);
    EXPECT_TRUE(textures.find_tex_file_from_absolute_filename(path(u"red.png"_s)).isNull()) << "nothing uses it";
    for (const QString& name : {u"walls/screen.png"_s, u"blue.png"_s})
        m_world.objects().create(WorldType::Panel)->write<PanelState>([&](PanelState& s) { s.picture = name; });
    EXPECT_EQ(textures.find_tex_file_from_absolute_filename(path(u"red.png"_s)), u"walls/screen.png"_s);
    EXPECT_EQ(textures.find_tex_file_from_absolute_filename(path(u"blue.png"_s)), u"blue.png"_s);
    EXPECT_EQ(textures.find_tex_file_from_absolute_filename(path(u"gone/screen.png"_s)), u"walls/screen.png"_s);
    EXPECT_TRUE(textures.find_tex_file_from_absolute_filename(path(u"other.png"_s)).isNull());
}

} // namespace

} // namespace tarn::test
