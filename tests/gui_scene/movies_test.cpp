#include "core/language.h"
#include "support/gui_fixture.h"
#include "support/movie_writer.h"
#include "support/scene_fixture.h"
#include "tools/control_clipboard.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class Movies : public SceneTest {
protected:
    CDXUTControl* movie(const QString& source, bool local = true)
    {
        CDXUTDialog* home = core().GetDialogs().isEmpty() ? dialog({0, 0, 200, 100}) : core().GetDialogs().first();
        CDXUTControl* made = control(DXUT_CONTROL_FLASH, home, {0, 0, 80, 60});
        (void)set(*made, "source", source);
        (void)set(*made, "source_local", local);
        return made;
    }
    void put_file(const QString& name, const QByteArray& content)
    {
        core().document().edit_files([&](auto& files) { files.insert(u"movies/"_s + name, content); });
    }
    QStringList sources()
    {
        QStringList list;
        for (const CDXUTControl* control : core().controls())
            list << std::get<QString>(get(*control, "source"));
        return list;
    }
    QStringList problems()
    {
        QStringList texts;
        VLCMsgIniW::set_language(Language::English);
        for (const SceneModel::Problem& problem : m_scene.model().problems())
            texts << problem.text;
        VLCMsgIniW::set_language(Language::Chinese);
        return texts;
    }
    /// A scene with a movie of a name that is taken, one that is shared and an address that looks like it.
    void fill_theirs()
    {
        movie(u"intro.swf"_s);
        movie(u"same.swf"_s);
        movie(u"intro.swf"_s, false);
        put_file(u"intro.swf"_s, "theirs");
        put_file(u"same.swf"_s, "both");
    }
    void fill_ours()
    {
        m_scene.new_scene();
        put_file(u"intro.swf"_s, "ours");
        put_file(u"same.swf"_s, "both");
    }
};

} // namespace

TEST_F(Movies, of_taken_names_are_renamed_when_scenes_are_merged_and_their_controls_follow)
{
    fill_theirs();
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    fill_ours();
    movie(u"intro.swf"_s);
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false).ok());
    EXPECT_EQ(sources().join(u' '), u"intro.swf intro-2.swf same.swf intro.swf"_s);
    const auto& files = core().document().files();
    EXPECT_EQ(files.value(u"movies/intro.swf"_s), "ours");
    EXPECT_EQ(files.value(u"movies/intro-2.swf"_s), "theirs");
    EXPECT_EQ(files.size(), 3);
    EXPECT_TRUE(problems().filter(u"movie"_s).isEmpty());
}

TEST_F(Movies, go_with_copies_of_their_controls_and_dialogs_into_another_scene)
{
    fill_theirs();
    const QByteArray of_controls = clipboard_text(m_scene, core().controls());
    core().SelectDialog(core().GetDialogs().first(), false);
    const QByteArray of_dialogs = clipboard_text_of_dialogs(m_scene);
    for (const QByteArray& text : {of_controls, of_dialogs}) {
        fill_ours();
        core().document().forget_history();
        ASSERT_TRUE(paste_text(m_scene, text).ok());
        EXPECT_EQ(sources().join(u' '), u"intro-2.swf same.swf intro.swf"_s);
        EXPECT_EQ(core().document().files().value(u"movies/intro-2.swf"_s), "theirs");
        ASSERT_TRUE(m_scene.journal().undo());
        EXPECT_EQ(core().document().files().size(), 2) << "one step";
    }
}

TEST_F(Movies, that_are_missing_and_callbacks_without_a_function_are_told_among_the_problems)
{
    CDXUTControl* local = movie(u"intro.swf"_s);
    movie(u"http://host.example/intro.swf"_s, false);
    ASSERT_TRUE(m_scene.functions().set_function(u"known"_s, u""_s).ok());
    (void)set(*local, "callbacks", QStringList{u"known"_s, u"gone"_s});
    const QStringList told = problems();
    EXPECT_EQ(told.filter(u"intro.swf"_s), QStringList{u"The movie intro.swf is not in the package."_s});
    EXPECT_EQ(told.filter(u"callback"_s), QStringList{u"The callback function gone does not exist."_s});
}

TEST_F(Movies, of_which_not_all_can_be_played_are_told_among_the_problems)
{
    MovieWriter rich;
    rich.shape(1, {0, 0, 9, 9}, Qt::red).place_filtered(1, 1, {0, 0}).tag(14, "sound").tag(60, "video");
    rich.script(MovieScript().draw_bitmap({9, 9}, u"box"_s)).show_frame();
    put_file(u"rich.swf"_s, rich.bytes(true));
    put_file(u"plain.swf"_s, moving_movie());
    movie(u"plain.swf"_s);
    EXPECT_TRUE(problems().filter(u"plain.swf"_s).isEmpty());
    movie(u"rich.swf"_s);
    movie(u"http://host.example/intro.swf"_s, false);
    const QStringList told = problems();
    for (const QString& lack : {u"filters"_s, u"bitmaps"_s, u"sound"_s, u"video"_s, u"network"_s})
        EXPECT_EQ(told.filter(lack).size(), 1) << lack.toStdString();
    put_file(u"rich.swf"_s, moving_movie());
    EXPECT_TRUE(problems().filter(u"rich.swf"_s).isEmpty());
}

TEST_F(Movies, take_the_functions_that_they_call_into_an_export_of_their_dialog_alone)
{
    CDXUTControl* caller = movie(u"http://host.example/intro.swf"_s, false);
    (void)set(*caller, "callbacks", QStringList{u"shared"_s});
    CDXUTDialog* other = dialog({0, 0, 50, 50});
    CDXUTControl* button = control(DXUT_CONTROL_BUTTON, other, {0, 0, 10, 10});
    ASSERT_TRUE(m_scene.functions().set_function(u"shared"_s, u""_s).ok());
    ASSERT_TRUE(m_scene.events().CreateEventW(button->id(), EVENT_BUTTON_CLICKED, u"shared"_s));
    core().SelectDialog(core().GetDialogs().first(), false);
    CSaveOpt options;
    options.selection_only = true;
    ASSERT_TRUE(save(path(), options).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_NE(m_scene.functions().find_function(u"shared"_s), nullptr);
    EXPECT_TRUE(m_scene.events().events().empty());
}
